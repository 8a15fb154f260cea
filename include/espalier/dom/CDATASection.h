// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Text.h>

namespace Dom {

/// A text written as a CDATA section, named "#cdata-section".
class ESPALIER_EXPORT CDATASection : public Text {
public:
    CDATASection(std::string_view data, Document* ownerDocument);

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

private:
    friend class detail::NodeAccess;

    // Made in the pool, without a value.
    explicit CDATASection(const detail::NodeName* name);
};

}  // namespace Dom
