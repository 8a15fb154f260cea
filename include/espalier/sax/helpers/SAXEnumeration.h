// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

#include <cstddef>
#include <vector>

namespace sax::helpers {

/// Strings to be visited one after the other. It owns them: what it was made from may change.
///
/// \code
///     const std::unique_ptr<sax::helpers::SAXEnumeration> prefixes(support.getPrefixes());
///     while (prefixes->hasMoreElements()) std::puts(prefixes->nextElement());
/// \endcode
class ESPALIER_EXPORT SAXEnumeration {
public:
    SAXEnumeration();
    explicit SAXEnumeration(std::vector<astring> elements);
    SAXEnumeration(const SAXEnumeration& other);
    SAXEnumeration& operator=(const SAXEnumeration& other);
    ~SAXEnumeration();

    /// Tells whether nextElement() has a string to return.
    bool hasMoreElements() const { return next_ < elements_.size(); }

    /// Returns the next string, which belongs to this object; null behind the last.
    const char* nextElement() { return hasMoreElements() ? elements_[next_++].c_str() : nullptr; }

    /// \name Loop over all strings
    /// Whatever nextElement() has returned.
    /// @{
    /// Returns the first.
    std::vector<astring>::const_iterator begin() const { return elements_.begin(); }
    std::vector<astring>::const_iterator end() const { return elements_.end(); }
    /// @}

private:
    std::vector<astring> elements_;
    std::size_t next_ = 0;
};

}  // namespace sax::helpers
