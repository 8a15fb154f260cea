// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

namespace Dom::CSS {

/// The kind of a node of CSS text, as CssReader tells it.
class ESPALIER_EXPORT CssNodeType {
public:
    /// The kinds.
    enum NODE_TYPE : int {
        Node = 0,       ///< nothing read yet
        Rule = 1,       ///< not used
        Selector = 2,   ///< text up to "{"
        StartDecl = 3,  ///< "{"
        EndDecl = 4,    ///< "}"
        Comment = 5,    ///< a comment, with its delimiters
        Property = 6,   ///< a name and a value
        Whitespace = 7  ///< white space
    };

    /// Makes a Node.
    constexpr CssNodeType() = default;
    constexpr CssNodeType(NODE_TYPE type) : type_(type) {}
    constexpr CssNodeType& operator=(NODE_TYPE type) {
        type_ = type;
        return *this;
    }

    constexpr operator NODE_TYPE() const { return type_; }
    friend constexpr bool operator==(CssNodeType a, CssNodeType b) { return a.type_ == b.type_; }
    friend constexpr bool operator==(CssNodeType a, NODE_TYPE b) { return a.type_ == b; }

    /// Returns the name of the kind, "???" for a number that is none.
    astring ToString() const;

private:
    NODE_TYPE type_ = Node;
};

}  // namespace Dom::CSS
