// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>

namespace {

using Dom::DOMException;

TEST(DOMException, ItsMessageStartsWithItsName) {
    const DOMException error(DOMException::NOT_FOUND_ERR, "what is wrong");
    EXPECT_STREQ(error.What(), "DOMException: what is wrong");
    EXPECT_STREQ(error.what(), "DOMException: what is wrong");
    EXPECT_EQ(error.Code(), DOMException::NOT_FOUND_ERR);
    EXPECT_STREQ(DOMException(DOMException::SYNTAX_ERR, "").What(), "DOMException: ");
}

TEST(DOMException, HasNoPlaceAndNoArgument) {
    const DOMException error(DOMException::NOT_FOUND_ERR, "what is wrong");
    EXPECT_EQ(error.LineNumber(), -1);
    EXPECT_EQ(error.LinePos(), -1);
    EXPECT_STREQ(error.Argument(), "");
}

TEST(DOMException, IsThrownFromItsArguments) {
    try {
        DOMException::ThrowDOMException(DOMException::NAMESPACE_ERR, "bad");
    } catch (const DOMException& error) {
        EXPECT_STREQ(error.What(), "DOMException: bad");
        EXPECT_EQ(error.Code(), 14);
        return;
    }
    ADD_FAILURE() << "nothing was thrown";
}

TEST(DOMException, IsCaughtAsTheExceptionOfTheLibraryAndOfTheStandard) {
    EXPECT_THROW(DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, "x"), Xml::Exception);
    EXPECT_THROW(DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, "x"), std::exception);
    EXPECT_TRUE((std::is_base_of_v<Xml::Exception, DOMException>));
}

TEST(DOMException, CopiesKeepCodeAndMessageAndDoNotThrow) {
    const DOMException original(DOMException::WRONG_DOCUMENT_ERR, std::string(200, 'm'));
    const DOMException copy(original);
    DOMException assigned(DOMException::SYNTAX_ERR, "other");
    assigned = original;
    for (const DOMException* error : {&copy, static_cast<const DOMException*>(&assigned)}) {
        EXPECT_EQ(error->Code(), DOMException::WRONG_DOCUMENT_ERR);
        EXPECT_EQ(error->What(), "DOMException: " + std::string(200, 'm'));
    }
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<DOMException>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<DOMException>);
}

TEST(DOMException, CodesAreThoseOfTheStandard) {
    const struct {
        DOMException::EXCEPTION_CODE code;
        int number;
    } kCodes[] = {
        {DOMException::INDEX_SIZE_ERR, 1},
        {DOMException::DOMSTRING_SIZE_ERR, 2},
        {DOMException::HIERARCHY_REQUEST_ERR, 3},
        {DOMException::WRONG_DOCUMENT_ERR, 4},
        {DOMException::INVALID_CHARACTER_ERR, 5},
        {DOMException::NO_DATA_ALLOWED_ERR, 6},
        {DOMException::NO_MODIFICATION_ALLOWED_ERR, 7},
        {DOMException::NOT_FOUND_ERR, 8},
        {DOMException::NOT_SUPPORTED_ERR, 9},
        {DOMException::INUSE_ATTRIBUTE_ERR, 10},
        {DOMException::INVALID_STATE_ERR, 11},
        {DOMException::SYNTAX_ERR, 12},
        {DOMException::INVALID_MODIFICATION_ERR, 13},
        {DOMException::NAMESPACE_ERR, 14},
        {DOMException::INVALID_ACCESS_ERR, 15},
    };
    for (const auto& c : kCodes)
        EXPECT_EQ(static_cast<int>(c.code), c.number);
}

}  // namespace
