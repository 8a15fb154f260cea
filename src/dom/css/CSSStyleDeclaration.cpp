// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/InterfaceName.h"
#include "dom/css/DeclarationScanner.h"
#include "dom/css/Priority.h"
#include "dom/css/PropertyBuilder.h"
#include "dom/css/PropertyMaking.h"
#include "dom/css/ValueReading.h"
#include "dom/css/WaitingText.h"
#include "dom/css/Weight.h"

#include <cstddef>
#include <memory>

namespace Dom::CSS {

namespace {

// What stands in place of a text while one thread makes properties of it. It is never looked into.
alignas(detail::WaitingText) constexpr std::byte kBusy[sizeof(detail::WaitingText)] = {};

const detail::WaitingText* Busy() { return reinterpret_cast<const detail::WaitingText*>(kBusy); }

}  // namespace

CSSStyleDeclaration::CSSStyleDeclaration(CSSRule* parentRule) : parentRule_(parentRule) {}

CSSStyleDeclaration::CSSStyleDeclaration(const CSSStyleDeclaration& other)
    : parentRule_(other.parentRule_) {
    for (const CSSPropertyImpl* const property : other.Properties()) {
        auto copy =
            detail::CopyProperty(*property, {property->Important(), property->Origin(),
                                             property->Specificity(), property->Shorthand()});
        properties_.AddItem(copy.get());
        static_cast<void>(copy.release());  // the list's now
    }
}

CSSStyleDeclaration& CSSStyleDeclaration::operator=(const CSSStyleDeclaration& other) {
    CSSStyleDeclaration copy(other);
    properties_.SwapItems(copy.properties_);
    DropWaiting();
    return *this;
}

CSSStyleDeclaration::~CSSStyleDeclaration() { DropWaiting(); }

void CSSStyleDeclaration::DropWaiting() noexcept {
    const detail::WaitingText::Pointer waiting(waiting_.load(std::memory_order_relaxed));
    waiting_.store(nullptr, std::memory_order_relaxed);
}

// One of the threads that ask at once takes the text and makes the properties; the others wait for
// it, and go on as it did when memory is out. Declarations know nothing of each other.
void CSSStyleDeclaration::MakeProperties() const {
    const detail::WaitingText* waiting = waiting_.load(std::memory_order_acquire);
    do {
        while (waiting == Busy()) {
            waiting_.wait(waiting, std::memory_order_acquire);
            waiting = waiting_.load(std::memory_order_acquire);
        }
        if (waiting == nullptr) return;
    } while (!waiting_.compare_exchange_weak(waiting, Busy(), std::memory_order_acquire));
    const auto endTurn = [this](const detail::WaitingText* left) {
        waiting_.store(left, std::memory_order_release);
        waiting_.notify_all();
    };
    try {
        CSSPropertyList made;
        detail::PropertyBuilder(made, waiting->TheWeight(), waiting->Reading())
            .AddText(waiting->Text());
        properties_.SwapItems(made);
    } catch (...) {
        endTurn(waiting);
        throw;
    }
    endTurn(nullptr);
    detail::WaitingText::Dispose()(waiting);
}

void* CSSStyleDeclaration::QueryInterface(const char* className) {
    return Dom::detail::IsInterface(className, "Dom::CSS::CSSStyleDeclaration") ? this : nullptr;
}

astring CSSStyleDeclaration::CssText() const {
    astring text;
    for (const CSSPropertyImpl* const property : Properties()) {
        if (property != *properties_.begin()) text += "; ";
        text += property->CssText();
    }
    return text;
}

void CSSStyleDeclaration::SetCssText(const char* text) {
    SetText(text, detail::WeightOf(parentRule_), detail::ValueReading::Literal);
}

void CSSStyleDeclaration::SetCssText(const astring& text) { SetCssText(text.c_str()); }

// Most declarations of a sheet are never asked for their properties.
void CSSStyleDeclaration::SetText(std::string_view text, const detail::Weight& weight,
                                  detail::ValueReading reading) {
    const bool canWait = detail::IsSurelyDeclaration(text);
    detail::WaitingText::Pointer waiting;
    if (canWait) waiting = detail::WaitingText::Make(text, weight, reading);
    CSSPropertyList old;  // goes last: the text may be a part of it
    old.SwapItems(properties_);
    DropWaiting();
    if (!canWait) return detail::PropertyBuilder(properties_, weight, reading).AddText(text);
    waiting_.store(waiting.release(), std::memory_order_release);
}

unsigned CSSStyleDeclaration::Find(std::string_view name) const {
    const CSSPropertyList& properties = Properties();
    for (unsigned i = 0; i < properties.Length(); ++i) {
        if (properties.Item(i)->Name() == name) return i;
    }
    return kNone;
}

void CSSStyleDeclaration::DeleteProperty(unsigned index) {
    const std::unique_ptr<CSSPropertyImpl> property(properties_.Item(index));
    properties_.RemoveItemAt(index);
}

astring CSSStyleDeclaration::GetPropertyValue(std::string_view name) const {
    const CSSPropertyImpl* const property = properties_.Item(Find(name));
    return property == nullptr ? astring() : property->Value();
}

CSSValue* CSSStyleDeclaration::GetPropertyCSSValue(std::string_view name) const {
    const CSSPropertyImpl* const property = properties_.Item(Find(name));
    return property == nullptr ? nullptr : property->GetCSSValue();
}

astring CSSStyleDeclaration::GetPropertyPriority(std::string_view name) const {
    const CSSPropertyImpl* const property = properties_.Item(Find(name));
    return property == nullptr ? astring() : property->Priority();
}

astring CSSStyleDeclaration::RemoveProperty(std::string_view name) {
    const unsigned index = Find(name);
    const CSSPropertyImpl* const property = properties_.Item(index);
    astring value = property == nullptr ? astring() : property->Value();
    DeleteProperty(index);
    return value;
}

// Deliberate: of a shorthand only a property with its own name is taken out, such as "margin", and
// not those that it stands for. So older ones of these stay before the new ones.
//
// The old property goes after the new ones are there, so that it stays when memory is out, and so
// that the arguments may be parts of it. A value that is refused has it gone, too.
void CSSStyleDeclaration::SetProperty(std::string_view name, std::string_view value,
                                      std::string_view priority) {
    const unsigned old = Find(name);
    const unsigned length = properties_.Length();
    try {
        detail::PropertyBuilder(properties_, detail::WeightOf(parentRule_),
                                detail::ValueReading::Literal)
            .AddProperty(name, detail::IsImportant(priority), value);
    } catch (const DOMException&) {
        DeleteProperty(old);
        throw;
    } catch (...) {
        while (properties_.Length() > length)
            DeleteProperty(properties_.Length() - 1);
        throw;
    }
    DeleteProperty(old);
}

astring CSSStyleDeclaration::Item(unsigned long index) const {
    const CSSPropertyImpl* const property = Properties().Item(index);
    return property == nullptr ? astring() : property->Name();
}

}  // namespace Dom::CSS
