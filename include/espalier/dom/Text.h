// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/CharacterData.h>

namespace Dom {

/// A text between markup, named "#text".
class ESPALIER_EXPORT Text : public CharacterData {
public:
    Text(std::string_view data, Document* ownerDocument);

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

    /// Keeps the first `offset` bytes and puts a new text with the others behind this one.
    /// \return the new text, which belongs to the caller when this text has no parent
    /// \throws std::out_of_range when `offset` is past the end; DOMException 7 "This node is
    ///     read-only", and what inserting into the parent throws; nothing has changed then
    ///
    /// Deliberate: with a node behind it the new text is put in by InsertBefore(), so NextSibling()
    /// of this text does not tell of it.
    Text* SplitText(std::size_t offset);

protected:
    Text(DOM_NODE_TYPE type, std::string_view name, std::string_view data, Document* ownerDocument);
    /// \cond
    Text(DOM_NODE_TYPE type, const detail::NodeName* name) : CharacterData(type, name) {}
    /// \endcond

private:
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit Text(const detail::NodeName* name) : CharacterData(TEXT_NODE, name) {}
};

}  // namespace Dom
