// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace Xml::detail {
class CharCodec;
}

namespace bench {

/// A text in a code page.
struct PageText {
    const char* title;
    const char* iconvName;
    const Xml::detail::CharCodec* codec;
    std::string bytes;
};

/// Makes a text of 2 MB in UTF-8 for each code page that is measured; the same every time.
std::vector<PageText> MakePageTexts();

/// Converts with iconv, into `output`, which is large enough.
/// \return how many bytes came out
/// \throws std::runtime_error when it cannot
class Iconv {
public:
    Iconv(const char* from, const char* to);
    ~Iconv();
    Iconv(const Iconv&) = delete;
    Iconv& operator=(const Iconv&) = delete;

    std::size_t Convert(const std::string& source, std::string& output);

private:
    void* converter_;  // owned
};

}  // namespace bench
