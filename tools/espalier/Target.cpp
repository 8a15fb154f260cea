// SPDX-License-Identifier: MIT
#include "Target.h"

#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/UnicodeEncodings.h>

namespace Tool {

namespace {

TargetForm FormOf(std::string_view encoding, std::string_view head) {
    switch (DetectForm(head, encoding)) {
    case SourceForm::Utf16LE: return TargetForm::Utf16LE;
    case SourceForm::Utf16BE: return TargetForm::Utf16BE;
    case SourceForm::Ucs4LE: return TargetForm::Ucs4LE;
    case SourceForm::Ucs4BE: return TargetForm::Ucs4BE;
    case SourceForm::Latin1: return TargetForm::Latin1;
    case SourceForm::Utf8:
    case SourceForm::CodePage: break;
    }
    return encoding == "ASCII" ? TargetForm::Ascii : TargetForm::Utf8;
}

bool IsUtf16(TargetForm form) { return form == TargetForm::Utf16LE || form == TargetForm::Utf16BE; }

// A document in UTF-16 has a mark, always (XML 1.0 section 4.3.3).
bool BeginsWithMark(TargetForm form, std::string_view head) {
    return IsUtf16(form) || (form == TargetForm::Utf8 && head.starts_with("\xEF\xBB\xBF")) ||
           (form == TargetForm::Ucs4LE && head.starts_with('\xFF')) ||
           (form == TargetForm::Ucs4BE && head.ends_with('\xFF'));
}

std::unique_ptr<Xml::Encoding> MakeEncoding(TargetForm form) {
    switch (form) {
    case TargetForm::Utf8: break;
    case TargetForm::Utf16LE: return std::make_unique<Xml::UnicodeEncoding>(false, false, false);
    case TargetForm::Utf16BE: return std::make_unique<Xml::UnicodeEncoding>(true, false, false);
    case TargetForm::Ucs4LE: return std::make_unique<Xml::Ucs4UnicodeEncoding>(false, false, false);
    case TargetForm::Ucs4BE: return std::make_unique<Xml::Ucs4UnicodeEncoding>(true, false, false);
    case TargetForm::Latin1: return std::make_unique<Xml::Latin1Encoding>(false);
    case TargetForm::Ascii: return std::make_unique<Xml::ASCIIEncoding>(false);
    }
    return std::make_unique<Xml::UTF8Encoding>(false, false);
}

}  // namespace

Target::Target(TargetForm form, bool hasMark, bool keepsName)
    : form_(form), hasMark_(hasMark), keepsName_(keepsName), encoding_(MakeEncoding(form)) {}

Target Target::Same(std::string_view encoding, std::string_view head) {
    const TargetForm form = FormOf(encoding, head);
    return {form, BeginsWithMark(form, head), true};
}

Target Target::Recoded(std::string_view head) {
    return {TargetForm::Utf8, BeginsWithMark(TargetForm::Utf8, head), false};
}

Target Target::Other(TargetForm form, const Target& source) {
    if (form == source.form_) return {form, source.hasMark_, source.keepsName_};
    return {form, IsUtf16(form), false};
}

const char* Target::Name() const {
    switch (form_) {
    case TargetForm::Utf8: break;
    case TargetForm::Utf16LE:
    case TargetForm::Utf16BE: return "UTF-16";
    case TargetForm::Ucs4LE:
    case TargetForm::Ucs4BE: return "ISO-10646-UCS-4";
    case TargetForm::Latin1: return "ISO-8859-1";
    case TargetForm::Ascii: return "US-ASCII";
    }
    return "UTF-8";
}

bool Target::HasToBeDeclared() const {
    return !keepsName_ && form_ != TargetForm::Utf8 && !IsUtf16(form_);
}

char32_t Target::LastCharacter() const {
    switch (form_) {
    case TargetForm::Latin1: return 0xFF;
    case TargetForm::Ascii: return 0x7F;
    default: return kLastCharacter;
    }
}

bool Target::HasInNames(char32_t code) const {
    const bool isLatin1Letter = code == 0xAA || code == 0xB5 || code == 0xB7 || code == 0xBA;
    return code <= 0x7F || HasAllCharacters() || (form_ == TargetForm::Latin1 && isLatin1Letter);
}

}  // namespace Tool
