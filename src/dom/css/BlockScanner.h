// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/ComponentScanner.h"

#include <string>
#include <string_view>

namespace Dom::CSS::detail {

/// A declaration as it stands in a style sheet, or what stands in place of one.
struct ScannedDeclaration {
    const char* begin = nullptr;
    const char* end = nullptr;    // behind it, at what has ended it
    const char* fault = nullptr;  // a message when it is none
    std::string_view name;        // as written, with escapes
    std::string_view value;       // as written, without "!important" and white space around it
    std::string unclosed;         // what is missing at the end of the value, in front order
    bool important = false;
    bool hasComment = false;  // in the value
};

/// Goes through what stands in the braces of a rule, or in an attribute, declaration by declaration
/// (CSS Syntax Level 3 section 5.4.4), and leaves out what is none.
class BlockScanner {
public:
    /// What ends the declarations.
    enum class End {
        Brace,  ///< the "}" of their block, or the end of the text
        Text    ///< nothing but the end of the text; "}" is as bad as any bracket alone
    };

    /// \param scanner stands where they begin; goes on to where they end
    explicit BlockScanner(ComponentScanner& scanner, End end = End::Brace)
        : scanner_(scanner), end_(end) {}

    /// Reads the next declaration. Returns false at the end.
    bool Next(ScannedDeclaration& declaration);

    /// Tells whether all of the text so far is what CSSStyleDeclaration::SetCssText() reads in the
    /// same way.
    bool IsPlain() const { return isPlain_; }

private:
    unsigned Stops() const;
    bool SkipToDeclaration();
    const char* ReadName(ScannedDeclaration& declaration);
    const char* ReadValue(ScannedDeclaration& declaration);
    void CloseValue(ScannedDeclaration& declaration, unsigned seen);
    const char* TakePriority(ScannedDeclaration& declaration, unsigned seen);

    ComponentScanner& scanner_;
    const End end_;
    bool isPlain_ = true;
};

/// Returns a text with a blank in place of each comment, strings and addresses as they are, and no
/// white space around it.
std::string WithoutComments(std::string_view text);

}  // namespace Dom::CSS::detail
