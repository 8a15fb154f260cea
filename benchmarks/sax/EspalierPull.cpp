// SPDX-License-Identifier: MIT
// Our pull parser doing what a handler of events does: what the layer of events costs is what it is
// slower than this. An empty element has its end told, too.
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "sax/EventLibrary.h"

namespace bench {

namespace {

template <typename Sink>
class EspalierPullVisitor final : public EventVisitor<Sink> {
public:
    void Visit(std::string_view document, Sink& sink) override {
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        reader_.SetStream(&stream, false);
        while (reader_.Read()) {
            VisitNode(sink);
        }
        reader_.Close();
    }

private:
    void VisitNode(Sink& sink) {
        switch (reader_.NodeType()) {
        case Xml::XmlNodeType::Element: VisitElement(sink); break;
        case Xml::XmlNodeType::EndElement: sink.End(Name()); break;
        case Xml::XmlNodeType::Text:
        case Xml::XmlNodeType::CDATA:
        case Xml::XmlNodeType::SignificantWhitespace:
            sink.Text(reader_.Value().c_str(), reader_.Value().size());
            break;
        case Xml::XmlNodeType::Whitespace:
            sink.Whitespace(reader_.Value().c_str(), reader_.Value().size());
            break;
        case Xml::XmlNodeType::ProcessingInstruction:
            sink.Instruction(reader_.Name().c_str(), reader_.Value().c_str());
            break;
        default: break;
        }
    }

    void VisitElement(Sink& sink) {
        const bool isEmpty = reader_.IsEmptyElement();
        if (reader_.MoveToFirstAttribute()) {
            do {
                sink.Attribute(Name(), reader_.Value().c_str());
            } while (reader_.MoveToNextAttribute());
            reader_.MoveToElement();
        }
        const EventName name = Name();
        sink.Start(name);
        if (isEmpty) sink.End(name);
    }

    EventName Name() const { return {reader_.NamespaceURI().c_str(), reader_.LocalName().c_str()}; }

    Xml::XmlTextReader reader_;
};

}  // namespace

template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeEspalierPull() {
    return std::make_unique<EspalierPullVisitor<Sink>>();
}

template std::unique_ptr<EventVisitor<Touch>> MakeEspalierPull();
template std::unique_ptr<EventVisitor<Digest>> MakeEspalierPull();

}  // namespace bench
