// SPDX-License-Identifier: MIT
// Qt's QXmlStreamReader doing what a handler of events does. It is made once and cleared for each
// further document.
#include "sax/EventLibrary.h"

#include <QXmlStreamReader>
#include <stdexcept>

namespace bench {

namespace {

std::u16string_view ViewOf(QStringView text) {
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

template <typename Sink>
class QtEventsVisitor final : public EventVisitor<Sink> {
public:
    void Visit(std::string_view document, Sink& sink) override {
        reader_.clear();
        reader_.addData(
            QByteArray::fromRawData(document.data(), static_cast<qsizetype>(document.size())));
        while (!reader_.atEnd()) {
            VisitToken(reader_.readNext(), sink);
        }
        if (reader_.hasError()) throw std::runtime_error(reader_.errorString().toStdString());
    }

private:
    void VisitToken(QXmlStreamReader::TokenType token, Sink& sink) {
        switch (token) {
        case QXmlStreamReader::StartElement: VisitElement(sink); break;
        case QXmlStreamReader::EndElement: sink.End(Name()); break;
        case QXmlStreamReader::Characters: sink.Text(ViewOf(reader_.text())); break;
        case QXmlStreamReader::ProcessingInstruction:
            sink.Instruction(ViewOf(reader_.processingInstructionTarget()),
                             ViewOf(reader_.processingInstructionData()));
            break;
        default: break;
        }
    }

    void VisitElement(Sink& sink) {
        for (const QXmlStreamNamespaceDeclaration& declaration : reader_.namespaceDeclarations()) {
            const QStringView prefix = declaration.prefix();
            sink.Attribute(WideEventName{{}, prefix.isEmpty() ? u"xmlns" : ViewOf(prefix)},
                           ViewOf(declaration.namespaceUri()));
        }
        for (const QXmlStreamAttribute& attribute : reader_.attributes()) {
            sink.Attribute(
                WideEventName{ViewOf(attribute.namespaceUri()), ViewOf(attribute.name())},
                ViewOf(attribute.value()));
        }
        sink.Start(Name());
    }

    WideEventName Name() const { return {ViewOf(reader_.namespaceUri()), ViewOf(reader_.name())}; }

    QXmlStreamReader reader_;
};

}  // namespace

template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeQtEvents() {
    return std::make_unique<QtEventsVisitor<Sink>>();
}

template std::unique_ptr<EventVisitor<Touch>> MakeQtEvents();
template std::unique_ptr<EventVisitor<Digest>> MakeQtEvents();

std::string QtEventsVersion() { return qVersion(); }

}  // namespace bench
