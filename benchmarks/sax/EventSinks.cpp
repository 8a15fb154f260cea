// SPDX-License-Identifier: MIT
#include "sax/EventSinks.h"

namespace bench {

void Digest::Attribute(const EventName& name, std::string_view value) {
    ++counts.attributes;
    std::uint64_t hash = kEmpty;
    Add(hash, name.uri == nullptr ? "" : name.uri);
    Add(hash, std::string_view("\0", 1));
    Add(hash, name.local);
    Add(hash, std::string_view("\0", 1));
    Add(hash, value);
    attributes_ += hash;
}

void Digest::Start(const EventName& name) {
    ++counts.elements;
    AddEvent('<', name);
    Add(hash_, {reinterpret_cast<const char*>(&attributes_), sizeof(attributes_)});
    attributes_ = 0;
}

void Digest::End(const EventName& name) {
    ++counts.ends;
    AddEvent('/', name);
}

void Digest::Text(const char* text, std::size_t length) {
    counts.textBytes += static_cast<std::int64_t>(length);
    Add(hash_, {text, length});
}

void Digest::Instruction(const char* target, const char* data) {
    ++counts.instructions;
    AddEvent('?', {target, data});
}

EventName Digest::Split(const JoinedEventName& name) {
    const std::string_view whole(name.text);
    const std::size_t separator = whole.rfind(JoinedEventName::kSeparator);
    if (separator == std::string_view::npos) return {nullptr, name.text};
    uri_ = whole.substr(0, separator);
    return {uri_.c_str(), name.text + separator + 1};
}

// Each byte goes through FNV-1a.
void Digest::Add(std::uint64_t& hash, std::string_view bytes) {
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    }
}

// Zero bytes, which no text has, keep events apart from texts and from one another.
void Digest::AddEvent(char kind, const EventName& name) {
    Add(hash_, {"\0", 1});
    Add(hash_, {&kind, 1});
    Add(hash_, name.uri == nullptr ? "" : name.uri);
    Add(hash_, {"\0", 1});
    Add(hash_, name.local);
    Add(hash_, {"\0", 1});
}

}  // namespace bench
