// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CssNodeType.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/encoding/Forward.h>
#include <espalier/io/Forward.h>

#include <memory>
#include <string_view>

namespace Dom::CSS {

/// Reads CSS text forward, node by node: selectors, braces, properties, comments, white space; or
/// rule by rule.
///
/// \code
///     Dom::CSS::CssReader reader(&stream, "UTF-8");
///     while (reader.Read()) {
///         const astring rule = reader.ReadRule();  // h1 { color: red; margin: 0 1px }
///     }
/// \endcode
///
/// No operation throws for what the text is: it returns false or an empty string, and who reads
/// stops at the first false. An exception of the stream counts as the end of the text, too
/// (StreamFailed()). All texts are UTF-8.
///
/// \note Only as much text is held as the longest node takes.
class ESPALIER_EXPORT CssReader {
public:
    /// The encoding that all text is converted into, UTF-8; a null pointer means that as well.
    static Xml::Encoding* s_Encoding;

    /// Begins to read.
    ///
    /// \param stream stays the caller's and is not closed; null is an empty text
    /// \param encodingName in any case: "" is US-ASCII; "ISO-8859-1", "ASCII", "LATIN1" and
    ///     "LATIN-1" are ISO-8859-1; "ISO-10646", "UNICODE", "UTF-16", "UTF-16BE" and "UTF-16LE"
    ///     are UTF-16, little-endian unless a byte order mark says otherwise; everything else is
    ///     UTF-8
    CssReader(IO::Stream* stream, const astring& encodingName);
    /// Begins to read, without looking for a byte order mark.
    /// \param encoding stays the caller's; null means US-ASCII
    CssReader(IO::Stream* stream, Xml::Encoding* encoding);
    ~CssReader();
    CssReader(const CssReader&) = delete;
    CssReader& operator=(const CssReader&) = delete;

    /// Ends reading for good. Harmless when done twice.
    void Close();

    /// Reads the next node, and tells whether there was one.
    bool Read();

    /// Tells whether there was no text left when a node was last looked for. When there was no
    /// node and this is false, what is left is nothing that can stand there.
    bool IsAtEnd() const;

    /// \name The current node
    /// What Read() left. When it fails, the kind stays that of the node before; the texts are those
    /// of what was looked at in vain, and may be empty.
    /// @{
    CssNodeType NodeType() const { return nodeType_; }
    /// Returns the name of a property, and in the block of an at-rule also one that is followed by
    /// no ":"; empty for all other nodes.
    astring Name() const;
    /// Returns the value of a property, without comments; else the text of the node.
    astring Value() const;
    /// Returns the priority of a property, without "!". A "!" is taken as a part of the value
    /// wherever it stands, so this is empty.
    astring Priority() const;
    /// @}

    /// \name Where the current node begins
    /// Counted from 1; columns in characters.
    /// @{
    int LineNumber() const;
    int LinePos() const;
    /// @}

    /// \name What comes next
    /// The current node counts when it is of the kind; else nodes are read up to one. Empty, or
    /// false, when there is none. Behind a Read() that returned false no node counts, so that a
    /// loop over what comes next ends.
    /// @{
    astring ReadComment();
    astring ReadSelector();
    bool ReadProperty();
    /// @}

    /// Reads the properties of the next block and returns them as "name: value; name: value".
    astring ReadDeclaration();
    /// Reads the block of an at-rule and returns its properties as "name: value; name: value;".
    /// The block ends at the first "}", also at that of a rule within it.
    astring ReadAtDeclaration();
    /// Reads the next rule and returns it as "selector{ name: value; name: value }", an at-rule as
    /// ReadAtDeclaration() tells; empty when there is none.
    astring ReadRule();

    /// Tells whether the stream threw, which ended the text.
    bool StreamFailed() const;
    /// Returns what the stream said when it threw; else empty.
    const astring& StreamError() const;

private:
    enum class ReadState : unsigned char {
        Closed = 0,
        TopLevel = 1,
        AtRuleBlock = 2,
        DeclarationBlock = 3,
        EndOfInput = 5
    };

    bool ReadNode();
    bool ReadTopLevel();
    bool ReadInAtRule();
    bool ReadInDeclaration();
    void SkipSemicolon();
    bool ReadRestOfProperty();
    bool ReadCommentOrSpace();
    bool IsAt(CssNodeType::NODE_TYPE type) const;
    bool ReadUpTo(CssNodeType::NODE_TYPE type);
    bool StepUpTo(CssNodeType::NODE_TYPE type);
    bool Found(CssNodeType::NODE_TYPE type);
    void AppendProperty(astring& text) const;
    bool AppendPlainProperty(astring& text, std::string_view separator);
    void AppendDeclaration(astring& text);

    ReadState state_ = ReadState::Closed;
    CssNodeType nodeType_;   // of the last node
    bool isAtNode_ = false;  // not when the last read has failed
    std::unique_ptr<detail::CssScanner> scanner_;
};

}  // namespace Dom::CSS
