// SPDX-License-Identifier: MIT
// libxml2's xmlTextReader. It is made once and given each further document by xmlReaderNewMemory,
// which keeps its buffers and its dictionary of names; UTF-16 is detected by a new reader only, so
// such a document gets one. Declarations of namespaces have a fixed namespace here, so the sum of
// the attributes' namespaces is not compared.
#include "reader/Library.h"

#include <libxml/xmlreader.h>

#include <cstring>
#include <stdexcept>

namespace bench {

namespace {

// Depths and lengths as in the corpus are refused without XML_PARSE_HUGE. With XML_PARSE_NOENT
// references to entities are replaced.
int OptionsFor(CorpusGroup group) {
    const int options = XML_PARSE_HUGE | XML_PARSE_NONET;
    return group == CorpusGroup::Entities ? options | XML_PARSE_NOENT : options;
}

std::int64_t Length(const xmlChar* text) {
    return text == nullptr ? 0 : Bytes(std::strlen(reinterpret_cast<const char*>(text)));
}

class LibxmlReaderVisitor final : public Visitor {
public:
    explicit LibxmlReaderVisitor(CorpusGroup group) : options_(OptionsFor(group)) {}
    LibxmlReaderVisitor(const LibxmlReaderVisitor&) = delete;
    LibxmlReaderVisitor& operator=(const LibxmlReaderVisitor&) = delete;
    ~LibxmlReaderVisitor() override { xmlFreeTextReader(reader_); }

    void Visit(std::string_view document, Totals& totals) override {
        SetInput(document);
        int result = xmlTextReaderRead(reader_);
        while (result == 1) {
            VisitNode(totals);
            result = xmlTextReaderRead(reader_);
        }
        if (result != 0) throw std::runtime_error("not well-formed");
        totals.attributeUriBytes = Totals::kNotDelivered;
    }

private:
    void SetInput(std::string_view document) {
        const int size = static_cast<int>(document.size());
        const bool isUtf16 = document.starts_with("\xFF\xFE") || document.starts_with("\xFE\xFF");
        if (isUtf16) {
            xmlFreeTextReader(reader_);
            reader_ = nullptr;
        }
        if (reader_ == nullptr) {
            reader_ = xmlReaderForMemory(document.data(), size, nullptr, nullptr, options_);
            if (reader_ == nullptr) throw std::runtime_error("no reader");
        } else if (xmlReaderNewMemory(reader_, document.data(), size, nullptr, nullptr, options_) !=
                   0) {
            throw std::runtime_error("no input");
        }
    }

    void VisitNode(Totals& totals) {
        switch (xmlTextReaderNodeType(reader_)) {
        case XML_READER_TYPE_ELEMENT:
            ++totals.elements;
            AddNames(totals);
            totals.elementUriBytes += Length(xmlTextReaderConstNamespaceUri(reader_));
            VisitAttributes(totals);
            break;
        case XML_READER_TYPE_END_ELEMENT:
            totals.endTagBytes += Length(xmlTextReaderConstLocalName(reader_));
            break;
        case XML_READER_TYPE_TEXT:
        case XML_READER_TYPE_CDATA:
        case XML_READER_TYPE_WHITESPACE:
        case XML_READER_TYPE_SIGNIFICANT_WHITESPACE:
            totals.textBytes += Length(xmlTextReaderConstValue(reader_));
            break;
        case XML_READER_TYPE_PROCESSING_INSTRUCTION:
            totals.commentBytes += Length(xmlTextReaderConstName(reader_));
            totals.commentBytes += Length(xmlTextReaderConstValue(reader_));
            break;
        case XML_READER_TYPE_COMMENT:
            totals.commentBytes += Length(xmlTextReaderConstValue(reader_));
            break;
        default: break;
        }
    }

    void VisitAttributes(Totals& totals) {
        int more = xmlTextReaderMoveToFirstAttribute(reader_);
        while (more == 1) {
            ++totals.attributes;
            AddNames(totals);
            totals.attributeUriBytes += Length(xmlTextReaderConstNamespaceUri(reader_));
            totals.valueBytes += Length(xmlTextReaderConstValue(reader_));
            more = xmlTextReaderMoveToNextAttribute(reader_);
        }
    }

    void AddNames(Totals& totals) {
        totals.nameBytes += Length(xmlTextReaderConstName(reader_));
        totals.localBytes += Length(xmlTextReaderConstLocalName(reader_));
        totals.prefixBytes += Length(xmlTextReaderConstPrefix(reader_));
    }

    int options_;                        // how to parse
    xmlTextReaderPtr reader_ = nullptr;  // owned
};

}  // namespace

std::unique_ptr<Visitor> MakeLibxmlReader(CorpusGroup group) {
    return std::make_unique<LibxmlReaderVisitor>(group);
}

std::string LibxmlVersion() { return LIBXML_DOTTED_VERSION; }

}  // namespace bench
