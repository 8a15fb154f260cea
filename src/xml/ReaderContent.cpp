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

// Makes `node` the current one, at the place that was marked.
ReaderCore::Pass ReaderCore::ReportNode(XmlTokenInfo& node) {
    node.depth = Depth() + 1;
    contentSeen_ = true;
    currentNode = &node;
    return Pass::Node;
}

// Parses what comes next inside of an element.
ReaderCore::Pass ReaderCore::ParseBeginTag() {
    if (referencePending_) return ReportReference();
    scanner_.MarkNode();
    textNode_.value.clear();
    const XmlToken token = scanner_.ScanText(textNode_.value);
    switch (token) {
    case XmlToken::NONE: return ParseTag();
    case XmlToken::ENDOFFILE: return Pass::End;
    case XmlToken::WHITESPACE: return HandleWhitespace();
    default: return ParseText(token);
    }
}

// Parses markup, with the position at "<".
ReaderCore::Pass ReaderCore::ParseTag() {
    switch (scanner_.ScanMarkup()) {
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
    astring& text = textNode_.value;
    textNode_.type = XmlNodeType::Text;
    textNode_.normalize = NormalizeText();
    for (;; token = scanner_.ScanText(text)) {
        switch (token) {
        case XmlToken::NONE: return ReportNode(textNode_);
        case XmlToken::ENDOFFILE: return Pass::End;
        case XmlToken::CHARREF:
        case XmlToken::ENTITYREF:
            if (ReplaceReference(token, text)) break;
            if (entityHandling == XmlEntityHandling::ExpandEntities) {
                scanner_.Throw(Message::kUndeclaredEntity, referenceName_);
            }
            if (entityHandling == XmlEntityHandling::ExpandNothing) {
                AppendGeneralReference(text);
                break;
            }
            if (text.empty()) return ReportReference();
            referencePending_ = true;
            return ReportNode(textNode_);
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
    referencePending_ = false;
    ownName_ = referenceName_;
    entityRefNode_.place = referencePlace_;
    return ReportNode(entityRefNode_);
}

ReaderCore::Pass ReaderCore::HandleWhitespace() {
    contentSeen_ = true;
    if (whitespaceHandling == XmlTextReader::WsNone) return Pass::Repeat;
    const bool isSignificant = Space() == XmlSpace::SpacePreserve;
    if (!isSignificant && whitespaceHandling != XmlTextReader::WsAll) return Pass::Repeat;
    textNode_.type = isSignificant ? XmlNodeType::SignificantWhitespace : XmlNodeType::Whitespace;
    textNode_.normalize = NormalizeText();
    return ReportNode(textNode_);
}

ReaderCore::Pass ReaderCore::ParseComment() {
    commentNode_.value.clear();
    scanner_.ScanComment(commentNode_.value);
    commentNode_.normalize = NormalizeText();
    return ReportNode(commentNode_);
}

ReaderCore::Pass ReaderCore::ParseCData() {
    if (Depth() == 0) scanner_.Throw(Message::kUnexpectedToken, scanner_.TokenText());
    cdataNode_.value.clear();
    scanner_.ScanCData(cdataNode_.value);
    cdataNode_.normalize = NormalizeText();
    return ReportNode(cdataNode_);
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
    ownName_ = target.text;
    piNode_.value.clear();
    const bool isSeparated = scanner_.SkipWhitespace();
    if (isSeparated || scanner_.AtEnd()) {
        scanner_.ScanPI(piNode_.value);
    } else if (!scanner_.Accept("?>")) {
        scanner_.Throw(Message::kUnexpectedTokenInPI);
    }
    return ReportNode(piNode_);
}

}  // namespace Xml::detail
