// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace support {

/// What an Xml::Exception tells, in a form that can be compared and printed.
struct Thrown {
    std::string text;
    std::string argument;
    int line = -1;
    int column = -1;
};

/// Calls `call`, fails when it throws anything but what is expected, and shows both when so.
/// `expectedArgument` is null when any argument will do.
template <typename Call>
::testing::AssertionResult ThrowsXmlException(const Call& call, const char* source,
                                              const char* expectedText,
                                              const char* expectedArgument, int expectedLine,
                                              int expectedColumn) {
    Thrown thrown;
    try {
        call();
        return ::testing::AssertionFailure()
               << source << " throws nothing; expected \"" << expectedText << '"';
    } catch (const Xml::Exception& error) {
        thrown = {error.What(), error.Argument(), error.LineNumber(), error.LinePos()};
    } catch (const std::exception& error) {
        return ::testing::AssertionFailure()
               << source << " throws another type of exception: " << error.what();
    } catch (...) {
        return ::testing::AssertionFailure() << source << " throws something of unknown type";
    }

    const bool sameArgument = expectedArgument == nullptr || thrown.argument == expectedArgument;
    if (thrown.text == expectedText && sameArgument && thrown.line == expectedLine &&
        thrown.column == expectedColumn) {
        return ::testing::AssertionSuccess();
    }
    ::testing::AssertionResult result = ::testing::AssertionFailure();
    result << source << "\n  throws   \"" << thrown.text << "\" (" << thrown.argument << ") at "
           << thrown.line << ':' << thrown.column << "\n  expected \"" << expectedText << "\" ("
           << (expectedArgument != nullptr ? expectedArgument : "any argument") << ") at "
           << expectedLine << ':' << expectedColumn;
    return result;
}

}  // namespace support

/// Expects that `call` throws an Xml::Exception with exactly this text and place.
#define EXPECT_THROW_TEXT(call, text, line, column) \
    EXPECT_TRUE(::support::ThrowsXmlException([&] { call; }, #call, text, nullptr, line, column))

/// As EXPECT_THROW_TEXT, and with exactly this argument.
#define EXPECT_THROW_FULL(call, text, argument, line, column) \
    EXPECT_TRUE(::support::ThrowsXmlException([&] { call; }, #call, text, argument, line, column))
