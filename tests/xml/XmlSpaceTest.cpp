// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlSpace.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Xml::XmlSpace;

const struct {
    int number;
    XmlSpace::SPACE value;
    const char* name;
} kValues[] = {
    {0, XmlSpace::SpaceDefault, "SpaceDefault"},
    {1, XmlSpace::SpaceNone, "SpaceNone"},
    {2, XmlSpace::SpacePreserve, "SpacePreserve"},
};

TEST(XmlSpace, NumbersAndNames) {
    for (const auto& v : kValues) {
        SCOPED_TRACE(v.name);
        EXPECT_EQ(static_cast<int>(v.value), v.number);
        EXPECT_STREQ(XmlSpace(v.value).ToString(), v.name);
    }
}

TEST(XmlSpace, AnyOtherNumberHasNoName) {
    EXPECT_STREQ(XmlSpace(static_cast<XmlSpace::SPACE>(3)).ToString(), "?");
}

TEST(XmlSpace, HoldsItsDefault) { EXPECT_EQ(XmlSpace(), XmlSpace::SpaceDefault); }

TEST(XmlSpace, AssignsFromTheClassAndFromTheEnumeration) {
    XmlSpace value;
    value = XmlSpace::SpacePreserve;
    EXPECT_EQ(value, XmlSpace::SpacePreserve);
    const XmlSpace other(XmlSpace::SpaceDefault);
    value = other;
    EXPECT_EQ(value, other);
}

// The comparisons and conversions hold at compile time and are not ambiguous in any order.
static_assert(XmlSpace(XmlSpace::SpacePreserve) == XmlSpace(XmlSpace::SpacePreserve));
static_assert(XmlSpace(XmlSpace::SpacePreserve) == XmlSpace::SpacePreserve);
static_assert(XmlSpace::SpacePreserve == XmlSpace(XmlSpace::SpacePreserve));
static_assert(XmlSpace(XmlSpace::SpacePreserve) != XmlSpace(XmlSpace::SpaceNone));
static_assert(XmlSpace(XmlSpace::SpacePreserve) != XmlSpace::SpaceNone);
static_assert(XmlSpace::SpaceNone != XmlSpace(XmlSpace::SpacePreserve));
static_assert(std::is_convertible_v<XmlSpace, XmlSpace::SPACE>);
static_assert(std::is_convertible_v<XmlSpace::SPACE, XmlSpace>);
static_assert(std::is_same_v<XmlSpace::XML_SPACE, XmlSpace::SPACE>);

}  // namespace
