// SPDX-License-Identifier: MIT
#include <espalier/sax/SAXException.h>
#include <espalier/sax/helpers/NamespaceSupport.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using sax::helpers::NamespaceSupport;
using sax::helpers::SAXEnumeration;
using Set = std::multiset<std::string>;

constexpr char kXmlUri[] = "http://www.w3.org/XML/1998/namespace";
constexpr char kXmlnsUri[] = "http://www.w3.org/2000/xmlns/";
constexpr char kDeclaredLate[] =
    "Illegal state: declarePrefix() can't be called after the context has been used.";
constexpr char kSetLate[] =
    "Illegal state: setNamespaceDeclUris() was called after a context was pushed.";

Set Take(SAXEnumeration* enumeration) {
    const std::unique_ptr<SAXEnumeration> owner(enumeration);
    Set all;
    while (owner->hasMoreElements())
        all.insert(owner->nextElement());
    return all;
}

template <typename Call>
std::string MessageOf(const Call& call) {
    try {
        call();
    } catch (const sax::SAXException& error) {
        return error.getMessage().str();
    }
    return "nothing was thrown";
}

std::string Processed(NamespaceSupport& support, const char* qName, bool isAttribute) {
    const astring* parts[3] = {nullptr, nullptr, nullptr};
    const astring** const result = support.processName(qName, parts, isAttribute);
    EXPECT_EQ(result, parts);
    return "{" + parts[0]->str() + "}" + parts[1]->str() + " " + parts[2]->str();
}

bool Accepts(NamespaceSupport& support) {
    return MessageOf([&] { support.declarePrefix("probe", "urn:probe"); }) == "nothing was thrown";
}

TEST(NamespaceSupport, AFreshOneKnowsXmlAndIsFresh) {
    NamespaceSupport support;
    EXPECT_STREQ(support.getURI("xml"), kXmlUri);
    EXPECT_STREQ(support.getURI(""), "");
    EXPECT_STREQ(support.getURI("xmlns"), "");
    EXPECT_STREQ(support.getURI("p"), "");
    EXPECT_STREQ(support.getPrefix(kXmlUri), "xml");
    EXPECT_EQ(support.getPrefix(kXmlnsUri), nullptr);
    EXPECT_FALSE(support.isNamespaceDeclUris());
    EXPECT_EQ(Take(support.getPrefixes()), Set{"xml"});
    EXPECT_TRUE(support.declarePrefix("p", "urn:p"));
}

TEST(NamespaceSupport, DeclarationsHoldUntilTheirContextIsLeft) {
    NamespaceSupport support;
    support.pushContext();
    EXPECT_TRUE(support.declarePrefix("p", "urn:1"));
    EXPECT_TRUE(support.declarePrefix("", "urn:default"));
    support.pushContext();
    EXPECT_TRUE(support.declarePrefix("p", "urn:2"));
    EXPECT_STREQ(support.getURI("p"), "urn:2");
    EXPECT_STREQ(support.getURI(""), "urn:default");
    support.popContext();
    EXPECT_STREQ(support.getURI("p"), "urn:1");
    support.popContext();
    EXPECT_STREQ(support.getURI("p"), "");
    EXPECT_STREQ(support.getURI(""), "");
}

TEST(NamespaceSupport, NamesAreSplitAndResolved) {
    NamespaceSupport support;
    support.pushContext();
    support.declarePrefix("p", "urn:p");
    support.declarePrefix("", "urn:default");
    EXPECT_EQ(Processed(support, "a", false), "{urn:default}a a");
    EXPECT_EQ(Processed(support, "a", true), "{}a a");
    EXPECT_EQ(Processed(support, "p:a", false), "{urn:p}a p:a");
    EXPECT_EQ(Processed(support, "p:a", true), "{urn:p}a p:a");
    EXPECT_EQ(Processed(support, "q:a", false), "{}a q:a");
    EXPECT_EQ(Processed(support, "xml:lang", true), std::string("{") + kXmlUri + "}lang xml:lang");
}

TEST(NamespaceSupport, NothingIsDeclaredOnceANameHasBeenProcessed) {
    NamespaceSupport support;
    support.pushContext();
    EXPECT_TRUE(Accepts(support));
    Processed(support, "a", false);
    EXPECT_EQ(MessageOf([&] { support.declarePrefix("p", "urn:p"); }), kDeclaredLate);
    EXPECT_STREQ(support.getURI("p"), "");
    support.pushContext();
    EXPECT_TRUE(support.declarePrefix("p", "urn:p"));
    EXPECT_STREQ(support.getURI("p"), "urn:p");
}

// What makes a context fresh and what does not, for both calls that ask for it.
TEST(NamespaceSupport, FreshnessFollowsTheCalls) {
    struct Row {
        const char* what;
        void (*calls)(NamespaceSupport& support);
        bool isFresh;
    };
    const Row kRows[] = {
        {"construction", [](NamespaceSupport&) {}, true},
        {"push", [](NamespaceSupport& s) { s.pushContext(); }, true},
        {"pop", [](NamespaceSupport& s) { s.pushContext(), s.popContext(); }, false},
        {"pop with nothing to leave", [](NamespaceSupport& s) { s.popContext(); }, false},
        {"a name", [](NamespaceSupport& s) { Processed(s, "a", true); }, false},
        {"a name, then push", [](NamespaceSupport& s) { Processed(s, "a", true), s.pushContext(); },
         true},
        {"pop, then push",
         [](NamespaceSupport& s) { s.pushContext(), s.popContext(), s.pushContext(); }, true},
        {"a name, then reset", [](NamespaceSupport& s) { Processed(s, "a", true), s.reset(); },
         true},
        {"pop, then reset", [](NamespaceSupport& s) { s.popContext(), s.reset(); }, true},
        {"a declaration", [](NamespaceSupport& s) { s.declarePrefix("p", "urn:p"); }, true},
        {"questions",
         [](NamespaceSupport& s) { s.getURI("p"), s.getPrefix("u"), s.isNamespaceDeclUris(); },
         true},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        NamespaceSupport declares;
        row.calls(declares);
        EXPECT_EQ(MessageOf([&] { declares.declarePrefix("q", "urn:q"); }),
                  row.isFresh ? "nothing was thrown" : kDeclaredLate);
        EXPECT_STREQ(declares.getURI("q"), row.isFresh ? "urn:q" : "");
        for (const bool value : {false, true}) {
            NamespaceSupport sets;
            row.calls(sets);
            EXPECT_EQ(MessageOf([&] { sets.setNamespaceDeclUris(value); }),
                      row.isFresh ? "nothing was thrown" : kSetLate);
            EXPECT_EQ(sets.isNamespaceDeclUris(), value && row.isFresh);
        }
    }
}

TEST(NamespaceSupport, ACopyIsAsFreshAsTheOriginalAndHasDeclarationsOfItsOwn) {
    NamespaceSupport support;
    support.setNamespaceDeclUris(true);
    support.pushContext();
    support.declarePrefix("p", "urn:1");
    support.declarePrefix("", "urn:default");
    NamespaceSupport copy(support);
    Processed(support, "a", false);
    NamespaceSupport used(support);
    NamespaceSupport assigned;
    assigned = support;
    EXPECT_TRUE(Accepts(copy));
    EXPECT_FALSE(Accepts(used));
    EXPECT_FALSE(Accepts(assigned));
    support.popContext();
    for (NamespaceSupport* const one : {&copy, &used, &assigned}) {
        EXPECT_STREQ(one->getURI("p"), "urn:1");
        EXPECT_STREQ(one->getURI(""), "urn:default");
        EXPECT_TRUE(one->isNamespaceDeclUris());
        EXPECT_STREQ(one->getPrefix(kXmlnsUri), "xmlns");
        one->popContext();
        EXPECT_STREQ(one->getURI("p"), "");
    }
}

TEST(NamespaceSupport, APrefixIsFoundByItsNamespace) {
    NamespaceSupport support;
    support.pushContext();
    support.declarePrefix("p", "urn:1");
    support.declarePrefix("q", "urn:2");
    support.declarePrefix("", "urn:default");
    EXPECT_STREQ(support.getPrefix("urn:1"), "p");
    EXPECT_STREQ(support.getPrefix("urn:2"), "q");
    EXPECT_EQ(support.getPrefix("urn:3"), nullptr);
    EXPECT_EQ(support.getPrefix("urn:"), nullptr);
    EXPECT_EQ(support.getPrefix(""), nullptr);
    // The default namespace has no prefix.
    EXPECT_EQ(support.getPrefix("urn:default"), nullptr);
    support.pushContext();
    support.declarePrefix("p", "urn:2");
    EXPECT_EQ(support.getPrefix("urn:1"), nullptr);
    support.popContext();
    EXPECT_STREQ(support.getPrefix("urn:1"), "p");
}

// Which of several comes first is the order of a table; it is one of them.
TEST(NamespaceSupport, OfSeveralPrefixesOneIsFound) {
    NamespaceSupport support;
    support.pushContext();
    Set all;
    for (int i = 0; i < 20; ++i) {
        const std::string prefix = "p" + std::to_string(i);
        all.insert(prefix);
        support.declarePrefix(prefix.c_str(), "urn:same");
    }
    const char* const found = support.getPrefix("urn:same");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(all.count(found), 1U) << found;
    EXPECT_EQ(Take(support.getPrefixes("urn:same")), all);
    const std::unique_ptr<SAXEnumeration> inOrder(support.getPrefixes("urn:same"));
    EXPECT_STREQ(inOrder->nextElement(), found);
}

TEST(NamespaceSupport, PrefixesAreEnumeratedWithoutTheDefaultNamespace) {
    NamespaceSupport support;
    support.pushContext();
    support.declarePrefix("p", "urn:1");
    support.declarePrefix("q", "urn:1");
    support.declarePrefix("", "urn:1");
    support.pushContext();
    support.declarePrefix("r", "urn:2");
    EXPECT_EQ(Take(support.getPrefixes()), (Set{"p", "q", "r", "xml"}));
    EXPECT_EQ(Take(support.getPrefixes("urn:1")), (Set{"p", "q"}));
    EXPECT_EQ(Take(support.getPrefixes("urn:2")), Set{"r"});
    EXPECT_EQ(Take(support.getPrefixes(kXmlUri)), Set{"xml"});
    EXPECT_EQ(Take(support.getPrefixes("urn:3")), Set());
}

TEST(NamespaceSupport, DeclaredPrefixesAreThoseOfTheContextEachOnce) {
    NamespaceSupport support;
    EXPECT_EQ(Take(support.getDeclaredPrefixes()), Set{"xml"});
    support.pushContext();
    EXPECT_EQ(Take(support.getDeclaredPrefixes()), Set());
    support.declarePrefix("p", "urn:1");
    support.declarePrefix("", "urn:default");
    support.declarePrefix("p", "urn:2");
    support.declarePrefix("q", "urn:1");
    EXPECT_EQ(Take(support.getDeclaredPrefixes()), (Set{"", "p", "q"}));
    support.pushContext();
    support.declarePrefix("p", "urn:3");
    EXPECT_EQ(Take(support.getDeclaredPrefixes()), Set{"p"});
}

TEST(NamespaceSupport, AnEnumerationOutlivesWhatItWasMadeFrom) {
    std::unique_ptr<SAXEnumeration> prefixes;
    {
        NamespaceSupport support;
        support.pushContext();
        support.declarePrefix("a-prefix-that-is-longer-than-a-pointer-or-two", "urn:1");
        prefixes.reset(support.getDeclaredPrefixes());
        support.popContext();
    }
    EXPECT_STREQ(prefixes->nextElement(), "a-prefix-that-is-longer-than-a-pointer-or-two");
}

TEST(NamespaceSupport, DeclarationsOfNamespacesAreInANamespaceWhenAskedFor) {
    NamespaceSupport support;
    support.setNamespaceDeclUris(true);
    EXPECT_TRUE(support.isNamespaceDeclUris());
    EXPECT_STREQ(support.getURI("xmlns"), kXmlnsUri);
    EXPECT_STREQ(support.getPrefix(kXmlnsUri), "xmlns");
    EXPECT_EQ(Take(support.getPrefixes()), (Set{"xml", "xmlns"}));
    support.setNamespaceDeclUris(true);
    EXPECT_EQ(Take(support.getPrefixes()), (Set{"xml", "xmlns"}));
    EXPECT_EQ(Processed(support, "xmlns:p", true), std::string("{") + kXmlnsUri + "}p xmlns:p");
}

TEST(NamespaceSupport, DeclarationsOfNamespacesAreInNoneAgain) {
    NamespaceSupport support;
    support.setNamespaceDeclUris(true);
    support.setNamespaceDeclUris(false);
    EXPECT_FALSE(support.isNamespaceDeclUris());
    EXPECT_STREQ(support.getURI("xmlns"), "");
    EXPECT_EQ(Take(support.getPrefixes()), Set{"xml"});
    support.setNamespaceDeclUris(false);
    EXPECT_EQ(Take(support.getPrefixes()), Set{"xml"});
}

// Deliberate: the text of the refusal speaks of contexts that were pushed, but what counts is
// whether the context has been used.
TEST(NamespaceSupport, DeclarationsOfNamespacesAreSetRightBehindAPush) {
    NamespaceSupport support;
    support.pushContext();
    EXPECT_NO_THROW(support.setNamespaceDeclUris(true));
    EXPECT_STREQ(support.getURI("xmlns"), kXmlnsUri);
    support.popContext();
    EXPECT_EQ(MessageOf([&] { support.setNamespaceDeclUris(false); }), kSetLate);
    EXPECT_TRUE(support.isNamespaceDeclUris());
    EXPECT_STREQ(support.getURI("xmlns"), kXmlnsUri);
}

TEST(NamespaceSupport, ResetLeavesAllContextsAndTheFlag) {
    NamespaceSupport support;
    support.setNamespaceDeclUris(true);
    support.pushContext();
    support.declarePrefix("p", "urn:1");
    support.pushContext();
    support.declarePrefix("", "urn:2");
    support.reset();
    EXPECT_STREQ(support.getURI("p"), "");
    EXPECT_STREQ(support.getURI(""), "");
    EXPECT_STREQ(support.getURI("xml"), kXmlUri);
    EXPECT_STREQ(support.getURI("xmlns"), "");
    EXPECT_FALSE(support.isNamespaceDeclUris());
    support.setNamespaceDeclUris(true);
    EXPECT_STREQ(support.getURI("xmlns"), kXmlnsUri);
}

}  // namespace
