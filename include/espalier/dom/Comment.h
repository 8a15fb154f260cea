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
};

}  // namespace Dom
