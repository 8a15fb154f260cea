// SPDX-License-Identifier: MIT
// Draws the layers of the library: layers_picture docs/images/layers.svg
#include <espalier/espalier.h>

#include <string>
#include <string_view>

namespace {

constexpr char kSvg[] = "http://www.w3.org/2000/svg";

struct Box {
    int x, y, width;
    std::string_view name;
    std::string_view text;
};

// A layer stands on those that it includes.
constexpr Box kLayers[] = {
    {10, 10, 345, "sax", "calls of handlers"},
    {365, 10, 345, "dom", "trees, style sheets, styles"},
    {10, 64, 700, "xml", "the pull reader, the writer, namespaces, the hash map"},
    {10, 118, 700, "encoding", "bytes to characters and back"},
    {10, 172, 700, "io", "streams: files, memory, strings, gzip, zip; the exception"},
    {10, 226, 700, "base", "the string"},
};

void WriteText(Xml::XmlTextWriter& writer, int x, int y, std::string_view weight,
               std::string_view text) {
    writer.WriteStartElement("text", kSvg);
    writer.WriteAttributeString("x", std::to_string(x));
    writer.WriteAttributeString("y", std::to_string(y));
    writer.WriteAttributeString("font-weight", weight);
    writer.WriteString(text);
    writer.WriteEndElement();
}

void WriteBox(Xml::XmlTextWriter& writer, const Box& box) {
    writer.WriteStartElement("rect", kSvg);
    writer.WriteAttributeString("x", std::to_string(box.x));
    writer.WriteAttributeString("y", std::to_string(box.y));
    writer.WriteAttributeString("width", std::to_string(box.width));
    writer.WriteAttributeString("height", "44");
    writer.WriteAttributeString("rx", "4");
    writer.WriteAttributeString("fill", "#dcebd9");
    writer.WriteAttributeString("stroke", "#4f7a4a");
    writer.WriteEndElement();
    WriteText(writer, box.x + 14, box.y + 27, "bold", box.name);
    WriteText(writer, box.x + 100, box.y + 27, "normal", box.text);
}

}  // namespace

int main(int argc, char** argv) {
    Xml::UTF8Encoding utf8;
    Xml::XmlTextWriter writer(argc > 1 ? argv[1] : "layers.svg", &utf8);
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetNewLineChars("\n");
    writer.WriteStartDocument();
    writer.WriteStartElement("svg", kSvg);
    writer.WriteAttributeString("viewBox", "0 0 720 280");
    writer.WriteAttributeString("font-family", "sans-serif");
    writer.WriteAttributeString("font-size", "15");
    writer.WriteAttributeString("fill", "#1d2b1c");
    writer.WriteElementString("title", kSvg, "The layers of Espalier");
    for (const Box& box : kLayers)
        WriteBox(writer, box);
    writer.Close();
}
