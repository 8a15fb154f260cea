// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>

#include <string>

namespace encoding_test {

/// Calls `call` and returns the exception that it throws, "message (argument) line:position", or
/// "nothing".
template <typename Call>
std::string Thrown(const Call& call) {
    try {
        call();
    } catch (const Xml::Exception& error) {
        return std::string(error.What()) + " (" + error.Argument() + ") " +
               std::to_string(error.LineNumber()) + ':' + std::to_string(error.LinePos());
    }
    return "nothing";
}

}  // namespace encoding_test
