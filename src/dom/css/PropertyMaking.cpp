// SPDX-License-Identifier: MIT
#include "dom/css/PropertyMaking.h"

#include <espalier/dom/css/CSSPrimitiveValue.h>

#include "dom/css/Primitive.h"
#include "dom/css/ValueMaking.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <optional>
#include <typeinfo>
#include <utility>

namespace Dom::CSS::detail {

// A property in one piece of memory with its name and its value, which is a primitive value, as
// most are: a sheet has very many of them.
//
// The piece lives as long as the property or anyone who shares the value:
//
//     piece: [ counts | value | property | name ]
//                          ^    |    |       ^
//                          +----+    +-------+
//
// So a property that is deleted is only destroyed; the last who shares the piece frees it.
class CompactProperty : public CSSPropertyImpl {
public:
    template <typename Source>
    static std::unique_ptr<CSSPropertyImpl> Make(std::string_view name, const Source& value,
                                                 const PropertyTraits& traits) {
        auto piece = std::make_shared<Piece>(value);
        void* const place = piece->property;
        astring placedName = piece->PlaceName(name);
        return std::unique_ptr<CSSPropertyImpl>(
            ::new (place) CompactProperty(std::move(placedName), std::move(piece), traits));
    }

    // Makes a property with another value, which is a piece of its own.
    static std::unique_ptr<CSSPropertyImpl> MakeApart(std::string_view name,
                                                      std::shared_ptr<CSSValue> value,
                                                      const PropertyTraits& traits) {
        return std::unique_ptr<CSSPropertyImpl>(
            new CSSPropertyImpl(astring(name), std::move(value), traits.important, traits.origin,
                                traits.specificity, traits.shorthand));
    }

    static void operator delete(CompactProperty* property, std::destroying_delete_t) {
        const std::shared_ptr<Piece> piece = std::move(property->piece_);
        property->~CompactProperty();
    }

private:
    struct Piece;

    CompactProperty(astring&& name, std::shared_ptr<Piece>&& piece, const PropertyTraits& traits);

    std::shared_ptr<Piece> piece_;  // that this is in; the value may become another's
};

struct CompactProperty::Piece {
    template <typename Source>
    explicit Piece(const Source& source) : value(source) {}

    // Returns a name whose text is in this piece, if it is not long.
    astring PlaceName(std::string_view text) {
        if (text.size() >= sizeof name) return text;
        std::memcpy(name, text.data(), text.size());
        name[text.size()] = '\0';
        return astring(astring::Placed{name, text.size(), sizeof name});
    }

    CSSPrimitiveValue value;
    alignas(CompactProperty) std::byte property[sizeof(CompactProperty)];
    char name[24];  // all names of CSS 2 but one have less
};

CompactProperty::CompactProperty(astring&& name, std::shared_ptr<Piece>&& piece,
                                 const PropertyTraits& traits)
    : CSSPropertyImpl(std::move(name), std::shared_ptr<CSSValue>(piece, &piece->value),
                      traits.important, traits.origin, traits.specificity, traits.shorthand),
      piece_(std::move(piece)) {}

std::unique_ptr<CSSPropertyImpl> MakeProperty(std::string_view name, std::string_view text,
                                              const PropertyTraits& traits, ValueReading reading) {
    astring buffer;
    const std::optional<Primitive> primitive = ReadWholePrimitive(text, buffer, reading);
    if (primitive) {
        return CompactProperty::Make(name, *primitive, traits);
    }
    return CompactProperty::MakeApart(name, MakeOtherValue(text, reading), traits);
}

std::unique_ptr<CSSPropertyImpl> CopyProperty(const CSSPropertyImpl& property,
                                              const PropertyTraits& traits) {
    const CSSValue& value = *property.GetCSSValue();
    if (typeid(value) == typeid(CSSPrimitiveValue)) {
        return CompactProperty::Make(property.Name(), static_cast<const CSSPrimitiveValue&>(value),
                                     traits);
    }
    return CompactProperty::MakeApart(property.Name(), std::shared_ptr<CSSValue>(value.Clone()),
                                      traits);
}

}  // namespace Dom::CSS::detail
