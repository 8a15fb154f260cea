// SPDX-License-Identifier: MIT
#include "support/DocumentForms.h"

#include "support/NodeDump.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>

namespace support {
namespace {

using Unit = DocumentForm::Unit;

void AppendUnit(std::string& out, char32_t value, std::size_t width, bool bigEndian) {
    for (std::size_t i = 0; i < width; ++i) {
        const std::size_t shift = 8 * (bigEndian ? width - 1 - i : i);
        out.push_back(static_cast<char>((value >> shift) & 0xFF));
    }
}

void AppendUtf16(std::string& out, char32_t code, bool bigEndian) {
    if (code < 0x10000) {
        AppendUnit(out, code, 2, bigEndian);
        return;
    }
    AppendUnit(out, 0xD800 + ((code - 0x10000) >> 10), 2, bigEndian);
    AppendUnit(out, 0xDC00 + (code & 0x3FF), 2, bigEndian);
}

void AppendCode(std::string& out, char32_t code, Unit unit) {
    switch (unit) {
    case Unit::Utf8: AppendUtf8(out, code); return;
    case Unit::Utf16LE: AppendUtf16(out, code, false); return;
    case Unit::Utf16BE: AppendUtf16(out, code, true); return;
    case Unit::Ucs4LE: AppendUnit(out, code, 4, false); return;
    case Unit::Ucs4BE: AppendUnit(out, code, 4, true); return;
    }
}

// Whether the first four bytes tell the encoding: without a mark the document has to begin with
// "<" and an ASCII character, and a document of less than four bytes is always taken for UTF-8.
bool IsDetectable(const std::u32string& codes, const std::string& bytes, const DocumentForm& form) {
    if (form.unit == Unit::Utf8 && !form.mark) return true;
    if (bytes.size() < 4) return false;
    if (form.mark) return form.unit == Unit::Utf8 || codes.empty() || (codes[0] & 0xFF) != 0;
    return codes[0] == '<' && (codes.size() < 2 || codes[1] < 0x80);
}

}  // namespace

const std::vector<DocumentForm>& AllDocumentForms() {
    static const std::vector<DocumentForm> forms = {
        {"UTF-8", Unit::Utf8, false},       {"UTF-8 with mark", Unit::Utf8, true},
        {"UTF-16LE", Unit::Utf16LE, false}, {"UTF-16LE with mark", Unit::Utf16LE, true},
        {"UTF-16BE", Unit::Utf16BE, false}, {"UTF-16BE with mark", Unit::Utf16BE, true},
        {"UCS-4LE", Unit::Ucs4LE, false},   {"UCS-4LE with mark", Unit::Ucs4LE, true},
        {"UCS-4BE", Unit::Ucs4BE, false},   {"UCS-4BE with mark", Unit::Ucs4BE, true},
    };
    return forms;
}

std::optional<std::string> WriteInForm(std::string_view utf8, const DocumentForm& form) {
    if (form.unit == Unit::Utf8 && !form.mark) return std::string(utf8);
    const std::optional<std::u32string> codes = DecodeUtf8(utf8);
    if (!codes) return std::nullopt;

    std::string bytes;
    if (form.mark) AppendCode(bytes, 0xFEFF, form.unit);
    for (const char32_t code : *codes)
        AppendCode(bytes, code, form.unit);
    if (!IsDetectable(*codes, bytes, form)) return std::nullopt;
    return bytes;
}

int ExpectNodesInAllForms(std::string_view utf8, const ReaderSettings& settings,
                          const std::string& expected, Forms forms) {
    int runs = 0;
    for (const DocumentForm& form : AllDocumentForms()) {
        if (forms == Forms::OnlyUtf8 && form.unit != Unit::Utf8) continue;
        // The standard wants a mark where nothing declares the encoding.
        const bool isStandard = settings.conformance == Xml::XmlConformance::Standard;
        if (isStandard && form.unit != Unit::Utf8 && !form.mark) continue;
        const std::optional<std::string> bytes = WriteInForm(utf8, form);
        if (!bytes) continue;
        for (const int bytesPerRead : std::array{0, 1, 2, 3, 7}) {
            SCOPED_TRACE(std::string(form.name) +
                         ", bytes per read: " + std::to_string(bytesPerRead));
            EXPECT_EQ(DumpDocument(*bytes, settings, bytesPerRead), expected);
            ++runs;
        }
    }
    return runs;
}

}  // namespace support
