// SPDX-License-Identifier: MIT

// Prefixes of elements, and attributes. A plan says what a name needs; it is made, and refused if
// it must be, before anything is written.

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "xml/WriterCore.h"
#include "xml/WriterMessages.h"

#include <algorithm>  // std::find
#include <charconv>
#include <new>  // std::bad_alloc

namespace Xml::detail {

namespace {

constexpr std::string_view kXmlnsUri = "http://www.w3.org/2000/xmlns/";

bool BeginsWithXml(std::string_view prefix) {
    return prefix.size() >= 3 && (prefix[0] | 0x20) == 'x' && (prefix[1] | 0x20) == 'm' &&
           (prefix[2] | 0x20) == 'l';
}

AttributeRole RoleInXml(std::string_view localName) {
    if (localName == "lang") return AttributeRole::Language;
    return localName == "space" ? AttributeRole::Space : AttributeRole::Ordinary;
}

}  // namespace

// Tells whether a prefix is bound, or will be by the open attribute.
bool WriterCore::IsBound(std::string_view prefix) const {
    return namespaces_.FindPrefix(prefix) != nullptr ||
           (state_ == WriteState::Attribute && role_ == AttributeRole::Namespace &&
            declaredPrefix_ == prefix);
}

WriterCore::ElementPlan WriterCore::PlanElement(std::string_view prefix, std::string_view localName,
                                                std::string_view ns) const {
    if (depth_ == 0 && !docTypeName_.empty() && localName != docTypeName_) {
        Throw(Message::kRootDiffers);
    }
    if (prefix.empty() && ns.empty()) return {};
    if (!settings.namespaces) Throw(Message::kNoNamespaces);
    if (ns.empty()) {
        if (!IsBound(prefix)) Throw(Message::kPrefixNotDeclared);
        return {prefix};
    }
    if (!prefix.empty()) {
        if (BeginsWithXml(prefix)) Throw(Message::kInvalidPrefix);
        return {prefix, true};
    }
    if (ns == (depth_ == 0 ? empty_ : *Top().defaultNs)) return {};
    const std::string_view bound = namespaces_.GetPrefix(ns);
    return {bound, false, bound.empty()};
}

void WriterCore::Declare(std::string_view prefix, std::string_view uri) {
    if (namespaces_.DeclarePrefix(prefix, uri) == nullptr) throw std::bad_alloc();
}

// Returns a prefix that nothing in scope has.
std::string_view WriterCore::GeneratePrefix() {
    do {
        char digits[16];
        const std::to_chars_result end =
            std::to_chars(digits, digits + sizeof digits, ++prefixCount_);
        newPrefix_ = "ns";
        newPrefix_.append(digits, static_cast<std::size_t>(end.ptr - digits));
    } while (namespaces_.FindPrefix(newPrefix_) != nullptr);
    return newPrefix_;
}

// Remembers that the open start tag has a prefix that an outer element has declared, so that it is
// not declared anew for another namespace.
void WriterCore::NoteUse(std::string_view prefix) {
    if (prefix.empty() || used_.size() > kMostUsed) return;
    if (const sax::XmlNamespace* const ns = namespaces_.FindPrefix(prefix)) used_.push_back(ns);
}

// With very many prefixes any may be among them: looking through them for each attribute would take
// quadratic time.
bool WriterCore::IsUsed(const sax::XmlNamespace& ns) const {
    return used_.size() > kMostUsed || std::find(used_.begin(), used_.end(), &ns) != used_.end();
}

// Attributes.

void WriterCore::RequireStartTag() const {
    RequireOpen();
    const bool isInTag = state_ == WriteState::Element || state_ == WriteState::Attribute;
    if (!isInTag || !tagOpen_) Throw(Message::kBadState);
}

WriterCore::AttributePlan WriterCore::PlanAttribute(std::string_view prefix,
                                                    std::string_view localName,
                                                    TextArgument ns) const {
    if (!settings.namespaces) {
        if (!prefix.empty() || !ns.empty()) Throw(Message::kNoNamespaces);
        const bool isXml = localName.substr(0, 4) == "xml:";
        return {{}, isXml ? RoleInXml(localName.substr(4)) : AttributeRole::Ordinary};
    }
    const bool isDefault = localName == "xmlns" && prefix.empty();
    if (isDefault && (ns.empty() || ns.view() == kXmlnsUri)) {
        return {{}, AttributeRole::DefaultNamespace};
    }
    if (prefix == "xmlns" || ns.view() == kXmlnsUri) {
        return {"xmlns", AttributeRole::Namespace};
    }
    if (prefix == "xml") return {prefix, RoleInXml(localName)};
    if (!prefix.empty()) return PlanPrefixed(prefix, ns);
    if (ns.empty()) return {};
    const std::string_view bound = namespaces_.GetPrefix(ns.view());
    if (bound == "xml") return {bound, RoleInXml(localName)};
    return {bound, AttributeRole::Ordinary, false, bound.empty()};
}

WriterCore::AttributePlan WriterCore::PlanPrefixed(std::string_view prefix, TextArgument ns) const {
    if (ns.isGiven() && ns.empty()) Throw(Message::kEmptyNamespace);
    if (!ns.isGiven()) {
        if (!IsBound(prefix)) Throw(Message::kMissingNamespace);
        return {prefix};
    }
    const sax::XmlNamespace* const bound = namespaces_.FindPrefix(prefix);
    if (bound != nullptr && bound->uri == ns.view()) return {prefix};
    // The element itself, or another of its attributes, may have the prefix for another namespace.
    const sax::XmlNamespace* const latest = namespaces_.FirstDeclaredNs();
    const bool isDeclaredHere =
        bound != nullptr && latest != nullptr && bound->level == latest->level;
    if (isDeclaredHere || (bound != nullptr && IsUsed(*bound))) {
        const std::string_view other = namespaces_.GetPrefix(ns.view());
        return {other, AttributeRole::Ordinary, false, other.empty()};
    }
    return {prefix, AttributeRole::Ordinary, true};
}

void WriterCore::StartAttribute(std::string_view prefix, std::string_view localName,
                                TextArgument ns) {
    RequireStartTag();
    const AttributePlan plan = SettleAndPlan([&] { return PlanAttribute(prefix, localName, ns); });
    BeginAttribute(plan, localName, ns.view());
}

void WriterCore::BeginAttribute(const AttributePlan& plan, std::string_view localName,
                                std::string_view ns) {
    if (state_ == WriteState::Attribute) FinishAttribute();
    std::string_view prefix = plan.prefix;
    role_ = plan.role;
    value_.clear();
    Make([&] {
        if (plan.generates) prefix = GeneratePrefix();
        if (plan.binds || plan.generates) {
            Declare(prefix, ns);
        } else if (plan.role != AttributeRole::Namespace) {
            NoteUse(prefix);
        }
        if (role_ == AttributeRole::Namespace) declaredPrefix_ = localName;
    });
    output_.Put(' ');
    if (!prefix.empty()) {
        output_.PutToken(prefix);
        output_.Put(':');
    }
    output_.PutToken(localName);
    output_.Put('=');
    quote_ = settings.quoteChar;
    output_.Put(quote_);
    state_ = WriteState::Attribute;
}

void WriterCore::CheckAttribute(AttributeRole role, std::string_view value) const {
    if (role != AttributeRole::Space || value == "default" || value == "preserve") return;
    Throw(Message::kBadXmlSpace);
}

// Puts in force what the open attribute says. It may still go on.
void WriterCore::SettleOpenAttribute() {
    CheckAttribute(role_, value_);
    if (role_ != AttributeRole::Ordinary) Make([this] { TakeValue(); });
}

void WriterCore::TakeValue() {
    WriterFrame& frame = Top();
    switch (role_) {
    case AttributeRole::Ordinary: break;
    case AttributeRole::DefaultNamespace:
        frame.defaultNs = Keep(value_);
        frame.declaration = WriterFrame::Declaration::Written;
        break;
    case AttributeRole::Namespace:
        Declare(declaredPrefix_, value_);
        written_.push_back(namespaces_.FindPrefix(declaredPrefix_));
        break;
    case AttributeRole::Language: frame.language = Keep(value_); break;
    case AttributeRole::Space:
        frame.space = value_ == "default" ? XmlSpace::SpaceDefault : XmlSpace::SpacePreserve;
        break;
    }
}

// Writes the end of the open attribute, which has been settled.
void WriterCore::FinishAttribute() {
    output_.Put(quote_);
    state_ = WriteState::Element;
}

void WriterCore::EndAttribute() {
    RequireOpen();
    if (state_ != WriteState::Attribute) Throw(Message::kNotInAttribute);
    SettleAttribute();
    FinishAttribute();
}

// Writes an attribute that means nothing to the writer and has no prefix.
bool WriterCore::AttributeQuickly(std::string_view prefix, std::string_view localName,
                                  TextArgument ns, std::string_view value) {
    const bool isPlain = state_ == WriteState::Element && prefix.empty() && ns.empty() &&
                         localName.substr(0, 3) != "xml";
    return isPlain &&
           output_.PutPlainAttribute(localName, settings.quoteChar, value, BreaksArePlain());
}

void WriterCore::AttributeString(std::string_view prefix, std::string_view localName,
                                 TextArgument ns, std::string_view value) {
    RequireStartTag();
    if (AttributeQuickly(prefix, localName, ns, value)) return;
    bool escapes = false;
    const AttributePlan plan = SettleAndPlan([&] {
        const AttributePlan made = PlanAttribute(prefix, localName, ns);
        escapes = CheckText(value);
        CheckAttribute(made.role, value);
        return made;
    });
    BeginAttribute(plan, localName, ns.view());
    PutValue(value, escapes);
    NoteValue(value);
    SettleAttribute();
    FinishAttribute();
}

}  // namespace Xml::detail
