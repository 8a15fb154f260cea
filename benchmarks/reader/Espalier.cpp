// SPDX-License-Identifier: MIT
// Our reader, with the settings it has when it is made, and in standard mode; documents with
// entities are read with all references replaced.
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "reader/Library.h"

namespace bench {

namespace {

class EspalierVisitor final : public Visitor {
public:
    EspalierVisitor(CorpusGroup group, Xml::XmlConformance conformance) {
        reader_.SetConformance(conformance);
        if (group == CorpusGroup::Entities) {
            reader_.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
        }
    }

    void Visit(std::string_view document, Totals& totals) override {
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        reader_.SetStream(&stream, false);
        while (reader_.Read()) {
            VisitNode(totals);
        }
        reader_.Close();
    }

private:
    void VisitNode(Totals& totals) {
        switch (reader_.NodeType()) {
        case Xml::XmlNodeType::Element:
            ++totals.elements;
            AddNames(totals);
            totals.elementUriBytes += Bytes(reader_.NamespaceURI().size());
            VisitAttributes(totals);
            break;
        case Xml::XmlNodeType::EndElement:
            totals.endTagBytes += Bytes(reader_.LocalName().size());
            break;
        case Xml::XmlNodeType::Text:
        case Xml::XmlNodeType::CDATA:
        case Xml::XmlNodeType::SignificantWhitespace:
            totals.textBytes += Bytes(reader_.Value().size());
            break;
        case Xml::XmlNodeType::Whitespace:
            // The peers do not report the white space around the root element.
            if (reader_.Depth() > 1) totals.textBytes += Bytes(reader_.Value().size());
            break;
        case Xml::XmlNodeType::Comment:
        case Xml::XmlNodeType::ProcessingInstruction:
            totals.commentBytes += Bytes(reader_.Name().size() + reader_.Value().size());
            break;
        default: break;
        }
    }

    void VisitAttributes(Totals& totals) {
        for (bool more = reader_.MoveToFirstAttribute(); more;
             more = reader_.MoveToNextAttribute()) {
            ++totals.attributes;
            AddNames(totals);
            totals.attributeUriBytes += Bytes(reader_.NamespaceURI().size());
            totals.valueBytes += Bytes(reader_.Value().size());
        }
    }

    void AddNames(Totals& totals) const {
        totals.nameBytes += Bytes(reader_.Name().size());
        totals.localBytes += Bytes(reader_.LocalName().size());
        totals.prefixBytes += Bytes(reader_.Prefix().size());
    }

    Xml::XmlTextReader reader_;
};

}  // namespace

std::unique_ptr<Visitor> MakeEspalier(CorpusGroup group) {
    return std::make_unique<EspalierVisitor>(group, Xml::XmlConformance::Compatible);
}

std::unique_ptr<Visitor> MakeEspalierStandard(CorpusGroup group) {
    return std::make_unique<EspalierVisitor>(group, Xml::XmlConformance::Standard);
}

}  // namespace bench
