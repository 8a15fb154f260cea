// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/DOMList.h>
#include <espalier/dom/css/CSSValue.h>

namespace Dom::CSS {

/// Several values with one separator between them, a comma or a space. It owns its items.
class ESPALIER_EXPORT CSSValueList : public CSSValue, public DOMList<CSSValue*> {
public:
    /// Reads the items from a text, as SetCssText() does.
    /// \param separator for CssText(), as long as the text has none
    CSSValueList(const astring& text, char separator);
    /// Takes over `count` values.
    CSSValueList(CSSValue* const* values, unsigned count, char separator);
    /// Copies the items, too.
    CSSValueList(const CSSValueList& other);
    CSSValueList& operator=(const CSSValueList& other);
    ~CSSValueList() override;

    void* QueryInterface(const char* className) override;
    /// Returns the texts of the items with the separator alone between them.
    astring CssText() const override;
    /// Replaces the items by those of a text. Its first comma or white space outside quotes and
    /// parentheses is the separator: a comma, also with white space around it, or a space.
    void SetCssText(const char* text) override;
    using CSSValue::SetCssText;
    CSSValueList* Clone() const override;

    /// Returns the separator.
    char Separator() const { return separator_; }

    /// Adds a value at the end and takes it over.
    void AddItem(CSSValue* value) { DOMList<CSSValue*>::AddItem(value); }
    /// Takes a value out, which belongs to the caller then; nothing happens when it is not here.
    void RemoveItem(CSSValue* value) { DOMList<CSSValue*>::RemoveItem(value); }

protected:
    /// Replaces the items by those of a text.
    /// \param useOwnSeparator when not 0, the text is split at the separator that the list has
    void SetValueList(const char* text, char useOwnSeparator);

private:
    CSSValue* TakeLast();

    char separator_;
};

}  // namespace Dom::CSS
