// SPDX-License-Identifier: MIT
#include "CanonicalForm.h"

#include <algorithm>

namespace conformance {
namespace {

void AppendEscaped(std::string& out, std::string_view text) {
    for (const char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\t': out += "&#9;"; break;
        case '\n': out += "&#10;"; break;
        case '\r': out += "&#13;"; break;
        default: out += c; break;
        }
    }
}

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string IdentifiersOf(std::string_view publicId, std::string_view systemId) {
    if (publicId.empty()) return "SYSTEM " + Quoted(systemId);
    const std::string own = "PUBLIC " + Quoted(publicId);
    return systemId.empty() ? own : own + " " + Quoted(systemId);
}

}  // namespace

void CanonicalForm::DocumentType(std::string_view name) {
    hasDocumentType_ = true;
    rootName_ = name;
    documentTypePlace_ = body_.size();
}

void CanonicalForm::Notation(std::string_view name, std::string_view publicId,
                             std::string_view systemId) {
    notations_.emplace(name, IdentifiersOf(publicId, systemId));
}

void CanonicalForm::Start(std::string_view name, Attributes attributes) {
    ++depth_;
    // By bytes of UTF-8, which is the order of the characters.
    std::sort(attributes.begin(), attributes.end());
    body_ += '<';
    body_ += name;
    for (const auto& [attribute, value] : attributes) {
        body_ += " " + attribute + "=\"";
        AppendEscaped(body_, value);
        body_ += '"';
    }
    body_ += '>';
}

void CanonicalForm::End(std::string_view name) {
    --depth_;
    body_ += "</";
    body_ += name;
    body_ += '>';
}

void CanonicalForm::Text(std::string_view text) {
    if (depth_ > 0) AppendEscaped(body_, text);
}

void CanonicalForm::Instruction(std::string_view target, std::string_view data) {
    body_ += "<?";
    body_ += target;
    body_ += ' ';
    body_ += data;
    body_ += "?>";
}

std::string CanonicalForm::Whole() const {
    std::string whole = body_;
    if (!notations_.empty()) whole.insert(documentTypePlace_, DocumentTypeForm());
    return whole;
}

std::string CanonicalForm::DocumentTypeForm() const {
    std::string form = "<!DOCTYPE " + rootName_ + " [\n";
    for (const auto& [name, identifiers] : notations_)
        form += "<!NOTATION " + name + " " + identifiers + ">\n";
    return form + "]>\n";
}

}  // namespace conformance
