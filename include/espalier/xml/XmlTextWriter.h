// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/encoding/Forward.h>
#include <espalier/xml/Formatting.h>
#include <espalier/xml/NewLineHandling.h>
#include <espalier/xml/TextArgument.h>
#include <espalier/xml/WriteState.h>
#include <espalier/xml/XmlSpace.h>

#include <memory>

namespace IO {
class Stream;
}

namespace Xml {

namespace detail {
class WriterCore;
}

class XmlTextReader;

/// Writes XML to a stream, call by call in document order.
///
/// The writer escapes texts and values, declares namespaces, indents when asked to, and refuses
/// calls that make no sense where it stands (see GetWriteState()). What is written collects in a
/// buffer of 1024 bytes, and reaches the stream when that is full, by Flush() and by Close().
///
/// \code
///     IO::StringStream stream;
///     Xml::UTF8Encoding utf8;
///     Xml::XmlTextWriter writer(&stream, &utf8);
///     writer.WriteStartDocument();
///     writer.WriteStartElement("books");
///     writer.WriteStartElement("book");
///     writer.WriteAttributeString("title", "Salt & Smoke");
///     writer.WriteEndElement();
///     writer.WriteEndElement();
///     writer.Close();
/// \endcode
///
/// Every text is UTF-8, and may be given as astring, `const char*`, std::string_view or
/// std::string; a null pointer is an empty text. The names of elements and attributes are not
/// checked, nor whether an element has two attributes of one name, nor are "]]>" in a CDATA
/// section, "--" in a comment and "?>" in an instruction.
///
/// Each error is an Xml::Exception with the text given here, an empty argument, and -1 for line and
/// position. It leaves the writer as it was before the call. When the stream throws instead, part
/// of the output may be lost; the writer is then `Closed`.
///
/// Every writing operation throws "Invalid Operation: Writer closed" in the state `Closed`.
///
/// \note One thread at a time may use a writer; different writers may be used at once.
class ESPALIER_EXPORT XmlTextWriter {
public:
    /// \name Construction
    /// @{

    /// Makes a writer without a stream, which is `Closed`.
    XmlTextWriter();

    /// Makes a writer on a stream and an encoding of the caller, which both must outlive it.
    /// \throws Xml::Exception "Invalid Argument: a_Stream" for a null stream, "Invalid Argument:
    ///     Stream not writable", "Invalid Argument: a_Encoding" for a null encoding
    XmlTextWriter(IO::Stream* stream, Encoding* encoding);

    /// Makes a writer on a new file, which replaces an old one. Close() closes it.
    /// \throws Xml::Exception "Invalid Argument: a_Encoding", and what IO::FileStream throws
    XmlTextWriter(const char* fileName, Encoding* encoding);
    XmlTextWriter(const astring& fileName, Encoding* encoding);

    /// Makes a writer with the settings of another. It has no stream and is `Closed`.
    XmlTextWriter(const XmlTextWriter& other);

    /// Takes over the settings of another writer; what is being written goes on.
    XmlTextWriter& operator=(const XmlTextWriter& other);

    /// What the buffer holds is lost unless Close() or Flush() came before.
    virtual ~XmlTextWriter();

    /// @}
    /// \name Settings
    /// @{

    Formatting GetFormatting() const;
    void SetFormatting(Formatting formatting);

    /// Says how many indent characters a level takes: 2 at first. A negative number is 0.
    void SetIndentation(int indentation);

    /// The character to indent with: a space at first.
    char GetIndentChar() const;
    void SetIndentChar(char character);

    /// The quotation mark around values: the double one at first.
    char GetQuoteChar() const;
    void SetQuoteChar(char quote);

    /// Tells whether characters that XML does not allow are refused, which they are at first.
    bool CheckCharacters() const;
    void SetCheckCharacters(bool check);

    /// Tells whether Close() closes the stream: at first false for a stream of the caller.
    bool CloseOutput() const;
    void SetCloseOutput(bool close);

    /// What happens to line breaks: `Replace` at first.
    NewLineHandling GetNewLineHandling() const;
    void SetNewLineHandling(const NewLineHandling& handling);

    /// The characters for a line break: CR LF at first.
    const astring& GetNewLineChars() const;

    /// \throws Xml::Exception "Invalid Argument: Non-whitespace character in new line characters"
    void SetNewLineChars(TextArgument characters);

    /// Tells whether prefixes are declared and checked, which they are at first.
    bool GetNamespaces() const;

    /// \throws Xml::Exception "Invalid Operation: Namespace support cannot be changed while writing
    ///     the XML file" in a state other than `Start`
    void SetNamespaces(bool namespaces);

    /// @}
    /// \name State
    /// @{

    WriteState GetWriteState() const;

    /// Returns the xml:space of the innermost open element; SpaceNone without one.
    XmlSpace GetXmlSpace() const;

    /// Returns the xml:lang of the innermost open element, or empty. Valid until that ends.
    const astring& GetXmlLang() const;

    /// Returns a prefix that is bound to a namespace here; empty when there is none. Valid until
    /// the element ends that has declared it.
    const astring& LookupPrefix(TextArgument ns) const;

    /// Hands what has been written to the stream and flushes that.
    /// \throws Xml::Exception "Invalid Operation: Writer already closed"
    void Flush();

    /// Ends the document, hands it to the stream and flushes that.
    /// \throws Xml::Exception "Invalid Operation: Writer already closed"; "Bad attribute: Invalid
    ///     xml:space value" of an attribute that is open, with nothing changed
    void Close();

    /// @}
    /// \name Documents
    /// @{

    /// Writes the byte-order mark of the encoding and the XML declaration.
    /// \throws Xml::Exception "Invalid state" in a state other than `Start`
    void WriteStartDocument();
    void WriteStartDocument(bool standalone);

    /// Ends all that is open. Another document may follow.
    void WriteEndDocument();

    /// Writes a document type declaration. An identifier that is empty is left out, and a subset
    /// too. The root element must then have the name.
    /// \throws Xml::Exception "Invalid Operation: Doctype not allowed in this state", "Invalid
    ///     Argument: Not a valid XML name"
    void WriteDocType(TextArgument name, TextArgument publicId, TextArgument systemId,
                      TextArgument subset);

    /// @}
    /// \name Elements
    /// @{

    /// Begins an element. A namespace without a prefix takes a prefix that is bound to it, or
    /// becomes the default namespace; a namespace with a prefix is declared on the element.
    /// \throws Xml::Exception "Invalid Argument: Root element name does not match document type",
    ///     "Invalid Argument: Prefix not declared", "Invalid Argument: Invalid Prefix" for a prefix
    ///     that begins with "xml", "Invalid Argument: Namespaces not enabled"
    void WriteStartElement(TextArgument localName);
    void WriteStartElement(TextArgument localName, TextArgument ns);
    void WriteStartElement(TextArgument prefix, TextArgument localName, TextArgument ns);

    /// Ends the innermost element: with "/>" when nothing was written in it.
    /// \throws Xml::Exception "Invalid Operation: Writer not in an element"
    void WriteEndElement();

    /// Ends the innermost element with what this operation has always written: "<", the name, ">"
    /// and a NUL.
    /// \throws Xml::Exception "Invalid Operation: Wrong state"
    void WriteFullEndElement();

    /// Writes an element with a text. Throws as WriteStartElement() and WriteString().
    void WriteElementString(TextArgument localName, TextArgument text);
    void WriteElementString(TextArgument localName, TextArgument ns, TextArgument text);
    void WriteElementString(TextArgument prefix, TextArgument localName, TextArgument ns,
                            TextArgument text);

    /// @}
    /// \name Attributes
    /// @{

    /// Begins an attribute of the start tag that is open. A namespace without a prefix takes a
    /// prefix that is bound to it, or a new one, which is declared on the element. An attribute
    /// named xmlns or with the prefix xmlns declares a namespace.
    /// \throws Xml::Exception "Invalid state", "Invalid Argument: Prefix defined for empty
    ///     namespace", "Bad attribute: Missing namespace URI" for a prefix that is not declared,
    ///     "Invalid Argument: Namespaces not enabled"
    void WriteStartAttribute(TextArgument localName);
    void WriteStartAttribute(TextArgument localName, TextArgument ns);
    void WriteStartAttribute(TextArgument prefix, TextArgument localName, TextArgument ns);

    /// Ends the attribute.
    /// \throws Xml::Exception "Invalid Operation: Not in attribute", "Bad attribute: Invalid
    ///     xml:space value"
    void WriteEndAttribute();

    /// Writes an attribute. Throws as WriteStartAttribute() and WriteEndAttribute().
    void WriteAttributeString(TextArgument localName, TextArgument value);
    void WriteAttributeString(TextArgument localName, TextArgument ns, TextArgument value);
    void WriteAttributeString(TextArgument prefix, TextArgument localName, TextArgument ns,
                              TextArgument value);

    /// @}
    /// \name Content
    /// @{

    /// Writes a text, or a part of the value of the attribute that is open, with all that needs it
    /// escaped.
    /// \throws Xml::Exception "Invalid Operation: Text not allowed in this state", "Invalid XML
    ///     character"
    void WriteString(TextArgument text);

    /// Writes white space, also behind the root element.
    /// \throws Xml::Exception as WriteString(), and "Invalid whitespace character"
    void WriteWhitespace(TextArgument text);

    /// Writes a CDATA section.
    /// \throws Xml::Exception "Invalid Operation: Not in content state" in an attribute, "Invalid
    ///     Operation: Text not allowed in this state", "Invalid XML character"
    void WriteCData(TextArgument text);

    /// Writes a comment.
    /// \throws Xml::Exception "Invalid XML character"
    void WriteComment(TextArgument text);

    /// Writes a processing instruction.
    /// \throws Xml::Exception "Invalid Operation: Wrong state" in an attribute, "Invalid Argument:
    ///     Not a valid XML name", "Invalid XML character"
    void WriteProcessingInstruction(TextArgument name, TextArgument text);

    /// Writes a reference to a general entity.
    /// \throws Xml::Exception "Invalid Operation: Invalid state", "Invalid Argument: Empty name",
    ///     "Invalid Argument: Not a valid XML name"
    void WriteEntityRef(TextArgument name);

    /// Writes a name as text.
    /// \throws Xml::Exception as WriteString(), and "Invalid Argument: Not a valid XML name"
    void WriteName(TextArgument name);

    /// Writes a name token as text.
    /// \throws Xml::Exception as WriteString(), and "Invalid Argument: Not a valid Nmtoken"
    void WriteNmToken(TextArgument token);

    /// Writes markup as it is, unchecked, also behind the root element.
    /// \throws Xml::Exception "Invalid Operation: Text not allowed in this state"
    void WriteRaw(TextArgument text);

    /// The same with the first `length` bytes of a text; a negative length is 0.
    void WriteRaw(const char* text, int length);

    /// Writes bytes as base64 (RFC 4648), in lines of 76 characters. A line that is full is
    /// followed by the new-line characters.
    /// \param offset where the bytes begin in `buffer`
    /// \throws Xml::Exception "Invalid Operation: Text not allowed in this state"
    void WriteBase64(const unsigned char* buffer, int offset, int count);

    /// Writes bytes as hexadecimal digits, in lines as WriteBase64().
    void WriteBinHex(const unsigned char* buffer, int offset, int count);

    /// @}
    /// \name Copies
    /// @{

    /// Writes the attributes of the element that `reader` stands on, or those from the attribute
    /// that it stands on to the last.
    /// \param defaultAttributes makes no difference: all attributes that the reader reports are
    ///     written
    /// \throws Xml::Exception "Invalid Argument" without a reader, "Invalid XmlReader position" on
    ///     a node without attributes, and what the calls made throw
    void WriteAttributes(XmlTextReader* reader, bool defaultAttributes);

    /// Writes the node that `reader` stands on and all that is in it, or the rest of the document
    /// when it stands on none, and leaves the reader on the node that follows. End tags are those
    /// of WriteFullEndElement().
    /// \throws Xml::Exception "Invalid Argument" without a reader, and what the calls made throw;
    ///     what has been written stays
    void WriteNode(XmlTextReader* reader, bool defaultAttributes);

    /// @}

private:
    std::unique_ptr<detail::WriterCore> core_;
};

}  // namespace Xml
