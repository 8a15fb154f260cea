// SPDX-License-Identifier: MIT
#include "writer/Recording.h"

#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <limits>
#include <stdexcept>

namespace bench {

namespace {

class Recorder {
public:
    explicit Recorder(Recording& recording) : recording_(recording) {}

    // Returns how many bytes it takes to write what has been recorded, escapes not counted.
    std::size_t Bytes() const { return bytes_; }

    void Take(Xml::XmlTextReader& reader) {
        switch (reader.NodeType()) {
        case Xml::XmlNodeType::Element: TakeElement(reader); break;
        case Xml::XmlNodeType::EndElement: End(); break;
        case Xml::XmlNodeType::Text:
        case Xml::XmlNodeType::CDATA:
        case Xml::XmlNodeType::Whitespace:
        case Xml::XmlNodeType::SignificantWhitespace: TakeText(reader.Value()); break;
        default: break;
        }
    }

    void EndAll() {
        while (openElements_ > 0) {
            End();
        }
    }

private:
    // What is written around names, values and texts.
    static constexpr std::size_t kEmptyTag = std::string_view("</>").size();
    static constexpr std::size_t kTags = std::string_view("<></>").size();
    static constexpr std::size_t kAttribute = std::string_view(" =\"\"").size();

    void TakeElement(Xml::XmlTextReader& reader) {
        const bool isEmpty = reader.IsEmptyElement();
        const std::size_t nameLength = reader.Name().size();
        bytes_ += isEmpty ? nameLength + kEmptyTag : 2 * nameLength + kTags;
        Add(CallKind::Start, reader.Name(), {});
        ++openElements_;
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            bytes_ += reader.Name().size() + reader.Value().size() + kAttribute;
            Add(CallKind::Attribute, reader.Name(), reader.Value());
        }
        if (isEmpty) End();
    }

    // Texts with a comment between them become one, as they are to whoever reads the output.
    void TakeText(std::string_view text) {
        if (openElements_ == 0 || text.empty()) return;
        bytes_ += text.size();
        if (recording_.calls.back().kind != CallKind::Text) {
            Add(CallKind::Text, {}, text);
            return;
        }
        recording_.buffer.pop_back();
        recording_.buffer += text;
        recording_.buffer += '\0';
        recording_.calls.back().valueLength += Length<std::uint32_t>(text);
    }

    void End() {
        Add(CallKind::End, {}, {});
        --openElements_;
    }

    void Add(CallKind kind, std::string_view name, std::string_view value) {
        std::string& buffer = recording_.buffer;
        recording_.calls.push_back({Length<std::uint32_t>(buffer), Length<std::uint32_t>(value),
                                    Length<std::uint16_t>(name), kind});
        if (kind == CallKind::End) return;
        buffer += name;
        buffer += '\0';
        if (kind == CallKind::Start) return;
        buffer += value;
        buffer += '\0';
    }

    template <typename Number>
    static Number Length(std::string_view text) {
        if (text.size() > std::numeric_limits<Number>::max()) {
            throw std::length_error("a document with texts too long to record");
        }
        return static_cast<Number>(text.size());
    }

    Recording& recording_;
    std::size_t bytes_ = 0;
    int openElements_ = 0;
};

}  // namespace

Recording Record(std::string_view document, std::size_t mostBytes) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    Recording recording;
    Recorder recorder(recording);
    while (recorder.Bytes() < mostBytes && reader.Read()) {
        recorder.Take(reader);
    }
    recorder.EndAll();
    return recording;
}

}  // namespace bench
