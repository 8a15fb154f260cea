// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "xml/PlaceCounter.h"
#include "xml/XmlScanner.h"

#include <string_view>
#include <utility>  // std::exchange

namespace Xml::detail {

/// An external identifier (XML 1.0 [75]) or the identifier of a notation ([83]).
struct ExternalId {
    bool isPublic = false;
    bool isSystem = false;
    astring publicId;
    astring systemId;
};

/// Something that has a begin and an end, for messages.
struct Construct {
    const char* noun;
    Place place;  ///< where it begins
};

/// Scans what all declarations of the document type are made of, exactly as the grammar says, and
/// throws what was expected instead.
///
/// The text of a parameter entity holds whole declarations only. So an end is an error in all of
/// these scans; the message names what is left open, and the argument the entity whose text ended.
class DeclarationScanner {
public:
    DeclarationScanner(XmlScanner& scanner, bool namespaces)
        : scanner_(scanner), namespaces_(namespaces) {}

    /// Says what is scanned from here on.
    /// \return what was scanned before
    Construct Enter(const Construct& construct) { return std::exchange(construct_, construct); }

    /// Names the parameter entity whose text is scanned; null for none.
    void SetEntity(const astring* name) { entity_ = name; }

    /// Returns the next character, 0 when it is not ASCII. Throws at the end.
    char Peek();

    /// Throws `message` unless white space comes next, and skips it.
    void RequireSpace(const char* message);

    /// Throws `message` unless the text goes on with `c`, and skips that.
    void Require(char c, const char* message);

    /// Skips white space and then does as Require().
    void RequireLast(char c, const char* message);

    /// Returns a name (XML 1.0 [5]), which is good until the next scan. With namespaces it is a
    /// qualified one (Namespaces [7]).
    const ScannedName& ScanName(const char* message);

    /// Returns a name that has no colon with namespaces: `colonMessage` says so.
    astring ScanPlainName(const char* message, const char* colonMessage);

    /// Scans a name token (XML 1.0 [7]).
    void ScanToken(const char* message);

    /// Scans the identifier behind SYSTEM or PUBLIC; tells whether one of them stands here.
    /// \param publicAlone whether a public identifier needs no system identifier
    bool ScanExternalId(ExternalId& id, bool publicAlone = false);

    /// Scans a part of a value by `scan`, one of the scanner's, and appends it to `text`. Character
    /// references are replaced. Throws at the end.
    /// \return what `scan` found
    XmlToken ScanValuePart(XmlToken (XmlScanner::*scan)(astring&), astring& text);

    /// Returns the name behind "&", good until the next scan, and steps over the ";".
    std::string_view ScanEntityName();

    /// Throws `message`, or what is wrong in any case: the end, a reference to a parameter entity.
    [[noreturn]] void Fail(const char* message);

    /// Throws that the text ended inside of `construct`.
    [[noreturn]] void ThrowEnd(const Construct& construct) const;
    [[noreturn]] void ThrowEnd() const { ThrowEnd(construct_); }

    /// Steps over the quotation mark that the text goes on with, and says what it opens.
    Construct OpenLiteral();

    /// Tells whether the text goes on with a quotation mark.
    bool IsAtQuote() {
        const char c = Peek();
        return c == '"' || c == '\'';
    }

private:
    void ScanSystemId(ExternalId& id);

    XmlScanner& scanner_;
    bool namespaces_;
    const astring* entity_ = nullptr;  // not owned
    Construct construct_{"document type declaration", {1, 1}};
    astring digits_;
    astring entityName_;
};

/// Tells whether a name is "xml" in small or capital letters, which is reserved.
bool IsXmlInAnyCase(std::string_view name);

}  // namespace Xml::detail
