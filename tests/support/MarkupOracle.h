// SPDX-License-Identifier: MIT
#pragma once

#include "support/DocumentReader.h"
#include "support/ElementFinder.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace support {

/// Knows what ReadInnerXml() and ReadOuterXml() return for each element of a document, and to which
/// node they lead: the markup from ElementFinder.h, the nodes from reading without them. Elements
/// that come from entities are left out.
class MarkupOracle {
public:
    enum class Part { Inner, Outer };

    /// \param bytes the document as the reader gets it
    /// \param text the same in UTF-8, without a byte-order mark; outlives the oracle
    MarkupOracle(std::string bytes, std::string_view text, const ReaderSettings& settings = {},
                 int bytesPerRead = 0)
        : bytes_(std::move(bytes)),
          settings_(settings),
          bytesPerRead_(bytesPerRead),
          elements_(FindElements(text)) {
        ListNodes();
    }

    std::size_t ElementCount() const { return elements_.size(); }

    /// Takes the markup of every element with a new reader each, and expects it to be right.
    void ExpectEachElement() const {
        for (std::size_t i = 0; i < nodes_.size(); ++i) {
            if (!nodes_[i].element) continue;
            for (const Part part : {Part::Outer, Part::Inner}) {
                DocumentReader reader(bytes_, settings_, bytesPerRead_);
                reader.ReadNodes(static_cast<int>(i) + 1);
                ExpectMarkup(*reader, i, part);
            }
        }
    }

    /// Reads the document once and takes the markup of those elements for which `choose` returns a
    /// part, and expects it to be right.
    template <typename Choose>
    void ExpectOnOneWay(const Choose& choose) const {
        DocumentReader reader(bytes_, settings_, bytesPerRead_);
        if (nodes_.empty()) return;
        ASSERT_TRUE(reader->Read());
        for (std::size_t i = 0; i < nodes_.size();) {
            ASSERT_EQ(NodeAndPlace(*reader), nodes_[i].text);
            const std::optional<Part> part = nodes_[i].element ? choose() : std::nullopt;
            if (part) {
                ASSERT_TRUE(ExpectMarkup(*reader, i, *part));
                i = nodes_[i].end + 1;
            } else {
                ++i;
                ASSERT_EQ(reader->Read(), i < nodes_.size());
            }
        }
        EXPECT_TRUE(reader->Eof());
    }

private:
    struct Node {
        std::string text;
        std::optional<std::size_t> element;  // in elements_, of a start tag in the document itself
        std::size_t end;                     // the last node of that element
    };

    // Returns where the elements of the document itself stand: read so that no entity is expanded.
    std::vector<std::string> PlacesOfElements() const {
        ReaderSettings settings = settings_;
        settings.entities = Xml::XmlEntityHandling::ExpandCharEntities;
        std::vector<std::string> places;
        DocumentReader reader(bytes_, settings, bytesPerRead_);
        while (reader->Read()) {
            if (reader->NodeType() == Xml::XmlNodeType::Element) {
                places.push_back(NodeAndPlace(*reader));
            }
        }
        return places;
    }

    void ListNodes() {
        const std::vector<std::string> places = PlacesOfElements();
        ASSERT_EQ(places.size(), elements_.size());
        DocumentReader reader(bytes_, settings_, bytesPerRead_);
        std::vector<std::size_t> open;
        std::size_t elements = 0;
        while (reader->Read()) {
            const std::size_t index = nodes_.size();
            nodes_.push_back({NodeAndPlace(*reader), std::nullopt, index});
            if (reader->NodeType() == Xml::XmlNodeType::Element) {
                if (elements < places.size() && nodes_.back().text == places[elements]) {
                    ASSERT_EQ(reader->Name(), elements_[elements].name);
                    ASSERT_EQ(reader->IsEmptyElement(), elements_[elements].isEmptyTag);
                    nodes_.back().element = elements++;
                }
                if (!reader->IsEmptyElement()) open.push_back(index);
            } else if (reader->NodeType() == Xml::XmlNodeType::EndElement) {
                nodes_[open.back()].end = index;
                open.pop_back();
            }
        }
        ASSERT_EQ(elements, elements_.size());
    }

    bool ExpectMarkup(Xml::XmlTextReader& reader, std::size_t node, Part part) const {
        const FoundElement& element = elements_[*nodes_[node].element];
        SCOPED_TRACE(std::string(part == Part::Inner ? "inner of " : "outer of ") +
                     nodes_[node].text + ", bytes per read: " + std::to_string(bytesPerRead_));
        EXPECT_EQ(NodeAndPlace(reader), nodes_[node].text);
        const std::string expected(part == Part::Inner ? element.inner : element.outer);
        const std::string markup =
            (part == Part::Inner ? reader.ReadInnerXml() : reader.ReadOuterXml()).str();
        EXPECT_EQ(markup, expected);

        const std::size_t next = nodes_[node].end + 1;
        if (next < nodes_.size()) {
            EXPECT_EQ(NodeAndPlace(reader), nodes_[next].text);
            EXPECT_EQ(reader.ReadState(), Xml::XmlTextReader::Interactive);
        } else {
            EXPECT_EQ(NodeText(reader), "None");
            EXPECT_TRUE(reader.Eof());
        }
        return markup == expected;
    }

    std::string bytes_;
    ReaderSettings settings_;
    int bytesPerRead_;
    std::vector<FoundElement> elements_;
    std::vector<Node> nodes_;
};

}  // namespace support
