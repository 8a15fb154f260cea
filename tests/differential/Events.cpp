// SPDX-License-Identifier: MIT
#include "Events.h"

#include "support/EscapedText.h"

#include <algorithm>

namespace differential {
namespace {

// The reader normalizes what references to line ends and tabs give, the peers do not (XML 1.0
// sections 2.11 and 3.3.3); so all of these are made alike before they are compared.
std::string FoldLineEnds(std::string_view text) {
    std::string folded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        folded.push_back(text[i] == '\r' ? '\n' : text[i]);
    }
    return folded;
}

std::string FoldBlanks(std::string_view value) {
    std::string folded = FoldLineEnds(value);
    for (char& c : folded) {
        if (c == '\n' || c == '\t') c = ' ';
    }
    return folded;
}

}  // namespace

void EventList::Start(const std::string& name, Attributes attributes) {
    FlushText();
    ++depth_;
    hasStarted_ = true;
    for (auto& attribute : attributes)
        attribute.first = Shown(attribute.first);
    if (detail_ != Detail::Exact) {
        std::sort(attributes.begin(), attributes.end(),
                  [](const auto& a, const auto& b) { return a.first < b.first; });
    }
    std::string line = "start " + Shown(name);
    for (const auto& [attribute, value] : attributes) {
        line += " " + attribute;
        if (detail_ == Detail::Structure) continue;
        line +=
            "=\"" + support::Escape(detail_ == Detail::Exact ? value : FoldBlanks(value)) + "\"";
    }
    lines_.push_back(std::move(line));
}

void EventList::End(const std::string& name) {
    FlushText();
    --depth_;
    lines_.push_back("end " + Shown(name));
}

void EventList::Text(std::string_view text) {
    if (depth_ > 0 && detail_ != Detail::Structure) text_ += text;
}

void EventList::Comment(std::string_view text) {
    FlushText();
    lines_.push_back("comment " + Quoted(text));
}

void EventList::Instruction(std::string_view target, std::string_view data) {
    FlushText();
    lines_.push_back("instruction " + std::string(target) + " " + Quoted(data));
}

void EventList::Reference() {
    FlushText();
    lines_.push_back("reference");
}

const std::vector<std::string>& EventList::Lines() {
    FlushText();
    return lines_;
}

std::string EventList::Shown(const std::string& name) const {
    return detail_ == Detail::Structure ? name.substr(name.rfind('}') + 1) : name;
}

std::string EventList::Quoted(std::string_view text) const {
    const std::string shown(text);
    return "\"" + support::Escape(detail_ == Detail::Exact ? shown : FoldLineEnds(text)) + "\"";
}

void EventList::FlushText() {
    if (text_.empty()) return;
    lines_.push_back("text " + Quoted(text_));
    text_.clear();
}

Reading WithoutComments(Reading reading) {
    constexpr std::string_view kText = "text \"";
    std::vector<std::string> kept;
    for (std::string& line : reading.lines) {
        if (line.starts_with("comment ")) continue;
        const bool joins =
            !kept.empty() && kept.back().starts_with(kText) && line.starts_with(kText);
        if (!joins) {
            kept.push_back(std::move(line));
            continue;
        }
        kept.back().pop_back();
        kept.back() += std::string_view(line).substr(kText.size());
    }
    reading.lines = std::move(kept);
    return reading;
}

std::string ExpandedName(std::string_view uri, std::string_view localName) {
    return "{" + std::string(uri) + "}" + std::string(localName);
}

}  // namespace differential
