// SPDX-License-Identifier: MIT
#include "InputEncoding.h"

#include <espalier/encoding/Encoding.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <algorithm>

namespace Tool {

namespace {

// clang-format off
constexpr InputEncoding kEncodings[] = {
    {"UTF-8",        SourceForm::Utf8,     nullptr},
    {"UTF-16LE",     SourceForm::Utf16LE,  nullptr},
    {"UTF-16BE",     SourceForm::Utf16BE,  nullptr},
    {"ISO-8859-1",   SourceForm::Latin1,   nullptr},
    {"US-ASCII",     SourceForm::Latin1,   nullptr},  // bytes above 0x7F as the reader takes them
    {"windows-1250", SourceForm::CodePage, &Xml::Encoding::Windows_1250},
    {"windows-1251", SourceForm::CodePage, &Xml::Encoding::Windows_1251},
    {"windows-1252", SourceForm::CodePage, &Xml::Encoding::Windows_1252},
    {"windows-1254", SourceForm::CodePage, &Xml::Encoding::Windows_1254},
    {"windows-1257", SourceForm::CodePage, &Xml::Encoding::Windows_1257},
    {"GB2312",       SourceForm::CodePage, &Xml::Encoding::GB2312},
    {"EUC-KR",       SourceForm::CodePage, &Xml::Encoding::EUC_KR},
};
// clang-format on

char ToLower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

bool IsSameEncodingName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char one, char other) { return ToLower(one) == ToLower(other); });
}

std::span<const InputEncoding> InputEncodings() { return kEncodings; }

const InputEncoding* FindInputEncoding(std::string_view name) {
    for (const InputEncoding& encoding : kEncodings) {
        if (IsSameEncodingName(encoding.name, name)) return &encoding;
    }
    return nullptr;
}

// A reader is asked, who knows all the names of a code page.
const InputEncoding* DeclaredPage(std::string_view head, Xml::XmlConformance conformance) {
    IO::MemoryStream stream;
    stream.Write(reinterpret_cast<const unsigned char*>(head.data()), 0,
                 static_cast<int>(head.size()));
    stream.SetPosition(0);
    Xml::XmlTextReader reader;
    reader.SetConformance(conformance);
    reader.SetStream(&stream, false);
    try {
        reader.Read();
    } catch (const Xml::Exception&) {
        return nullptr;  // the document itself will tell
    }
    const InputEncoding* const encoding = FindInputEncoding(reader.Encoding().view());
    return encoding != nullptr && encoding->page != nullptr ? encoding : nullptr;
}

}  // namespace Tool
