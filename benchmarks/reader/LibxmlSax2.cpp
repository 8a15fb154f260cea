// SPDX-License-Identifier: MIT
// libxml2's SAX2 interface: callbacks, no tree. The parser context is made once; each further
// document goes through xmlCtxtReadMemory, which keeps its buffers and its dictionary of names.
// Names come split; qualified names are not delivered. Entities are for the application to keep;
// where there are any, libxml2's own functions keep them in a document that has no content.
#include "reader/Library.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <cstring>
#include <stdexcept>

namespace bench {

namespace {

// Depths and lengths as in the corpus are refused without XML_PARSE_HUGE; without XML_PARSE_NOENT
// an ampersand in an attribute's value would be delivered as "&#38;".
constexpr int kOptions = XML_PARSE_HUGE | XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR;

// The five pointers of an attribute in the array that startElementNs gets.
enum AttributeField { kLocalName, kPrefix, kUri, kValueBegin, kValueEnd, kFieldsOfAttribute };

std::int64_t Length(const xmlChar* text) {
    return text == nullptr ? 0 : Bytes(std::strlen(reinterpret_cast<const char*>(text)));
}

class LibxmlSax2Visitor final : public Visitor {
public:
    explicit LibxmlSax2Visitor(CorpusGroup group) : context_(xmlNewParserCtxt()) {
        if (context_ == nullptr) throw std::runtime_error("no parser context");
        xmlSAXHandler handler = {};
        handler.initialized = XML_SAX2_MAGIC;
        handler.startElementNs = StartElement;
        handler.endElementNs = EndElement;
        handler.characters = Characters;
        handler.ignorableWhitespace = Characters;
        handler.cdataBlock = Characters;
        handler.comment = Comment;
        handler.processingInstruction = Instruction;
        if (group == CorpusGroup::Entities) {
            handler.startDocument = StartDocument;
            handler.internalSubset = InternalSubset;
            handler.entityDecl = DeclareEntity;
            handler.getEntity = FindEntity;
        }
        *context_->sax = handler;
        context_->userData = this;
    }
    LibxmlSax2Visitor(const LibxmlSax2Visitor&) = delete;
    LibxmlSax2Visitor& operator=(const LibxmlSax2Visitor&) = delete;
    ~LibxmlSax2Visitor() override { xmlFreeParserCtxt(context_); }

    void Visit(std::string_view document, Totals& totals) override {
        totals_ = &totals;
        xmlFreeDoc(xmlCtxtReadMemory(context_, document.data(), static_cast<int>(document.size()),
                                     nullptr, nullptr, kOptions));
        if (context_->wellFormed == 0) throw std::runtime_error("not well-formed");
        totals.nameBytes = Totals::kNotDelivered;
    }

private:
    static Totals& TotalsOf(void* visitor) {
        return *static_cast<LibxmlSax2Visitor*>(visitor)->totals_;
    }

    static void StartElement(void* visitor, const xmlChar* localName, const xmlChar* prefix,
                             const xmlChar* uri, int namespaceCount, const xmlChar** namespaces,
                             int attributeCount, int /*defaulted*/, const xmlChar** attributes) {
        Totals& totals = TotalsOf(visitor);
        ++totals.elements;
        totals.localBytes += Length(localName);
        totals.prefixBytes += Length(prefix);
        totals.elementUriBytes += Length(uri);
        totals.attributes += namespaceCount + attributeCount;
        for (int i = 0; i < namespaceCount; ++i) {
            AddDeclaration(totals, namespaces[2 * i], namespaces[2 * i + 1]);
        }
        for (int i = 0; i < attributeCount; ++i) {
            const xmlChar** attribute = attributes + kFieldsOfAttribute * i;
            totals.localBytes += Length(attribute[kLocalName]);
            totals.prefixBytes += Length(attribute[kPrefix]);
            totals.attributeUriBytes += Length(attribute[kUri]);
            totals.valueBytes += attribute[kValueEnd] - attribute[kValueBegin];
        }
    }

    static void AddDeclaration(Totals& totals, const xmlChar* prefix, const xmlChar* uri) {
        constexpr std::int64_t kXmlns = 5;
        totals.valueBytes += Length(uri);
        totals.localBytes += prefix == nullptr ? kXmlns : Length(prefix);
        totals.prefixBytes += prefix == nullptr ? 0 : kXmlns;
    }

    static void EndElement(void* visitor, const xmlChar* localName, const xmlChar* /*prefix*/,
                           const xmlChar* /*uri*/) {
        TotalsOf(visitor).endTagBytes += Length(localName);
    }

    static void Characters(void* visitor, const xmlChar* /*text*/, int length) {
        TotalsOf(visitor).textBytes += length;
    }

    static void Comment(void* visitor, const xmlChar* text) {
        TotalsOf(visitor).commentBytes += Length(text);
    }

    static void Instruction(void* visitor, const xmlChar* target, const xmlChar* data) {
        TotalsOf(visitor).commentBytes += Length(target) + Length(data);
    }

    static xmlParserCtxtPtr ContextOf(void* visitor) {
        return static_cast<LibxmlSax2Visitor*>(visitor)->context_;
    }

    static void StartDocument(void* visitor) { xmlSAX2StartDocument(ContextOf(visitor)); }

    static void InternalSubset(void* visitor, const xmlChar* name, const xmlChar* publicId,
                               const xmlChar* systemId) {
        xmlSAX2InternalSubset(ContextOf(visitor), name, publicId, systemId);
    }

    static void DeclareEntity(void* visitor, const xmlChar* name, int type, const xmlChar* publicId,
                              const xmlChar* systemId, xmlChar* content) {
        xmlSAX2EntityDecl(ContextOf(visitor), name, type, publicId, systemId, content);
    }

    static xmlEntityPtr FindEntity(void* visitor, const xmlChar* name) {
        return xmlSAX2GetEntity(ContextOf(visitor), name);
    }

    xmlParserCtxtPtr context_;  // owned
    Totals* totals_ = nullptr;  // of the running Visit()
};

}  // namespace

std::unique_ptr<Visitor> MakeLibxmlSax2(CorpusGroup group) {
    return std::make_unique<LibxmlSax2Visitor>(group);
}

}  // namespace bench
