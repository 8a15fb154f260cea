// SPDX-License-Identifier: MIT

// What stands between tags: text with its references, white space, CDATA sections, comments and
// processing instructions.

#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/Utf8Append.h"

namespace Xml::detail {

namespace {

bool EqualsXmlWithoutCase(std::string_view text) {
    return text.size() == 3 && (text[0] | 0x20) == 'x' && (text[1] | 0x20) == 'm' &&
           (text[2] | 0x20) == 'l';
}

}  // namespace

// Makes a node with a name and the value value_ the current one.
ReaderCore::Pass ReaderCore::ReportNamed(XmlNodeType::XML_NODE_TYPE type, std::string_view name) {
    ReportValue(type);
    contentSeen_ = true;
    ownName_.qualified = name;
    ownName_.local = name;
    node_.name = &ownName_;
    node_.isRaw = false;  // line ends are normalized in text only
    return Pass::Node;
}

// Parses what comes next inside of an element.
ReaderCore::Pass ReaderCore::ParseBeginTag() {
    scanner_.MarkNode();
    value_.clear();
    const XmlToken token = scanner_.ScanText(value_);
    switch (token) {
    case XmlToken::NONE: return ParseTag();
    case XmlToken::ENDOFFILE: return Pass::End;
    case XmlToken::WHITESPACE: return HandleWhitespace();
    default: return ParseText(token);
    }
}

// Parses markup, with the position at "<".
ReaderCore::Pass ReaderCore::ParseTag() {
    const XmlToken token = scanner_.ScanMarkup();
    if (token != XmlToken::PI) contentSeen_ = true;
    switch (token) {
    case XmlToken::TAG: return ParseElement();
    case XmlToken::ENDTAG: return ParseEndTag();
    case XmlToken::PI: return ParsePI();
    case XmlToken::COMMENT: return ParseComment();
    case XmlToken::CDATA: return ParseCData();
    default: return ParseDoctype();
    }
}

// Joins everything up to the next markup to one text; `token` was scanned already.
ReaderCore::Pass ReaderCore::ParseText(XmlToken token) {
    for (;; token = scanner_.ScanText(value_)) {
        switch (token) {
        case XmlToken::NONE: return ReportValue(XmlNodeType::Text);
        case XmlToken::ENDOFFILE: return Pass::End;
        case XmlToken::CHARREF:
        case XmlToken::ENTITYREF:
            if (ReplaceReference(token, value_)) break;
            if (entityHandling == XmlEntityHandling::ExpandEntities) {
                scanner_.Throw(Message::kUndeclaredEntity, referenceName_);
            }
            if (entityHandling == XmlEntityHandling::ExpandNothing) {
                AppendGeneralReference(value_);
                break;
            }
            if (value_.empty()) return ReportReference();
            parseState_ = ParseState::PsReference;
            return ReportValue(XmlNodeType::Text);
        default: break;  // TEXT and WHITESPACE have been appended
        }
    }
}

// Scans a reference behind its start and appends what it stands for to `text`.
// Returns false for a reference to a general entity, which the caller has to deal with.
bool ReaderCore::ReplaceReference(XmlToken token, astring& text) {
    if (token == XmlToken::ENTITYREF) {
        if (ReplacePredefined(text)) return true;
        ScanGeneralReference();
        return false;
    }
    const int code = scanner_.ScanCharRef(digits_);
    if (entityHandling == XmlEntityHandling::ExpandNothing) {
        text += "&#";
        text += digits_;
        text += ';';
    } else {
        AppendUtf8(text, code);
    }
    return true;
}

// XML 1.0 section 4.6; replaced whatever the handling of entities.
bool ReaderCore::ReplacePredefined(astring& text) {
    constexpr struct {
        std::string_view name;
        char character;
    } kPredefined[] = {{"amp;", '&'}, {"lt;", '<'}, {"gt;", '>'}, {"quot;", '"'}, {"apos;", '\''}};
    for (const auto& entity : kPredefined) {
        if (*scanner_.Position() != static_cast<unsigned char>(entity.name[0])) continue;
        if (!scanner_.Accept(entity.name)) continue;
        text += entity.character;
        return true;
    }
    return false;
}

void ReaderCore::ScanGeneralReference() {
    referencePlace_ = scanner_.CurrentPlace();
    --referencePlace_.column;  // the reference starts at "&"
    const ScannedName& name = scanner_.ScanName();
    if (name.token == XmlToken::ERROR) scanner_.Throw(Message::kBadName);
    referenceName_ = name.text;
    if (!scanner_.Accept(";")) scanner_.Throw(Message::kInvalidNamedEntity);
}

void ReaderCore::AppendGeneralReference(astring& text) const {
    text += '&';
    text += referenceName_;
    text += ';';
}

ReaderCore::Pass ReaderCore::ReportReference() {
    parseState_ = ParseState::PsContent;
    value_.clear();
    return ReportNamed(XmlNodeType::EntityReference, referenceName_);
}

ReaderCore::Pass ReaderCore::HandleWhitespace() {
    contentSeen_ = true;
    const XmlNodeType::XML_NODE_TYPE type = WhitespaceType();
    return type == XmlNodeType::None ? Pass::Repeat : ReportValue(type);
}

ReaderCore::Pass ReaderCore::ParseComment() {
    value_.clear();
    scanner_.ScanComment(value_);
    return ReportValue(XmlNodeType::Comment);
}

ReaderCore::Pass ReaderCore::ParseCData() {
    if (Depth() == 0) scanner_.Throw(Message::kUnexpectedToken, scanner_.TokenText());
    value_.clear();
    scanner_.ScanCData(value_);
    return ReportValue(XmlNodeType::CDATA);
}

// [16] PI ::= '<?' PITarget (S (Char* - (Char* '?>' Char*)))? '?>'
ReaderCore::Pass ReaderCore::ParsePI() {
    const ScannedName& target = scanner_.ScanName();
    if (target.token != XmlToken::NAME) scanner_.Throw(Message::kUnexpectedToken);
    if (target.text == "xml") {
        if (contentSeen_) scanner_.Throw(Message::kUnexpectedDeclaration);
        return ParseXmlDecl();
    }
    if (EqualsXmlWithoutCase(target.text) || target.colon >= 0) {
        scanner_.Throw(Message::kInvalidPIName);
    }
    const astring name(target.text);
    value_.clear();
    const bool isSeparated = scanner_.SkipWhitespace();
    if (isSeparated || scanner_.AtEnd()) {
        scanner_.ScanPI(value_);
    } else if (!scanner_.Accept("?>")) {
        scanner_.Throw(Message::kUnexpectedTokenInPI);
    }
    return ReportNamed(XmlNodeType::ProcessingInstruction, name);
}

}  // namespace Xml::detail
