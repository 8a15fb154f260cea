// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSValue.h>

/// A value that counts itself while it lives, and so do its clones.
class CountedValue final : public Dom::CSS::CSSValue {
public:
    CountedValue(const char* text, int& count) : CSSValue(CSS_CUSTOM), text_(text), count_(count) {
        ++count_;
    }
    CountedValue(const CountedValue&) = delete;
    CountedValue& operator=(const CountedValue&) = delete;
    ~CountedValue() override { --count_; }

    astring CssText() const override { return text_; }
    void SetCssText(const char* text) override { text_ = text; }
    using CSSValue::SetCssText;
    CountedValue* Clone() const override { return new CountedValue(text_.c_str(), count_); }

private:
    astring text_;
    int& count_;
};
