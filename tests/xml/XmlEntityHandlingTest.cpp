// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlEntityHandling.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Xml::XmlEntityHandling;

const struct {
    int number;
    XmlEntityHandling::XML_ENTITY_HANDLING value;
    const char* name;
} kValues[] = {
    {0, XmlEntityHandling::ExpandNothing, "ExpandNothing"},
    {1, XmlEntityHandling::ExpandCharEntities, "ExpandCharEntities"},
    {2, XmlEntityHandling::ExpandEntities, "ExpandEntities"},
};

TEST(XmlEntityHandling, NumbersAndNames) {
    for (const auto& v : kValues) {
        SCOPED_TRACE(v.name);
        EXPECT_EQ(static_cast<int>(v.value), v.number);
        EXPECT_STREQ(XmlEntityHandling(v.value).ToString(), v.name);
    }
}

TEST(XmlEntityHandling, AnyOtherNumberHasNoName) {
    EXPECT_STREQ(
        XmlEntityHandling(static_cast<XmlEntityHandling::XML_ENTITY_HANDLING>(3)).ToString(), "?");
}

TEST(XmlEntityHandling, HoldsItsDefault) {
    EXPECT_EQ(XmlEntityHandling(), XmlEntityHandling::ExpandCharEntities);
}

TEST(XmlEntityHandling, AssignsFromTheClassAndFromTheEnumeration) {
    XmlEntityHandling value;
    value = XmlEntityHandling::ExpandEntities;
    EXPECT_EQ(value, XmlEntityHandling::ExpandEntities);
    const XmlEntityHandling other(XmlEntityHandling::ExpandNothing);
    value = other;
    EXPECT_EQ(value, other);
}

// The comparisons and conversions hold at compile time and are not ambiguous in any order.
static_assert(XmlEntityHandling(XmlEntityHandling::ExpandEntities) ==
              XmlEntityHandling(XmlEntityHandling::ExpandEntities));
static_assert(XmlEntityHandling(XmlEntityHandling::ExpandEntities) ==
              XmlEntityHandling::ExpandEntities);
static_assert(XmlEntityHandling::ExpandEntities ==
              XmlEntityHandling(XmlEntityHandling::ExpandEntities));
static_assert(XmlEntityHandling(XmlEntityHandling::ExpandEntities) !=
              XmlEntityHandling(XmlEntityHandling::ExpandCharEntities));
static_assert(XmlEntityHandling(XmlEntityHandling::ExpandEntities) !=
              XmlEntityHandling::ExpandCharEntities);
static_assert(XmlEntityHandling::ExpandCharEntities !=
              XmlEntityHandling(XmlEntityHandling::ExpandEntities));
static_assert(std::is_convertible_v<XmlEntityHandling, XmlEntityHandling::XML_ENTITY_HANDLING>);
static_assert(std::is_convertible_v<XmlEntityHandling::XML_ENTITY_HANDLING, XmlEntityHandling>);

}  // namespace
