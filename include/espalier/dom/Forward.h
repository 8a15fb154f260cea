// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Declares the classes of this folder for headers that only name them.

namespace Dom {
class Attr;
class AttributeRange;
class CDATASection;
class CharacterData;
class Comment;
class DOMException;
class DOMImplementation;
class DOMNodeType;
class DOMObject;
class DOMStringList;
class Document;
class DocumentFragment;
class DocumentType;
class Element;
class EntityReference;
class HTMLCollection;
class HTMLDocument;
class HTMLElement;
class HTMLLinkElement;
class HTMLMetaElement;
class HTMLStyleElement;
class NamedNodeMap;
class Node;
class NodeList;
class ProcessingInstruction;
class StyleProcessingInstruction;
class Text;

namespace StyleSheets {
class DocumentStyle;
class LinkStyle;
class MediaList;
class StyleSheet;
class StyleSheetList;
class StyleSheetListImpl;
}  // namespace StyleSheets

namespace detail {
class AttributeTable;
class DocumentData;
struct ListPlace;
class NodeAccess;
struct NodeName;
}  // namespace detail
}  // namespace Dom
