// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlHash.h>

namespace Xml {

/// An entry of a HashMap, or no entry.
///
/// It is a pointer into the map: valid until its entry is removed or the map is destroyed, and,
/// while maps share a table by assignment, until the last of the maps that share it lets it go.
/// A null item answers 0 or null to every question.
class HashItem {
public:
    /// Makes a null item.
    HashItem() = default;
    HashItem(XmlHashItem* item) : item_(item) {}

    HashItem(const HashItem&) = default;
    HashItem& operator=(const HashItem&) = default;

    /// Tells whether this is no entry.
    bool IsNull() const { return item_ == nullptr; }

    /// Moves to the next entry of the same bucket; becomes null at the end of the bucket.
    void Next() {
        if (item_ != nullptr) item_ = item_->next;
    }

    /// Returns the full hash of the key.
    unsigned GetHashKey() const { return item_ == nullptr ? 0 : item_->hash; }

    /// Returns the key bytes inside the entry; no terminator follows them.
    char* GetKey() const { return item_ == nullptr ? nullptr : item_->key; }

    /// Returns the length of the key in bytes.
    unsigned GetKeyLength() const { return item_ == nullptr ? 0 : item_->keyLength; }

    /// Returns the value that is stored.
    void* GetValue() const { return item_ == nullptr ? nullptr : item_->value; }

    /// Stores a value without calling a hook of the map. Maps that share the entry all see it.
    /// \return the value that was stored before
    void* SetValue(void* value) {
        if (item_ == nullptr) return nullptr;
        void* const old = item_->value;
        item_->value = value;
        return old;
    }

private:
    friend class HashMap;

    XmlHashItem* item_ = nullptr;  // not owned
};

}  // namespace Xml
