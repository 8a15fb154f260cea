// SPDX-License-Identifier: MIT
#include "Verdicts.h"

namespace differential {

namespace {

using enum Peers;
using enum Standard;

constexpr Verdict kVerdicts[] = {
    // [68] EntityRef
    {WellFormed, "the predefined ones",
     "<a x='&lt;&gt;&amp;&quot;&apos;'>&lt;&gt;&amp;&quot;&apos;</a>"},
    {Malformed, "no semicolon", "<a>&amp</a>"},
    {Malformed, "no name", "<a>&;</a>"},
    {Malformed, "white space before the name", "<a>& amp;</a>"},
    {Malformed, "white space behind the name", "<a>&amp ;</a>"},
    {Malformed, "another predefined name of HTML", "<a>&nbsp;</a>"},
    {Malformed, "a predefined name in capitals", "<a>&AMP;</a>"},
    {Malformed, "undeclared in an attribute", "<a x='&e;'/>"},
    {Malformed, "undeclared with a document type", "<!DOCTYPE a><a>&e;</a>"},
    {Malformed, "undeclared with a subset", "<!DOCTYPE a [<!ENTITY f ''>]><a>&e;</a>"},
    {Malformed, "only a parameter entity of that name",
     "<!DOCTYPE a [<!ENTITY % e ''>]><a>&e;</a>"},
    {Malformed, "undeclared in another", "<!DOCTYPE a [<!ENTITY f '&e;'>]><a>&f;</a>"},
    {Malformed, "undeclared in a document that stands alone",
     "<?xml version='1.0' standalone='yes'?><!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>"},
    {WellFormed, "perhaps declared in the external subset", "<!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>",
     "elsewhere"},
    {WellFormed, "perhaps declared in the external subset, in an attribute",
     "<!DOCTYPE a SYSTEM 'a.dtd'><a x='&e;'/>", "elsewhere"},
    {WellFormed, "perhaps declared in an external parameter entity",
     "<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;]><a>&e;</a>", "elsewhere"},
    {WellFormed, "declared in a parameter entity",
     "<!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'x'>\">%p;]><a>&e;</a>", "elsewhere"},
    // Recursion
    {Malformed, "an entity in itself", "<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>"},
    {Malformed, "an entity in itself, with markup",
     "<!DOCTYPE a [<!ENTITY e '<b>&e;</b>'>]><a>&e;</a>"},
    {Malformed, "two entities in each other",
     "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>"},
    {Malformed, "two entities in each other, in an attribute",
     "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a x='&e;'/>"},
    {Malformed, "a cycle through an attribute",
     "<!DOCTYPE a [<!ENTITY e \"<b x='&e;'/>\">]><a>&e;</a>"},
    {WellFormed, "a cycle that nobody enters", "<!DOCTYPE a [<!ENTITY e '&e;'>]><a/>"},
    {WellFormed, "one entity many times",
     "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY f '&e;&e;'>]><a x='&f;&f;'>&e;&f;</a>"},
    // [43] content, in an entity
    {WellFormed, "markup", "<!DOCTYPE a [<!ENTITY e 'x<b>y</b><c/><!--c--><?p?>'>]><a>&e;</a>"},
    {Malformed, "a start tag alone", "<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</a>"},
    {Malformed, "start and end tag in two entities",
     "<!DOCTYPE a [<!ENTITY e '<b>'><!ENTITY f '</b>'>]><a>&e;&f;</a>", "crossing"},
    {Malformed, "an element that begins in an entity",
     "<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</b></a>", "crossing"},
    {Malformed, "an element that ends in an entity",
     "<!DOCTYPE a [<!ENTITY e '</b>'>]><a><b>&e;</a>", "crossing"},
    {Malformed, "the element around ends in an entity", "<!DOCTYPE a [<!ENTITY e '</a>'>]><a>&e;",
     "crossing"},
    {Malformed, "an end tag and a start tag",
     "<!DOCTYPE a [<!ENTITY e '</b><b>'>]><a><b>&e;</b></a>", "crossing"},
    {Malformed, "half a tag", "<!DOCTYPE a [<!ENTITY e '<b '>]><a>&e;/></a>"},
    {Malformed, "half a comment", "<!DOCTYPE a [<!ENTITY e '<!--'>]><a>&e;--></a>"},
    {Malformed, "half a section", "<!DOCTYPE a [<!ENTITY e '<![CDATA['>]><a>&e;]]></a>"},
    {Malformed, "half an instruction", "<!DOCTYPE a [<!ENTITY e '<?p '>]><a>&e;?></a>"},
    {Malformed, "half a reference", "<!DOCTYPE a [<!ENTITY e '&#38;'>]><a>&e;amp;</a>"},
    {Malformed, "half a character reference", "<!DOCTYPE a [<!ENTITY e '&#38;#'>]><a>&e;65;</a>"},
    {Malformed, "half a reference, in an attribute",
     "<!DOCTYPE a [<!ENTITY e '&#38;'>]><a x='&e;amp;'/>"},
    {Malformed, "a character reference that is none",
     "<!DOCTYPE a [<!ENTITY e '&#38;#x;'>]><a>&e;</a>"},
    {Malformed, "a reference to NUL", "<!DOCTYPE a [<!ENTITY e '&#38;#0;'>]><a>&e;</a>"},
    {Malformed, "a reference to NUL, in an attribute",
     "<!DOCTYPE a [<!ENTITY e '&#38;#0;'>]><a x='&e;'/>"},
    {Malformed, "a bare less-than sign", "<!DOCTYPE a [<!ENTITY e '&#60;'>]><a>&e;</a>"},
    {Malformed, "a declaration of the document",
     "<!DOCTYPE a [<!ENTITY e \"<?xml version='1.0'?>\">]><a>&e;</a>"},
    {Malformed, "a document type", "<!DOCTYPE a [<!ENTITY e '<!DOCTYPE a>'>]><a>&e;</a>"},
    {Malformed, "the end of a section", "<!DOCTYPE a [<!ENTITY e ']]>'>]><a>&e;</a>", "brackets"},
    {Malformed, "the end of a section, behind markup",
     "<!DOCTYPE a [<!ENTITY e '<b/>]]>'>]><a>&e;</a>"},
    {WellFormed, "the end of a section in pieces", "<!DOCTYPE a [<!ENTITY e ']]'>]><a>&e;></a>"},
    {WellFormed, "the end of a section in an attribute",
     "<!DOCTYPE a [<!ENTITY e ']]>'>]><a x='&e;'/>"},
    {Malformed, "an attribute twice", "<!DOCTYPE a [<!ENTITY e \"<b x='' x=''/>\">]><a>&e;</a>"},
    {Malformed, "an entity outside of the root element", "<!DOCTYPE a [<!ENTITY e '<a/>'>]>&e;"},
    {Malformed, "an entity of white space outside of the root element",
     "<!DOCTYPE a [<!ENTITY e ' '>]><a/>&e;"},
    // WFC: No < in Attribute Values
    {Malformed, "a less-than sign in an attribute", "<!DOCTYPE a [<!ENTITY e '<'>]><a x='&e;'/>",
     "less"},
    {Malformed, "a less-than sign by reference in an attribute",
     "<!DOCTYPE a [<!ENTITY e '&#60;'>]><a x='&e;'/>", "less"},
    {Malformed, "a less-than sign in an inner entity",
     "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '<b/>'>]><a x='&e;'/>", "less"},
    {WellFormed, "a less-than sign by reference twice",
     "<!DOCTYPE a [<!ENTITY e '&#38;#60;'>]><a x='&e;'/>"},
    {WellFormed, "a less-than sign by name", "<!DOCTYPE a [<!ENTITY e '&lt;'>]><a x='&e;'/>"},
    // WFC: No External Entity References; WFC: Parsed Entity
    {WellFormed, "an external entity in the content",
     "<!DOCTYPE a [<!ENTITY e SYSTEM 'e'>]><a>&e;</a>"},
    {Malformed, "an external entity in an attribute",
     "<!DOCTYPE a [<!ENTITY e SYSTEM 'e'>]><a x='&e;'/>", "external"},
    {Malformed, "an external entity in an attribute, in another",
     "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f SYSTEM 'f'>]><a x='&e;'/>", "external"},
    {Malformed, "an unparsed entity in the content",
     "<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'e' NDATA n>]><a>&e;</a>", "external"},
    {Malformed, "an unparsed entity in an attribute",
     "<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'e' NDATA n>]><a x='&e;'/>",
     "external"},
    // 4.6 Predefined Entities
    {WellFormed, "the predefined ones declared again",
     "<!DOCTYPE a [<!ENTITY lt '&#38;#60;'><!ENTITY amp '&#38;#38;'><!ENTITY gt "
     "'&#62;'>]><a>&lt;&amp;&gt;</a>"},
    // An error that need not be fatal, since such a declaration changes nothing.
    {WellFormed, "a predefined one declared as something else",
     "<!DOCTYPE a [<!ENTITY gt 'x'>]><a>&gt;</a>"},
    {WellFormed, "the less-than sign declared without the second escape",
     "<!DOCTYPE a [<!ENTITY lt '&#60;'>]><a>&lt;</a>"},
};

}  // namespace

std::span<const Verdict> EntityVerdicts() { return kVerdicts; }

}  // namespace differential
