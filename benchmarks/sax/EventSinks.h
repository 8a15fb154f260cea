// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

// What visitors tell about a document goes into a sink: Touch when they are measured, Digest when
// they are compared. A visitor is the same code for both.
//
// The attributes of an element come before the element itself, in any order, since expat tells of
// declarations of namespaces before the element that they stand on.

/// The names of an element or an attribute.
struct EventName {
    const char* uri;  ///< may be null
    const char* local;
};

/// The same in one text: the namespace and the local name, or the local name alone.
struct JoinedEventName {
    static constexpr char kSeparator = '\n';
    const char* text;
};

/// The names of an element or an attribute in UTF-16.
struct WideEventName {
    std::u16string_view uri;
    std::u16string_view local;
};

/// What a document has; all visitors find the same.
struct EventCounts {
    std::int64_t elements = 0;
    std::int64_t ends = 0;
    std::int64_t attributes = 0;  ///< declarations of namespaces included
    std::int64_t instructions = 0;
    std::int64_t textBytes = 0;  ///< inside of the root element; units of UTF-16 for Touch, if it
                                 ///< gets these
    bool operator==(const EventCounts&) const = default;
};

/// Counts, and looks at the first byte of every text: the work that is measured.
class Touch {
public:
    void Attribute(const EventName& name, const char* value) {
        ++counts.attributes;
        Add(name);
        Add(value);
    }
    void Attribute(const JoinedEventName& name, const char* value) {
        ++counts.attributes;
        Add(name.text);
        Add(value);
    }
    void Attribute(const EventName& name, std::string_view value) {
        ++counts.attributes;
        Add(name);
        if (!value.empty()) Add(value.data());
    }
    void Start(const EventName& name) {
        ++counts.elements;
        Add(name);
    }
    void Start(const JoinedEventName& name) {
        ++counts.elements;
        Add(name.text);
    }
    void End(const EventName& name) {
        ++counts.ends;
        Add(name);
    }
    void End(const JoinedEventName& name) {
        ++counts.ends;
        Add(name.text);
    }
    void Text(const char* text, std::size_t length) {
        counts.textBytes += static_cast<std::int64_t>(length);
        if (length > 0) Add(text);
    }
    void Attribute(const WideEventName& name, std::u16string_view value) {
        ++counts.attributes;
        Add(name);
        Add(value);
    }
    void Start(const WideEventName& name) {
        ++counts.elements;
        Add(name);
    }
    void End(const WideEventName& name) {
        ++counts.ends;
        Add(name);
    }
    void Text(std::u16string_view text) {
        counts.textBytes += static_cast<std::int64_t>(text.size());
        Add(text);
    }
    void Instruction(std::u16string_view target, std::u16string_view data) {
        ++counts.instructions;
        Add(target);
        Add(data);
    }
    /// The peers do not tell of white space outside of the root element.
    void Whitespace(const char* text, std::size_t length) {
        if (counts.elements != counts.ends) Text(text, length);
    }
    void Instruction(const char* target, const char* data) {
        ++counts.instructions;
        Add(target);
        Add(data);
    }

    EventCounts counts;
    std::uint64_t sum = 0;

private:
    void Add(const EventName& name) {
        if (name.uri != nullptr) Add(name.uri);
        Add(name.local);
    }
    void Add(const WideEventName& name) {
        Add(name.uri);
        Add(name.local);
    }
    void Add(const char* text) { sum += static_cast<unsigned char>(*text); }
    void Add(std::u16string_view text) {
        if (!text.empty()) sum += text.front();
    }
};

/// Counts, and makes one number of all events and all their bytes.
class Digest {
public:
    void Attribute(const EventName& name, std::string_view value);
    void Attribute(const JoinedEventName& name, std::string_view value) {
        Attribute(Split(name), value);
    }
    void Start(const EventName& name);
    void Start(const JoinedEventName& name) { Start(Split(name)); }
    void End(const EventName& name);
    void End(const JoinedEventName& name) { End(Split(name)); }
    void Text(const char* text, std::size_t length);
    void Whitespace(const char* text, std::size_t length) {
        if (counts.elements != counts.ends) Text(text, length);
    }
    void Instruction(const char* target, const char* data);
    void Attribute(const WideEventName& name, std::u16string_view value);
    void Start(const WideEventName& name);
    void End(const WideEventName& name);
    void Text(std::u16string_view text);
    void Instruction(std::u16string_view target, std::u16string_view data);

    EventCounts counts;

    /// Returns the number, in which texts that come in parts are as if they came as a whole.
    std::uint64_t Hash() const { return hash_; }

private:
    static constexpr std::uint64_t kEmpty = 0xCBF29CE484222325;  // the offset basis of FNV-1a

    EventName Split(const JoinedEventName& name);
    static void Add(std::uint64_t& hash, std::string_view bytes);
    void AddEvent(char kind, const EventName& name);

    std::uint64_t hash_ = kEmpty;
    std::uint64_t attributes_ = 0;  // the sum of those that have come since the last element
    std::string uri_;               // what Split() returned last
};

}  // namespace bench
