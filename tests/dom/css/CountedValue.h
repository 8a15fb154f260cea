// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSValue.h>

#include <utility>

/// A value that counts itself while it lives, and so do its clones.
class CountedValue final : public Dom::CSS::CSSValue {
public:
    CountedValue(int& count, astring text)
        : CSSValue(CSS_CUSTOM), count_(count), text_(std::move(text)) {
        ++count_;
    }
    CountedValue(const CountedValue&) = delete;
    CountedValue& operator=(const CountedValue&) = delete;
    ~CountedValue() override { --count_; }

    astring CssText() const override { return text_; }
    void SetCssText(const char* text) override { text_ = text; }
    using CSSValue::SetCssText;
    CountedValue* Clone() const override { return new CountedValue(count_, text_); }

private:
    int& count_;
    astring text_;
};
