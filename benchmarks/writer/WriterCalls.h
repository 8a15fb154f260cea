// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextWriter.h>

#include <string_view>

namespace bench {

/// Makes the calls of a recording on our writer, see Replay().
class WriterCalls {
public:
    explicit WriterCalls(Xml::XmlTextWriter& writer) : writer_(writer) {}

    void Start(std::string_view name) { writer_.WriteStartElement(name); }
    void Attribute(std::string_view name, std::string_view value) {
        writer_.WriteAttributeString(name, value);
    }
    void Text(std::string_view text) { writer_.WriteString(text); }
    void End() { writer_.WriteEndElement(); }

private:
    Xml::XmlTextWriter& writer_;
};

}  // namespace bench
