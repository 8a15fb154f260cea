// SPDX-License-Identifier: MIT
//
// Reads arbitrary bytes as a style sheet. The first byte of the input chooses the encoding, the
// second how many bytes the stream gives at a time, the third how the stream ends and how the sheet
// is read; the rest is the sheet. It is read in one piece, too, and both must tell the same.

#include <espalier/css.h>
#include <espalier/dom/DOMException.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>

#include "ReaderStory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <utility>

namespace {

using Dom::CSS::CssNodeType;
using Dom::CSS::CssReader;
using fuzz::Require;
using Bytes = std::span<const unsigned char>;

constexpr std::array<const char*, 6> kNames = {"UTF-8",    "",        "ISO-8859-1",
                                               "UTF-16BE", "unicode", "windows-1252"};
constexpr std::array<Xml::Encoding* (*)(), 13> kEncodings = {
    Xml::Encoding::UTF8,         Xml::Encoding::Unicode,          Xml::Encoding::NativeWide,
    Xml::Encoding::ASCII,        Xml::Encoding::BigEndianUnicode, Xml::Encoding::Latin1,
    Xml::Encoding::GB2312,       Xml::Encoding::EUC_KR,           Xml::Encoding::Windows_1250,
    Xml::Encoding::Windows_1251, Xml::Encoding::Windows_1252,     Xml::Encoding::Windows_1254,
    Xml::Encoding::Windows_1257};

// The bits of the third byte; those left are where the operations begin.
enum Choice : unsigned { kThrowsAtEnd = 1, kReadsRules = 2, kMixesOperations = 4 };

struct Settings {
    unsigned encoding;
    unsigned choice;

    bool Has(Choice bit) const { return (choice & bit) != 0; }
    unsigned FirstOperation() const { return choice >> 3; }
};

// Gives the sheet in pieces. The first holds a byte order mark whole, which is looked for there.
class Pieces : public IO::Stream {
public:
    Pieces(Bytes bytes, int most, bool throwsAtEnd)
        : bytes_(bytes), most_(std::max(most, 3)), laterMost_(most), throwsAtEnd_(throwsAtEnd) {}

    bool CanRead() const override { return true; }
    void Close() override {}
    int Read(unsigned char* buffer, int offset, int count) override {
        const auto room = static_cast<std::size_t>(std::min(count, most_));
        const std::size_t taken = std::min(room, bytes_.size());
        if (taken == 0 && throwsAtEnd_) Xml::Exception::ThrowException("the end");
        if (taken > 0) std::memcpy(buffer + offset, bytes_.data(), taken);
        bytes_ = bytes_.subspan(taken);
        most_ = laterMost_;
        return static_cast<int>(taken);
    }

private:
    Bytes bytes_;
    int most_;
    int laterMost_;
    bool throwsAtEnd_;
};

// Returns the line and the column of the current node.
std::pair<int, int> PlaceOf(const CssReader& reader) {
    return {reader.LineNumber(), reader.LinePos()};
}

void TellNode(fuzz::Story& story, const CssReader& reader) {
    story.Tell(reader.NodeType());
    story.Tell(reader.Name());
    story.Tell(reader.Value());
    story.Tell(reader.LineNumber());
    story.Tell(reader.LinePos());
    Require(reader.NodeType() != CssNodeType::Node && reader.NodeType() != CssNodeType::Rule);
    Require(reader.NodeType() != CssNodeType::Property || !reader.Name().empty());
    Require(!reader.Value().empty() && reader.Priority().empty());
    Require(reader.LineNumber() >= 1 && reader.LinePos() >= 1);
}

// What is read as a rule is a rule of a sheet, or is refused without a change.
void InsertInto(Dom::CSS::CSSStyleSheet& sheet, const astring& rule) {
    if (rule.empty()) return;
    Require(rule.view().ends_with(" }") && rule.find("{ ") != astring::npos);
    const unsigned count = sheet.CssRules().Length();
    unsigned added = 0;
    try {
        added = sheet.InsertRule(rule, count) == count ? 1 : 2;
    } catch (const Dom::DOMException&) {
    }
    Require(sheet.CssRules().Length() == count + added);
}

void TellOperation(fuzz::Story& story, CssReader& reader, unsigned operation) {
    switch (operation % 6) {
    case 0: return story.Tell(reader.ReadRule());
    case 1: return story.Tell(reader.ReadDeclaration());
    case 2: return story.Tell(reader.ReadAtDeclaration());
    case 3: return story.Tell(reader.ReadComment());
    case 4: return story.Tell(reader.ReadSelector());
    default: return story.Tell(reader.ReadProperty() ? 1 : 0);
    }
}

std::unique_ptr<CssReader> Open(IO::Stream& stream, unsigned encoding) {
    if (encoding < kNames.size()) return std::make_unique<CssReader>(&stream, kNames[encoding]);
    return std::make_unique<CssReader>(&stream, kEncodings[encoding - kNames.size()]());
}

fuzz::Story Read(Bytes sheet, const Settings& settings, int bytesPerRead) {
    const unsigned encoding = settings.encoding % (kNames.size() + kEncodings.size());
    fuzz::Story story;
    // Dashes and quotation marks of the pages of Windows are overlong.
    if (encoding >= kNames.size() + 8) story.SetEncoding("Windows-");
    Pieces stream(sheet, bytesPerRead, settings.Has(kThrowsAtEnd));
    const std::unique_ptr<CssReader> reader = Open(stream, encoding);
    Dom::CSS::CSSStyleSheet rules(Dom::CSS::CSSRule::Author, nullptr, "", "");
    unsigned operation = settings.FirstOperation();
    for (bool isFirst = true;; isFirst = false) {
        const auto before = PlaceOf(*reader);
        if (!reader->Read()) break;
        Require(isFirst || PlaceOf(*reader) > before);
        TellNode(story, *reader);
        if (settings.Has(kReadsRules)) {
            const astring rule = reader->ReadRule();
            story.Tell(rule);
            InsertInto(rules, rule);
        } else if (settings.Has(kMixesOperations)) {
            TellOperation(story, *reader, operation++);
        }
    }
    Require(!reader->StreamFailed() || settings.Has(kThrowsAtEnd));
    Require(reader->StreamFailed() == !reader->StreamError().empty());
    reader->Close();
    Require(!reader->Read() && reader->Value().empty() && reader->ReadRule().empty());
    return story;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const Settings settings{data[0], data[2]};
    const Bytes sheet(data + 3, size - 3);
    const fuzz::Story story = Read(sheet, settings, 1024);
    Require(Read(sheet, settings, data[1] % 64 + 1) == story);
    if (settings.Has(kThrowsAtEnd)) {
        const Settings ending{settings.encoding, settings.choice & ~unsigned{kThrowsAtEnd}};
        Require(Read(sheet, ending, 1024) == story);
    }
    return 0;
}
