// SPDX-License-Identifier: MIT

// Elements and attributes by the standard: what the document type declares for attributes, and the
// constraints of Namespaces in XML 1.0.

#include <espalier/io/Exception.h>

#include "xml/Messages.h"
#include "xml/ReaderCore.h"
#include "xml/StandardMessages.h"

namespace Xml::detail {

namespace {

constexpr std::string_view kXmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kXmlnsUri = "http://www.w3.org/2000/xmlns/";

}  // namespace

// Attribute lists.

// Normalizes the values of the tag that has been scanned by their types, and adds the attributes
// that it does not have and the document type supplies.
void ReaderCore::ApplyAttributeLists(const XmlName& element) {
    const AttributeList* const list = attributeLists_->Find(element.qualified);
    if (list == nullptr) return;
    if (list->HasTypes()) {
        for (XmlAttribute& attribute : Attributes()) {
            const AttributeDeclaration* const declared = list->Find(attribute.name->qualified);
            if (declared == nullptr || declared->type == AttributeType::CData) continue;
            NormalizedValue(attribute);
            TrimTokens(attribute.value);
            attribute.isTokens = true;
        }
    }
    for (const AttributeDeclaration* const declaration : list->Defaults())
        SupplyAttribute(*declaration);
}

void ReaderCore::SupplyAttribute(const AttributeDeclaration& declaration) {
    const std::size_t colon = namespaces ? declaration.name.find(':') : astring::npos;
    XmlName& name =
        *InternName(declaration.name, colon == astring::npos ? -1 : static_cast<int>(colon));
    if (name.usedBy == elementSerial_) return;
    const std::size_t bytes = declaration.name.length() + declaration.value.length();
    if (IsAmplified(suppliedBytes_, static_cast<long long>(bytes))) {
        scanner_.Throw(Message::kSuppliedLimit, declaration.name);
    }
    XmlAttribute& attribute = AddAttribute(name);
    attribute.value = declaration.value;
    attribute.isRaw = false;
    attribute.isDefault = true;
    attribute.quote = '"';
    attribute.place = scanner_.NodePlace();
    attribute.hasPlace = true;
}

// Namespaces.

void ReaderCore::ThrowAt(const XmlAttribute& attribute, const char* message,
                         std::string_view argument) const {
    const Place place = PlaceOf(attribute);
    Exception::ThrowException(message, astring(argument), place.line, place.column);
}

// Namespaces in XML 1.0 section 3, Reserved Prefixes and Namespace Names, and section 5, No Prefix
// Undeclaring.
void ReaderCore::CheckDeclaration(const XmlAttribute& attribute, std::string_view prefix,
                                  std::string_view uri) const {
    const bool isDefault = attribute.name->meaning == NameMeaning::DefaultNamespace;
    const char* message = nullptr;
    if (prefix == "xmlns") {
        message = Message::kXmlnsDeclared;
    } else if (prefix == "xml") {
        if (uri != kXmlUri) message = Message::kXmlRebound;
    } else if (uri == kXmlUri) {
        message = Message::kXmlNameBound;
    } else if (uri == kXmlnsUri) {
        message = Message::kXmlnsNameBound;
    } else if (uri.empty() && !isDefault) {
        message = Message::kEmptyPrefix;
    }
    if (message != nullptr) ThrowAt(attribute, message, attribute.name->qualified);
}

// Section 5, Prefix Declared. No prefix is bound to the empty URI.
void ReaderCore::CheckElementPrefix(const XmlName& name, const astring& uri) const {
    const bool isXmlns = name.prefix == "xmlns";
    if (!isXmlns && !uri.empty()) return;
    const Place place = scanner_.NodePlace();
    Exception::ThrowException(isXmlns ? Message::kXmlnsElement : Message::kUndeclaredPrefix,
                              name.qualified, place.line, place.column);
}

}  // namespace Xml::detail
