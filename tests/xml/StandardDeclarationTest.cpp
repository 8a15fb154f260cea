// SPDX-License-Identifier: MIT
//
// The declarations of the internal subset in standard mode: what the grammar of XML 1.0 allows
// stands beside what it does not. "^" marks where an error is.
#include "support/MarkedRefusal.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::ExpectSubsets;
using support::Marked;

constexpr char kNoCharacter[] = "Reference to a character that XML does not allow";
constexpr char kInPercent[] = "Parameter entity reference inside of a declaration";

// [45] elementdecl

TEST(StandardDeclaration, ElementDeclaration) {
    constexpr char kContent[] = "Expected EMPTY, ANY or '(' in the element declaration";
    constexpr char kEnd[] = "Expected '>' at the end of the element declaration";
    constexpr char kNoSpace[] = "Whitespace expected behind the name of an element type";
    const Marked kRows[] = {
        {"<!ELEMENT a EMPTY><!ELEMENT a ANY >"},
        {"<!ELEMENT\na\tEMPTY\n>"},
        {"<!ELEMENT^a EMPTY>", "Whitespace expected behind ELEMENT"},
        {"<!ELEMENT^>", "Whitespace expected behind ELEMENT"},
        {"<!ELEMENT ^1 EMPTY>", "Expected the name of an element type"},
        {"<!ELEMENT a^>", kNoSpace},
        {"<!ELEMENT a^(b)>", kNoSpace},
        {"<!ELEMENT a^'b'>", kNoSpace},
        {"<!ELEMENT a ^>", kContent},
        {"<!ELEMENT a ^empty>", kContent},
        {"<!ELEMENT a ^b>", kContent},
        {"<!ELEMENT a EMPTY^X>", kEnd},
        {"<!ELEMENT a EMPTY ^ANY>", kEnd},
        {"<!ELEMENT a ANY ^(b)>", kEnd},
        {"<!ELEMENT ^%a; EMPTY>", kInPercent},
        {"<!ELEMENT^%a; EMPTY>", kInPercent},
        {"<!ELEMENT a ^%b;>", kInPercent},
        {"<!ELEMENT a EMPTY ^%b;>", kInPercent},
        {"<!ELEMENT a EMPTY ^-- comment -->", kEnd},
    };
    ExpectSubsets(kRows);
}

TEST(StandardDeclaration, MixedContent) {
    const Marked kRows[] = {
        {"<!ELEMENT a (#PCDATA)>"},
        {"<!ELEMENT a ( #PCDATA )*>"},
        {"<!ELEMENT a (#PCDATA|b)*>"},
        {"<!ELEMENT a ( #PCDATA | b\n| p:c )* >"},
        {"<!ELEMENT a (#PCDATA|b)^>", "Expected '*' behind mixed content with names"},
        {"<!ELEMENT a (#PCDATA|b)^+>", "Expected '*' behind mixed content with names"},
        {"<!ELEMENT a (#PCDATA|b)^ *>", "Expected '*' behind mixed content with names"},
        {"<!ELEMENT a (#PCDATA)^+>", "Expected '>' at the end of the element declaration"},
        {"<!ELEMENT a (#PCDATA)^?>", "Expected '>' at the end of the element declaration"},
        {"<!ELEMENT a (#PCDATA^,b)*>", "Expected '|' or ')' in mixed content"},
        {"<!ELEMENT a (#PCDATA ^b)*>", "Expected '|' or ')' in mixed content"},
        {"<!ELEMENT a (#PCDATA^*)>", "Expected '|' or ')' in mixed content"},
        {"<!ELEMENT a (#PCDATA|b^*)*>", "Expected '|' or ')' in mixed content"},
        {"<!ELEMENT a (#PCDATA|^)*>", "Expected a name behind '|' in mixed content"},
        {"<!ELEMENT a (#PCDATA|^(b))*>", "Expected a name behind '|' in mixed content"},
        {"<!ELEMENT a (#PCDATA|^#PCDATA)*>", "Expected a name behind '|' in mixed content"},
        {"<!ELEMENT a (#PCDATA|^%b;)*>", kInPercent},
        {"<!ELEMENT a (b|^#PCDATA)*>", "Expected a name or '(' in the content model"},
        {"<!ELEMENT a ((^#PCDATA))>", "Expected a name or '(' in the content model"},
        {"<!ELEMENT a (^#pcdata)>", "Expected a name or '(' in the content model"},
        {"<!ELEMENT a ^#PCDATA>", "Expected EMPTY, ANY or '(' in the element declaration"},
    };
    ExpectSubsets(kRows);
}

TEST(StandardDeclaration, ChildContent) {
    constexpr char kParticle[] = "Expected a name or '(' in the content model";
    constexpr char kSeparator[] = "Expected '|', ',' or ')' in the content model";
    constexpr char kBar[] = "Expected '|' or ')' in a group with '|'";
    constexpr char kComma[] = "Expected ',' or ')' in a group with ','";
    constexpr char kEnd[] = "Expected '>' at the end of the element declaration";
    const Marked kRows[] = {
        {"<!ELEMENT a (b)><!ELEMENT c (b)?><!ELEMENT d (b)*><!ELEMENT e (b)+>"},
        {"<!ELEMENT a (b?,c*,d+)>"},
        {"<!ELEMENT a ( b | ( c , d? )* | e )>"},
        {"<!ELEMENT a (b,c ^?)>", kComma},
        {"<!ELEMENT a ((b|c),(d,(e|f+)?)*)+>"},
        {"<!ELEMENT a (((b)))>"},
        {"<!ELEMENT a (EMPTY|ANY)>"},
        {"<!ELEMENT a (^)>", kParticle},
        {"<!ELEMENT a (b,^)>", kParticle},
        {"<!ELEMENT a (b|^|c)>", kParticle},
        {"<!ELEMENT a (^,b)>", kParticle},
        {"<!ELEMENT a (^?)>", kParticle},
        {"<!ELEMENT a (^'b')>", kParticle},
        {"<!ELEMENT a (b ^c)>", kSeparator},
        {"<!ELEMENT a (b^&c)>", kSeparator},
        {"<!ELEMENT a (b^>", kSeparator},
        {"<!ELEMENT a (b ^?)>", kSeparator},
        {"<!ELEMENT a (b?^*)>", kSeparator},
        {"<!ELEMENT a (b|c^,d)>", kBar},
        {"<!ELEMENT a (b|(c,d)^,e)>", kBar},
        {"<!ELEMENT a (b|c ^d)>", kBar},
        {"<!ELEMENT a (b,c^|d)>", kComma},
        {"<!ELEMENT a (b,(c|d)+^|e)>", kComma},
        {"<!ELEMENT a (b)^)>", kEnd},
        {"<!ELEMENT a (b) ^*>", kEnd},
        {"<!ELEMENT a (b)*^*>", kEnd},
        {"<!ELEMENT a (^%b;)>", kInPercent},
        {"<!ELEMENT a (b ^%b;)>", kInPercent},
        {"<!ELEMENT a (b)^%c;>", kInPercent},
    };
    ExpectSubsets(kRows);
}

// [52] AttlistDecl

TEST(StandardDeclaration, AttributeListDeclaration) {
    constexpr char kNoSpace[] = "Expected whitespace or '>' in the attribute-list declaration";
    constexpr char kName[] =
        "Expected the name of an attribute or '>' in the attribute-list declaration";
    constexpr char kType[] = "Expected the type of an attribute";
    const Marked kRows[] = {
        {"<!ATTLIST a><!ATTLIST a >"},
        {"<!ATTLIST a b CDATA #IMPLIED c\tID\n#REQUIRED>"},
        {"<!ATTLIST a xmlns:p CDATA #IMPLIED p:b CDATA #IMPLIED>"},
        {"<!ATTLIST a b ID #IMPLIED c IDREF #IMPLIED d IDREFS #IMPLIED e ENTITY #IMPLIED>"},
        {"<!ATTLIST a b ENTITIES #IMPLIED c NMTOKEN #IMPLIED d NMTOKENS #IMPLIED>"},
        {"<!ATTLIST a b CDATA #IMPLIED b CDATA #IMPLIED>"},
        {"<!ATTLIST^a b CDATA #IMPLIED>", "Whitespace expected behind ATTLIST"},
        {"<!ATTLIST ^>", "Expected the name of an element type"},
        {"<!ATTLIST a^'b'>", kNoSpace},
        {"<!ATTLIST a b CDATA 'x'^c CDATA 'y'>", kNoSpace},
        {"<!ATTLIST a b CDATA #IMPLIED^'c'>", kNoSpace},
        {"<!ATTLIST a ^1 CDATA 'x'>", kName},
        {"<!ATTLIST a ^(b)>", kName},
        {"<!ATTLIST a b^>", "Whitespace expected behind the name of an attribute"},
        {"<!ATTLIST a b^(c) 'c'>", "Whitespace expected behind the name of an attribute"},
        {"<!ATTLIST a b ^>", kType},
        {"<!ATTLIST a b ^'x'>", kType},
        {"<!ATTLIST a b cdata^ 'x'>", kType, "cdata"},
        {"<!ATTLIST a b IDS^ #IMPLIED>", kType, "IDS"},
        {"<!ATTLIST a b CDATA^'x'>", "Whitespace expected behind the type of an attribute"},
        {"<!ATTLIST a b CDATA^>", "Whitespace expected behind the type of an attribute"},
        {"<!ATTLIST a b (c)^'c'>", "Whitespace expected behind the type of an attribute"},
        {"<!ATTLIST ^%a; b CDATA 'x'>", kInPercent},
        {"<!ATTLIST a ^%b;>", kInPercent},
        {"<!ATTLIST a b ^%c; 'x'>", kInPercent},
        {"<!ATTLIST a b CDATA ^%c;>", kInPercent},
    };
    ExpectSubsets(kRows);
}

TEST(StandardDeclaration, EnumeratedTypes) {
    constexpr char kToken[] = "Expected a name token in the enumeration";
    constexpr char kBar[] = "Expected '|' or ')' in the enumeration";
    const Marked kRows[] = {
        {"<!ATTLIST a b (c) #IMPLIED>"},
        {"<!ATTLIST a b ( 1 | -x\n| c:d:e | : ) '1'>"},
        {"<!ATTLIST a b NOTATION (n) #IMPLIED>"},
        {"<!ATTLIST a b NOTATION ( n | m ) #IMPLIED>"},
        {"<!ATTLIST a b (^) #IMPLIED>", kToken},
        {"<!ATTLIST a b (c|^) #IMPLIED>", kToken},
        {"<!ATTLIST a b (^'c') #IMPLIED>", kToken},
        {"<!ATTLIST a b (c^,d) #IMPLIED>", kBar},
        {"<!ATTLIST a b (c ^d) #IMPLIED>", kBar},
        {"<!ATTLIST a b (c^*) #IMPLIED>", kBar},
        {"<!ATTLIST a b (^%c;) #IMPLIED>", kInPercent},
        {"<!ATTLIST a b (c^%d;) #IMPLIED>", kInPercent},
        {"<!ATTLIST a b NOTATION^(n) #IMPLIED>", "Whitespace expected between NOTATION and '('"},
        {"<!ATTLIST a b NOTATION ^n #IMPLIED>", "Expected '(' behind NOTATION"},
        {"<!ATTLIST a b NOTATION (^) #IMPLIED>", "Expected the name of a notation"},
        {"<!ATTLIST a b NOTATION (^1) #IMPLIED>", "Expected the name of a notation"},
        {"<!ATTLIST a b NOTATION (n^,m) #IMPLIED>", kBar},
    };
    ExpectSubsets(kRows);
}

TEST(StandardDeclaration, Defaults) {
    constexpr char kDefault[] =
        "Expected #REQUIRED, #IMPLIED, #FIXED or a default value in quotation marks";
    const Marked kRows[] = {
        {"<!ATTLIST a b CDATA ''><!ATTLIST a c CDATA #FIXED 'x'>"},
        {"<!ATTLIST a b CDATA '>\"%p; &lt;&#60;&#x3C;&amp;'>"},
        {"<!ENTITY e 'x'><!ATTLIST a b CDATA '&e;'>"},
        {"<!ATTLIST a b CDATA ^>", kDefault},
        {"<!ATTLIST a b CDATA ^x>", kDefault},
        {"<!ATTLIST a b CDATA ^#implied>", kDefault},
        {"<!ATTLIST a b CDATA ^# IMPLIED>", kDefault},
        {"<!ATTLIST a b CDATA #FIXED^'x'>", "Whitespace expected behind #FIXED"},
        {"<!ATTLIST a b CDATA #FIXED ^x>", "Expected a default value in quotation marks"},
        {"<!ATTLIST a b CDATA #FIXED ^#IMPLIED>", "Expected a default value in quotation marks"},
        {"<!ATTLIST a b CDATA 'x^<'>", "'<' in a default value"},
        {"<!ATTLIST a b CDATA '&^ x'>", "Bad name"},
        {"<!ATTLIST a b CDATA '&amp^'>", "Invalid named entity"},
        {"<!ATTLIST a b CDATA '&#0;^'>", kNoCharacter},
        {"<!ATTLIST a b CDATA '&#^X41;'>", "Expected digits and ';' in the character reference"},
        {"<!ATTLIST a b CDATA #IMPLIED ^'x'>",
         "Expected the name of an attribute or '>' in the attribute-list declaration"},
    };
    ExpectSubsets(kRows);
}

// [70] EntityDecl

TEST(StandardDeclaration, EntityDeclaration) {
    constexpr char kName[] = "Expected the name of an entity";
    constexpr char kNoSpace[] = "Whitespace expected behind the name of an entity";
    constexpr char kValue[] =
        "Expected a value in quotation marks, SYSTEM or PUBLIC in the entity declaration";
    constexpr char kEnd[] = "Expected '>' at the end of the entity declaration";
    const Marked kRows[] = {
        {"<!ENTITY e 'x'><!ENTITY e \"y\" >"},
        {"<!ENTITY % e 'x'><!ENTITY\n%\te\n'x'\n>"},
        {"<!ENTITY e SYSTEM 'x'><!ENTITY % e PUBLIC 'x' 'y' >"},
        {"<!ENTITY^e 'x'>", "Whitespace expected behind ENTITY"},
        {"<!ENTITY^% e 'x'>", kInPercent},
        {"<!ENTITY %^e 'x'>", "Whitespace expected behind '%'"},
        {"<!ENTITY % ^%e; 'x'>", kInPercent},
        {"<!ENTITY ^'x'>", kName},
        {"<!ENTITY ^1 'x'>", kName},
        {"<!ENTITY % ^'x'>", kName},
        {"<!ENTITY e^'x'>", kNoSpace},
        {"<!ENTITY e^>", kNoSpace},
        {"<!ENTITY % e^'x'>", kNoSpace},
        {"<!ENTITY e ^>", kValue},
        {"<!ENTITY e ^x>", kValue},
        {"<!ENTITY e ^NDATA n>", kValue},
        {"<!ENTITY e ^%p;>", kInPercent},
        {"<!ENTITY e 'x' ^'y'>", kEnd},
        {"<!ENTITY e 'x' ^NDATA n>", kEnd},
        {"<!ENTITY e 'x'^%p;>", kInPercent},
        {"<!ENTITY e SYSTEM^'x'>", "Whitespace expected behind SYSTEM"},
        {"<!ENTITY e PUBLIC 'x'^>", "Public ID requires two literals"},
        {"<!ENTITY e PUBLIC 'x'^'y'>", "Whitespace required between public ID and system ID"},
    };
    ExpectSubsets(kRows);
}

TEST(StandardDeclaration, UnparsedEntities) {
    const Marked kRows[] = {
        {"<!ENTITY e SYSTEM 'x' NDATA n>"},
        {"<!ENTITY e PUBLIC 'x' 'y'\nNDATA\nn >"},
        {"<!ENTITY e SYSTEM 'x'NDATA^ n>", "Whitespace expected before NDATA"},
        {"<!ENTITY e SYSTEM 'x' NDATA^>", "Whitespace expected after NDATA"},
        {"<!ENTITY e SYSTEM 'x' ^ndata n>", "Expected '>' at the end of the entity declaration"},
        {"<!ENTITY e SYSTEM 'x' NDATA ^'n'>", "Expected the name of a notation"},
        {"<!ENTITY e SYSTEM 'x' NDATA n ^m>", "Expected '>' at the end of the entity declaration"},
        {"<!ENTITY % e SYSTEM 'x' NDATA^ n>",
         "Cannot use the NDATA keyword in a parameter entity declaration"},
    };
    ExpectSubsets(kRows);
}

TEST(StandardDeclaration, EntityValues) {
    constexpr char kPercent[] = "PE reference not allowed in parsed entity value";
    const Marked kRows[] = {
        {"<!ENTITY e '<\">&f;&lt;&#60;&#x41;&#37;]>'>"},
        {"<!ENTITY % e 'anything &^ '>", "Bad name"},
        {"<!ENTITY e 'x%^y'>", kPercent},
        {"<!ENTITY e '%^p;'>", kPercent},
        {"<!ENTITY % e '100%^'>", kPercent},
        {"<!ENTITY e '&^ x'>", "Bad name"},
        {"<!ENTITY e '&^;'>", "Bad name"},
        {"<!ENTITY e '&x^'>", "Invalid named entity"},
        {"<!ENTITY e '&#0;^'>", kNoCharacter},
        {"<!ENTITY e '&#xD800;^'>", kNoCharacter},
        {"<!ENTITY e '&#xFFFE;^'>", kNoCharacter},
        {"<!ENTITY e '&#x11000^0;'>", "Character entity overflow"},
    };
    ExpectSubsets(kRows);
}

// What the predefined entities are declared as is no constraint on well-formedness (section 4.6).
TEST(StandardDeclaration, PredefinedEntities) {
    const Marked kRows[] = {
        {"<!ENTITY lt '&#38;#60;'><!ENTITY gt '&#62;'><!ENTITY amp '&#38;#38;'>"},
        {"<!ENTITY apos '&#39;'><!ENTITY quot '&#34;'><!ENTITY quot '&#38;#x22;'>"},
        {"<!ENTITY gt '>'><!ENTITY apos \"'\"><!ENTITY lt '&#38;#x003c;'>"},
        {"<!ENTITY % lt 'x'>"},
        {"<!ENTITY lt '<'>"},
        {"<!ENTITY amp '&#38;'>"},
        {"<!ENTITY gt ''>"},
        {"<!ENTITY quot SYSTEM 'x'>"},
    };
    ExpectSubsets(kRows);
}

// [82] NotationDecl

TEST(StandardDeclaration, NotationDeclaration) {
    constexpr char kId[] = "Expected SYSTEM or PUBLIC in the notation declaration";
    constexpr char kEnd[] = "Expected '>' at the end of the notation declaration";
    const Marked kRows[] = {
        {"<!NOTATION n SYSTEM 'x'><!NOTATION n PUBLIC 'x'><!NOTATION n PUBLIC 'x' 'y' >"},
        {"<!NOTATION n PUBLIC 'x' >"},
        {"<!NOTATION^n SYSTEM 'x'>", "Whitespace required after NOTATION"},
        {"<!NOTATION ^'n' SYSTEM 'x'>", "Expected the name of a notation"},
        {"<!NOTATION n^>", "Whitespace required after notation name"},
        {"<!NOTATION n ^>", kId},
        {"<!NOTATION n ^'x'>", kId},
        {"<!NOTATION n SYSTEM ^>", "Expected a system identifier in quotation marks"},
        {"<!NOTATION n SYSTEM 'x' ^'y'>", kEnd},
        {"<!NOTATION n PUBLIC 'x'^'y'>", "Whitespace required between public ID and system ID"},
        {"<!NOTATION n PUBLIC 'x' ^y>", kEnd},
        {"<!NOTATION n PUBLIC 'x' 'y' ^NDATA n>", kEnd},
        {"<!NOTATION n ^%p;>", kInPercent},
    };
    ExpectSubsets(kRows);
}

}  // namespace
