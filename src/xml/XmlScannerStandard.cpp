// SPDX-License-Identifier: MIT

// What the standard asks of the bytes as they come in: line ends become one line feed each (XML 1.0
// section 2.11), and what is no character of XML ([2]) is marked, so that the scan that gets there
// refuses it. All scans then see normalized text, and a carriage return that they meet comes from a
// character reference.

#include "encoding/Codecs.h"
#include "encoding/Utf8.h"
#include "xml/RunScan.h"
#include "xml/WideScan.h"
#include "xml/XmlScanner.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>  // std::begin, std::end
#include <utility>   // std::exchange

namespace Xml::detail {

namespace {

// What follows the data of a window is zeros, so these scans may look behind its end. They return a
// position that is not far before what they look for, and one at the end or behind it when there is
// nothing.

// Skips what is neither a carriage return nor above ASCII.
const unsigned char* SkipUsual(const unsigned char* p, const unsigned char* end) {
#if defined(ESPALIER_WIDE_SCAN)
    if (wide::IsAvailable()) return wide::SkipUsual(p, end);
#endif
#if defined(ESPALIER_BLOCK_SCAN)
    for (; p < end; p += ByteBlock::kSize) {
        const ByteBlock block(p);
        if (ByteBlock::Mask(_mm_or_si128(block.Is('\r'), block.Bytes())) != 0) break;
    }
    return p;
#else
    return std::find_if(p, end, [](unsigned char c) { return c == '\r' || c >= 0x80; });
#endif
}

// Skips what is neither a carriage return nor one of the last 64 characters of the first plane.
const unsigned char* SkipToReturnOrLast(const unsigned char* p, const unsigned char* end) {
#if defined(ESPALIER_WIDE_SCAN)
    if (wide::IsAvailable()) return wide::SkipToReturnOrLast(p, end);
#endif
#if defined(ESPALIER_BLOCK_SCAN)
    for (; p < end; p += ByteBlock::kSize) {
        const ByteBlock block(p);
        const __m128i lasts = _mm_and_si128(block.Is(0xEF), ByteBlock(p + 1).Is(0xBF));
        if (ByteBlock::Mask(_mm_or_si128(lasts, block.Is('\r'))) != 0) break;
    }
    return p;
#else
    return std::find_if(p, end, [](unsigned char c) { return c == '\r' || c == 0xEF; });
#endif
}

// U+FFFE and U+FFFF are no characters. Returns the first from `p` on, or `end`.
const unsigned char* FindNoncharacter(const unsigned char* p, const unsigned char* end) {
    constexpr unsigned char kFirst[] = {0xEF, 0xBF};
    for (;;) {
        p = std::search(p, end, std::begin(kFirst), std::end(kFirst));
        if (end - p < 3) return end;
        if (p[2] >= 0xBE) return p;
        ++p;
    }
}

const unsigned char* FindAboveAscii(const unsigned char* p, const unsigned char* end) {
    return std::find_if(p, end, [](unsigned char c) { return c >= 0x80; });
}

}  // namespace

void XmlScanner::SettleEncoding() {
    if (!std::exchange(awaitsEncoding_, false) || !standard_ || !direct_) return;
    MarkInvalid(position_);
}

// Deals with what has come into the window from `from` on.
void XmlScanner::TakeByStandard(const unsigned char* from) {
    if (from != dataEnd_ && std::exchange(endsInReturn_, false) && *from == '\n') {
        RemoveByte(from);
    }
    const unsigned char* unusual = SkipUsual(from, dataEnd_);
    if (unusual >= dataEnd_) return;
    if (codec_ != &AsciiCodec()) {
        // A character that the end of the data cut before is still there.
        if (direct_ && unusual == from) unusual -= std::min<std::ptrdiff_t>(from - position_, 2);
        unusual = SkipToReturnOrLast(unusual, dataEnd_);
        if (unusual >= dataEnd_) return;
    }
    NormalizeReturns(unusual);
    if (!direct_ || !awaitsEncoding_) MarkInvalid(unusual);
}

void XmlScanner::RemoveByte(const unsigned char* at) {
    auto* const to = const_cast<unsigned char*>(at);
    std::memmove(to, to + 1, static_cast<std::size_t>(dataEnd_ - at - 1));
    --dataEnd_;
    CloseWindow();
}

// Makes the line ends from `from` on line feeds.
void XmlScanner::NormalizeReturns(const unsigned char* from) {
    const auto find = [this](const unsigned char* at) {
        const void* const found = std::memchr(at, '\r', static_cast<std::size_t>(dataEnd_ - at));
        return found == nullptr ? dataEnd_ : static_cast<const unsigned char*>(found);
    };
    const unsigned char* at = find(from);
    if (at == dataEnd_) return;
    auto* to = const_cast<unsigned char*>(at);
    while (at != dataEnd_) {
        *to++ = '\n';
        ++at;
        if (at == dataEnd_) {
            endsInReturn_ = true;
        } else if (*at == '\n') {
            ++at;
        }
        const unsigned char* const next = find(at);
        const auto between = static_cast<std::size_t>(next - at);
        std::memmove(to, at, between);
        to += between;
        at = next;
    }
    dataEnd_ = to;
    CloseWindow();
}

// Marks what is no character of XML from `from` on. A window that holds what a codec has decoded
// ends there.
void XmlScanner::MarkInvalid(const unsigned char* from) {
    const bool isAscii = codec_ == &AsciiCodec();
    for (;;) {
        const unsigned char* const at =
            isAscii ? FindAboveAscii(from, dataEnd_) : FindNoncharacter(from, dataEnd_);
        if (at == dataEnd_) return;
        *const_cast<unsigned char*>(at) = kInvalidByte;
        if (!direct_) {
            dataEnd_ = const_cast<unsigned char*>(at) + 1;
            badAhead_ = true;
            CloseWindow();
            return;
        }
        from = at + 1;
    }
}

// Marks a character that the end of the input cuts.
// Returns whether there is one.
bool XmlScanner::MarkCutEnd() {
    if (!filters_) return false;
    if (!direct_) {
        if (rawCut_ == 0 || badAhead_) return false;
        *dataEnd_++ = kInvalidByte;
        badAhead_ = true;
        CloseWindow();
        return true;
    }
    constexpr std::ptrdiff_t kMostBytes = 5;  // a sequence that is cut has, whatever it begins with
    unsigned char* at = dataEnd_ - std::min(dataEnd_ - position_, kMostBytes);
    at = std::find_if(at, dataEnd_, [this](const unsigned char& byte) {
        return byte >= 0xC0 && SequenceLength(&byte, dataEnd_) == 0;
    });
    if (at == dataEnd_) return false;
    *at = kInvalidByte;
    return true;
}

}  // namespace Xml::detail
