// SPDX-License-Identifier: MIT
// pugixml, once with everything that it can keep and once with what it keeps unless told otherwise.
#include "dom/TreeLibrary.h"

#include <cstring>
#include <pugixml.hpp>
#include <stdexcept>

namespace bench {

namespace {

class PugixmlTree final : public Tree {
public:
    PugixmlTree(std::string_view document, unsigned options) {
        const pugi::xml_parse_result result =
            document_.load_buffer(document.data(), document.size(), options);
        if (!result) throw std::runtime_error(result.description());
    }

    void Walk(TreeTotals& totals) const override {
        pugi::xml_node node = document_.first_child();
        while (node) {
            Visit(node, totals);
            if (const pugi::xml_node child = node.first_child()) {
                node = child;
                continue;
            }
            while (node && !node.next_sibling())
                node = node.parent();
            if (node) node = node.next_sibling();
        }
    }

private:
    static void Visit(const pugi::xml_node& node, TreeTotals& totals) {
        switch (node.type()) {
        case pugi::node_element:
            ++totals.elements;
            totals.AddName(std::strlen(node.name()));
            for (const pugi::xml_attribute attribute : node.attributes()) {
                ++totals.attributes;
                totals.AddName(std::strlen(attribute.name()));
                totals.AddValue(std::strlen(attribute.value()));
            }
            break;
        case pugi::node_pcdata:
        case pugi::node_cdata: totals.AddText(std::strlen(node.value())); break;
        case pugi::node_comment: totals.AddOther(std::strlen(node.value())); break;
        case pugi::node_pi:
            totals.AddOther(std::strlen(node.name()) + std::strlen(node.value()));
            break;
        default: break;
        }
    }

    pugi::xml_document document_;
};

}  // namespace

std::unique_ptr<Tree> LoadPugixmlFullTree(std::string_view document) {
    return std::make_unique<PugixmlTree>(document, pugi::parse_full | pugi::parse_ws_pcdata);
}

std::unique_ptr<Tree> LoadPugixmlTree(std::string_view document) {
    return std::make_unique<PugixmlTree>(document, pugi::parse_default);
}

std::string PugixmlTreeVersion() {
    return std::to_string(PUGIXML_VERSION / 1000) + "." +
           std::to_string(PUGIXML_VERSION / 10 % 100);
}

}  // namespace bench
