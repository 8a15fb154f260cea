// SPDX-License-Identifier: MIT
#include "Tellings.h"

namespace differential {

namespace {

constexpr Telling kTellings[] = {
    {"defaults", "<!DOCTYPE a [<!ATTLIST a x CDATA 'd' y CDATA #FIXED 'f'>]><a/>",
     "start {}a, end {}a"},
    {"types", "<!DOCTYPE a [<!ATTLIST a x NMTOKENS #IMPLIED>]><a x=' 1  2 '/>",
     R"(start {}a {}x=" 1  2 ", end {}a)"},
    {"references", "<a x='&#10;&#9;'>&#13;</a>", R"(start {}a {}x="  ", text "\n", end {}a)"},
    {"parameters",
     "<!DOCTYPE a [<!ENTITY % p \"<!ENTITY e 'first'>\">%p;<!ENTITY e 'second'>]><a>&e;</a>",
     R"(start {}a, text "second", end {}a)"},
};

}  // namespace

std::span<const Telling> Tellings() { return kTellings; }

}  // namespace differential
