// SPDX-License-Identifier: MIT
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/helpers/AttributesImpl.h>
#include <espalier/sax/helpers/DefaultHandler.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using sax::SAXParseException;
using sax::helpers::DefaultHandler;

TEST(DefaultHandler, IsEveryHandler) {
    DefaultHandler handler;
    EXPECT_NE(static_cast<sax::EntityResolver*>(&handler), nullptr);
    EXPECT_NE(static_cast<sax::DTDHandler*>(&handler), nullptr);
    EXPECT_NE(static_cast<sax::ContentHandler*>(&handler), nullptr);
    EXPECT_NE(static_cast<sax::ErrorHandler*>(&handler), nullptr);
}

TEST(DefaultHandler, ResolvesNothing) {
    DefaultHandler handler;
    EXPECT_EQ(handler.resolveEntity("public", "system"), nullptr);
}

TEST(DefaultHandler, DoesNothingAboutContentAndDeclarations) {
    DefaultHandler handler;
    EXPECT_NO_THROW({
        handler.notationDecl("n", "p", "s");
        handler.unparsedEntityDecl("e", "p", "s", "n");
        handler.setDocumentLocator(nullptr);
        handler.startDocument();
        handler.startPrefixMapping("p", "urn:x");
        handler.startElement("urn:x", "a", "p:a", sax::helpers::AttributesImpl());
        handler.characters("text", 0, 4);
        handler.ignorableWhitespace(" ", 0, 1);
        handler.processingInstruction("target", "data");
        handler.skippedEntity("e");
        handler.endElement("urn:x", "a", "p:a");
        handler.endPrefixMapping("p");
        handler.endDocument();
    });
}

TEST(DefaultHandler, WarningsAndErrorsReturn) {
    DefaultHandler handler;
    const SAXParseException exception("message");
    EXPECT_NO_THROW(handler.warning(exception));
    EXPECT_NO_THROW(handler.error(exception));
}

TEST(DefaultHandler, AFatalErrorIsThrownAsACopyWithItsPlace) {
    DefaultHandler handler;
    auto original = std::make_unique<SAXParseException>("message", "public", "system", 3, 4);
    try {
        handler.fatalError(*original);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const SAXParseException& error) {
        EXPECT_NE(&error, original.get());
        original.reset();
        EXPECT_EQ(error.getMessage(), "message");
        EXPECT_EQ(error.getPublicId(), "public");
        EXPECT_EQ(error.getSystemId(), "system");
        EXPECT_EQ(error.getLineNumber(), 3);
        EXPECT_EQ(error.getColumnNumber(), 4);
    }
}

// Each handler is destroyed through any of its interfaces.
TEST(DefaultHandler, IsDestroyedThroughItsInterfaces) {
    class Counted : public DefaultHandler {
    public:
        explicit Counted(int& destroyed) : destroyed_(destroyed) {}
        ~Counted() override { ++destroyed_; }

    private:
        int& destroyed_;
    };
    int destroyed = 0;
    { const std::unique_ptr<sax::EntityResolver> one(new Counted(destroyed)); }
    { const std::unique_ptr<sax::DTDHandler> one(new Counted(destroyed)); }
    { const std::unique_ptr<sax::ContentHandler> one(new Counted(destroyed)); }
    { const std::unique_ptr<sax::ErrorHandler> one(new Counted(destroyed)); }
    EXPECT_EQ(destroyed, 4);
}

}  // namespace
