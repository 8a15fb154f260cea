// SPDX-License-Identifier: MIT
// Qt's QDomDocument, which drops texts of white space alone. Namespaces are left alone: with them
// it drops the declarations, too.
#include "dom/TreeLibrary.h"
#include "reader/Utf16Length.h"

#include <QDomDocument>
#include <stdexcept>

namespace bench {

namespace {

class QtTree final : public Tree {
public:
    explicit QtTree(std::string_view document) {
        QString error;
        const QByteArray bytes =
            QByteArray::fromRawData(document.data(), static_cast<qsizetype>(document.size()));
        if (!document_.setContent(bytes, false, &error)) {
            throw std::runtime_error(error.toStdString());
        }
    }

    void Walk(TreeTotals& totals) const override {
        QDomNode node = document_.firstChild();
        while (!node.isNull()) {
            Visit(node, totals);
            if (const QDomNode child = node.firstChild(); !child.isNull()) {
                node = child;
                continue;
            }
            while (!node.isNull() && node.nextSibling().isNull())
                node = node.parentNode();
            if (!node.isNull()) node = node.nextSibling();
        }
    }

private:
    static std::size_t LengthOf(const QString& text) {
        const std::u16string_view view(reinterpret_cast<const char16_t*>(text.utf16()),
                                       static_cast<std::size_t>(text.size()));
        return static_cast<std::size_t>(Utf8Length(view));
    }

    static void Visit(const QDomNode& node, TreeTotals& totals) {
        if (node.isElement()) {
            ++totals.elements;
            totals.AddName(LengthOf(node.nodeName()));
            const QDomNamedNodeMap attributes = node.attributes();
            for (int i = 0; i < attributes.length(); ++i) {
                const QDomNode attribute = attributes.item(i);
                ++totals.attributes;
                totals.AddName(LengthOf(attribute.nodeName()));
                totals.AddValue(LengthOf(attribute.nodeValue()));
            }
        } else if (node.isText() || node.isCDATASection()) {
            totals.AddText(LengthOf(node.nodeValue()));
        } else if (node.isComment()) {
            totals.AddOther(LengthOf(node.nodeValue()));
        }
    }

    QDomDocument document_;
};

}  // namespace

std::unique_ptr<Tree> LoadQtTree(std::string_view document) {
    return std::make_unique<QtTree>(document);
}

std::string QtTreeVersion() { return qVersion(); }

}  // namespace bench
