// SPDX-License-Identifier: MIT
#include "Exceptions.h"

#include <algorithm>
#include <iterator>

namespace conformance {
namespace {

using enum Exception::What;

constexpr Exception kExceptions[] = {
    {Form, "ibm-valid-P29-ibm29v01.xml",
     "An instruction in the internal subset is told within the value of the document type, not as "
     "a node of its own."},
};

}  // namespace

std::span<const Exception> Exceptions() { return kExceptions; }

bool IsException(std::string_view id, Exception::What what) {
    return std::any_of(
        std::begin(kExceptions), std::end(kExceptions),
        [&](const Exception& exception) { return exception.what == what && exception.id == id; });
}

}  // namespace conformance
