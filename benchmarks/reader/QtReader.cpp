// SPDX-License-Identifier: MIT
// Qt's QXmlStreamReader, which gives names and values as views of UTF-16. It is made once and
// cleared for each further document.
#include "reader/Library.h"
#include "reader/Utf16Length.h"

#include <QXmlStreamReader>
#include <limits>
#include <stdexcept>

namespace bench {

namespace {

template <typename Count>
class QtReaderVisitor final : public Visitor {
public:
    explicit QtReaderVisitor(CorpusGroup group) {
        // References are always replaced; more than a few of one entity are refused otherwise.
        if (group == CorpusGroup::Entities) {
            reader_.setEntityExpansionLimit(std::numeric_limits<int>::max());
        }
    }

    void Visit(std::string_view document, Totals& totals) override {
        reader_.clear();
        reader_.addData(
            QByteArray::fromRawData(document.data(), static_cast<qsizetype>(document.size())));
        while (!reader_.atEnd()) {
            VisitToken(reader_.readNext(), totals);
        }
        if (reader_.hasError()) throw std::runtime_error(reader_.errorString().toStdString());
        totals.attributeUriBytes = Totals::kNotDelivered;
    }

private:
    static std::int64_t LengthOf(QStringView text) {
        return Count::Of({text.utf16(), static_cast<std::size_t>(text.size())});
    }

    void VisitToken(QXmlStreamReader::TokenType token, Totals& totals) {
        switch (token) {
        case QXmlStreamReader::StartElement: VisitElement(totals); break;
        case QXmlStreamReader::EndElement: totals.endTagBytes += LengthOf(reader_.name()); break;
        case QXmlStreamReader::Characters: totals.textBytes += LengthOf(reader_.text()); break;
        case QXmlStreamReader::Comment: totals.commentBytes += LengthOf(reader_.text()); break;
        case QXmlStreamReader::ProcessingInstruction:
            totals.commentBytes += LengthOf(reader_.processingInstructionTarget()) +
                                   LengthOf(reader_.processingInstructionData());
            break;
        default: break;
        }
    }

    void VisitElement(Totals& totals) {
        ++totals.elements;
        AddNames(reader_.qualifiedName(), reader_.name(), reader_.prefix(), totals);
        totals.elementUriBytes += LengthOf(reader_.namespaceUri());
        for (const QXmlStreamNamespaceDeclaration& declaration : reader_.namespaceDeclarations()) {
            VisitDeclaration(declaration, totals);
        }
        for (const QXmlStreamAttribute& attribute : reader_.attributes()) {
            ++totals.attributes;
            AddNames(attribute.qualifiedName(), attribute.name(), attribute.prefix(), totals);
            totals.valueBytes += LengthOf(attribute.value());
        }
    }

    // A declaration has the prefix that it declares, and not its own name.
    static void VisitDeclaration(const QXmlStreamNamespaceDeclaration& declaration,
                                 Totals& totals) {
        constexpr std::int64_t kXmlns = 5;
        const std::int64_t prefix = LengthOf(declaration.prefix());
        ++totals.attributes;
        totals.nameBytes += prefix == 0 ? kXmlns : kXmlns + 1 + prefix;
        totals.localBytes += prefix == 0 ? kXmlns : prefix;
        totals.prefixBytes += prefix == 0 ? 0 : kXmlns;
        totals.valueBytes += LengthOf(declaration.namespaceUri());
    }

    static void AddNames(QStringView name, QStringView local, QStringView prefix, Totals& totals) {
        totals.nameBytes += LengthOf(name);
        totals.localBytes += LengthOf(local);
        totals.prefixBytes += LengthOf(prefix);
    }

    QXmlStreamReader reader_;
};

}  // namespace

std::unique_ptr<Visitor> MakeQtReader(CorpusGroup group) {
    return std::make_unique<QtReaderVisitor<CountUnits>>(group);
}

std::unique_ptr<Visitor> MakeComparableQtReader(CorpusGroup group) {
    return std::make_unique<QtReaderVisitor<CountUtf8>>(group);
}

std::string QtVersion() { return qVersion(); }

}  // namespace bench
