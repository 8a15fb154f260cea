// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/io/Exception.h>

#include "support/DocumentStream.h"
#include "support/ExpectThrow.h"
#include "xml/XmlScanner.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace support {

/// A scanner at the start of an input, which it keeps.
class ScannerInput {
public:
    explicit ScannerInput(std::string input, int bytesPerRead = 0)
        : input_(std::move(input)), stream_(input_, bytesPerRead) {
        scanner_.SetStream(stream_.get());
        scanner_.AttachStream();
    }

    Xml::detail::XmlScanner* operator->() { return &scanner_; }
    Xml::detail::XmlScanner& operator*() { return scanner_; }

private:
    std::string input_;
    DocumentStream stream_;
    Xml::detail::XmlScanner scanner_;
};

/// The numbers of bytes that streams give at a time in tests; 0 is for as many as are asked for.
inline constexpr int kBytesPerRead[] = {0, 1, 2, 3, 7};

}  // namespace support
