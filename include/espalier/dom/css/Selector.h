// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/NamespacePrefix.h>

#include <memory>
#include <string_view>

namespace Dom::CSS {

/// Selectors (Selectors Level 3), ready to be compared with elements.
///
/// \code
///     const Dom::CSS::Selector selector("ul.menu > li:first-child, a[href^='http:']");
///     if (selector.Matches(element)) ...
/// \endcode
///
/// Known are types and attributes with namespaces ("p|a", "*|a", "|a"), "*", ids, classes,
/// attributes with all operators, descendants, children, both kinds of siblings, groups, and the
/// pseudo-classes that a tree can answer: :root, :empty, :first-child, :last-child, :only-child,
/// :nth-child(), :nth-last-child() and their -of-type forms, :not(), :lang(), :contains(), :link,
/// :enabled, :disabled and :checked. Those that only a user makes hold (:hover, :active, :focus,
/// :visited, :indeterminate, :target) never match. Matching takes time in proportion to the length
/// of the selector and the ancestors and siblings that it names, and no stack.
///
/// \note A const Selector may be used from different threads at once, for different documents.
class ESPALIER_EXPORT Selector {
public:
    /// \param prefixes what the prefixes in the text stand for. One that is not here is an error;
    ///     types and "*" without one are of any namespace when there is none for the empty prefix
    /// \throws SelectorException a DOMException SYNTAX_ERR "Syntax error in selector"
    explicit Selector(std::string_view text, const NamespacePrefixes& prefixes = {});
    Selector(Selector&&) noexcept;
    Selector& operator=(Selector&&) noexcept;
    ~Selector();

    /// Tells whether one of the selectors selects an element.
    /// \param pseudo empty for the element itself; else a pseudo-element of it, such as "before"
    bool Matches(const Element& element, std::string_view pseudo = {}) const;

    /// Returns the text.
    const astring& Text() const { return text_; }

private:
    astring text_;
    std::unique_ptr<const detail::CompiledSelectors> compiled_;
};

}  // namespace Dom::CSS
