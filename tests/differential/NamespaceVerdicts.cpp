// SPDX-License-Identifier: MIT
#include "Verdicts.h"

namespace differential {

namespace {

using enum Peers;
using enum Standard;

constexpr Verdict kVerdicts[] = {
    {WellFormed, "a default namespace", "<a xmlns='urn:a'><b xmlns=''/></a>"},
    {WellFormed, "a prefix", "<p:a xmlns:p='urn:p' p:x='1' x='2'/>"},
    {WellFormed, "a prefix bound anew", "<p:a xmlns:p='urn:p'><p:b xmlns:p='urn:q'/></p:a>"},
    {WellFormed, "the prefix xml", "<a xml:id='x' xml:base='y'/>"},
    {WellFormed, "xml bound to its own name",
     "<a xmlns:xml='http://www.w3.org/XML/1998/namespace'/>"},
    {WellFormed, "one name in two namespaces",
     "<a xmlns:p='urn:p' xmlns:q='urn:q' p:x='' q:x=''/>"},
    {WellFormed, "an attribute without prefix is in no namespace",
     "<a xmlns='urn:a' xmlns:p='urn:a' x='' p:x=''/>"},
    {Malformed, "one name twice in a namespace",
     "<a xmlns:p='urn:a' xmlns:q='urn:a' p:x='' q:x=''/>"},
    {Malformed, "a prefix declared twice", "<a xmlns:p='urn:a' xmlns:p='urn:b'/>"},
    {Malformed, "a default namespace declared twice", "<a xmlns='urn:a' xmlns='urn:b'/>"},
    {Malformed, "end tag with another prefix for the same name",
     "<p:a xmlns:p='urn:a' xmlns:q='urn:a'></q:a>"},
    {Malformed, "two colons", "<a:b:c xmlns:a='urn:a'/>"},
    {Malformed, "two colons in an attribute's name", "<a xmlns:b='urn:a' b:c:d=''/>"},
    {Malformed, "a colon at the start", "<:a/>"},
    {Malformed, "a colon at the end", "<p: xmlns:p='urn:p'/>", "prefixes"},
    {Malformed, "a digit behind the colon", "<p:1 xmlns:p='urn:p'/>", "prefixes"},
    {Malformed, "an unknown prefix", "<p:a/>", "prefixes"},
    {Malformed, "an unknown prefix of an attribute", "<a p:x=''/>", "prefixes"},
    {Malformed, "a prefix bound to nothing", "<a xmlns:p=''/>", "prefixes"},
    {Malformed, "a declaration of the prefix xmlns", "<a xmlns:xmlns='urn:a'/>", "prefixes"},
    {Malformed, "xml bound to another name", "<a xmlns:xml='urn:a'/>", "prefixes"},
    {Malformed, "another prefix bound to the name of xml",
     "<a xmlns:p='http://www.w3.org/XML/1998/namespace'/>", "prefixes"},
    {Malformed, "a prefix bound to the name of xmlns",
     "<a xmlns:p='http://www.w3.org/2000/xmlns/'/>", "prefixes"},
    {Malformed, "no prefix to declare", "<a xmlns:=''/>", "prefixes"},
    {Malformed, "an element with the prefix xmlns", "<xmlns:a/>", "prefixes"},
    {Malformed, "a colon in a target", "<a><?p:q?></a>"},
    {Malformed, "a colon in a notation's name", "<!DOCTYPE a [<!NOTATION p:n SYSTEM 'x'>]><a/>"},
    {Malformed, "a colon in an entity's name", "<!DOCTYPE a [<!ENTITY p:e 'x'>]><a/>", "prefixes"},
    {Malformed, "a colon in a reference", "<!DOCTYPE a [<!ENTITY p:e 'x'>]><a>&p:e;</a>",
     "prefixes"},
    {WellFormed, "a colon in the document type", "<!DOCTYPE p:a><p:a xmlns:p='urn:p'/>"},
};

}  // namespace

std::span<const Verdict> NamespaceVerdicts() { return kVerdicts; }

}  // namespace differential
