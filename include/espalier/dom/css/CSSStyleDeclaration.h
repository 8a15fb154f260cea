// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/DOMList.h>
#include <espalier/dom/css/CSSPropertyImpl.h>
#include <espalier/dom/css/CSSRule.h>

#include <atomic>
#include <string_view>
#include <utility>  // std::as_const

namespace Dom::CSS {

namespace detail {
enum class ValueReading : unsigned char;
class WaitingText;
struct Weight;
}  // namespace detail

/// A list of properties: what stands in the braces of a style rule, or in a style attribute.
///
/// The shorthands margin, padding, border-width, border-color, border-style, border-top,
/// border-right, border-bottom, border-left, border and background are replaced by the properties
/// that they stand for, unless their value begins with "i". Names are compared as they are written.
/// ParseStyleSheet() and ParseDeclarations() do it otherwise, and better.
/// A property that is declared twice is here twice.
///
/// Properties are made of a text when they are first asked for; what is wrong with the text is told
/// when it is set. Several threads may ask at once, as long as none changes the declaration.
///
/// \note Pointers to values become invalid when their property is removed or replaced.
class ESPALIER_EXPORT CSSStyleDeclaration {
public:
    /// The properties, which the list owns.
    using CSSPropertyList = DOMList<CSSPropertyImpl*>;

    /// Makes an empty declaration.
    /// \param parentRule the rule that it belongs to; may be null
    explicit CSSStyleDeclaration(CSSRule* parentRule);
    /// Copies the properties and their values; the parent rule is the same. It must be there when
    /// the copy is changed, or merged into another one.
    CSSStyleDeclaration(const CSSStyleDeclaration& other);
    /// Copies the properties and their values; the parent rule stays.
    CSSStyleDeclaration& operator=(const CSSStyleDeclaration& other);

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as "Dom::CSS::CSSStyleDeclaration", or null for other names.
    virtual void* QueryInterface(const char* className);

    virtual ~CSSStyleDeclaration();

    /// Returns the texts of the properties with "; " between them. Properties that were made from
    /// a shorthand stand for themselves.
    astring CssText() const;
    /// Replaces all properties by those of a text. When it throws, the properties before the fault
    /// stay.
    ///
    /// A value ends at the first ";" or "!", also in quotes.
    ///
    /// \throws DOMException SYNTAX_ERR "Invalid property name"; "Expected ':'"; "Invalid importance
    ///     identifier"; "Unexpected token after property"; "Property value missing", for a
    ///     shorthand
    void SetCssText(const char* text);
    void SetCssText(const astring& text);

    /// \name By name
    /// All but SetProperty() look at the first property with the name.
    /// @{
    /// Returns the text of the value; empty when there is none.
    astring GetPropertyValue(std::string_view name) const;
    /// Returns the value, which stays the property's; null when there is none.
    CSSValue* GetPropertyCSSValue(std::string_view name) const;
    /// Returns "important" or the empty string.
    astring GetPropertyPriority(std::string_view name) const;
    /// Deletes the property, and returns what its value was.
    astring RemoveProperty(std::string_view name);
    /// Deletes the first property with exactly the name, and adds one, or what a shorthand stands
    /// for, at the end. Properties that the shorthand made before stay.
    /// \param priority "important" in any case, or anything else
    /// \throws DOMException SYNTAX_ERR "Property value missing"; the old property is gone then, too
    void SetProperty(std::string_view name, std::string_view value, std::string_view priority);
    /// @}

    /// Returns the number of properties.
    unsigned Length() const { return Properties().Length(); }
    /// Returns the name of property `index`, from 0 on; empty when there are not as many.
    astring Item(unsigned long index) const;
    /// Returns the properties, to look at.
    const CSSPropertyList& Properties() const {
        if (waiting_.load(std::memory_order_acquire) != nullptr) MakeProperties();
        return properties_;
    }
    /// Returns the rule that the declaration belongs to, or null.
    CSSRule* ParentRule() const { return parentRule_; }

    /// Adds copies of the properties of another declaration, each in place of the one with the same
    /// name that it wins over, or not at all.
    ///
    /// An important one wins over one that is not. Among important ones the greater origin wins,
    /// among others the smaller. With the same origin, one that is written out wins over one made
    /// from a shorthand, and a specificity that is not less wins.
    ///
    /// \param origin where `source` comes from; its parent rule's, if it has one
    /// \param specificity that of `source`; its parent rule's, if it has one that is a style rule
    void Cascade(const CSSStyleDeclaration& source, CSSRule::RULE_ORIGIN origin, int specificity);

protected:
    /// Changes the rule that the declaration belongs to; properties that are there keep the weight
    /// of the old one.
    void SetParent(CSSRule* parentRule) { parentRule_ = parentRule; }

private:
    friend class CSSStyleRule;
    friend class detail::RuleMaking;

    static constexpr unsigned kNone = static_cast<unsigned>(-1);

    // Returns the properties, to change.
    CSSPropertyList& List() {
        std::as_const(*this).Properties();
        return properties_;
    }
    // Does what SetCssText() does; the text need not end with a NUL.
    void SetText(std::string_view text, const detail::Weight& weight, detail::ValueReading reading);
    // Makes the properties of the text that waits, unless another thread has done it.
    void MakeProperties() const;
    void DropWaiting() noexcept;
    // Returns the index of the first property with a name, or kNone.
    unsigned Find(std::string_view name) const;
    // Deletes the property at an index that may be kNone.
    void DeleteProperty(unsigned index);

    mutable CSSPropertyList properties_;  // empty while a text waits
    // Owned; null when there is nothing to make properties of.
    mutable std::atomic<const detail::WaitingText*> waiting_ = nullptr;
    CSSRule* parentRule_;
};

}  // namespace Dom::CSS
