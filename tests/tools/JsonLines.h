// SPDX-License-Identifier: MIT
#pragma once

#include <cctype>
#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// Tells whether a text is one JSON value (RFC 8259), and nothing else.
class JsonCheck {
public:
    explicit JsonCheck(std::string_view text) : rest_(text) {}

    bool IsValue() { return Value() && rest_.empty(); }

private:
    bool Take(std::string_view token) {
        if (!rest_.starts_with(token)) return false;
        rest_.remove_prefix(token.size());
        return true;
    }

    bool Value() {
        if (rest_.starts_with('{')) return List('{', '}', true);
        if (rest_.starts_with('[')) return List('[', ']', false);
        if (rest_.starts_with('"')) return String();
        return Take("true") || Take("false") || Take("null") || Number();
    }

    bool List(char open, char close, bool hasNames) {
        const std::string_view end(&close, 1);
        if (!Take({&open, 1})) return false;
        if (Take(end)) return true;
        do {
            if (hasNames && !(String() && Take(":"))) return false;
            if (!Value()) return false;
        } while (Take(","));
        return Take(end);
    }

    bool Number() {
        std::size_t length = 0;
        while (length < rest_.size() && std::isdigit(static_cast<unsigned char>(rest_[length])))
            ++length;
        rest_.remove_prefix(length);
        return length > 0;
    }

    bool String() {
        if (!Take("\"")) return false;
        while (!rest_.empty() && rest_.front() != '"') {
            const char byte = rest_.front();
            rest_.remove_prefix(1);
            if (byte >= 0 && byte < ' ') return false;
            if (byte == '\\' && !Escape()) return false;
        }
        return Take("\"");
    }

    bool Escape() {
        if (!Take("u")) {
            const bool known =
                !rest_.empty() &&
                std::string_view("\"\\/bfnrt").find(rest_.front()) != std::string_view::npos;
            rest_.remove_prefix(known ? 1 : 0);
            return known;
        }
        for (int i = 0; i < 4; ++i) {
            if (rest_.empty() || !std::isxdigit(static_cast<unsigned char>(rest_.front())))
                return false;
            rest_.remove_prefix(1);
        }
        return true;
    }

    std::string_view rest_;
};

/// Returns the lines of a text.
inline std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}
