// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

namespace Dom {

/// A node with text: the base of texts, CDATA sections and comments.
///
/// Offsets and counts are bytes, as is Length(), so a cut may split a character. A count that goes
/// past the end means up to the end.
class ESPALIER_EXPORT CharacterData : public Node {
public:
    void* QueryInterface(const char* name) override;

    /// Returns NodeValue().
    const astring& Data() const { return NodeValue(); }

    /// Replaces the text.
    /// \throws DOMException 7 "This node is read-only", as all that change it
    void SetData(std::string_view data);

    /// Returns the number of bytes.
    std::size_t Length() const { return NodeValue().length(); }

    /// \name Parts
    /// \throws std::out_of_range when `offset` is past the end; nothing has changed then
    /// @{
    astring SubstringData(std::size_t offset, std::size_t count) const;
    void AppendData(std::string_view data);
    void InsertData(std::size_t offset, std::string_view data);
    void DeleteData(std::size_t offset, std::size_t count);
    void ReplaceData(std::size_t offset, std::size_t count, std::string_view data);
    /// @}

protected:
    CharacterData(DOM_NODE_TYPE type, std::string_view name, std::string_view data,
                  Document* ownerDocument);
    /// \cond
    CharacterData(DOM_NODE_TYPE type, const detail::NodeName* name) : Node(type, name) {
        Set(ValueBearing);
        Set(SharedValue);
    }
    /// \endcond
};

}  // namespace Dom
