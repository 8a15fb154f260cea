// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/xml/NodeView.h>
#include <espalier/xml/XmlEntityHandling.h>
#include <espalier/xml/XmlNodeType.h>
#include <espalier/xml/XmlSpace.h>

#include <memory>
#include <string_view>

namespace IO {
class Stream;
}

namespace Xml {

namespace detail {
class ReaderCore;
}

/// Reads an XML document forward only, one node at a time.
///
/// Open() or SetStream() names the input, each Read() moves to the next node, and the properties
/// tell about the node that the reader stands on: NodeType(), Name(), Value(), Depth() and so on.
/// The attributes of an element belong to it and are visited with MoveToFirstAttribute() and
/// MoveToNextAttribute(), or asked for with GetAttribute(). The document is never held as a
/// whole: the reader works on 1024 bytes of input at a time, and documents of any size and depth
/// are read in memory that grows with the depth of nesting and the longest value only.
///
/// All text is UTF-8, whatever the encoding of the input (see Encoding()). A name, a system
/// identifier or a public identifier is at most 1024 bytes long in the input's encoding; texts,
/// values and comments may be of any length.
///
/// \code
///     Xml::XmlTextReader reader;
///     reader.Open("books.xml");
///     while (reader.Read()) {
///         if (reader.NodeType() == Xml::XmlNodeType::Element && reader.Name() == "book") {
///             std::cout << reader.GetAttribute("title") << "\n";
///         }
///     }
/// \endcode
///
/// Errors in the input are thrown by Read() as Xml::Exception with a line and a position; the
/// reader is then in the state `Error`, and Read() returns false until another input is opened.
/// What a stream throws passes through Read() unchanged and has the same effect. docs/errors.md
/// lists all messages.
///
/// Strings are returned by reference and are valid until the next call of Read(), Open(),
/// SetStream() or Close(), or another call that moves the reader.
///
/// \note One thread at a time may use a reader; different readers may be used at once.
class ESPALIER_EXPORT XmlTextReader {
public:
    /// Says which white space between markup is reported as nodes.
    enum XmlWsHandlingEnum {
        WsNone = 0,         ///< none
        WsSignificant = 1,  ///< only where xml:space is "preserve"
        WsAll = 2           ///< all
    };

    /// The state of the reader.
    enum XmlReadStateEnum {
        Closed = 0,      ///< no input: after construction and after Close()
        EndOfFile = 1,   ///< the whole document has been read
        Error = 2,       ///< an error stopped the reading
        Initial = 3,     ///< an input is open and Read() has not been called
        Interactive = 4  ///< the reader stands on a node
    };

    /// Makes a reader without input: namespaces on, normalization off, all white space reported,
    /// character references expanded.
    XmlTextReader();

    /// Closes the reader; exceptions of its stream are swallowed.
    ~XmlTextReader();

    XmlTextReader(const XmlTextReader&) = delete;
    XmlTextReader& operator=(const XmlTextReader&) = delete;

    /// \name Input
    /// @{

    /// Closes the reader and opens the file `fileName`, which it then owns. Reads nothing yet.
    /// \return true
    /// \throws Xml::Exception as IO::FileStream does, for example "File not found"; the reader is
    ///     then `Closed`
    bool Open(const astring& fileName);

    /// Closes the reader and takes `stream` as its input. Reads nothing yet.
    /// \param owns whether Close() closes and deletes the stream
    /// \return true; false when `stream` is null
    bool SetStream(IO::Stream* stream, bool owns);

    /// Ends the use of the input and forgets all about the document; settings stay as they are.
    /// Never throws.
    void Close();

    /// @}
    /// \name State and settings
    /// @{

    XmlReadStateEnum ReadState() const;

    /// Tells whether the whole document has been read.
    bool Eof() const;

    /// Tells whether names are split into prefix and local name and resolved to namespaces.
    bool Namespaces() const;

    /// Switches namespaces on (the default) or off.
    /// \throws Xml::Exception "Invalid Operation" with the argument "SetNamespaces" once reading
    ///     has begun
    void SetNamespaces(bool namespaces);

    /// Tells whether line ends in values are normalized (XML 1.0 sections 2.11 and 3.3.3).
    bool Normalization() const;

    /// Switches normalization on or off (the default), from the next node on. When on, CR LF and
    /// a lone CR in texts become one LF, and tabs and line ends in attribute values become one
    /// space each.
    /// \throws Xml::Exception "Invalid operation" with the argument "SetNormalization" when closed
    void SetNormalization(bool normalization);

    XmlWsHandlingEnum WhitespaceHandling() const;

    /// Says which white space is reported, from the next node on.
    /// \throws Xml::Exception "Invalid operation" with the argument "SetWhitespaceHandling" when
    ///     closed
    void SetWhitespaceHandling(XmlWsHandlingEnum handling);

    XmlEntityHandling EntityHandling() const;

    /// Says what happens to references, from the next node on.
    void SetEntityHandling(XmlEntityHandling handling);

    /// Returns the name of the encoding that is being decoded, for example "UTF-8" or "UTF-16LE";
    /// empty when closed. It is known after the first Read().
    astring Encoding() const;

    /// @}
    /// \name Reading
    /// @{

    /// Moves to the next node.
    /// \return true when there is one; false at the end of the document and after an error
    /// \throws Xml::Exception "No source stream to parse" (line and position 0) without an input,
    ///     and every message for input that is not well-formed (docs/errors.md)
    bool Read();

    /// @}
    /// \name The current node
    /// @{

    XmlNodeType NodeType() const { return node_.type; }

    /// Returns the qualified name: of an element, an attribute, an entity reference, the target of
    /// a processing instruction, "xml" for the declaration, the root element's name for the
    /// document type; empty for other nodes.
    const astring& Name() const { return node_.name->qualified; }

    /// Returns the name without its prefix; the whole name when namespaces are off.
    const astring& LocalName() const { return node_.name->local; }

    /// Returns the prefix, or empty.
    const astring& Prefix() const { return node_.name->prefix; }

    /// Returns the URI of the namespace of an element or attribute; empty without one, also for
    /// an undeclared prefix and for declarations of namespaces.
    const astring& NamespaceURI() const { return *node_.namespaceUri; }

    /// Returns the text, the attribute's value, the comment and so on; empty for nodes without.
    const astring& Value() const { return node_.isRaw ? NormalizedValue() : *node_.value; }

    /// Tells whether nodes of this kind have a value.
    bool HasValue() const;

    /// Returns how many elements are open around the node, the node itself included: 1 for the
    /// root element, for its end tag, and for nodes outside it; 0 without a node.
    int Depth() const { return node_.depth; }

    /// Tells whether the element is written as an empty-element tag; it then has no `EndElement`.
    bool IsEmptyElement() const {
        return node_.isEmptyElement && node_.type == XmlNodeType::Element;
    }

    /// Returns the quotation mark around the current attribute's value; the double one elsewhere.
    char QuoteChar() const;

    /// Returns the line on which the node starts, from 1 on.
    int LineNumber() const;

    /// Returns where in its line the node starts, in characters, from 1 on. An element starts at
    /// its "<"; a processing instruction, the declaration and the document type two later.
    int LinePosition() const;

    /// Returns the value of the innermost xml:lang in force, or empty. On an `EndElement` node the
    /// element has been left already.
    const astring& XmlLang() const;

    /// Returns the innermost xml:space in force. On an `EndElement` node the element has been left
    /// already.
    XmlSpace GetXmlSpace() const;

    /// @}
    /// \name Attributes
    /// @{

    /// Returns the number of attributes of the current element or of the element that the current
    /// attribute belongs to, of pseudo-attributes of the declaration; 0 on other nodes.
    int AttributeCount() const;

    /// Tells whether AttributeCount() is above 0.
    bool HasAttributes() const;

    /// Returns the value of attribute `i`, from 0 on; empty when there is none.
    const astring& GetAttribute(int i) const;

    /// Returns the value of the attribute with the qualified name `name`; empty when there is none.
    const astring& GetAttribute(std::string_view name) const;

    /// Returns the value of the attribute with that local name and namespace; empty when there is
    /// none.
    const astring& GetAttribute(std::string_view localName, std::string_view namespaceURI) const;

    /// Moves from an attribute to its element.
    /// \return false when the reader does not stand on an attribute
    bool MoveToElement();

    /// Moves to the first attribute of the element.
    /// \return false when there is none
    bool MoveToFirstAttribute();

    /// Moves from an attribute to the next one.
    /// \return false after the last one. Deliberate: also on the element itself, where
    ///     MoveToFirstAttribute() has to be called first.
    bool MoveToNextAttribute();

    /// Returns the index of the attribute that was visited last; 0 for a new element.
    int GetCurrentAttributeIndex() const;

    /// Returns the URI bound to `prefix` (empty: the default namespace) at the current node, or
    /// empty; always empty when namespaces are off.
    const astring& LookupNamespace(std::string_view prefix) const;

    /// @}
    /// \name Checks of names
    /// @{

    /// Tells whether `name` is a name: a letter or "_" first, then also digits, ".", "-" and
    /// combining characters, as in XML 1.0 (fourth edition) without ideographs.
    /// \param allowColon whether ":" counts as a letter
    static bool IsName(std::string_view name, bool allowColon);

    /// Tells whether `token` is not empty and consists of the characters that may stand in a name.
    static bool IsNameToken(std::string_view token);

    /// @}

private:
    const astring& NormalizedValue() const;

    detail::NodeView node_;  // filled by the core
    std::unique_ptr<detail::ReaderCore> core_;
};

}  // namespace Xml
