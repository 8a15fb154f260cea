// SPDX-License-Identifier: MIT
// What a program does that has no library: it appends to a string and escapes as it goes, character
// by character, or in runs up to the next character to escape. Both check nothing.
#include "writer/DocumentWriter.h"

#include <array>

namespace bench {

namespace {

// Returns what stands for a character in markup; empty for one that stands for itself.
constexpr std::string_view Escape(char character) {
    switch (character) {
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '&': return "&amp;";
    case '"': return "&quot;";
    case '\'': return "&apos;";
    default: return {};
    }
}

struct ByCharacter {
    static void Append(std::string& output, std::string_view text) {
        for (const char character : text) {
            switch (character) {
            case '<':
            case '>':
            case '&':
            case '"':
            case '\'': output += Escape(character); break;
            default: output += character;
            }
        }
    }
};

constexpr auto kIsEscaped = [] {
    std::array<bool, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = !Escape(static_cast<char>(i)).empty();
    }
    return table;
}();

struct ByRun {
    static void Append(std::string& output, std::string_view text) {
        std::size_t start = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (!kIsEscaped[static_cast<unsigned char>(text[i])]) continue;
            output.append(text, start, i - start);
            output += Escape(text[i]);
            start = i + 1;
        }
        output.append(text, start);
    }
};

template <typename Escaping>
class AppendLoop final : public DocumentWriter {
public:
    explicit AppendLoop(const Recording& recording) : recording_(recording) {}

    void Write() override {
        output_.clear();
        Replay(recording_, *this);
    }

    std::string_view Output() const override { return output_; }

    // See Replay().
    void Start(std::string_view name) {
        CloseStartTag();
        output_ += '<';
        output_ += name;
        openElements_.push_back(name);
        isStartTagOpen_ = true;
    }

    void Attribute(std::string_view name, std::string_view value) {
        output_ += ' ';
        output_ += name;
        output_ += "=\"";
        Escaping::Append(output_, value);
        output_ += '"';
    }

    void Text(std::string_view text) {
        CloseStartTag();
        Escaping::Append(output_, text);
    }

    void End() {
        if (isStartTagOpen_) {
            output_ += "/>";
        } else {
            output_ += "</";
            output_ += openElements_.back();
            output_ += '>';
        }
        isStartTagOpen_ = false;
        openElements_.pop_back();
    }

private:
    void CloseStartTag() {
        if (isStartTagOpen_) output_ += '>';
        isStartTagOpen_ = false;
    }

    const Recording& recording_;
    std::string output_;
    std::vector<std::string_view> openElements_;
    bool isStartTagOpen_ = false;
};

}  // namespace

std::unique_ptr<DocumentWriter> MakePlainLoop(const Recording& recording) {
    return std::make_unique<AppendLoop<ByCharacter>>(recording);
}

std::unique_ptr<DocumentWriter> MakeRunLoop(const Recording& recording) {
    return std::make_unique<AppendLoop<ByRun>>(recording);
}

}  // namespace bench
