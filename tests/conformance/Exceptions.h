// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

namespace conformance {

/// A test of the suite that the standard mode does not pass, on purpose.
struct Exception {
    enum class What { Verdict, Form };

    What what = What::Verdict;
    const char* id = "";
    const char* reason = "";
};

/// Returns all of them.
std::span<const Exception> Exceptions();

/// Tells whether a test is one.
bool IsException(std::string_view id, Exception::What what);

}  // namespace conformance
