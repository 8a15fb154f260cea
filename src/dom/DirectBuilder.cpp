// SPDX-License-Identifier: MIT
#include "dom/DirectBuilder.h"

#include <espalier/dom/Attr.h>
#include <espalier/dom/CDATASection.h>
#include <espalier/dom/Comment.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/EntityReference.h>
#include <espalier/dom/HTMLDocument.h>
#include <espalier/dom/ProcessingInstruction.h>
#include <espalier/dom/Text.h>

#include "dom/AttributeTable.h"
#include "dom/FactoryBuilder.h"
#include "dom/HtmlElements.h"
#include "dom/NodeAccess.h"
#include "dom/StyleTarget.h"
#include "xml/HashIndex.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <typeinfo>

namespace Dom::detail {

namespace {

using Kind = AttributeTable::Entry::Kind;
using Xml::detail::AreEqual;
using Xml::detail::XmlAttribute;

std::uint64_t NextSerial() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
}

}  // namespace

DirectBuilder::DirectBuilder(Document& document, Xml::XmlTextReader& reader)
    : document_(document),
      reader_(reader),
      core_(Xml::detail::ReaderAccess::Core(reader)),
      data_(NodeAccess::Data(document)),
      isPage_(typeid(document) == typeid(HTMLDocument)),
      serial_(NextSerial()) {}

inline const NodeName* DirectBuilder::NameOf(Xml::detail::XmlName::Counterpart& counterpart,
                                             std::string_view uri, std::string_view qualified) {
    const std::uint64_t generation = core_.NamespaceGeneration();
    const auto* name = static_cast<const NodeName*>(counterpart.name);
    if (counterpart.keeper == serial_) {
        if (counterpart.generation == generation) return name;
        if (AreEqual(*name->uri, uri)) {
            counterpart.generation = generation;
            return name;
        }
    }
    name = data_.names.Intern(uri, qualified);
    counterpart = {name, serial_, generation};
    return name;
}

// Values are often the same as those of the attribute's namesake before; they are one then.
inline astring* DirectBuilder::AttributeValue(const NodeName& name, std::string_view text) {
    if (name.lastValue == nullptr || !AreEqual(*name.lastValue, text)) {
        name.lastValue = data_.PlaceValue(text);
    }
    return name.lastValue;
}

template <bool kNamespaces>
inline Element* DirectBuilder::MakeElement(const NodeName* name) {
    if (!isPage_) return NodeAccess::MakeLinked<Element>(data_, name);
    return MakeHtmlElement(data_, name, kNamespaces ? ClassNameOf(*name) : name->qualified.view());
}

template <bool kNamespaces>
Node& DirectBuilder::AddElement(Node& parent) {
    Xml::detail::XmlName& name = core_.ElementName();
    const std::string_view uri = kNamespaces ? reader_.NamespaceURI().view() : std::string_view();
    Element* const element =
        MakeElement<kNamespaces>(NameOf(name.elementCounterpart, uri, name.qualified));
    NodeAccess::LinkNew(parent, *element);
    const int count = core_.AttributeCount();
    if (count > 0) AddAttributes<kNamespaces>(*element, count);
    return *element;
}

template <bool kNamespaces>
void DirectBuilder::AddAttributes(Element& element, int count) {
    AttributeTable* const table = AttributeTable::Make(data_.pool, static_cast<std::size_t>(count));
    NodeAccess::SetTable(element, table);
    for (int i = 0; i < count; ++i) {
        const XmlAttribute& attribute = core_.AttributeAt(i);
        const std::string_view uri = kNamespaces ? attribute.uri->view() : std::string_view();
        const NodeName* const name =
            NameOf(attribute.name->attributeCounterpart, uri, attribute.name->qualified);
        if (attribute.holdsReferences) {
            AddReferencingAttribute<kNamespaces>(element, i, name);
            continue;
        }
        const Kind kind = !kNamespaces  ? Kind::Plain
                          : uri.empty() ? Kind::ByName
                                        : Kind::ByNamespace;
        table->AddLoaded({name, kind, AttributeValue(*name, core_.AttributeValue(i))});
    }
}

// An attribute with references becomes a node at once, as they become its children.
template <bool kNamespaces>
void DirectBuilder::AddReferencingAttribute(Element& element, int index, const NodeName* name) {
    std::unique_ptr<Attr> attribute(NodeAccess::Make<Attr>(data_, name, std::string_view()));
    reader_.MoveToAttribute(index);
    BuildValue(document_, reader_, *attribute, kNamespaces);
    reader_.MoveToElement();
    if (kNamespaces) {
        element.SetAttributeNodeNS(attribute.get());
    } else {
        element.SetAttributeNode(attribute.get());
    }
    (void)attribute.release();
}

template Node& DirectBuilder::AddElement<true>(Node& parent);
template Node& DirectBuilder::AddElement<false>(Node& parent);

template <typename T>
void DirectBuilder::AddValue(Node& parent, const NodeName* name) {
    astring* const value = data_.PlaceValue(reader_.Value());
    T* const node = NodeAccess::MakeLinked<T>(data_, name);
    NodeAccess::SetSharedValue(*node, value);
    NodeAccess::LinkNew(parent, *node);
}

void DirectBuilder::AddText(Node& parent) {
    astring* const value = data_.PlaceShared(reader_.Value());
    Text* const text =
        NodeAccess::MakeLinked<Text>(data_, data_.Name(DocumentData::FixedName::Text));
    NodeAccess::SetSharedValue(*text, value);
    NodeAccess::LinkNew(parent, *text);
}

void DirectBuilder::AddCDATASection(Node& parent) {
    AddValue<CDATASection>(parent, data_.Name(DocumentData::FixedName::CDATASection));
}

void DirectBuilder::AddComment(Node& parent) {
    AddValue<Comment>(parent, data_.Name(DocumentData::FixedName::Comment));
}

void DirectBuilder::AddReference(Node& parent, std::string_view name) {
    NodeAccess::LinkNew(
        parent, *NodeAccess::MakeLinked<EntityReference>(data_, data_.names.Intern({}, name)));
}

void DirectBuilder::AddInstruction(Node& parent) {
    const astring& target = reader_.Name();
    if (target == kStyleTarget) {
        NodeAccess::Link(parent, *document_.CreateProcessingInstruction(target, reader_.Value()),
                         nullptr);
        return;
    }
    AddValue<ProcessingInstruction>(parent, data_.names.Intern({}, target));
}

}  // namespace Dom::detail
