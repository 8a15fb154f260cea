// SPDX-License-Identifier: MIT
#include <espalier/sax/helpers/LocatorImpl.h>

#include "sax/ViewOf.h"

namespace sax::helpers {

using sax::detail::ViewOf;

LocatorImpl::LocatorImpl() = default;

LocatorImpl::LocatorImpl(const Locator* locator) {
    if (locator == nullptr) return;
    setPublicId(locator->getPublicId());
    setSystemId(locator->getSystemId());
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

void LocatorImpl::setPublicId(const char* publicId) { publicId_ = ViewOf(publicId); }
void LocatorImpl::setSystemId(const char* systemId) { systemId_ = ViewOf(systemId); }

}  // namespace sax::helpers
