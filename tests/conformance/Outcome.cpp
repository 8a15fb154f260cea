// SPDX-License-Identifier: MIT
#include "Outcome.h"

#include <espalier/dom.h>
#include <espalier/io/Exception.h>
#include <espalier/sax/Attributes.h>
#include <espalier/sax/Features.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/SAXException.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>
#include <espalier/xml/XmlTextReader.h>

#include "CanonicalForm.h"
#include "support/DocumentStream.h"

namespace conformance {
namespace {

using Dom::DOMNodeType;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

void Prepare(XmlTextReader& reader, IO::Stream* stream, Mode mode) {
    reader.SetStream(stream, false);
    reader.SetConformance(mode.conformance);
    reader.SetNamespaces(mode.namespaces);
    reader.SetNormalization(true);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
}

std::string TextOf(const Xml::Exception& error) {
    std::string text = std::to_string(error.LineNumber()) + ":" + std::to_string(error.LinePos()) +
                       ": " + error.What();
    if (*error.Argument() != '\0') text += std::string(" [") + error.Argument() + "]";
    return text;
}

CanonicalForm::Attributes AttributesOf(const XmlTextReader& reader) {
    CanonicalForm::Attributes attributes;
    for (const Xml::XmlAttributeRef attribute : reader.Attributes())
        attributes.emplace_back(attribute.Name(), attribute.Value());
    return attributes;
}

void AddNode(const XmlTextReader& reader, CanonicalForm& form) {
    switch (reader.NodeType()) {
    case XmlNodeType::DocumentType: form.DocumentType(reader.Name()); break;
    case XmlNodeType::Element:
        form.Start(reader.Name(), AttributesOf(reader));
        if (reader.IsEmptyElement()) form.End(reader.Name());
        break;
    case XmlNodeType::EndElement: form.End(reader.Name()); break;
    case XmlNodeType::Text:
    case XmlNodeType::CDATA:
    case XmlNodeType::Whitespace:
    case XmlNodeType::SignificantWhitespace: form.Text(reader.Value()); break;
    case XmlNodeType::ProcessingInstruction: form.Instruction(reader.Name(), reader.Value()); break;
    default: break;
    }
}

// Adds what is told by events but notations.
class Recorder : public sax::helpers::DefaultHandler {
public:
    explicit Recorder(CanonicalForm& form) : form_(form) {}

    void startElement(const char*, const char*, const char* qName,
                      const sax::Attributes& attributes) override {
        CanonicalForm::Attributes taken;
        for (int i = 0; i < attributes.getLength(); ++i)
            taken.emplace_back(attributes.getQName(i), attributes.getValue(i));
        form_.Start(qName, std::move(taken));
    }
    void endElement(const char*, const char*, const char* qName) override { form_.End(qName); }
    void characters(const char* text, int start, int length) override {
        form_.Text({text + start, static_cast<std::size_t>(length)});
    }
    void ignorableWhitespace(const char* text, int start, int length) override {
        characters(text, start, length);
    }
    void processingInstruction(const char* target, const char* data) override {
        form_.Instruction(target, data);
    }

private:
    CanonicalForm& form_;
};

CanonicalForm::Attributes AttributesOf(const Dom::Element& element) {
    CanonicalForm::Attributes attributes;
    for (const Dom::AttributeView attribute : element.AttributeViews())
        attributes.emplace_back(attribute.Name(), attribute.Value());
    return attributes;
}

void Begin(const Dom::Node& node, CanonicalForm& form) {
    switch (node.NodeType()) {
    case DOMNodeType::ELEMENT_NODE:
        form.Start(node.NodeName(), AttributesOf(static_cast<const Dom::Element&>(node)));
        break;
    case DOMNodeType::TEXT_NODE:
    case DOMNodeType::CDATA_SECTION_NODE: form.Text(node.NodeValue()); break;
    case DOMNodeType::PROCESSING_INSTRUCTION_NODE:
        form.Instruction(node.NodeName(), node.NodeValue());
        break;
    default: break;
    }
}

void AddTree(const Dom::Document& document, CanonicalForm& form) {
    const Dom::Node* node = document.FirstChild();
    while (node != nullptr) {
        Begin(*node, form);
        const Dom::Node* next = node->FirstChild();
        while (next == nullptr && node != &document) {
            if (node->NodeType() == DOMNodeType::ELEMENT_NODE) form.End(node->NodeName());
            next = node->NextSibling();
            if (next == nullptr) node = node->ParentNode();
        }
        node = next;
    }
}

// Adds the notations only.
class NotationRecorder : public sax::helpers::DefaultHandler {
public:
    explicit NotationRecorder(CanonicalForm& form) : form_(form) {}

    void notationDecl(const char* name, const char* publicId, const char* systemId) override {
        form_.Notation(name, publicId, systemId);
    }

private:
    CanonicalForm& form_;
};

// Parses with the reader as the input.
void Parse(XmlTextReader& reader, sax::helpers::DefaultHandler& handler) {
    sax::XMLReader parser;
    parser.setFeature(sax::features::kNormalization, true);
    parser.setContentHandler(&handler);
    parser.setDTDHandler(&handler);
    parser.parse(sax::InputSource(&reader));
}

// Calls an action with a reader at the beginning of the document, and returns what goes wrong.
template <class Action>
std::string ErrorIn(std::string_view document, Mode mode, int bytesPerRead, Action action) {
    support::DocumentStream stream(document, bytesPerRead);
    XmlTextReader reader;
    Prepare(reader, stream.get(), mode);
    try {
        action(reader);
    } catch (const Xml::Exception& error) {
        return TextOf(error);
    } catch (const sax::SAXException& error) {
        return error.getMessage().str();
    }
    return "";
}

// Adds the nodes of the document to the form, which is not told by the outcome.
Outcome AddNodes(std::string_view document, Mode mode, int bytesPerRead, CanonicalForm& form) {
    Outcome outcome;
    outcome.error = ErrorIn(document, mode, bytesPerRead, [&](XmlTextReader& reader) {
        while (reader.Read())
            AddNode(reader, form);
    });
    return outcome;
}

}  // namespace

Outcome ReadNodes(std::string_view document, Mode mode, int bytesPerRead) {
    CanonicalForm form;
    Outcome outcome = AddNodes(document, mode, bytesPerRead, form);
    outcome.form = form.Body();
    return outcome;
}

Outcome Read(std::string_view document, Mode mode) {
    CanonicalForm form;
    Outcome outcome = AddNodes(document, mode, 0, form);
    if (form.HasDocumentType()) {
        NotationRecorder recorder(form);
        ErrorIn(document, mode, 0, [&](XmlTextReader& reader) { Parse(reader, recorder); });
    }
    outcome.form = form.Whole();
    return outcome;
}

Outcome ReadEvents(std::string_view document, Mode mode) {
    CanonicalForm form;
    Recorder recorder(form);
    Outcome outcome;
    outcome.error =
        ErrorIn(document, mode, 0, [&](XmlTextReader& reader) { Parse(reader, recorder); });
    outcome.form = form.Body();
    return outcome;
}

Outcome LoadTree(std::string_view document, Mode mode) {
    Dom::Document tree;
    Outcome outcome;
    outcome.error =
        ErrorIn(document, mode, 0, [&](XmlTextReader& reader) { tree.Load(reader, ""); });
    CanonicalForm form;
    AddTree(tree, form);
    outcome.form = form.Body();
    return outcome;
}

}  // namespace conformance
