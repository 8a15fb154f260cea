// SPDX-License-Identifier: MIT
// Xerces' SAX2 parser, which gives names and values as texts of UTF-16 that end in a zero. The
// parser is made once. Its scanner is the one for documents without a grammar, which is its
// fastest; for documents with entities it is the one that knows document types.
#include "common/XercesParser.h"
#include "reader/Library.h"
#include "reader/Utf16Length.h"

#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesVersion.hpp>

namespace bench {

namespace {

namespace xc = xercesc;

template <typename Count>
class XercesVisitor final : public Visitor, private xc::DefaultHandler {
public:
    explicit XercesVisitor(CorpusGroup group)
        : parser_(*this, group == CorpusGroup::Entities ? xc::XMLUni::fgDGXMLScanner
                                                        : xc::XMLUni::fgWFXMLScanner) {
        parser_.SetLexicalHandler(*this);
    }

    void Visit(std::string_view document, Totals& totals) override {
        totals_ = &totals;
        parser_.Parse(document);
        totals.prefixBytes = Totals::kNotDelivered;
        totals.attributeUriBytes = Totals::kNotDelivered;
    }

private:
    static std::int64_t LengthOf(const XMLCh* text) {
        return text == nullptr ? 0 : Count::Of({text, xc::XMLString::stringLen(text)});
    }

    void startElement(const XMLCh* const uri, const XMLCh* const localName, const XMLCh* const name,
                      const xc::Attributes& attributes) override {
        ++totals_->elements;
        totals_->nameBytes += LengthOf(name);
        totals_->localBytes += LengthOf(localName);
        totals_->elementUriBytes += LengthOf(uri);
        const XMLSize_t count = attributes.getLength();
        for (XMLSize_t i = 0; i < count; ++i) {
            ++totals_->attributes;
            totals_->nameBytes += LengthOf(attributes.getQName(i));
            totals_->localBytes += LengthOf(attributes.getLocalName(i));
            totals_->valueBytes += LengthOf(attributes.getValue(i));
        }
    }

    void endElement(const XMLCh* const /*uri*/, const XMLCh* const localName,
                    const XMLCh* const /*name*/) override {
        totals_->endTagBytes += LengthOf(localName);
    }

    void characters(const XMLCh* const text, const XMLSize_t length) override {
        totals_->textBytes += Count::Of({text, length});
    }

    void ignorableWhitespace(const XMLCh* const text, const XMLSize_t length) override {
        characters(text, length);
    }

    void comment(const XMLCh* const text, const XMLSize_t length) override {
        totals_->commentBytes += Count::Of({text, length});
    }

    void processingInstruction(const XMLCh* const target, const XMLCh* const data) override {
        totals_->commentBytes += LengthOf(target) + LengthOf(data);
    }

    void fatalError(const xc::SAXParseException& error) override { throw error; }

    XercesParser parser_;
    Totals* totals_ = nullptr;  // of the running Visit()
};

}  // namespace

std::unique_ptr<Visitor> MakeXercesSax2(CorpusGroup group) {
    return std::make_unique<XercesVisitor<CountUnits>>(group);
}

std::unique_ptr<Visitor> MakeComparableXercesSax2(CorpusGroup group) {
    return std::make_unique<XercesVisitor<CountUtf8>>(group);
}

std::string XercesVersion() { return XERCES_FULLVERSIONDOT; }

}  // namespace bench
