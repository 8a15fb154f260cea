// SPDX-License-Identifier: MIT
#include <espalier/sax/helpers/AttributesImpl.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using sax::helpers::AttributesImpl;

// Few attributes, and so many that a look-up by namespace has an index.
constexpr int kCounts[] = {1, 2, 16, 17, 100};

std::string Numbered(const char* text, int number) { return text + std::to_string(number); }

AttributesImpl Make(int count) {
    AttributesImpl attributes;
    for (int i = 0; i < count; ++i) {
        attributes.addAttribute(Numbered("urn:", i % 2).c_str(), Numbered("l", i).c_str(),
                                Numbered("p:l", i).c_str(), "CDATA", Numbered("v", i).c_str());
    }
    return attributes;
}

void ExpectAll(const sax::Attributes& attributes, int count) {
    ASSERT_EQ(attributes.getLength(), count);
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE(i);
        const std::string uri = Numbered("urn:", i % 2);
        const std::string local = Numbered("l", i);
        const std::string qName = Numbered("p:l", i);
        const std::string value = Numbered("v", i);
        EXPECT_EQ(attributes.getURI(i), uri);
        EXPECT_EQ(attributes.getLocalName(i), local);
        EXPECT_EQ(attributes.getQName(i), qName);
        EXPECT_STREQ(attributes.getType(i), "CDATA");
        EXPECT_EQ(attributes.getValue(i), value);
        EXPECT_EQ(attributes.getIndex(qName.c_str()), i);
        EXPECT_STREQ(attributes.getType(qName.c_str()), "CDATA");
        EXPECT_EQ(attributes.getValue(qName.c_str()), value);
        EXPECT_EQ(attributes.getIndex(uri.c_str(), local.c_str()), i);
        EXPECT_STREQ(attributes.getType(uri.c_str(), local.c_str()), "CDATA");
        EXPECT_EQ(attributes.getValue(uri.c_str(), local.c_str()), value);
    }
}

void ExpectAbsent(const sax::Attributes& attributes, int index) {
    EXPECT_EQ(attributes.getURI(index), nullptr);
    EXPECT_EQ(attributes.getLocalName(index), nullptr);
    EXPECT_EQ(attributes.getQName(index), nullptr);
    EXPECT_EQ(attributes.getType(index), nullptr);
    EXPECT_EQ(attributes.getValue(index), nullptr);
}

TEST(AttributesImpl, AFreshOneIsEmpty) {
    const AttributesImpl attributes;
    EXPECT_EQ(attributes.getLength(), 0);
    ExpectAbsent(attributes, 0);
    EXPECT_EQ(attributes.getIndex("a"), -1);
    EXPECT_EQ(attributes.getIndex("", "a"), -1);
}

TEST(AttributesImpl, GivesWhatWasAddedByIndexAndByName) {
    for (const int count : kCounts) {
        SCOPED_TRACE(count);
        ExpectAll(Make(count), count);
    }
}

TEST(AttributesImpl, AReadOutOfRangeIsNull) {
    for (const int count : kCounts) {
        const AttributesImpl attributes = Make(count);
        for (const int index : {-1, -2147483647 - 1, count, count + 1, 2147483647}) {
            SCOPED_TRACE(index);
            ExpectAbsent(attributes, index);
        }
    }
}

TEST(AttributesImpl, ANameThatIsAbsentIsNotFound) {
    for (const int count : kCounts) {
        const AttributesImpl attributes = Make(count);
        for (const char* const qName : {"", "l0", "P:l0", "p:l0 ", "p:l"}) {
            SCOPED_TRACE(qName);
            EXPECT_EQ(attributes.getIndex(qName), -1);
            EXPECT_EQ(attributes.getType(qName), nullptr);
            EXPECT_EQ(attributes.getValue(qName), nullptr);
        }
        constexpr std::pair<const char*, const char*> kPairs[] = {
            {"urn:1", "l0"}, {"", "l0"}, {"urn:0", ""}, {"urn:0", "L0"}, {"", ""}, {"urn:0l", "0"}};
        for (const auto& [uri, local] : kPairs) {
            SCOPED_TRACE(std::string(uri) + " " + local);
            EXPECT_EQ(attributes.getIndex(uri, local), -1);
            EXPECT_EQ(attributes.getType(uri, local), nullptr);
            EXPECT_EQ(attributes.getValue(uri, local), nullptr);
        }
    }
}

TEST(AttributesImpl, KeepsTheType) {
    AttributesImpl attributes;
    attributes.addAttribute("", "a", "a", "ID", "1");
    EXPECT_STREQ(attributes.getType(0), "ID");
    EXPECT_STREQ(attributes.getType("a"), "ID");
    EXPECT_STREQ(attributes.getType("", "a"), "ID");
}

TEST(AttributesImpl, OfTwoWithOneNameTheFirstIsFound) {
    for (const int count : {2, 40}) {
        AttributesImpl attributes;
        for (int i = 0; i < count; ++i)
            attributes.addAttribute("urn:x", "a", "p:a", "CDATA", Numbered("", i).c_str());
        EXPECT_EQ(attributes.getIndex("p:a"), 0);
        EXPECT_EQ(attributes.getIndex("urn:x", "a"), 0);
        EXPECT_STREQ(attributes.getValue("urn:x", "a"), "0");
    }
}

// A declaration of a namespace is in none, so its pair may be that of an ordinary attribute.
TEST(AttributesImpl, ADeclarationOfANamespaceGivesWayToAnOrdinaryAttribute) {
    struct Row {
        const char* qName;
        const char* localName;
        bool givesWay;
    };
    constexpr Row kRows[] = {{"xmlns:a", "a", true},
                             {"xmlns", "a", true},
                             {"xmlnsx:a", "a", false},
                             {"p:a", "a", false},
                             {"xmln", "a", false}};
    for (const Row& row : kRows) {
        for (const int others : {0, 40}) {
            SCOPED_TRACE(row.qName);
            AttributesImpl attributes = Make(others);
            attributes.addAttribute("", row.localName, row.qName, "CDATA", "special");
            EXPECT_EQ(attributes.getIndex("", "a"), others);  // as long as it is alone
            attributes.addAttribute("", "a", "a", "CDATA", "ordinary");
            EXPECT_EQ(attributes.getIndex("", "a"), row.givesWay ? others + 1 : others);
            attributes.addAttribute("", "a", "xmlns:a", "CDATA", "late");
            EXPECT_EQ(attributes.getIndex("", "a"), row.givesWay ? others + 1 : others);
            EXPECT_EQ(attributes.getIndex(row.qName), others);
        }
    }
}

TEST(AttributesImpl, WithoutNamespaceAndLocalNameItIsFoundByTheQualifiedNameAlone) {
    for (const int others : {0, 40}) {
        AttributesImpl attributes = Make(others);
        attributes.addAttribute("", "", "a", "CDATA", "1");
        EXPECT_EQ(attributes.getIndex("a"), others);
        EXPECT_EQ(attributes.getIndex("", ""), -1);
        EXPECT_EQ(attributes.getValue("", ""), nullptr);
        EXPECT_EQ(attributes.getType("", ""), nullptr);
        EXPECT_STREQ(attributes.getQName(others), "a");
    }
}

TEST(AttributesImpl, OneOfTheTwoIsEnoughToBeFoundBy) {
    AttributesImpl attributes;
    attributes.addAttribute("urn:x", "", "a", "CDATA", "1");
    attributes.addAttribute("", "b", "b", "CDATA", "2");
    EXPECT_EQ(attributes.getIndex("urn:x", ""), 0);
    EXPECT_EQ(attributes.getIndex("", "b"), 1);
}

TEST(AttributesImpl, SettersReplaceOneField) {
    AttributesImpl attributes = Make(3);
    attributes.setURI(1, "urn:new");
    attributes.setLocalName(1, "new");
    attributes.setQName(1, "n:new");
    attributes.setType(1, "ID");
    attributes.setValue(1, "value");
    EXPECT_STREQ(attributes.getURI(1), "urn:new");
    EXPECT_STREQ(attributes.getLocalName(1), "new");
    EXPECT_STREQ(attributes.getQName(1), "n:new");
    EXPECT_STREQ(attributes.getType(1), "ID");
    EXPECT_STREQ(attributes.getValue(1), "value");
    EXPECT_EQ(attributes.getIndex("n:new"), 1);
    EXPECT_EQ(attributes.getIndex("p:l1"), -1);
    EXPECT_STREQ(attributes.getValue(0), "v0");
    EXPECT_STREQ(attributes.getValue(2), "v2");
}

TEST(AttributesImpl, SetAttributeReplacesAllFields) {
    AttributesImpl attributes = Make(2);
    attributes.setAttribute(0, "urn:new", "new", "n:new", "ID", "value");
    EXPECT_STREQ(attributes.getURI(0), "urn:new");
    EXPECT_STREQ(attributes.getLocalName(0), "new");
    EXPECT_STREQ(attributes.getQName(0), "n:new");
    EXPECT_STREQ(attributes.getType(0), "ID");
    EXPECT_STREQ(attributes.getValue(0), "value");
}

// Deliberate: an attribute is found by the namespace and local name that it was added with.
TEST(AttributesImpl, SettersDoNotChangeWhatAPairFinds) {
    for (const int count : kCounts) {
        for (const bool looksFirst : {false, true}) {
            for (int setter = 0; setter < 3; ++setter) {
                AttributesImpl attributes = Make(count);
                if (looksFirst) {
                    EXPECT_EQ(attributes.getIndex("urn:0", "l0"), 0);
                }
                if (setter == 0) attributes.setURI(0, "urn:new");
                if (setter == 1) attributes.setLocalName(0, "new");
                if (setter == 2) attributes.setAttribute(0, "urn:new", "new", "n:new", "ID", "v");
                EXPECT_EQ(attributes.getIndex("urn:0", "l0"), 0);
                EXPECT_EQ(attributes.getIndex("urn:new", "l0"), -1);
                EXPECT_EQ(attributes.getIndex("urn:0", "new"), -1);
                EXPECT_EQ(attributes.getIndex("urn:new", "new"), -1);
                attributes.addAttribute("urn:new", "new", "o:new", "CDATA", "late");
                EXPECT_EQ(attributes.getIndex("urn:new", "new"), count);
            }
        }
    }
}

template <typename Call>
void ExpectOutOfRange(const Call& call) {
    try {
        call();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector<T> subscript");
    }
}

TEST(AttributesImpl, AWriteOutOfRangeThrowsAndChangesNothing) {
    for (const int count : {0, 1, 20}) {
        for (const int index : {-1, -2147483647 - 1, count, count + 1, 2147483647}) {
            SCOPED_TRACE(index);
            AttributesImpl attributes = Make(count);
            ExpectOutOfRange([&] { attributes.setAttribute(index, "u", "l", "q", "t", "v"); });
            ExpectOutOfRange([&] { attributes.setURI(index, "u"); });
            ExpectOutOfRange([&] { attributes.setLocalName(index, "l"); });
            ExpectOutOfRange([&] { attributes.setQName(index, "q"); });
            ExpectOutOfRange([&] { attributes.setType(index, "t"); });
            ExpectOutOfRange([&] { attributes.setValue(index, "v"); });
            ExpectAll(attributes, count);
        }
    }
}

TEST(AttributesImpl, ClearForgetsAttributesAndPairs) {
    for (const int count : kCounts) {
        AttributesImpl attributes = Make(count);
        EXPECT_EQ(attributes.getIndex("urn:0", "l0"), 0);
        attributes.clear();
        EXPECT_EQ(attributes.getLength(), 0);
        EXPECT_EQ(attributes.getIndex("p:l0"), -1);
        EXPECT_EQ(attributes.getIndex("urn:0", "l0"), -1);
        attributes.addAttribute("urn:0", "l0", "p:l0", "CDATA", "v0");
        ExpectAll(attributes, 1);
    }
}

TEST(AttributesImpl, CopiesAreComplete) {
    for (const int count : kCounts) {
        SCOPED_TRACE(count);
        AttributesImpl original = Make(count);
        const AttributesImpl copy(original);
        const sax::Attributes& general = original;
        const AttributesImpl fromInterface(general);
        AttributesImpl assigned = Make(3);
        assigned = original;
        AttributesImpl set = Make(30);
        set.setAttributes(original);
        original.clear();
        for (const AttributesImpl* const one :
             std::initializer_list<const AttributesImpl*>{&copy, &fromInterface, &assigned, &set}) {
            ExpectAll(*one, count);
        }
    }
}

TEST(AttributesImpl, ACopyTakesThePairsAsTheyWereAdded) {
    AttributesImpl original = Make(2);
    original.setURI(0, "urn:new");
    const AttributesImpl copy(original);
    EXPECT_EQ(copy.getIndex("urn:0", "l0"), 0);
    EXPECT_EQ(copy.getIndex("urn:new", "l0"), -1);
    AttributesImpl assigned;
    assigned = original;
    EXPECT_EQ(assigned.getIndex("urn:0", "l0"), 0);
}

TEST(AttributesImpl, TakesItselfForACopy) {
    for (const int count : kCounts) {
        AttributesImpl attributes = Make(count);
        attributes.setAttributes(attributes);
        ExpectAll(attributes, count);
        const AttributesImpl& same = attributes;
        attributes = same;
        ExpectAll(attributes, count);
    }
}

TEST(AttributesImpl, TextsMayComeFromTheObjectItself) {
    AttributesImpl attributes = Make(1);
    for (int i = 0; i < 40; ++i) {
        attributes.addAttribute(attributes.getURI(0), attributes.getLocalName(0),
                                attributes.getQName(0), attributes.getType(0),
                                attributes.getValue(0));
    }
    attributes.setValue(7, attributes.getQName(7));
    EXPECT_STREQ(attributes.getValue(7), "p:l0");
    EXPECT_STREQ(attributes.getValue(40), "v0");
    EXPECT_EQ(attributes.getLength(), 41);
}

TEST(AttributesImpl, ANullPointerIsAnEmptyText) {
    AttributesImpl attributes;
    attributes.addAttribute(nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_STREQ(attributes.getURI(0), "");
    EXPECT_STREQ(attributes.getLocalName(0), "");
    EXPECT_STREQ(attributes.getQName(0), "");
    EXPECT_STREQ(attributes.getType(0), "");
    EXPECT_STREQ(attributes.getValue(0), "");
}

}  // namespace
