// SPDX-License-Identifier: MIT
#include <espalier/sax/helpers/LocatorImpl.h>

namespace sax::helpers {

LocatorImpl::LocatorImpl() = default;

LocatorImpl::LocatorImpl(const Locator* locator) {
    if (locator == nullptr) return;
    publicId_ = locator->getPublicId();
    systemId_ = locator->getSystemId();
    lineNumber_ = locator->getLineNumber();
    columnNumber_ = locator->getColumnNumber();
}

LocatorImpl::LocatorImpl(const LocatorImpl& other) = default;
LocatorImpl& LocatorImpl::operator=(const LocatorImpl& other) = default;
LocatorImpl::~LocatorImpl() = default;

const char* LocatorImpl::getPublicId() const { return publicId_.c_str(); }
const char* LocatorImpl::getSystemId() const { return systemId_.c_str(); }
int LocatorImpl::getLineNumber() const { return lineNumber_; }
int LocatorImpl::getColumnNumber() const { return columnNumber_; }

void LocatorImpl::setPublicId(const char* publicId) { publicId_ = publicId; }
void LocatorImpl::setSystemId(const char* systemId) { systemId_ = systemId; }

}  // namespace sax::helpers
