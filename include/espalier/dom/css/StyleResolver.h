// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/CollectStyleSheets.h>
#include <espalier/dom/css/ComputedStyle.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/MediaContext.h>
#include <espalier/dom/css/StyleExplanation.h>

#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS {

/// Tells which style the elements of a document have, and why (CSS 2.1 chapter 6).
///
/// \code
///     Dom::CSS::StyleResolver resolver;
///     resolver.AddSheet(Dom::CSS::HtmlStyleSheet());
///     resolver.AddSheetsOf(page, host);
///     resolver.StyleOf(element).Value("color");  // "rgb(47, 79, 47)"
/// \endcode
///
/// What a document says is asked for when it is needed, and remembered until the document changes.
/// Sheets and rules say nothing when they change: tell it by RuleHasChanged() or
/// SheetsHaveChanged().
///
/// \note One thread at a time may use a resolver.
class ESPALIER_EXPORT StyleResolver {
public:
    /// \param context what "@media" and the media of sheets are compared with
    explicit StyleResolver(const MediaContext& context = {});
    StyleResolver(const StyleResolver&) = delete;
    StyleResolver& operator=(const StyleResolver&) = delete;
    ~StyleResolver();

    /// \name Sheets
    /// @{

    /// Adds a sheet behind those that are here. It stays the caller's, and must be there as long as
    /// the resolver. Its Origin() counts; sheets that it imports do not.
    void AddSheet(const CSSStyleSheet& sheet);
    /// Adds sheets that CollectStyleSheets() has returned, behind those that are here.
    void AddSheets(std::vector<CollectedSheet> sheets);
    /// Adds the sheets of a document, as CollectStyleSheets() finds them.
    void AddSheetsOf(const Document& document, const StyleSheetHost& host = {});
    /// Returns all sheets, in their order.
    std::vector<const CSSStyleSheet*> Sheets() const;
    /// @}

    /// \name Styles
    /// The element must be in a document, or in a tree that has one, that is not being changed.
    /// @{

    /// Returns the style of an element.
    /// \param pseudo empty for the element itself; else a pseudo-element of it, such as "before"
    ComputedStyle StyleOf(const Element& element, std::string_view pseudo = {});
    /// Tells where the value of a property comes from, and what it overrides.
    StyleExplanation Explain(const Element& element, std::string_view property,
                             std::string_view pseudo = {});
    /// @}

    /// \name Changes
    /// @{

    /// Has the declarations of one rule read again. Styles that it has no part in stay.
    void RuleHasChanged(const CSSStyleRule& rule);
    /// Has all sheets looked through again: rules or media have been added, removed or changed, or
    /// their selectors have.
    void SheetsHaveChanged();
    /// Has what HTMLDocument::GetOverrideStyle() returns read again.
    void OverridesHaveChanged();
    /// Changes the medium.
    void SetContext(const MediaContext& context);
    /// @}

private:
    class Contents;

    std::unique_ptr<Contents> contents_;
};

}  // namespace Dom::CSS
