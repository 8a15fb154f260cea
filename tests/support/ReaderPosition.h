// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/EscapedText.h"

#include <string>

namespace support {

/// Returns the type, name and value of the node that the reader stands on: `Text "a\nb"`,
/// `Element p:a`, `None`. Names and values are escaped (EscapedText.h).
inline std::string NodeText(const Xml::XmlTextReader& reader) {
    std::string out = reader.NodeType().ToString();
    if (!reader.Name().empty()) out += " " + Escape(reader.Name());
    if (reader.HasValue()) out += " \"" + Escape(reader.Value()) + "\"";
    return out;
}

/// Returns NodeText() with depth, line and position: `Element a depth=1 @1:1`.
inline std::string NodeAndPlace(const Xml::XmlTextReader& reader) {
    return NodeText(reader) + " depth=" + std::to_string(reader.Depth()) + " @" +
           std::to_string(reader.LineNumber()) + ":" + std::to_string(reader.LinePosition());
}

/// Calls `call` and returns the message that it throws as an Xml::Exception, with the argument in
/// brackets unless that is empty; "" when it throws nothing.
template <typename Call>
std::string MessageOf(const Call& call) {
    try {
        call();
    } catch (const Xml::Exception& error) {
        std::string out = error.What();
        if (*error.Argument() != '\0') out += " [" + Escape(error.Argument()) + "]";
        return out;
    }
    return "";
}

/// Reads on and returns NodeText() of each node, joined by "; ", or so many of them; an exception
/// ends the row with "error " and MessageOf().
inline std::string NodesFromHere(Xml::XmlTextReader& reader, int most = 1000) {
    std::string out;
    const std::string message = MessageOf([&] {
        for (int i = 0; i < most && reader.Read(); ++i)
            out += (out.empty() ? "" : "; ") + NodeText(reader);
    });
    if (message.empty()) return out;
    return out + (out.empty() ? "error " : "; error ") + message;
}

}  // namespace support
