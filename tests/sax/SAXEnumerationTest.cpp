// SPDX-License-Identifier: MIT
#include <espalier/sax/helpers/SAXEnumeration.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using sax::helpers::SAXEnumeration;

std::vector<std::string> Rest(SAXEnumeration& strings) {
    std::vector<std::string> rest;
    while (strings.hasMoreElements())
        rest.emplace_back(strings.nextElement());
    return rest;
}

TEST(SAXEnumeration, AFreshOneHasNoElements) {
    SAXEnumeration strings;
    EXPECT_FALSE(strings.hasMoreElements());
    EXPECT_EQ(strings.nextElement(), nullptr);
    EXPECT_EQ(strings.begin(), strings.end());
}

TEST(SAXEnumeration, GivesItsElementsInTheirOrderAndThenNull) {
    SAXEnumeration strings({astring("b"), astring(""), astring("a")});
    EXPECT_EQ(Rest(strings), (std::vector<std::string>{"b", "", "a"}));
    EXPECT_FALSE(strings.hasMoreElements());
    EXPECT_EQ(strings.nextElement(), nullptr);
    EXPECT_EQ(strings.nextElement(), nullptr);
}

TEST(SAXEnumeration, OwnsItsElements) {
    std::vector<astring> source = {astring("a string that is longer than a pointer or two")};
    SAXEnumeration strings(source);
    source[0] = "another";
    EXPECT_STREQ(strings.nextElement(), "a string that is longer than a pointer or two");
}

TEST(SAXEnumeration, ACopyGoesOnByItself) {
    SAXEnumeration strings({astring("a"), astring("b"), astring("c")});
    strings.nextElement();
    SAXEnumeration copy(strings);
    EXPECT_EQ(Rest(strings), (std::vector<std::string>{"b", "c"}));
    EXPECT_EQ(Rest(copy), (std::vector<std::string>{"b", "c"}));
    strings = SAXEnumeration({astring("d")});
    EXPECT_EQ(Rest(strings), std::vector<std::string>{"d"});
}

TEST(SAXEnumeration, ALoopVisitsAllElementsWhateverHasBeenTaken) {
    SAXEnumeration strings({astring("a"), astring("b")});
    strings.nextElement();
    std::vector<std::string> all;
    for (const astring& one : strings)
        all.push_back(one.str());
    EXPECT_EQ(all, (std::vector<std::string>{"a", "b"}));
    EXPECT_STREQ(strings.nextElement(), "b");
}

}  // namespace
