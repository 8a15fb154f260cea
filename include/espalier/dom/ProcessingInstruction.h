// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

namespace Dom {

/// A processing instruction; its name is the target, its value the data.
class ESPALIER_EXPORT ProcessingInstruction : public Node {
public:
    ProcessingInstruction(std::string_view target, std::string_view data, Document* ownerDocument);

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Replaces the data. Deliberate: also when the node is read-only.
    virtual void SetData(std::string_view data);

    /// Returns NodeName().
    const astring& Target() const { return NodeName(); }
    /// Returns NodeValue().
    const astring& Data() const { return NodeValue(); }

private:
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit ProcessingInstruction(const detail::NodeName* name);
};

}  // namespace Dom
