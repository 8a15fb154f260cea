// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSValueList.h>

#include "dom/InterfaceName.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/ListPieces.h"
#include "dom/css/ValueMaking.h"

#include <memory>
#include <string_view>

namespace Dom::CSS {

CSSValueList::CSSValueList(const astring& text, char separator)
    : CSSValue(CSS_VALUE_LIST), separator_(separator) {
    SetValueList(text.c_str(), 0);
}

CSSValueList::CSSValueList(CSSValue* const* values, unsigned count, char separator)
    : CSSValue(CSS_VALUE_LIST), separator_(separator) {
    try {
        for (unsigned i = 0; i < count; ++i)
            AddItem(values[i]);
    } catch (...) {
        RemoveItemsIf([](const CSSValue*) { return true; });  // all stay the caller's
        throw;
    }
}

CSSValueList::CSSValueList(const CSSValueList& other)
    : CSSValue(other),
      DOMList<CSSValue*>(),  // NOLINT(readability-redundant-member-init): g++ wants it in a copy
      separator_(other.separator_) {
    for (const CSSValue* const item : other) {
        std::unique_ptr<CSSValue> copy(item == nullptr ? nullptr : item->Clone());
        AddItem(copy.get());
        static_cast<void>(copy.release());  // the list's now
    }
}

CSSValueList& CSSValueList::operator=(const CSSValueList& other) {
    CSSValueList copy(other);
    SwapItems(copy);
    separator_ = other.separator_;
    return *this;
}

// Lists in lists are taken apart one item at a time, so that their depth costs no stack. On the way
// down, the place of a list in the one that holds it keeps the way back up.
CSSValueList::~CSSValueList() {
    CSSValueList* list = this;
    CSSValueList* holder = nullptr;
    for (;;) {
        if (list->Length() == 0) {
            if (holder == nullptr) return;
            // Never this object, which has no holder.
            delete list;  // NOLINT(clang-analyzer-cplusplus.NewDelete)
            list = holder;
            holder = static_cast<CSSValueList*>(list->TakeLast());
            continue;
        }
        CSSValue* const last = list->TakeLast();
        auto* const inner = last != nullptr && last->CssValueType() == CSS_VALUE_LIST
                                ? dynamic_cast<CSSValueList*>(last)
                                : nullptr;
        if (inner == nullptr) {
            delete last;
        } else {
            list->AddItem(holder);  // there is room where the inner list was
            holder = list;
            list = inner;
        }
    }
}

CSSValue* CSSValueList::TakeLast() {
    CSSValue* const last = Item(Length() - 1);
    RemoveItemAt(Length() - 1);
    return last;
}

void* CSSValueList::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSValueList")) return this;
    return CSSValue::QueryInterface(className);
}

astring CSSValueList::CssText() const {
    astring text;
    for (unsigned i = 0; i < Length(); ++i) {
        if (i > 0) text += separator_;
        if (const CSSValue* const item = Item(i)) text += item->CssText();
    }
    return text;
}

void CSSValueList::SetCssText(const char* text) { SetValueList(text, 0); }

CSSValueList* CSSValueList::Clone() const { return new CSSValueList(*this); }

void CSSValueList::SetValueList(const char* text, char useOwnSeparator) {
    const std::string_view trimmed = detail::Trimmed(text);
    const char found = useOwnSeparator != 0 ? '\0' : detail::FindSeparator(trimmed);
    const char separator = found != '\0' ? found : separator_;
    CSSValueList list(nullptr, 0, separator);
    detail::AddPieces(list, trimmed, separator);
    SwapItems(list);
    separator_ = separator;
}

}  // namespace Dom::CSS
