// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlEntityLimits.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

/// \file
/// Documents with many entities, and what becomes of them.
namespace support {

/// The ways to come across the entities of a document.
enum class Way {
    Expand,   // everything is expanded
    Resolve,  // references in content and in values are resolved
};

inline constexpr Way kWays[] = {Way::Expand, Way::Resolve};

/// What became of a document.
struct Outcome {
    std::string error;  // the message, or "" when it was read to the end
    std::string argument;
    int line = 0;
    int column = 0;
    long nodes = 0;
    std::size_t text = 0;  // bytes of all texts and, expanded, of all values
};

inline void ResolveParts(Xml::XmlTextReader& reader, Outcome& outcome) {
    while (reader.ReadAttributeValue()) {
        outcome.text += reader.Value().size();
        if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
    }
}

inline void ReadNodes(Xml::XmlTextReader& reader, Way way, Outcome& outcome) {
    while (reader.Read()) {
        ++outcome.nodes;
        if (reader.NodeType() == Xml::XmlNodeType::Text) outcome.text += reader.Value().size();
        if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            if (way == Way::Resolve) {
                ResolveParts(reader, outcome);
            } else {
                outcome.text += reader.Value().size();
            }
        }
    }
}

inline Outcome ReadAll(Xml::XmlTextReader& reader, const std::string& document, Way way) {
    DocumentStream stream(document);
    reader.SetStream(stream.get(), false);
    reader.SetEntityHandling(way == Way::Expand ? Xml::XmlEntityHandling::ExpandEntities
                                                : Xml::XmlEntityHandling::ExpandCharEntities);
    Outcome outcome;
    try {
        ReadNodes(reader, way, outcome);
    } catch (const Xml::Exception& error) {
        outcome.error = error.What();
        outcome.argument = error.Argument();
        outcome.line = error.LineNumber();
        outcome.column = error.LinePos();
        EXPECT_EQ(reader.ReadState(), Xml::XmlTextReader::Error);
        EXPECT_FALSE(reader.Read());
    }
    reader.Close();
    return outcome;
}

inline Outcome ReadAll(const std::string& document, Way way,
                       const Xml::XmlEntityLimits& limits = {}) {
    Xml::XmlTextReader reader;
    reader.SetEntityLimits(limits);
    return ReadAll(reader, document, way);
}

inline std::string Number(int i) { return std::to_string(i); }

inline std::string Entity(const std::string& name, const std::string& text) {
    return "<!ENTITY " + name + " \"" + text + "\">";
}

/// "&name;", `count` times.
inline std::string References(const std::string& name, int count = 1) {
    std::string out;
    for (int i = 0; i < count; ++i)
        out += "&" + name + ";";
    return out;
}

inline std::string InContent(const std::string& declarations, const std::string& content) {
    return "<!DOCTYPE a [" + declarations + "]>\n<a>" + content + "</a>";
}

inline std::string InValue(const std::string& declarations, const std::string& value) {
    return "<!DOCTYPE a [" + declarations + "]>\n<a x='" + value + "'/>";
}

/// e0, whose text names e1, whose text names e2, ..., and the last, with a text of its own.
inline std::string Chain(int length, const std::string& last) {
    std::string out;
    for (int i = 0; i + 1 < length; ++i)
        out += Entity("e" + Number(i), References("e" + Number(i + 1)));
    return out + Entity("e" + Number(length - 1), last);
}

/// l0 has the text, and each of the others names the one before so many times.
inline std::string Laughs(int levels, int each, const std::string& text) {
    std::string out = Entity("l0", text);
    for (int i = 1; i < levels; ++i)
        out += Entity("l" + Number(i), References("l" + Number(i - 1), each));
    return out;
}

}  // namespace support
