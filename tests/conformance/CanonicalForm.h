// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace conformance {

/// Makes the canonical form of a document, event by event, in which the conformance suite says what
/// a processor has to tell:
///
///     <!DOCTYPE doc [
///     <!NOTATION n PUBLIC 'p' 's'>
///     ]>
///     <doc a="1" b="2">text<?target data?></doc>
///
/// Attributes are sorted by name, notations too; the document type is there only with notations.
/// Characters that are markup somewhere, tabs and line ends are references; comments are left out,
/// and so is white space outside the root element.
class CanonicalForm {
public:
    using Attributes = std::vector<std::pair<std::string, std::string>>;  ///< name, value

    void DocumentType(std::string_view name);  ///< where it stands, before its notations
    void Notation(std::string_view name, std::string_view publicId, std::string_view systemId);
    void Start(std::string_view name, Attributes attributes);
    void End(std::string_view name);
    void Text(std::string_view text);
    void Instruction(std::string_view target, std::string_view data);

    /// Returns the form of what was told so far.
    std::string Whole() const;

    bool HasDocumentType() const { return hasDocumentType_; }

    /// Returns it without the document type.
    const std::string& Body() const { return body_; }

private:
    std::string DocumentTypeForm() const;

    std::string body_;
    std::string rootName_;  // in the document type
    bool hasDocumentType_ = false;
    std::size_t documentTypePlace_ = 0;  // in body_
    std::map<std::string, std::string, std::less<>>
        notations_;  // name, the rest of the declaration
    int depth_ = 0;  // number of open elements
};

}  // namespace conformance
