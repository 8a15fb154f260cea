// SPDX-License-Identifier: MIT

// The document type declaration by the standard. What its subset holds is the business of
// SubsetParser.

#include "xml/DeclarationScanner.h"
#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/SubsetMessages.h"
#include "xml/SubsetParser.h"

namespace Xml::detail {

// [28] doctypedecl ::= '<!DOCTYPE' S Name (S ExternalID)? S? ('[' intSubset ']' S?)? '>'
//
// Entered just after "<!".
ReaderCore::Pass ReaderCore::ParseStandardDoctype() {
    Place place = scanner_.SettledPlace();
    place.column -= 2;
    DeclarationScanner parts(scanner_, namespaces);
    parts.Enter({"document type declaration", place});
    if (!scanner_.Accept("DOCTYPE")) {
        scanner_.Throw(Depth() > 0 ? Message::kUnknownMarkupInElement : Message::kUnknownMarkup);
    }
    if (Depth() > 0 || rootCount_ > 0) scanner_.Throw(Message::kLateDoctype);
    if (doctypeSeen_) scanner_.Throw(Message::kDoctypeAlreadyDefined);
    doctypeSeen_ = true;
    parts.RequireSpace(Message::kNoSpaceAfterDoctype);
    const astring name(parts.ScanName(Message::kExpectedRootName).text);
    value_.clear();
    ParseStandardDoctypeParts(parts);
    return ReportNamed(XmlNodeType::DocumentType, name);
}

// Parses what follows the name of the root element, up to and with ">".
void ReaderCore::ParseStandardDoctypeParts(DeclarationScanner& parts) {
    const char* expected = Message::kExpectedDoctypePart;
    scanner_.SkipWhitespace();  // behind a name, only this may come before SYSTEM or PUBLIC
    ExternalId id;
    if (parts.ScanExternalId(id)) {
        doctype_.hasExternalSubset = true;
        if (id.isPublic) AddDoctypePart(publicName_, id.publicId);
        AddDoctypePart(systemName_, id.systemId);
        expected = Message::kExpectedSubset;
        scanner_.SkipWhitespace();
    }
    if (scanner_.Accept("[")) {
        scanner_.StartCapture();
        SubsetParser(scanner_, *this, entities_, attributeLists_, doctype_, namespaces,
                     entityLimits.nesting)
            .Parse();
        const std::string_view subset = scanner_.EndCapture();
        value_ = subset.substr(0, subset.size() - 1);  // without "]"
        expected = Message::kExpectedDoctypeEnd;
    }
    parts.RequireLast('>', expected);
}

}  // namespace Xml::detail
