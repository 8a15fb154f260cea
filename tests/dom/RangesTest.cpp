// SPDX-License-Identifier: MIT
// The ranges over children, lists, attributes and maps as the standard library uses them.
#include <espalier/dom.h>

#include <gtest/gtest.h>

#include <iterator>

namespace {

static_assert(std::forward_iterator<Dom::ChildRange::Iterator>);
static_assert(std::forward_iterator<Dom::NodeList::Iterator>);
static_assert(std::forward_iterator<Dom::NamedNodeMap::Iterator>);
static_assert(std::input_iterator<Dom::AttributeRange::Iterator>);

// Goes to the end of two members by it++, which tells the old place.
template <typename Range>
void ExpectTwo(const Range& range) {
    auto at = range.begin();
    const auto first = at++;
    EXPECT_TRUE(first == range.begin());
    EXPECT_FALSE(at == first);
    const auto second = at++;
    EXPECT_TRUE(second == std::next(range.begin()));
    EXPECT_TRUE(at == range.end());
}

}  // namespace

TEST(Ranges, TellTheOldPlaceWhenTheyStepOn) {
    Dom::Document document;
    document.LoadXml("<a b='c' d='e'><f/><g/></a>");
    Dom::Element& root = *document.DocumentElement();
    ExpectTwo(root.Children());
    ExpectTwo(root.AttributeViews());
    ExpectTwo(root.ChildNodes());
    ExpectTwo(*root.Attributes());
    auto child = root.Children().begin();
    EXPECT_EQ((child++)->NodeName(), "f");
    EXPECT_EQ(child->NodeName(), "g");
}
