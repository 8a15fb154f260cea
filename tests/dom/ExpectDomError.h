// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/DOMException.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <string_view>

namespace support {

/// What a call threw: "CODE MESSAGE" of a Dom::DOMException without its "DOMException: ", "" when
/// nothing was thrown, and what() behind "other: " for other exceptions.
template <typename Call>
std::string DomErrorOf(const Call& call) {
    static constexpr std::string_view kStart = "DOMException: ";
    try {
        call();
    } catch (const Dom::DOMException& error) {
        const std::string_view what = error.What();
        if (!what.starts_with(kStart)) return "without its start: " + std::string(what);
        return std::to_string(error.Code()) + " " + std::string(what.substr(kStart.size()));
    } catch (const std::exception& error) {
        return std::string("other: ") + error.what();
    }
    return "";
}

}  // namespace support

/// Expects a Dom::DOMException with exactly this, for example "8 Node expected".
#define EXPECT_DOM_ERROR(call, codeAndMessage) \
    EXPECT_EQ(::support::DomErrorOf([&] { call; }), codeAndMessage) << #call
