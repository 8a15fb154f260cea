// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>

#include "support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <exception>
#include <string_view>
#include <type_traits>
#include <vector>

namespace {

using std::string_view;
using Xml::Exception;

static_assert(std::is_base_of_v<std::exception, Exception>);
static_assert(std::is_nothrow_copy_constructible_v<Exception>);
static_assert(std::is_nothrow_copy_assignable_v<Exception>);
static_assert(std::is_nothrow_destructible_v<Exception>);
static_assert(std::has_virtual_destructor_v<Exception>);

void ExpectException(const Exception& error, string_view message, string_view argument, int line,
                     int position) {
    EXPECT_EQ(error.What(), message);
    EXPECT_EQ(error.what(), message);
    EXPECT_EQ(error.Argument(), argument);
    EXPECT_EQ(error.LineNumber(), line);
    EXPECT_EQ(error.LinePos(), position);
}

TEST(Exception, WithAMessageAloneTheRestIsUnknown) {
    ExpectException(Exception("text"), "text", "", -1, -1);
}

TEST(Exception, KeepsAllThatItIsMadeOf) {
    ExpectException(Exception("text", astring("name"), 3, 14), "text", "name", 3, 14);
    ExpectException(Exception(astring("text"), astring("name"), 3, 14), "text", "name", 3, 14);
    ExpectException(Exception("", astring(), 0, 0), "", "", 0, 0);
}

TEST(Exception, WhatIsTheMessageAlone) {
    const Exception error("End tag", astring("a"), 1, 2);
    EXPECT_EQ(string_view(error.What()), "End tag");
}

TEST(Exception, CopiesHoldAllFields) {
    const Exception original("text", astring("name"), 3, 14);
    const Exception copy(original);
    ExpectException(copy, "text", "name", 3, 14);
    Exception assigned("other");
    assigned = original;
    ExpectException(assigned, "text", "name", 3, 14);
    const Exception& same = assigned;
    assigned = same;
    ExpectException(assigned, "text", "name", 3, 14);

    std::vector<Exception> kept;
    {
        const Exception local("short-lived", astring("argument"), 7, 8);
        kept.push_back(local);
    }
    ExpectException(kept.front(), "short-lived", "argument", 7, 8);
}

TEST(Exception, ThrowExceptionThrowsByValue) {
    EXPECT_THROW_FULL(Exception::ThrowException("text"), "text", "", -1, -1);
    EXPECT_THROW_FULL(Exception::ThrowException("text", astring("name"), 3, 14), "text", "name", 3,
                      14);
    EXPECT_THROW_FULL(Exception::ThrowException(astring("text"), astring("name"), 3, 14), "text",
                      "name", 3, 14);
}

TEST(Exception, AHandlerOfStandardExceptionsSeesIt) {
    try {
        Exception::ThrowException("text", "name", 3, 14);
    } catch (const std::exception& error) {
        EXPECT_EQ(string_view(error.what()), "text");
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(Exception, ADerivedClassMayChangeItsMessage) {
    class Derived : public Exception {
    public:
        using Exception::Exception;
        const char* What() const noexcept override { return "derived"; }
    };
    const Derived error("text");
    const std::exception& standard = error;
    EXPECT_EQ(string_view(standard.what()), "derived");
}

}  // namespace
