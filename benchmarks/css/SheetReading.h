// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSStyleSheet.h>

#include "css/MadeSheet.h"

#include <memory>
#include <string>

namespace bench {

/// Reads a sheet with our library: rule by rule with CssReader, into a CSSStyleSheet.
std::unique_ptr<Dom::CSS::CSSStyleSheet> LoadEspalierSheet(const std::string& text);

/// Reads a sheet with our library, and frees it again. Selectors and declarations are checked; the
/// properties are left for when somebody asks.
SheetTotals ReadEspalierSheet(const std::string& text);

/// As ReadEspalierSheet(); then asks for the properties of each rule, which makes them with their
/// values.
SheetTotals ReadEspalierSheetWhole(const std::string& text);
/// As ReadEspalierSheet(), with ParseStyleSheet().
SheetTotals ParseEspalierSheet(const std::string& text);

/// Reads a sheet with litehtml, which parses the selectors and keeps the declarations as text, and
/// frees it again. Rules are told apart by their declarations.
SheetTotals ReadLitehtmlSheet(const std::string& text);

/// As ReadLitehtmlSheet(); then parses the declarations of each rule, which litehtml leaves for
/// when a rule is applied to an element.
SheetTotals ReadLitehtmlSheetWhole(const std::string& text);

}  // namespace bench
