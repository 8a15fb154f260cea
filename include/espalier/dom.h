// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Trees, in the manner of DOM Level 2.

/// \namespace Dom
/// Trees in the manner of DOM Level 2: documents, their nodes and what works on them.

/// \namespace Dom::StyleSheets
/// Style sheets of any language, and the nodes and documents that have them (DOM Level 2 Style).

#include <espalier/dom/Attr.h>
#include <espalier/dom/AttributeRange.h>
#include <espalier/dom/CDATASection.h>
#include <espalier/dom/CharacterData.h>
#include <espalier/dom/ChildRange.h>
#include <espalier/dom/Comment.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/DOMImplementation.h>
#include <espalier/dom/DOMList.h>
#include <espalier/dom/DOMNodeType.h>
#include <espalier/dom/DOMObject.h>
#include <espalier/dom/DOMStringList.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/DocumentFragment.h>
#include <espalier/dom/DocumentType.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/EntityReference.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/HTMLCollection.h>
#include <espalier/dom/HTMLDocument.h>
#include <espalier/dom/HTMLElement.h>
#include <espalier/dom/HTMLLinkElement.h>
#include <espalier/dom/HTMLMetaElement.h>
#include <espalier/dom/HTMLStyleElement.h>
#include <espalier/dom/NamedNodeMap.h>
#include <espalier/dom/Node.h>
#include <espalier/dom/NodeList.h>
#include <espalier/dom/NodePtr.h>
#include <espalier/dom/ProcessingInstruction.h>
#include <espalier/dom/StyleProcessingInstruction.h>
#include <espalier/dom/Text.h>
#include <espalier/dom/WriteNode.h>
#include <espalier/dom/css/DocumentStyle.h>
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/dom/css/MediaList.h>
#include <espalier/dom/css/StyleSheet.h>
#include <espalier/dom/css/StyleSheetList.h>
#include <espalier/dom/css/StyleSheetListImpl.h>
