// SPDX-License-Identifier: MIT
#include "support/CaseFile.h"

#include "support/EscapedText.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace support {
namespace {

constexpr std::string_view kNameMark = "=== ";
constexpr std::string_view kBytes = "bytes";

void ApplySetting(ReaderSettings& settings, const std::string& text) {
    using Xml::XmlEntityHandling;
    using Xml::XmlTextReader;
    if (text == "namespaces off") {
        settings.namespaces = false;
    } else if (text == "normalization on") {
        settings.normalization = true;
    } else if (text == "whitespace none") {
        settings.whitespace = XmlTextReader::WsNone;
    } else if (text == "whitespace significant") {
        settings.whitespace = XmlTextReader::WsSignificant;
    } else if (text == "entities nothing") {
        settings.entities = XmlEntityHandling::ExpandNothing;
    } else if (text == "entities char") {
        settings.entities = XmlEntityHandling::ExpandCharEntities;
    } else if (text == "entities all") {
        settings.entities = XmlEntityHandling::ExpandEntities;
    } else if (text == "resolve") {
        settings.resolve = true;
    } else if (text == "parts") {
        settings.parts = true;
    } else if (text != kBytes) {
        throw std::invalid_argument("unknown setting: " + text);
    }
}

// Splits "name {settings}".
void ParseName(ReaderCase& readerCase, const std::string& text) {
    const std::size_t brace = text.rfind(" {");
    if (brace == std::string::npos || text.back() != '}') {
        readerCase.name = text;
        return;
    }
    readerCase.name = text.substr(0, brace);
    readerCase.settingsText = text.substr(brace + 2, text.size() - brace - 3);
}

}  // namespace

std::string ReaderCase::Document() const { return Unescape(inputText); }

std::vector<std::string> ReaderCase::SettingTexts() const {
    std::vector<std::string> settings;
    std::istringstream in(settingsText);
    for (std::string setting; std::getline(in, setting, ';');) {
        const std::size_t first = setting.find_first_not_of(' ');
        if (first != std::string::npos) settings.push_back(setting.substr(first));
    }
    return settings;
}

ReaderSettings ReaderCase::Settings() const {
    ReaderSettings settings;
    for (const std::string& text : SettingTexts())
        ApplySetting(settings, text);
    return settings;
}

Forms ReaderCase::AllowedForms() const {
    for (const std::string& text : SettingTexts()) {
        if (text == kBytes) return Forms::OnlyUtf8;
    }
    return Forms::All;
}

CaseFile CaseFile::Load(const std::string& fileName, const std::string& mark) {
    std::ifstream in(fileName, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + fileName);

    // Part by part: a name line starts a case, the mark its second half.
    enum class Section { Heading, Input, Expected };
    Section section = Section::Heading;
    CaseFile file;
    file.mark = mark;
    int lineNumber = 0;
    for (std::string line; std::getline(in, line);) {
        ++lineNumber;
        if (line.starts_with(kNameMark)) {
            if (section == Section::Input) throw std::runtime_error("no " + mark + ": " + fileName);
            section = Section::Input;
            ReaderCase& readerCase = file.cases.emplace_back();
            readerCase.line = lineNumber;
            ParseName(readerCase, line.substr(kNameMark.size()));
        } else if (section == Section::Input && line == mark) {
            section = Section::Expected;
            std::string& input = file.cases.back().inputText;
            if (!input.empty()) input.pop_back();
        } else {
            std::string& text = section == Section::Heading ? file.heading
                                : section == Section::Input ? file.cases.back().inputText
                                                            : file.cases.back().expected;
            text += line + "\n";
        }
    }
    if (section != Section::Expected)
        throw std::runtime_error("no " + mark + " at the end: " + fileName);
    return file;
}

void CaseFile::Save(const std::string& fileName) const {
    std::ofstream out(fileName, std::ios::binary);
    out << heading;
    for (const ReaderCase& readerCase : cases) {
        out << kNameMark << readerCase.name;
        if (!readerCase.settingsText.empty()) out << " {" << readerCase.settingsText << "}";
        out << "\n" << readerCase.inputText;
        if (!readerCase.inputText.empty()) out << "\n";
        out << mark << "\n" << readerCase.expected;
    }
    if (!out.flush()) throw std::runtime_error("cannot write " + fileName);
}

std::vector<std::string> CaseFileNames(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

bool IsCaseUpdate() {
    const char* const update = std::getenv("ESPALIER_UPDATE_CASES");
    return update != nullptr && std::string_view(update) == "1";
}

}  // namespace support
