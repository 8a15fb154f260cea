// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/CssReader.h>
#include <espalier/io/MemoryStream.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace support {

/// A reader of a text in memory. The text must live as long.
class CssText {
public:
    explicit CssText(std::string_view text, const char* encodingName = "UTF-8")
        : stream_(reinterpret_cast<const unsigned char*>(text.data()),
                  static_cast<long>(text.size())),
          reader_(&stream_, astring(encodingName)) {}

    CssText(std::string_view text, Xml::Encoding* encoding)
        : stream_(reinterpret_cast<const unsigned char*>(text.data()),
                  static_cast<long>(text.size())),
          reader_(&stream_, encoding) {}

    Dom::CSS::CssReader* operator->() { return &reader_; }
    Dom::CSS::CssReader& operator*() { return reader_; }

    /// Reads `count` nodes, and tells whether there were as many.
    bool Skip(int count) {
        while (count > 0 && reader_.Read())
            --count;
        return count == 0;
    }

private:
    IO::MemoryStream stream_;
    Dom::CSS::CssReader reader_;
};

/// Returns the node that a reader stands on: "Selector[p]", "Comment[/**/]", "Property[name=value]"
/// or, of other nodes, the kind alone.
inline std::string NodeOf(const Dom::CSS::CssReader& reader) {
    using Dom::CSS::CssNodeType;
    const CssNodeType type = reader.NodeType();
    const std::string name = type.ToString().str();
    if (type == CssNodeType::Property) {
        return name + "[" + reader.Name().str() + "=" + reader.Value().str() + "]";
    }
    if (type == CssNodeType::Selector || type == CssNodeType::Comment) {
        return name + "[" + reader.Value().str() + "]";
    }
    return name;
}

/// Returns the nodes up to the first read that fails, with spaces between them.
/// \param most each node takes a byte at least, so there are not more than the text has
inline std::string NodesOf(Dom::CSS::CssReader& reader, std::size_t most) {
    std::string nodes;
    for (std::size_t count = 0; reader.Read(); ++count) {
        if (count == most) return nodes + " and no end";
        if (count > 0) nodes += ' ';
        nodes += NodeOf(reader);
    }
    return nodes;
}

inline std::string NodesOf(std::string_view text, const char* encodingName = "UTF-8") {
    CssText reader(text, encodingName);
    return NodesOf(*reader, text.size());
}

/// Returns the rules of a sheet, each in a line, as one reads them that makes a style sheet.
inline std::string RulesOf(Dom::CSS::CssReader& reader, std::size_t most) {
    std::string rules;
    for (std::size_t count = 0; reader.Read(); ++count) {
        if (count == most) return rules + "and no end";
        rules += reader.ReadRule().str() + "\n";
    }
    return rules;
}

inline std::string RulesOf(std::string_view text, const char* encodingName = "UTF-8") {
    CssText reader(text, encodingName);
    return RulesOf(*reader, text.size());
}

}  // namespace support
