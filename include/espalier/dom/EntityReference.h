// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

namespace Dom {

/// A reference to an entity, which was not expanded; its name is that of the entity.
class ESPALIER_EXPORT EntityReference : public Node {
public:
    EntityReference(std::string_view name, Document* ownerDocument);

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

private:
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit EntityReference(const detail::NodeName* name);
};

}  // namespace Dom
