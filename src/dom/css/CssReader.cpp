// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssReader.h>

#include "dom/css/CssScanner.h"

#include <string_view>

namespace Dom::CSS {

namespace {

constexpr std::size_t kUsualRule = 255;  // characters that most rules do not have

}  // namespace

Xml::Encoding* CssReader::s_Encoding = Xml::Encoding::UTF8();

CssReader::CssReader(IO::Stream* stream, const astring& encodingName)
    : scanner_(std::make_unique<detail::CssScanner>(stream)) {
    scanner_->source.SetEncoding(scanner_->source.EncodingByName(encodingName));
    state_ = ReadState::TopLevel;
}

CssReader::CssReader(IO::Stream* stream, Xml::Encoding* encoding)
    : scanner_(std::make_unique<detail::CssScanner>(stream)) {
    scanner_->source.SetEncoding(encoding != nullptr ? encoding : Xml::Encoding::ASCII());
    state_ = ReadState::TopLevel;
}

CssReader::~CssReader() = default;

void CssReader::Close() {
    state_ = ReadState::Closed;
    scanner_->Close();
}

astring CssReader::Name() const { return astring(scanner_->Name()); }

astring CssReader::Value() const {
    return astring(scanner_->Value().empty() ? scanner_->Text() : scanner_->Value());
}

astring CssReader::Priority() const { return astring(scanner_->Priority()); }

int CssReader::LineNumber() const { return scanner_->LineNumber(); }

int CssReader::LinePos() const { return scanner_->LinePos(); }

bool CssReader::IsAtEnd() const { return scanner_->IsPlacedAtEnd(); }

bool CssReader::StreamFailed() const { return scanner_->source.Failed(); }

const astring& CssReader::StreamError() const { return scanner_->source.Error(); }

bool CssReader::Found(CssNodeType::NODE_TYPE type) {
    nodeType_ = type;
    return true;
}

bool CssReader::Read() {
    scanner_->Begin();
    isAtNode_ = ReadNode();
    if (state_ != ReadState::Closed && scanner_->BeganAtEnd()) state_ = ReadState::EndOfInput;
    return isAtNode_;
}

bool CssReader::ReadNode() {
    switch (state_) {
    case ReadState::TopLevel: return ReadTopLevel();
    case ReadState::AtRuleBlock: return ReadInAtRule();
    case ReadState::DeclarationBlock: return ReadInDeclaration();
    case ReadState::Closed:
    case ReadState::EndOfInput: break;
    }
    return false;
}

bool CssReader::ReadCommentOrSpace() {
    if (scanner_->ScanComment()) return Found(CssNodeType::Comment);
    return scanner_->ScanSpace() && Found(CssNodeType::Whitespace);
}

bool CssReader::ReadTopLevel() {
    if (ReadCommentOrSpace()) return true;
    if (scanner_->ScanOpeningBrace()) {
        state_ = ReadState::DeclarationBlock;
        return Found(CssNodeType::StartDecl);
    }
    if (scanner_->ScanClosingBrace()) return Found(CssNodeType::EndDecl);
    return scanner_->ScanSelector() && Found(CssNodeType::Selector);
}

// Deliberate: rules within the block are read as if they were no rules: a name and "{" begin a
// block, and the first "}" ends the at-rule for ReadAtDeclaration().
bool CssReader::ReadInAtRule() {
    SkipSemicolon();
    if (ReadCommentOrSpace()) return true;
    if (scanner_->ScanName()) {
        scanner_->ScanSpace();
        if (scanner_->ScanColon()) return ReadRestOfProperty();
        return Found(scanner_->ScanOpeningBrace() ? CssNodeType::StartDecl : CssNodeType::Selector);
    }
    if (scanner_->ScanOpeningBrace()) return Found(CssNodeType::StartDecl);
    if (scanner_->ScanClosingBrace()) return Found(CssNodeType::EndDecl);
    return scanner_->ScanSelector() && Found(CssNodeType::Selector);
}

bool CssReader::ReadInDeclaration() {
    SkipSemicolon();
    if (ReadCommentOrSpace()) return true;
    if (scanner_->ScanName()) {
        scanner_->ScanSpace();
        return scanner_->ScanColon() && ReadRestOfProperty();
    }
    if (!scanner_->ScanClosingBrace()) return false;
    state_ = ReadState::TopLevel;
    return Found(CssNodeType::EndDecl);
}

// Deliberate: the text of white space and comments begins with the ";" before them.
void CssReader::SkipSemicolon() {
    if (scanner_->ScanSemicolon()) scanner_->PlaceHere();
}

bool CssReader::ReadRestOfProperty() {
    scanner_->SkipSpaceAndComments();
    scanner_->ScanValue();
    scanner_->SkipSpaceAndComments();
    scanner_->ScanPriority();
    return Found(CssNodeType::Property);
}

bool CssReader::IsAt(CssNodeType::NODE_TYPE type) const { return isAtNode_ && nodeType_ == type; }

bool CssReader::ReadUpTo(CssNodeType::NODE_TYPE type) {
    while (!IsAt(type)) {
        if (!Read()) return false;
    }
    return true;
}

// Reads as ReadUpTo() does, but leaves a ";" out of the text of what follows it.
bool CssReader::StepUpTo(CssNodeType::NODE_TYPE type) {
    while (!IsAt(type)) {
        if (!Read()) return false;
        scanner_->BeginAtPlace();
    }
    return true;
}

astring CssReader::ReadComment() { return StepUpTo(CssNodeType::Comment) ? Value() : astring(); }

astring CssReader::ReadSelector() { return StepUpTo(CssNodeType::Selector) ? Value() : astring(); }

bool CssReader::ReadProperty() { return StepUpTo(CssNodeType::Property); }

void CssReader::AppendProperty(astring& text) const {
    text.append(scanner_->Name()).append(": ");
    text.append(scanner_->Value().empty() ? scanner_->Text() : scanner_->Value());
    if (!scanner_->Priority().empty()) text.append(" !").append(scanner_->Priority());
}

astring CssReader::ReadDeclaration() {
    astring text;
    AppendDeclaration(text);
    return text;
}

// Most properties are plain ones, which are not read node by node.
bool CssReader::AppendPlainProperty(astring& text, std::string_view separator) {
    if (state_ != ReadState::DeclarationBlock) return false;
    return scanner_->AppendPlainProperty(text, separator) && Found(CssNodeType::Property);
}

void CssReader::AppendDeclaration(astring& text) {
    if (!ReadUpTo(CssNodeType::StartDecl)) return;
    if (!AppendPlainProperty(text, {})) {
        do {
            if (!Read()) return;
        } while (nodeType_ == CssNodeType::Whitespace);
        if (nodeType_ == CssNodeType::EndDecl || !ReadProperty()) return;
        AppendProperty(text);
    }
    constexpr std::string_view kSeparator = "; ";
    while (true) {
        if (AppendPlainProperty(text, kSeparator)) continue;
        if (state_ == ReadState::DeclarationBlock) scanner_->SkipToClosingBrace();
        if (!Read() || nodeType_ == CssNodeType::EndDecl) return;
        if (nodeType_ != CssNodeType::Property) continue;
        text.append(kSeparator);
        AppendProperty(text);
    }
}

astring CssReader::ReadAtDeclaration() {
    if (!ReadUpTo(CssNodeType::StartDecl) || !Read()) return {};
    astring text;
    do {
        if (!text.empty()) text.append(" ");
        if (nodeType_ == CssNodeType::Property) {
            AppendProperty(text);
            text.append(";");
        }
        do {
            if (!Read()) return text;
        } while (nodeType_ == CssNodeType::Whitespace && state_ != ReadState::EndOfInput);
    } while (nodeType_ != CssNodeType::EndDecl && state_ == ReadState::AtRuleBlock);
    return text;
}

astring CssReader::ReadRule() {
    if (state_ != ReadState::TopLevel && state_ != ReadState::AtRuleBlock) return {};
    if (!ReadUpTo(CssNodeType::Selector)) return {};
    astring rule;
    rule.reserve(kUsualRule);
    rule.append(scanner_->Text()).append("{ ");
    if (rule[0] == '@') {
        state_ = ReadState::AtRuleBlock;
        rule.append(ReadAtDeclaration());
    } else {
        state_ = ReadState::TopLevel;
        AppendDeclaration(rule);
    }
    rule.append(" }");
    return rule;
}

}  // namespace Dom::CSS
