// SPDX-License-Identifier: MIT
#include "dom/css/PropertyBuilder.h"

#include <espalier/dom/DOMException.h>

#include "dom/css/CssCharacters.h"
#include "dom/css/DeclarationScanner.h"
#include "dom/css/PropertyMaking.h"

#include <memory>

namespace Dom::CSS::detail {

void PropertyBuilder::AddText(std::string_view text) {
    DeclarationScanner scanner(text);
    while (scanner.Next())
        AddProperty(scanner.Name(), scanner.IsImportant(), scanner.Value());
    if (scanner.Error() != nullptr) {
        DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, scanner.Error());
    }
}

void PropertyBuilder::AddProperty(std::string_view name, bool important, std::string_view value) {
    important_ = important;
    if (reading_ == ValueReading::Exact) {
        const std::string_view exact = TrimmedValue(value);
        if (!AddExactShorthand(name, exact)) Add(name, exact, Made::AsWritten);
        return;
    }
    const std::string_view trimmed = Trimmed(value);
    // Deliberate: a value that begins with "i" is taken for "inherit", whatever the word is.
    const bool mayExpand = !trimmed.starts_with('i');
    if (mayExpand && AddShorthand(name, trimmed)) return;
    Add(name, trimmed, Made::AsWritten);
}

void PropertyBuilder::Add(std::string_view name, std::string_view value, Made made) {
    auto property = MakeProperty(
        name, value, {important_, weight_.origin, weight_.specificity, made == Made::FromShorthand},
        reading_);
    properties_.AddItem(property.get());
    static_cast<void>(property.release());  // the list's now
}

}  // namespace Dom::CSS::detail
