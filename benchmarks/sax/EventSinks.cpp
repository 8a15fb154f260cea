// SPDX-License-Identifier: MIT
#include "sax/EventSinks.h"

namespace bench {

namespace {

// Only for comparing. No library gives half a pair.
std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        if (character >= 0xD800 && character < 0xDC00 && i + 1 < text.size()) {
            character = 0x10000 + ((character - 0xD800) << 10) + (text[++i] - 0xDC00U);
        }
        const auto add = [&bytes](char32_t byte) { bytes += static_cast<char>(byte); };
        if (character < 0x80) {
            add(character);
        } else if (character < 0x800) {
            add(0xC0 | character >> 6);
            add(0x80 | (character & 0x3F));
        } else if (character < 0x10000) {
            add(0xE0 | character >> 12);
            add(0x80 | (character >> 6 & 0x3F));
            add(0x80 | (character & 0x3F));
        } else {
            add(0xF0 | character >> 18);
            add(0x80 | (character >> 12 & 0x3F));
            add(0x80 | (character >> 6 & 0x3F));
            add(0x80 | (character & 0x3F));
        }
    }
    return bytes;
}

}  // namespace

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

void Digest::Attribute(const WideEventName& name, std::u16string_view value) {
    const std::string uri = ToUtf8(name.uri), local = ToUtf8(name.local);
    Attribute(EventName{uri.c_str(), local.c_str()}, ToUtf8(value));
}

void Digest::Start(const WideEventName& name) {
    const std::string uri = ToUtf8(name.uri), local = ToUtf8(name.local);
    Start(EventName{uri.c_str(), local.c_str()});
}

void Digest::End(const WideEventName& name) {
    const std::string uri = ToUtf8(name.uri), local = ToUtf8(name.local);
    End(EventName{uri.c_str(), local.c_str()});
}

void Digest::Text(std::u16string_view text) {
    const std::string bytes = ToUtf8(text);
    Text(bytes.data(), bytes.size());
}

void Digest::Instruction(std::u16string_view target, std::u16string_view data) {
    Instruction(ToUtf8(target).c_str(), ToUtf8(data).c_str());
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
