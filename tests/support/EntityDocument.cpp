// SPDX-License-Identifier: MIT
#include "support/EntityDocument.h"

namespace support {
namespace {

constexpr std::size_t kEntities = 6;  // of each kind
constexpr int kDeepest = 4;

}  // namespace

// The entities t0 to t5 hold text, which values may refer to; m0 to m5 hold markup, too.
void EntityDocument::Write() {
    subset = "<!DOCTYPE r [";
    for (std::size_t i = 0; i < kEntities; ++i) {
        const std::string number = std::to_string(i);
        subset += "<!ENTITY t" + number + " \"" + Text() + Reference('t', i) + "\">";
        subset += "<!ENTITY m" + number + " \"" + Content(kDeepest / 2, i) + "\">";
    }
    subset += "]>";
    body = "<r>" + std::string(Below(1100), 'x') + Content(0, kEntities) + "</r>";
}

std::string EntityDocument::Text() {
    if (Below(20) == 0) return std::string(Below(1500), 'y');
    return OneOf({"", "text", "\xE2\x82\xAC", " a\n b", "]", "x\xF0\x9F\x98\x80"});
}

std::string EntityDocument::Reference(char kind, std::size_t limit) {
    if (limit == 0) return "";
    return "&" + std::string(1, kind) + std::to_string(Below(limit)) + ";";
}

std::string EntityDocument::Value(std::size_t limit) {
    std::string value = Text();
    if (Below(3) == 0) value += Reference('t', limit);
    return value + OneOf({"", "&lt;", "v"});
}

std::string EntityDocument::Content(int depth, std::size_t limit) {
    std::string out;
    for (std::size_t i = 1 + Below(6); i > 0; --i) {
        switch (Below(8)) {
        case 0: out += Reference('t', limit); break;
        case 1:
        case 2: out += Reference('m', limit); break;
        case 3: out += OneOf({"<!-- <c> -->", "<![CDATA[<d>]]>", "<?p e?>", "&amp;", "\n"}); break;
        case 4: out += Text(); break;
        default:
            if (depth < kDeepest) out += Element(depth + 1, limit);
            break;
        }
    }
    return out;
}

std::string EntityDocument::Element(int depth, std::size_t limit) {
    const std::string name = OneOf({"a", "b", "p:a"});
    std::string out = "<" + name;
    if (Below(2) == 0) out += " x='" + Value(limit) + "'";
    if (Below(4) == 0) out += "\n y = '" + Value(limit) + "'";
    if (Below(4) == 0) return out + "/>";
    return out + ">" + Content(depth, limit) + "</" + name + ">";
}

}  // namespace support
