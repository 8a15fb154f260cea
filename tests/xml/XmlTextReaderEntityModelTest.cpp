// SPDX-License-Identifier: MIT
//
// Random entities, and a model that knows what they stand for: reading with everything expanded and
// resolving every reference must both tell the same, however the input comes.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/NodeDump.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace {

using support::DocumentReader;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

// A piece of text, as written and as what it stands for in the document and in an entity.
struct TextPiece {
    const char* written;
    const char* inDocument;
    const char* inEntity;
};

constexpr TextPiece kTexts[] = {
    {"x", "x", "x"},
    {" ", " ", " "},
    {"\n", "\n", "\n"},
    {"]]", "]]", "]]"},
    {"\xC3\xA9\xE2\x82\xAC", "\xC3\xA9\xE2\x82\xAC", "\xC3\xA9\xE2\x82\xAC"},
    {"&lt;", "<", "<"},
    {"&amp;lt;", "&lt;", "&lt;"},
    {"&#65;", "A", "A"},
    {"&#x1F600;", "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
    {"&#38;#66;", "&#66;", "B"},
    {"&#38;amp;", "&amp;", "&"},
    {"longer text of an entity", "longer text of an entity", "longer text of an entity"},
};

// What a text stands for. Tags are told by control codes, which no text holds.
struct Meaning {
    std::string written;
    std::string content;  // tags and texts, with the values of attributes
    std::string value;    // in the value of an attribute, where markup is text
};

class Model {
public:
    explicit Model(unsigned seed) : random_(seed) {
        // Each entity refers to those made before it, so that there are no cycles.
        const std::size_t count = 1 + Below(8);
        for (std::size_t i = 0; i < count; ++i)
            entities_.push_back(Write(2, true));
        root_ = Write(3, false);
        attribute_ = WriteText(false);
    }

    std::string Document() {
        std::string out = "<!DOCTYPE r [";
        // Declared in any order.
        std::vector<std::size_t> order;
        for (std::size_t i = 0; i < entities_.size(); ++i)
            order.insert(order.begin() + static_cast<std::ptrdiff_t>(Below(i + 1)), i);
        for (const std::size_t i : order) {
            out += "<!ENTITY " + Name(i) + " \"" + entities_[i].written + "\">";
            if (Below(3) == 0) out += "<!-- <!ENTITY " + Name(i) + " 'not this'> -->\n";
        }
        return out + "]><r x='" + attribute_.written + "'>" + root_.written + "</r>";
    }

    std::string Expected() const {
        return "\x01r " + attribute_.value + "\x02" + root_.content + "\x03r\x02";
    }

private:
    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    static std::string Name(std::size_t i) { return "entity" + std::to_string(i); }

    static void Append(Meaning& meaning, const Meaning& more) {
        meaning.written += more.written;
        meaning.content += more.content;
        meaning.value += more.value;
    }

    // Text and references, for the value of an attribute.
    Meaning WriteText(bool isInEntity) {
        Meaning meaning;
        for (std::size_t count = Below(4); count > 0; --count) {
            if (!entities_.empty() && Below(3) == 0) {
                const std::size_t i = Below(entities_.size());
                if (entities_[i].value.size() > 5000) continue;
                Append(meaning, {"&" + Name(i) + ";", entities_[i].content, entities_[i].value});
            } else {
                const TextPiece& piece = kTexts[Below(std::size(kTexts))];
                const char* text = isInEntity ? piece.inEntity : piece.inDocument;
                Append(meaning, {piece.written, text, text});
            }
        }
        return meaning;
    }

    // Texts, references, elements and comments.
    Meaning Write(int depth, bool isInEntity) {
        Meaning meaning;
        for (std::size_t count = 1 + Below(4); count > 0; --count) {
            const std::size_t kind = Below(5);
            if (kind == 0 && depth > 0) {
                const Meaning attribute = WriteText(isInEntity);
                const Meaning inner = Write(depth - 1, isInEntity);
                Append(meaning, {"<b x='" + attribute.written + "'>" + inner.written + "</b>",
                                 "\x01"
                                 "b " +
                                     attribute.value + "\x02" + inner.content + "\x03" + "b\x02",
                                 "<b x='" + attribute.value + "'>" + inner.value + "</b>"});
            } else if (kind == 1) {
                Append(meaning, {"<!-- c -->", "", "<!-- c -->"});
            } else {
                Append(meaning, WriteText(isInEntity));
            }
        }
        return meaning;
    }

    std::mt19937 random_;
    std::vector<Meaning> entities_;
    Meaning root_;
    Meaning attribute_;
};

std::string ValueOf(XmlTextReader& reader, bool resolve) {
    if (!resolve) return reader.Value().str();
    std::string value;
    int depth = 0;
    while (reader.ReadAttributeValue()) {
        if (reader.NodeType() == XmlNodeType::EntityReference) {
            reader.ResolveEntity();
            ++depth;
        } else if (reader.NodeType() == XmlNodeType::EndEntity) {
            --depth;
        } else {
            value += reader.Value().str();
        }
    }
    EXPECT_EQ(depth, 0);
    return value;
}

std::string ReadContent(XmlTextReader& reader, bool resolve) {
    std::string content;
    while (reader.Read()) {
        switch (reader.NodeType()) {
        case XmlNodeType::Element:
            content += "\x01" + reader.Name().str() + " ";
            if (reader.MoveToFirstAttribute()) content += ValueOf(reader, resolve);
            content += "\x02";
            break;
        case XmlNodeType::EndElement: content += "\x03" + reader.Name().str() + "\x02"; break;
        case XmlNodeType::Text:
        case XmlNodeType::Whitespace: content += reader.Value().str(); break;
        case XmlNodeType::EntityReference: reader.ResolveEntity(); break;
        default: break;
        }
    }
    return content;
}

TEST(XmlTextReaderEntityModel, ExpandingAndResolvingTellWhatTheModelSays) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        Model model(seed);
        const std::string document = model.Document();
        const std::string expected = model.Expected();
        for (const bool resolve : {false, true}) {
            for (const int bytesPerRead : {0, 1, 7}) {
                DocumentReader reader(
                    document,
                    support::WithEntities(resolve ? XmlEntityHandling::ExpandCharEntities
                                                  : XmlEntityHandling::ExpandEntities),
                    bytesPerRead);
                ASSERT_EQ(ReadContent(*reader, resolve), expected)
                    << "seed " << seed << (resolve ? ", resolved: " : ", expanded: ") << document;
            }
        }
    }
}

TEST(XmlTextReaderEntityModel, NodesAndPlacesAreThoseOfEveryFormAndRead) {
    ReaderSettings resolving;
    resolving.resolve = true;
    resolving.parts = true;
    for (unsigned seed = 0; seed < 150; ++seed) {
        const std::string document = Model(seed).Document();
        for (const ReaderSettings& settings :
             {support::WithEntities(XmlEntityHandling::ExpandEntities),
              support::WithEntities(XmlEntityHandling::ExpandNothing), resolving}) {
            const std::string expected = support::DumpDocument(document, settings);
            ASSERT_EQ(expected.find("error"), std::string::npos) << document;
            support::ExpectNodesInAllForms(document, settings, expected);
            ASSERT_FALSE(testing::Test::HasFailure()) << seed << ": " << document;
        }
    }
}

}  // namespace
