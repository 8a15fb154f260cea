// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

namespace Dom {

/// A parent for nodes that are not in a tree, named "#document-fragment".
///
/// Deliberate: appended to another node, it becomes its child as it is.
class ESPALIER_EXPORT DocumentFragment : public Node {
public:
    explicit DocumentFragment(Document* ownerDocument);

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

private:
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit DocumentFragment(const detail::NodeName* name);
};

}  // namespace Dom
