// SPDX-License-Identifier: MIT
// The values of properties, as Dom::CSS::CssReader finds them: where they begin and end, quotes,
// comments, and importance.
#include <espalier/dom/css/CssReader.h>

#include "dom/css/CssText.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CssNodeType;
using support::CssText;

// What follows "p{" and what is read of it: the first property's value, and the nodes behind it.
struct ValueCase {
    const char* text;
    const char* value;
    const char* rest;
};

template <std::size_t kCount>
void ExpectValues(const ValueCase (&cases)[kCount]) {
    for (const ValueCase& c : cases) {
        SCOPED_TRACE(c.text);
        const std::string text = std::string("p{") + c.text;
        CssText reader(text);
        ASSERT_TRUE(reader.Skip(3));
        ASSERT_EQ(reader->NodeType(), CssNodeType::Property);
        EXPECT_EQ(reader->Name(), "a");
        EXPECT_EQ(reader->Value(), c.value);
        EXPECT_EQ(reader->Priority(), "");
        EXPECT_EQ(support::NodesOf(*reader, text.size()), c.rest);
    }
}

}  // namespace

TEST(CssReaderValue, EndsAtASemicolonABraceOrTheEnd) {
    const ValueCase kCases[] = {
        {"a:b;c:d}", "b", "Property[c=d] EndDecl"},
        {"a:b}", "b", "EndDecl"},
        {"a:b", "b", ""},
        {"a:1px solid red;}", "1px solid red", "EndDecl"},
        {"a:b{c;}", "b{c", "EndDecl"},
        {"a:url(x:y)}", "url(x:y)", "EndDecl"},
        {"a:url(x;y:z)}", "url(x", "Property[y=z)] EndDecl"},
        {"a:b:c,d}", "b:c,d", "EndDecl"},
        {"a:/}", "/", "EndDecl"},
        {"a:b/", "b/", ""},
        {"a:12px/14px}", "12px/14px", "EndDecl"},
        {"a:*/}", "*/", "EndDecl"},
        {"a:\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80}", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
         "EndDecl"},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, HasNoBlanksAroundIt) {
    const ValueCase kCases[] = {
        {"a: b }", "b", "EndDecl"},
        {"a: b ;}", "b", "EndDecl"},
        {"a:\t\r\n\f b\t\r\n\f ;}", "b", "EndDecl"},
        {"a: b \t c ;d:e}", "b \t c", "Property[d=e] EndDecl"},
        {"a: b\n\n\nc}", "b\n\n\nc", "EndDecl"},
        {"a:\vb\v}", "\vb\v", "EndDecl"},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, StringsKeepWhatElseWouldEndIt) {
    const ValueCase kCases[] = {
        {"a:'b;c}'}", "'b;c}'", "EndDecl"},
        {"a:\"b;c}\"}", "\"b;c}\"", "EndDecl"},
        {"a:'b\"c;'}", "'b\"c;'", "EndDecl"},
        {"a:\"b'c;\"}", "\"b'c;\"", "EndDecl"},
        {"a:b'c;'d}", "b'c;'d", "EndDecl"},
        {"a:'b' ';' c}", "'b' ';' c", "EndDecl"},
        {"a:'b\\';c'}", "'b\\';c'", "EndDecl"},
        {"a:'b\\\\';c:d}", "'b\\\\'", "Property[c=d] EndDecl"},
        {"a:'b/*c*/d'}", "'b/*c*/d'", "EndDecl"},
        {"a:'b\n;c'}", "'b\n;c'", "EndDecl"},
        {"a:''}", "''", "EndDecl"},
        {"a:'b'", "'b'", ""},
        {"a:url(';')}", "url(';')", "EndDecl"},
        {"a:'b;c:d} q{e:f}", "'b;c:d} q{e:f}", ""},
        {"a:'b  ", "'b  ", ""},
        {"a:'b\\", "'b\\", ""},
        {"a:'", "'", ""},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, ABackslashOutsideStringsIsACharacterLikeOthers) {
    const ValueCase kCases[] = {
        {"a:\\;b:c}", "\\", "Property[b=c] EndDecl"},
        {"a:\\}", "\\", "EndDecl"},
        {"a:\\';b:c}", "\\';b:c}", ""},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, CommentsAreTakenOut) {
    const ValueCase kCases[] = {
        {"a:0 /* x */ 1px}", "0  1px", "EndDecl"},
        {"a:b/*x*/c}", "bc", "EndDecl"},
        {"a:b/*;}*/c}", "bc", "EndDecl"},
        {"a:b/*'*/c;d:e}", "bc", "Property[d=e] EndDecl"},
        {"a:b/*x*/;}", "b", "EndDecl"},
        {"a:b/*x*/}", "b", "EndDecl"},
        {"a:b/**//***/c}", "bc", "EndDecl"},
        {"a:b/*x*/ ;}", "b", "EndDecl"},
        {"a:b/*x", "b", ""},
        {"a:b/*x*", "b", ""},
        {"a:b/*/;}", "b", ""},
        {"a:/*x*/b}", "b", "EndDecl"},
        {"a: /*x*/ /*y*/ b}", "b", "EndDecl"},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, DeliberateTheBlankBeforeAnEndingCommentStays) {
    const ValueCase kCases[] = {
        {"a: red /*x*/;}", "red ", "EndDecl"},
        {"a: red /*x*/}", "red ", "EndDecl"},
        {"a: red /*x*/ }", "red ", "EndDecl"},
        {"a: red \t/*x*//*y*/;b:c}", "red \t", "Property[b=c] EndDecl"},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, DeliberateTheFirstCharacterIsTakenWhateverItIs) {
    const ValueCase kCases[] = {
        {"a:;b:c;d:e}", ";b:c", "Property[d=e] EndDecl"},
        {"a: ;b:c;d:e}", ";b:c", "Property[d=e] EndDecl"},
        {"a: ; b:c}", "; b:c", "EndDecl"},
        {"a:;;b:c}", ";", "Property[b=c] EndDecl"},
        {"a:;}", ";", "EndDecl"},
        {"a:}q{b:c}", "}q{b:c", "EndDecl"},
        {"a:} q{b:c;d:e}", "} q{b:c", "Property[d=e] EndDecl"},
        {"a: }", "}", ""},
        {"a:/*x*/;b:c}", ";b:c", "EndDecl"},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, DeliberateBlanksAtTheEndOfTheTextStay) {
    const ValueCase kCases[] = {
        {"a:b ", "b ", ""},
        {"a:b \t\n", "b \t\n", ""},
        {"a:b /*x*/ ", "b  ", ""},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, DeliberateWithoutAValueItIsTheWholeText) {
    // Nothing follows, so there is no value; what has been read stands for it, as for other nodes.
    const ValueCase kCases[] = {
        {"a:", "a:", ""},
        {"a : ", "a : ", ""},
        {"a:/*x*/", "a:/*x*/", ""},
        {"a:/*x", "a:/*x", ""},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, DeliberateImportanceIsPartOfIt) {
    const ValueCase kCases[] = {
        {"a: red !important;b:c}", "red !important", "Property[b=c] EndDecl"},
        {"a: red ! important }", "red ! important", "EndDecl"},
        {"a: red!IMPORTANT}", "red!IMPORTANT", "EndDecl"},
        {"a: !important}", "!important", "EndDecl"},
        {"a: red /*x*/ !important}", "red  !important", "EndDecl"},
        {"a: red !/*x*/important}", "red !important", "EndDecl"},
        {"a: 'b' !x y", "'b' !x y", ""},
    };
    ExpectValues(kCases);
}

TEST(CssReaderValue, AreTheSameInTheBlockOfAnAtRule) {
    const struct {
        const char* text;
        const char* rule;
    } kCases[] = {
        {"@a{b: 'c;}' ;}", "@a{ b: 'c;}'; }"},
        {"@a{b: c /*x*/ d}", "@a{ b: c  d; }"},
        {"@a{b: ;c:d}", "@a{ b: ;c:d; }"},
        {"@a{b: c !important}", "@a{ b: c !important; }"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        CssText reader(c.text);
        EXPECT_EQ(reader->ReadRule(), c.rule);
    }
}
