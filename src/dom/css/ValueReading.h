// SPDX-License-Identifier: MIT
#pragma once

namespace Dom::CSS::detail {

/// How the text of a property becomes a property.
enum class ValueReading : unsigned char {
    Literal,  ///< as CSSStyleDeclaration::SetCssText() says; some texts print otherwise then
    Exact     ///< so that what is printed always means the same as what was read
};

}  // namespace Dom::CSS::detail
