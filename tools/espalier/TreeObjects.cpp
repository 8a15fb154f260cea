// SPDX-License-Identifier: MIT
#include "TreeObjects.h"

#include "Escape.h"

namespace Tool {

void TreeObjects::Take(const TreeNode& node) {
    out_.Write('{');
    if (!file_.empty()) {
        WriteMember("\"file\":", file_);
        out_.Write(',');
    }
    out_.Write("\"depth\":");
    out_.WriteNumber(node.depth);
    out_.Write(",\"type\":\"");
    out_.Write(node.type.ToString());
    out_.Write('"');
    if (!node.name.empty()) WriteMember(",\"name\":", node.name);
    const bool isElement = node.type == Xml::XmlNodeType::Element;
    if (isElement && !node.namespaceUri.empty()) WriteMember(",\"namespace\":", node.namespaceUri);
    if (isElement && !node.attributes.empty()) {
        std::string_view intro = ",\"attributes\":{";
        for (const TreeNode::Attribute& attribute : node.attributes) {
            WriteMember(intro, attribute.name);
            WriteMember(":", attribute.value);
            intro = ",";
        }
        out_.Write('}');
    }
    if (node.hasValue) WriteMember(",\"value\":", node.value);
    if (node.isCut) out_.Write(",\"cut\":true");
    out_.Write("}\n");
}

void TreeObjects::WriteMember(std::string_view intro, std::string_view value) {
    out_.Write(intro);
    WriteJsonString(out_, value);
}

}  // namespace Tool
