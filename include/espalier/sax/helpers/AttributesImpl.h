// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/sax/Attributes.h>

#include <memory>

namespace sax::helpers {

namespace detail {
class AttributeStore;
}

/// Attributes to keep, or to make.
///
/// Deliberate: an attribute is found by the namespace and local name that it was added with,
/// whatever the setters have made of them since. Of two with the same, the first is found.
class ESPALIER_EXPORT AttributesImpl : public Attributes {
public:
    AttributesImpl();

    /// \name Make a copy
    /// @{
    AttributesImpl(const AttributesImpl& other);
    explicit AttributesImpl(const Attributes& other);
    AttributesImpl& operator=(const AttributesImpl& other);
    /// @}

    ~AttributesImpl() override;

    int getLength() const override;
    const char* getURI(int index) const override;
    const char* getLocalName(int index) const override;
    const char* getQName(int index) const override;
    const char* getType(const char* qName) const override;
    const char* getType(const char* uri, const char* localName) const override;
    const char* getType(int index) const override;
    const char* getValue(const char* qName) const override;
    const char* getValue(const char* uri, const char* localName) const override;
    const char* getValue(int index) const override;
    int getIndex(const char* qName) const override;
    int getIndex(const char* uri, const char* localName) const override;

    /// Adds an attribute behind the others. A null pointer is an empty text.
    void addAttribute(const char* uri, const char* localName, const char* qName, const char* type,
                      const char* value);

    /// \name Replace parts of attribute `index`
    /// \throws std::out_of_range "invalid vector<T> subscript" when there is no such attribute
    /// @{
    void setAttribute(int index, const char* uri, const char* localName, const char* qName,
                      const char* type, const char* value);
    void setURI(int index, const char* uri);
    void setLocalName(int index, const char* localName);
    void setQName(int index, const char* qName);
    void setType(int index, const char* type);
    void setValue(int index, const char* value);
    /// @}

    /// Replaces all attributes by a copy of others.
    void setAttributes(const Attributes& other);

    /// Removes all attributes.
    void clear();

private:
    /// Tells whether the functions above tell about something else than what is kept here.
    virtual bool IsView() const;

    std::unique_ptr<detail::AttributeStore> store_;
};

}  // namespace sax::helpers
