// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/StyleSheet.h>

/// A sheet that counts itself while it lives.
class CountedSheet final : public Dom::StyleSheets::StyleSheet {
public:
    explicit CountedSheet(int& count)
        : StyleSheet("text/css", nullptr, nullptr, "", ""), count_(count) {
        ++count_;
    }
    ~CountedSheet() override { --count_; }

private:
    int& count_;
};
