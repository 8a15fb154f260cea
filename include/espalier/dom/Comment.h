// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/CharacterData.h>

namespace Dom {

/// A comment, named "#comment".
class ESPALIER_EXPORT Comment : public CharacterData {
public:
    Comment(std::string_view data, Document* ownerDocument);

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

private:
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit Comment(const detail::NodeName* name);
};

}  // namespace Dom
