// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlNsSupport.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view kXmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kXmlnsUri = "http://www.w3.org/2000/xmlns/";

// Shows what derived classes may do.
class OpenNsSupport : public sax::XmlNsSupport {
public:
    using sax::XmlNsSupport::BindXmlns;
    using sax::XmlNsSupport::Prefixes;
    using sax::XmlNsSupport::UnbindXmlns;
};

// Runs a script: "<" pushes, ">" pops, "!" resets, and "prefix=uri" declares.
void Play(sax::XmlNsSupport& context, const std::vector<std::string_view>& script) {
    for (const std::string_view step : script) {
        if (step == "<") {
            context.PushContext();
        } else if (step == ">") {
            context.PopContext();
        } else if (step == "!") {
            context.Reset();
        } else {
            const std::size_t equals = step.find('=');
            ASSERT_NE(context.DeclarePrefix(step.substr(0, equals), step.substr(equals + 1)),
                      nullptr);
        }
    }
}

// The declarations of the current level in the order in which they are given out.
std::string DeclaredHere(const sax::XmlNsSupport& context) {
    std::string text;
    for (const sax::XmlNamespace* declared = context.FirstDeclaredNs(); declared != nullptr;
         declared = context.NextDeclaredNs(declared)) {
        text +=
            std::string(declared->prefix.view()) + "=" + std::string(declared->uri.view()) + " ";
    }
    return text;
}

TEST(XmlNsSupport, AFreshObjectKnowsXml) {
    const sax::XmlNsSupport context;
    EXPECT_EQ(context.GetURI("xml"), kXmlUri);
    EXPECT_EQ(context.GetURI(""), "");
    EXPECT_EQ(context.GetURI("xmlns"), "");
    EXPECT_EQ(context.GetPrefix(kXmlUri), "xml");
    EXPECT_EQ(context.GetPrefix(kXmlnsUri), "");
    EXPECT_EQ(context.GetLastPrefix(), "xml");
    EXPECT_EQ(DeclaredHere(context), "xml=http://www.w3.org/XML/1998/namespace ");
}

TEST(XmlNsSupport, PrefixesResolveToTheDeclarationInForce) {
    const struct {
        const char* name;
        std::vector<std::string_view> script;
        const char* prefix;
        const char* uri;
    } kCases[] = {
        {"declared", {"<", "a=1"}, "a", "1"},
        {"not declared", {"<", "a=1"}, "b", ""},
        {"holds in inner levels", {"<", "a=1", "<", "<"}, "a", "1"},
        {"shadows an outer one", {"<", "a=1", "<", "a=2"}, "a", "2"},
        {"is undone by its pop", {"<", "a=1", ">"}, "a", ""},
        {"undoing restores the outer one", {"<", "a=1", "<", "a=2", ">"}, "a", "1"},
        {"an inner pop undoes nothing outer", {"<", "a=1", "<", ">"}, "a", "1"},
        {"twice at one level: the last", {"<", "a=1", "a=2"}, "a", "2"},
        {"twice at one level: all undone", {"<", "a=0", "<", "a=1", "a=2", ">"}, "a", "0"},
        {"twice at one level: nothing outer", {"<", "a=1", "a=2", ">"}, "a", ""},
        {"the default namespace", {"<", "=1"}, "", "1"},
        {"the default namespace is no prefix's", {"<", "=1"}, "a", ""},
        {"the default namespace shadows", {"<", "=1", "<", "=2"}, "", "2"},
        {"the default namespace is restored", {"<", "=1", "<", "=2", "=3", ">"}, "", "1"},
        {"the default namespace is undone", {"<", "=1", ">"}, "", ""},
        {"the default namespace is switched off", {"<", "=1", "<", "="}, "", ""},
        {"a prefix bound to nothing", {"<", "a=1", "<", "a="}, "a", ""},
        {"xml can be bound", {"<", "xml=1"}, "xml", "1"},
        {"xml is restored", {"<", "xml=1", ">"}, "xml", "http://www.w3.org/XML/1998/namespace"},
        {"xmlns can be bound", {"<", "xmlns=1"}, "xmlns", "1"},
        {"level 0 stays", {"a=1", ">", "<", "<", ">"}, "a", "1"},
        {"pops at level 0 do nothing", {">", ">", "<", "a=1", ">"}, "a", ""},
        {"pops below level 0 do not count", {">", ">", "<", "a=1"}, "a", "1"},
        {"reset drops all levels", {"<", "a=1", "<", "a=2", "!"}, "a", ""},
        {"reset keeps level 0", {"a=0", "<", "a=1", "<", "a=2", "!"}, "a", "0"},
        {"reset keeps xml", {"<", "xml=1", "!"}, "xml", "http://www.w3.org/XML/1998/namespace"},
        {"reset drops xmlns", {"xmlns=1", "<", "xmlns=2", "!"}, "xmlns", ""},
        {"reset returns to level 0", {"<", "<", "!", "a=1", "<", ">"}, "a", "1"},
        {"xmlns after a reset", {"xmlns=1", "!", "<", "xmlns=2"}, "xmlns", "2"},
        {"xmlns undone after a reset", {"xmlns=1", "!", "<", "xmlns=2", ">"}, "xmlns", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        sax::XmlNsSupport context;
        Play(context, c.script);
        EXPECT_EQ(context.GetURI(c.prefix), c.uri);
        const sax::XmlNamespace* const found = context.FindPrefix(c.prefix);
        EXPECT_EQ(found == nullptr ? astring() : found->uri, c.uri);
    }
}

TEST(XmlNsSupport, GetUriTakesTheFirstBytesOfThePrefix) {
    sax::XmlNsSupport context;
    Play(context, {"<", "a=1", "ab=2", "=3"});
    const astring name("ab:c");
    EXPECT_EQ(context.GetURI(name, 1), "1");
    EXPECT_EQ(context.GetURI(name, 2), "2");
    EXPECT_EQ(context.GetURI(name, 3), "");
    EXPECT_EQ(context.GetURI(name, 0), "3");
    EXPECT_EQ(context.GetURI(astring("a"), 100), "1");
    EXPECT_EQ(context.GetURI(std::string("ab")), "2");
}

TEST(XmlNsSupport, FindPrefixIsNullWhenUnbound) {
    sax::XmlNsSupport context;
    EXPECT_EQ(context.FindPrefix(""), nullptr);
    EXPECT_EQ(context.FindPrefix("a"), nullptr);
    Play(context, {"<", "a=", "="});
    ASSERT_NE(context.FindPrefix("a"), nullptr);  // bound to the empty URI
    EXPECT_EQ(context.FindPrefix("a")->uri, "");
    ASSERT_NE(context.FindPrefix(""), nullptr);
}

TEST(XmlNsSupport, GetPrefixGivesTheMostRecentPrefixInForce) {
    const struct {
        const char* name;
        std::vector<std::string_view> script;
        const char* uri;
        const char* prefix;
    } kCases[] = {
        {"one", {"<", "a=1"}, "1", "a"},
        {"none", {"<", "a=1"}, "2", ""},
        {"the most recent of two", {"<", "a=1", "b=1"}, "1", "b"},
        {"not one bound to another URI since", {"<", "a=1", "<", "a=2"}, "1", ""},
        {"an older one when the newer is shadowed", {"<", "b=1", "a=1", "<", "a=2"}, "1", "b"},
        {"one bound to the same URI again", {"<", "a=1", "<", "a=1"}, "1", "a"},
        {"one that came back", {"<", "a=1", "<", "a=2", ">"}, "1", "a"},
        {"one that is undone", {"<", "a=1", ">"}, "1", ""},
        {"the default namespace has no prefix", {"<", "a=1", "=1"}, "1", ""},
        {"not the default namespace of an outer level", {"<", "a=1", "=1", "<", "=2"}, "1", "a"},
        {"a longer URI is another one", {"<", "a=http://x/y"}, "http://x/", ""},
        {"not xmlns after a reset", {"xmlns=1", "!"}, "1", ""},
        {"the empty URI", {"<", "a="}, "", "a"},
        {"the empty URI of what a reset unbound", {"xmlns=", "!"}, "", "xmlns"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        sax::XmlNsSupport context;
        Play(context, c.script);
        EXPECT_EQ(context.GetPrefix(c.uri), c.prefix);
        EXPECT_EQ(context.GetPrefix(astring(c.uri)), c.prefix);
    }
}

TEST(XmlNsSupport, DeclarationsOfTheCurrentLevelAreGivenNewestFirst) {
    const struct {
        std::vector<std::string_view> script;
        const char* declared;
        const char* lastPrefix;
    } kCases[] = {
        {{"<"}, "", "xml"},
        {{"<", "a=1", "=2", "b=3"}, "b=3 =2 a=1 ", "b"},
        {{"<", "a=1", "<"}, "", "a"},
        {{"<", "a=1", "<", "b=2"}, "b=2 ", "b"},
        {{"<", "a=1", "<", "b=2", ">"}, "a=1 ", "a"},
        {{"<", "a=1", "a=2"}, "a=2 a=1 ", "a"},
        {{"<", "a=1", "!"}, "xml=http://www.w3.org/XML/1998/namespace ", "xml"},
    };
    for (const auto& c : kCases) {
        sax::XmlNsSupport context;
        Play(context, c.script);
        EXPECT_EQ(DeclaredHere(context), c.declared);
        EXPECT_EQ(context.GetLastPrefix(), c.lastPrefix);
    }
    EXPECT_EQ(sax::XmlNsSupport().NextDeclaredNs(nullptr), nullptr);
}

TEST(XmlNsSupport, ARecordShowsItsDeclaration) {
    sax::XmlNsSupport context;
    context.PushContext();
    const sax::XmlNamespace* const outer = context.DeclarePrefix("svg", "1");
    context.PushContext();
    const sax::XmlNamespace* const inner = context.DeclarePrefix("svg", "2");
    EXPECT_EQ(outer->prefix, "svg");
    EXPECT_EQ(outer->prefixLength, 3u);
    EXPECT_EQ(outer->uri, "1");
    EXPECT_EQ(outer->level, 1);
    EXPECT_EQ(outer->previous, nullptr);
    EXPECT_FALSE(outer->current);
    EXPECT_EQ(inner->level, 2);
    EXPECT_EQ(inner->previous, outer);
    EXPECT_EQ(inner->next, outer);
    EXPECT_TRUE(inner->current);
    EXPECT_EQ(context.DeclarePrefix("", "3")->prefixLength, 0u);
}

TEST(XmlNsSupport, DeclaringTwiceAtOneLevelMarksTheFirstRecord) {
    sax::XmlNsSupport context;
    context.PushContext();
    const sax::XmlNamespace* const outer = context.DeclarePrefix("a", "0");
    context.PushContext();
    const sax::XmlNamespace* const first = context.DeclarePrefix("a", "1");
    const sax::XmlNamespace* const second = context.DeclarePrefix("a", "2");
    EXPECT_FALSE(outer->redeclared);
    EXPECT_TRUE(first->redeclared);
    EXPECT_FALSE(second->redeclared);
    context.PopContext();
    EXPECT_EQ(context.FindPrefix("a"), outer);
    context.PushContext();
    EXPECT_FALSE(context.DeclarePrefix("a", "3")->redeclared);  // though its record was used before
}

TEST(XmlNsSupport, TheDefaultNamespaceIsNotMarkedAsRedeclared) {
    sax::XmlNsSupport context;
    context.PushContext();
    const sax::XmlNamespace* const first = context.DeclarePrefix("", "1");
    context.DeclarePrefix("", "2");
    EXPECT_FALSE(first->redeclared);
}

TEST(XmlNsSupport, PoppedRecordsAreUsedAgain) {
    sax::XmlNsSupport context;
    std::set<const sax::XmlNamespace*> records;
    for (int round = 0; round < 100; ++round) {
        context.PushContext();
        records.insert(context.DeclarePrefix("a", "1"));
        context.PushContext();
        records.insert(context.DeclarePrefix("b", "2"));
        context.PopContext();
        context.PopContext();
    }
    EXPECT_EQ(records.size(), 2u);
}

TEST(XmlNsSupport, ProcessNameSplitsAtTheFirstColon) {
    const struct {
        const char* name;
        bool isAttribute;
        const char* uri;
        const char* localName;
    } kCases[] = {
        {"p", false, "default", "p"},  // an element takes the default namespace
        {"p", true, "", "p"},          // an attribute does not
        {"a:p", false, "1", "p"},
        {"a:p", true, "1", "p"},
        {"b:p", false, "", "p"},  // not declared: no error
        {"b:p", true, "", "p"},
        {"a:p:q", false, "1", "p:q"},
        {"a:", false, "1", ""},
        {":p", false, "", "p"},  // the default namespace has no prefix, not an empty one
        {":", true, "", ""},
        {"", false, "default", ""},
        {"xml:lang", true, "http://www.w3.org/XML/1998/namespace", "lang"},
    };
    sax::XmlNsSupport context;
    Play(context, {"<", "a=1", "=default"});
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const astring* parts[3] = {};
        EXPECT_EQ(context.ProcessName(c.name, parts, c.isAttribute), parts);
        EXPECT_EQ(*parts[0], c.uri);
        EXPECT_EQ(*parts[1], c.localName);
        EXPECT_EQ(*parts[2], c.name);
    }
}

TEST(XmlNsSupport, ProcessNameWithoutADefaultNamespaceGivesAnEmptyUri) {
    sax::XmlNsSupport context;
    const astring* parts[3] = {};
    context.ProcessName(astring("name"), parts, false);
    EXPECT_EQ(*parts[0], "");
    EXPECT_EQ(*parts[1], "name");
}

TEST(XmlNsSupport, TheGenerationChangesWithEachChangeOfABinding) {
    const struct {
        const char* name;
        std::vector<std::string_view> before;
        std::string_view step;
        bool changes;
    } kCases[] = {
        {"push", {}, "<", false},
        {"pop of nothing", {"<"}, ">", false},
        {"pop at level 0", {}, ">", false},
        {"pop below a declaration", {"<", "a=1", "<"}, ">", false},
        {"declaration", {"<"}, "a=1", true},
        {"default namespace", {"<"}, "=1", true},
        {"pop of a declaration", {"<", "a=1"}, ">", true},
        {"reset", {"<", "a=1"}, "!", true},
        {"reset of xmlns", {"xmlns=1"}, "!", true},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        sax::XmlNsSupport context;
        Play(context, c.before);
        const std::uint64_t before = context.Generation();
        Play(context, {c.step});
        EXPECT_EQ(context.Generation() != before, c.changes);
    }
}

TEST(XmlNsSupport, AssignmentChangesTheGeneration) {
    sax::XmlNsSupport source;
    sax::XmlNsSupport target;
    Play(source, {"<", "a=1"});
    Play(target, {"<", "a=2"});
    const std::uint64_t before = target.Generation();
    target = source;
    EXPECT_NE(target.Generation(), before);
}

TEST(XmlNsSupport, ACopyHasRecordsOfItsOwn) {
    std::optional<sax::XmlNsSupport> source(std::in_place);
    Play(*source, {"x=0", "<", "a=1", "=d1", "<", "a=2", "=d2", "b=3"});
    sax::XmlNsSupport copied(*source);
    sax::XmlNsSupport assigned;
    Play(assigned, {"<", "gone=1"});
    assigned = *source;
    source->DeclarePrefix("a", "changed");
    source.reset();
    for (sax::XmlNsSupport* context : {&copied, &assigned}) {
        EXPECT_EQ(context->GetURI("a"), "2");
        EXPECT_EQ(context->GetURI("gone"), "");
        EXPECT_EQ(DeclaredHere(*context), "b=3 =d2 a=2 ");
        context->PopContext();
        EXPECT_EQ(context->GetURI("a"), "1");
        EXPECT_EQ(context->GetURI(""), "d1");
        EXPECT_EQ(context->GetURI("b"), "");
        context->PopContext();
        EXPECT_EQ(context->GetURI("a"), "");
        EXPECT_EQ(context->GetURI(""), "");
        EXPECT_EQ(context->GetURI("x"), "0");
        EXPECT_EQ(context->GetURI("xml"), kXmlUri);
    }
}

TEST(XmlNsSupport, SelfAssignmentChangesNothing) {
    sax::XmlNsSupport context;
    Play(context, {"<", "a=1"});
    const sax::XmlNamespace* const record = context.FindPrefix("a");
    const sax::XmlNsSupport& alias = context;
    context = alias;
    EXPECT_EQ(context.FindPrefix("a"), record);
}

TEST(XmlNsSupport, DerivedClassesCanBindXmlns) {
    OpenNsSupport context;
    EXPECT_EQ(context.Prefixes().GetItemCount(), 1u);
    std::uint64_t generation = context.Generation();
    context.BindXmlns();
    EXPECT_EQ(context.GetURI("xmlns"), kXmlnsUri);
    EXPECT_NE(context.Generation(), generation);
    EXPECT_EQ(context.GetPrefix(kXmlnsUri), "");  // it is not declared
    EXPECT_EQ(context.Prefixes().GetItemCount(), 2u);
    Play(context, {"<", "xmlns=1"});
    EXPECT_EQ(context.GetURI("xmlns"), "1");
    OpenNsSupport copy(context);
    Play(copy, {">"});
    EXPECT_EQ(copy.GetURI("xmlns"), kXmlnsUri);
    Play(context, {">"});
    EXPECT_EQ(context.GetURI("xmlns"), kXmlnsUri);
    generation = context.Generation();
    context.UnbindXmlns();
    EXPECT_EQ(context.GetURI("xmlns"), "");
    EXPECT_NE(context.Generation(), generation);
    context.UnbindXmlns();
    context.BindXmlns();
    context.Reset();
    EXPECT_EQ(context.GetURI("xmlns"), "");
}

TEST(XmlNsSupport, APopToleratesAPrefixThatIsNoLongerBound) {
    OpenNsSupport context;
    Play(context, {"<", "xmlns=1", "<", "xmlns=2"});
    context.UnbindXmlns();
    Play(context, {">"});
    EXPECT_EQ(context.GetURI("xmlns"), "");
    Play(context, {">"});
    EXPECT_EQ(context.GetURI("xmlns"), "");
}

TEST(XmlNsSupport, ManyPrefixesAndLevelsStayExact) {
    sax::XmlNsSupport context;
    constexpr int kCount = 2000;
    for (int number = 0; number < kCount; ++number) {
        context.PushContext();
        context.DeclarePrefix("p" + std::to_string(number), std::to_string(number));
        context.DeclarePrefix("shared", std::to_string(number));
    }
    for (int number = kCount - 1; number >= 0; --number) {
        EXPECT_EQ(context.GetURI("shared"), std::to_string(number));
        EXPECT_EQ(context.GetURI("p0"), "0");
        EXPECT_EQ(context.GetURI("p" + std::to_string(number)), std::to_string(number));
        context.PopContext();
        EXPECT_EQ(context.FindPrefix("p" + std::to_string(number)), nullptr);
    }
    EXPECT_EQ(context.FindPrefix("shared"), nullptr);
}

}  // namespace
