// SPDX-License-Identifier: MIT
#include <espalier/sax/helpers/SAXEnumeration.h>

#include <utility>  // std::move

namespace sax::helpers {

SAXEnumeration::SAXEnumeration() = default;
SAXEnumeration::SAXEnumeration(std::vector<astring> elements) : elements_(std::move(elements)) {}
SAXEnumeration::SAXEnumeration(const SAXEnumeration& other) = default;
SAXEnumeration& SAXEnumeration::operator=(const SAXEnumeration& other) = default;
SAXEnumeration::~SAXEnumeration() = default;

}  // namespace sax::helpers
