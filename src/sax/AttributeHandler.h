// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/sax/helpers/AttributesImpl.h>

#include "sax/PairIndex.h"
#include "xml/ReaderAccess.h"
#include "xml/ReaderCore.h"

#include <cstddef>
#include <vector>

namespace sax::detail {

/// The attributes of the element that a reader stands on. It copies none of them but those whose
/// values hold references to entities.
class AttributeHandler final : public helpers::AttributesImpl {
public:
    explicit AttributeHandler(Xml::XmlTextReader& reader)
        : reader_(reader), core_(Xml::detail::ReaderAccess::Core(reader)) {}

    /// Gets ready for the element that the reader stands on.
    /// \throws Xml::Exception for references that cannot be resolved
    void Load() {
        if (core_.HasNoAttributes()) {
            count_ = 0;
        } else {
            LoadAll();
        }
    }

    int getLength() const override { return count_; }
    const char* getURI(int index) const override;
    const char* getLocalName(int index) const override;
    const char* getQName(int index) const override;
    const char* getType(int index) const override;
    const char* getValue(int index) const override;
    int getIndex(const char* qName) const override;
    int getIndex(const char* uri, const char* localName) const override;
    const char* getType(const char* qName) const override { return getType(getIndex(qName)); }
    const char* getType(const char* uri, const char* localName) const override {
        return getType(getIndex(uri, localName));
    }
    const char* getValue(const char* qName) const override { return getValue(getIndex(qName)); }
    const char* getValue(const char* uri, const char* localName) const override {
        return getValue(getIndex(uri, localName));
    }

private:
    /// A value in which references have been replaced.
    struct Resolved {
        int index;
        astring value;
    };

    bool IsView() const override { return true; }
    bool Has(int index) const {  // no negative one, as these are large without their sign
        return static_cast<unsigned>(index) < static_cast<unsigned>(count_);
    }
    void LoadAll();
    void Resolve(int index);
    const char* ResolvedValue(int index) const;

    Xml::XmlTextReader& reader_;
    Xml::detail::ReaderCore& core_;
    int count_ = 0;
    std::vector<Resolved> resolved_;  // the first resolvedCount_, by index; others keep memory
    std::size_t resolvedCount_ = 0;
    mutable PairIndex pairs_;  // of all attributes, if isIndexed_
    mutable bool isIndexed_ = false;
};

}  // namespace sax::detail
