// SPDX-License-Identifier: MIT
// tinyxml2, which drops texts of white space alone.
#include "dom/TreeLibrary.h"

#include <cstring>
#include <stdexcept>
#include <tinyxml2.h>

namespace bench {

namespace {

class Tinyxml2Tree final : public Tree {
public:
    explicit Tinyxml2Tree(std::string_view document) {
        if (document_.Parse(document.data(), document.size()) != tinyxml2::XML_SUCCESS) {
            throw std::runtime_error(document_.ErrorStr());
        }
    }

    void Walk(TreeTotals& totals) const override {
        const tinyxml2::XMLNode* node = document_.FirstChild();
        while (node != nullptr) {
            Visit(*node, totals);
            if (const tinyxml2::XMLNode* const child = node->FirstChild()) {
                node = child;
                continue;
            }
            while (node != nullptr && node->NextSibling() == nullptr)
                node = node->Parent();
            if (node != nullptr) node = node->NextSibling();
        }
    }

private:
    static void Visit(const tinyxml2::XMLNode& node, TreeTotals& totals) {
        if (const tinyxml2::XMLElement* const element = node.ToElement()) {
            ++totals.elements;
            totals.AddName(std::strlen(element->Name()));
            for (const tinyxml2::XMLAttribute* attribute = element->FirstAttribute();
                 attribute != nullptr; attribute = attribute->Next()) {
                ++totals.attributes;
                totals.AddName(std::strlen(attribute->Name()));
                totals.AddValue(std::strlen(attribute->Value()));
            }
        } else if (node.ToText() != nullptr) {
            totals.AddText(std::strlen(node.Value()));
        } else if (node.ToComment() != nullptr) {
            totals.AddOther(std::strlen(node.Value()));
        }
    }

    tinyxml2::XMLDocument document_;
};

}  // namespace

std::unique_ptr<Tree> LoadTinyxml2Tree(std::string_view document) {
    return std::make_unique<Tinyxml2Tree>(document);
}

std::string Tinyxml2TreeVersion() {
    return std::to_string(TINYXML2_MAJOR_VERSION) + "." + std::to_string(TINYXML2_MINOR_VERSION) +
           "." + std::to_string(TINYXML2_PATCH_VERSION);
}

}  // namespace bench
