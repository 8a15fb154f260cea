// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/DOMException.h>

#include <cstddef>

namespace Dom::CSS {

/// What is thrown for a text that is no selector: SYNTAX_ERR "Syntax error in selector", and where.
class ESPALIER_EXPORT SelectorException : public DOMException {
public:
    /// \param position in bytes from the begin of the selector
    explicit SelectorException(std::size_t position);
    SelectorException(const SelectorException&) noexcept;
    SelectorException& operator=(const SelectorException&) noexcept;
    ~SelectorException() noexcept override;

    /// Returns where the text goes wrong, in bytes from 0 on.
    std::size_t Position() const noexcept { return position_; }

private:
    std::size_t position_;
};

}  // namespace Dom::CSS
