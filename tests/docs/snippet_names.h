// SPDX-License-Identifier: MIT
#pragma once

// The names that examples in comments take for granted. A block that declares one of them itself
// hides that of this file.
#include <espalier/espalier.h>
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlHash.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <vector>

extern Xml::XmlTextReader reader;
extern Xml::HashMap map;
extern IO::StringStream stream;
extern Dom::Document document;
extern Dom::HTMLDocument page;
extern Dom::Element& element;
extern Dom::Node& node;
extern Dom::Node* list;
extern Dom::CSS::CSSStyleSheet& sheet;
extern Dom::CSS::StyleSheetHost host;
extern sax::helpers::NamespaceSupport support;
extern int width;
extern void* value;
extern const char* name;
extern unsigned char bytes[16];
extern unsigned char xyz[3];
void Use(const void* key, unsigned length, void* value);
