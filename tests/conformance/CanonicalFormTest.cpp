// SPDX-License-Identifier: MIT
//
// The printer of the canonical form, without the suite.
#include "CanonicalForm.h"
#include "Outcome.h"

#include <gtest/gtest.h>

namespace {

using conformance::CanonicalForm;

TEST(CanonicalForm, SortsAttributesAndEscapesTexts) {
    CanonicalForm form;
    form.Text("\n");  // outside the root element
    form.Start("a", {{"b", "1\t2\n\"<"}, {"a:b", ">&"}, {"B", "\r"}});
    form.Text("\xC3\xA9 & < > \" ' \t\r\n");
    form.Instruction("p", "<&\n");
    form.End("a");
    EXPECT_EQ(form.Whole(),
              "<a B=\"&#13;\" a:b=\"&gt;&amp;\" b=\"1&#9;2&#10;&quot;&lt;\">"
              "\xC3\xA9 &amp; &lt; &gt; &quot; ' &#9;&#13;&#10;<?p <&\n?></a>");
}

TEST(CanonicalForm, HasTheDocumentTypeWhereItStandsIfThereAreNotations) {
    CanonicalForm form;
    form.Instruction("p", "");
    form.DocumentType("a");
    form.Start("a", {});
    form.End("a");
    EXPECT_EQ(form.Whole(), "<?p ?><a></a>");
    form.Notation("s", "", "system");
    form.Notation("p", "public", "");
    form.Notation("b", "public", "system");
    EXPECT_EQ(form.Whole(),
              "<?p ?><!DOCTYPE a [\n<!NOTATION b PUBLIC 'public' 'system'>\n"
              "<!NOTATION p PUBLIC 'public'>\n<!NOTATION s SYSTEM 'system'>\n]>\n<a></a>");
    EXPECT_EQ(form.Body(), "<?p ?><a></a>");
}

TEST(CanonicalForm, IsMadeOfNodesEventsAndTrees) {
    constexpr char kDocument[] =
        "<?xml version='1.0'?><!DOCTYPE a [<!NOTATION n SYSTEM 'u'>]>\n<?p d?>"
        "<a c='3' b='2'>t<![CDATA[<]]><!-- c --><b/></a>\n";
    constexpr char kBody[] = "<?p d?><a b=\"2\" c=\"3\">t&lt;<b></b></a>";
    for (const conformance::Mode mode : {conformance::kStandard, conformance::kCompatible}) {
        EXPECT_EQ(ReadNodes(kDocument, mode).form, kBody);
        EXPECT_EQ(ReadEvents(kDocument, mode).form, kBody);
        EXPECT_EQ(LoadTree(kDocument, mode).form, kBody);
        EXPECT_EQ(Read(kDocument, mode).form,
                  std::string("<!DOCTYPE a [\n<!NOTATION n SYSTEM 'u'>\n]>\n") + kBody);
    }
}

TEST(CanonicalForm, ComesWithTheErrorThatEndedTheReading) {
    const conformance::Outcome outcome = ReadNodes("<a>t</b>", conformance::kCompatible);
    EXPECT_FALSE(outcome.IsAccepted());
    EXPECT_TRUE(outcome.error.starts_with("1:")) << outcome.error;
    EXPECT_EQ(outcome.form, "<a>t");
}

}  // namespace
