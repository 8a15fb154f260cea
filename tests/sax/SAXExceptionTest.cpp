// SPDX-License-Identifier: MIT
#include <espalier/sax/SAXException.h>
#include <espalier/sax/SAXNotRecognizedException.h>
#include <espalier/sax/SAXNotSupportedException.h>
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/helpers/LocatorImpl.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <exception>
#include <type_traits>

namespace {

using sax::SAXException;
using sax::SAXNotRecognizedException;
using sax::SAXNotSupportedException;
using sax::SAXParseException;

template <typename T>
class SAXExceptions : public testing::Test {};
using All = testing::Types<SAXException, SAXParseException, SAXNotRecognizedException,
                           SAXNotSupportedException>;
TYPED_TEST_SUITE(SAXExceptions, All);

TYPED_TEST(SAXExceptions, KeepTheMessage) {
    EXPECT_EQ(TypeParam().getMessage(), "");
    EXPECT_EQ(TypeParam("what happened").getMessage(), "what happened");
    const astring text("what happened");
    const TypeParam original(text);
    EXPECT_EQ(original.getMessage(), "what happened");
    const TypeParam copy(original);
    EXPECT_EQ(copy.getMessage(), "what happened");
    TypeParam assigned("another");
    assigned = original;
    EXPECT_EQ(assigned.getMessage(), "what happened");
}

TYPED_TEST(SAXExceptions, TakeANullPointerForAnEmptyText) {
    EXPECT_EQ(TypeParam(static_cast<const char*>(nullptr)).getMessage(), "");
}

TYPED_TEST(SAXExceptions, AreCaughtAsTheirRootAndKeepTheirType) {
    try {
        throw TypeParam("thrown");
    } catch (const SAXException& error) {
        EXPECT_EQ(error.getMessage(), "thrown");
        EXPECT_NE(dynamic_cast<const TypeParam*>(&error), nullptr);
    }
}

// Deliberate: the family has a root of its own.
TYPED_TEST(SAXExceptions, AreNoStandardExceptions) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, TypeParam>));
    EXPECT_TRUE((std::is_base_of_v<SAXException, TypeParam>));
    EXPECT_TRUE(std::has_virtual_destructor_v<TypeParam>);
}

TEST(SAXExceptionFamily, ItsMembersAreSiblings) {
    EXPECT_FALSE((std::is_base_of_v<SAXParseException, SAXNotSupportedException>));
    EXPECT_FALSE((std::is_base_of_v<SAXNotRecognizedException, SAXNotSupportedException>));
    EXPECT_FALSE((std::is_base_of_v<SAXNotSupportedException, SAXNotRecognizedException>));
}

void ExpectParseException(const SAXParseException& error, const char* message, const char* publicId,
                          const char* systemId, int line, int column) {
    EXPECT_EQ(error.getMessage(), message);
    EXPECT_EQ(error.getPublicId(), publicId);
    EXPECT_EQ(error.getSystemId(), systemId);
    EXPECT_EQ(error.getLineNumber(), line);
    EXPECT_EQ(error.getColumnNumber(), column);
}

TEST(SAXParseException, TakesAPlace) {
    const SAXParseException error("message", "public", "system", 3, 4);
    ExpectParseException(error, "message", "public", "system", 3, 4);
    const SAXParseException copy(error);
    ExpectParseException(copy, "message", "public", "system", 3, 4);
    SAXParseException assigned;
    assigned = error;
    ExpectParseException(assigned, "message", "public", "system", 3, 4);
}

TEST(SAXParseException, TakesOverWhatALocatorTellsAtThatMoment) {
    sax::helpers::LocatorImpl locator;
    locator.setPublicId("public");
    locator.setSystemId("system");
    locator.setLineNumber(3);
    locator.setColumnNumber(4);
    const SAXParseException error("message", &locator);
    locator.setPublicId("other");
    locator.setSystemId("other");
    locator.setLineNumber(30);
    locator.setColumnNumber(40);
    ExpectParseException(error, "message", "public", "system", 3, 4);
}

TEST(SAXParseException, WithoutAPlaceItsFieldsAreEmpty) {
    ExpectParseException(SAXParseException(), "", "", "", 0, 0);
    ExpectParseException(SAXParseException("message"), "message", "", "", 0, 0);
    ExpectParseException(SAXParseException("message", nullptr), "message", "", "", 0, 0);
}

// A locator of one's own may know no identifiers.
TEST(SAXParseException, TakesALocatorWithoutIdentifiers) {
    class NoIdentifiers : public sax::Locator {
    public:
        const char* getPublicId() const override { return nullptr; }
        const char* getSystemId() const override { return nullptr; }
        int getLineNumber() const override { return 5; }
        int getColumnNumber() const override { return 6; }
    };
    const NoIdentifiers locator;
    ExpectParseException(SAXParseException("message", &locator), "message", "", "", 5, 6);
}

}  // namespace
