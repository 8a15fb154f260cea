// SPDX-License-Identifier: MIT
#include "DefaultDifferences.h"

#include <sstream>

namespace conformance {
namespace {

using enum Parting;

constexpr DefaultDifference kDifferences[] = {
    {Accepts, "two-roots", R"(
not-wf-sa-040 not-wf-sa-041 not-wf-sa-044 o-p01fail3 ibm-not-wf-P01-ibm01n03.xml
)"},
    {Accepts, "spaces", R"(
not-wf-sa-062 not-wf-sa-096 not-wf-sa-165 not-wf-sa-186 attlist10 attlist11 o-p32fail3
o-p40fail1 o-p44fail4 o-p71fail1 o-p71fail4 o-p72fail1 o-p72fail3 o-p75fail1 o-p75fail2
ibm-not-wf-P32-ibm32n01.xml ibm-not-wf-P71-ibm71n02.xml ibm-not-wf-P72-ibm72n01.xml
ibm-not-wf-P72-ibm72n03.xml ibm-not-wf-P75-ibm75n05.xml ibm-not-wf-P75-ibm75n09.xml
ibm-not-wf-P80-ibm80n01.xml ibm-not-wf-P83-ibm83n04.xml
)"},
    {Accepts, "subset", R"(
not-wf-sa-058 not-wf-sa-059 not-wf-sa-060 not-wf-sa-063 not-wf-sa-064 not-wf-sa-065
not-wf-sa-066 not-wf-sa-067 not-wf-sa-068 not-wf-sa-078 not-wf-sa-079 not-wf-sa-080
not-wf-sa-107 not-wf-sa-122 not-wf-sa-123 not-wf-sa-124 not-wf-sa-125 not-wf-sa-126
not-wf-sa-127 not-wf-sa-128 not-wf-sa-129 not-wf-sa-130 not-wf-sa-131 not-wf-sa-132
not-wf-sa-133 not-wf-sa-134 not-wf-sa-135 not-wf-sa-136 not-wf-sa-137 not-wf-sa-138
not-wf-sa-139 not-wf-sa-149 not-wf-sa-158 not-wf-sa-161 not-wf-sa-180 not-wf-sa-183
not-wf-sa-184 attlist01 attlist02 attlist03 attlist04 attlist05 attlist06 attlist07 attlist08
attlist09 content01 content02 content03 nwf-dtd00 nwf-dtd01 dtd02 dtd03 pi sgml04 sgml05 sgml06
sgml07 sgml08 sgml09 sgml10 sgml11 sgml12 sgml13 o-p29fail1 o-p45fail1 o-p45fail2 o-p45fail3
o-p45fail4 o-p46fail1 o-p46fail2 o-p46fail3 o-p46fail4 o-p46fail5 o-p46fail6 o-p47fail1
o-p47fail2 o-p47fail3 o-p47fail4 o-p48fail1 o-p48fail2 o-p51fail1 o-p51fail2 o-p51fail3
o-p51fail4 o-p51fail5 o-p51fail6 o-p51fail7 o-p52fail1 o-p52fail2 o-p53fail1 o-p53fail2
o-p53fail3 o-p53fail4 o-p53fail5 o-p54fail1 o-p55fail1 o-p56fail1 o-p56fail2 o-p56fail3
o-p56fail4 o-p56fail5 o-p57fail1 o-p58fail1 o-p58fail2 o-p58fail4 o-p58fail5 o-p58fail6
o-p58fail7 o-p58fail8 o-p59fail1 o-p59fail2 o-p59fail3 o-p60fail1 o-p60fail2 o-p60fail3
o-p60fail4 o-p60fail5 o-p69fail1 o-p69fail2 o-p69fail3 o-p71fail3 ibm-not-wf-P29-ibm29n01.xml
ibm-not-wf-P29-ibm29n03.xml ibm-not-wf-P45-ibm45n01.xml ibm-not-wf-P45-ibm45n02.xml
ibm-not-wf-P45-ibm45n03.xml ibm-not-wf-P45-ibm45n04.xml ibm-not-wf-P45-ibm45n05.xml
ibm-not-wf-P45-ibm45n06.xml ibm-not-wf-P45-ibm45n07.xml ibm-not-wf-P45-ibm45n08.xml
ibm-not-wf-P45-ibm45n09.xml ibm-not-wf-P46-ibm46n01.xml ibm-not-wf-P46-ibm46n02.xml
ibm-not-wf-P46-ibm46n03.xml ibm-not-wf-P46-ibm46n04.xml ibm-not-wf-P46-ibm46n05.xml
ibm-not-wf-P47-ibm47n01.xml ibm-not-wf-P47-ibm47n02.xml ibm-not-wf-P47-ibm47n03.xml
ibm-not-wf-P47-ibm47n04.xml ibm-not-wf-P47-ibm47n05.xml ibm-not-wf-P47-ibm47n06.xml
ibm-not-wf-P48-ibm48n01.xml ibm-not-wf-P48-ibm48n02.xml ibm-not-wf-P48-ibm48n03.xml
ibm-not-wf-P48-ibm48n04.xml ibm-not-wf-P48-ibm48n05.xml ibm-not-wf-P48-ibm48n06.xml
ibm-not-wf-P48-ibm48n07.xml ibm-not-wf-P49-ibm49n01.xml ibm-not-wf-P49-ibm49n02.xml
ibm-not-wf-P49-ibm49n03.xml ibm-not-wf-P49-ibm49n04.xml ibm-not-wf-P49-ibm49n05.xml
ibm-not-wf-P49-ibm49n06.xml ibm-not-wf-P50-ibm50n01.xml ibm-not-wf-P50-ibm50n02.xml
ibm-not-wf-P50-ibm50n03.xml ibm-not-wf-P50-ibm50n04.xml ibm-not-wf-P50-ibm50n05.xml
ibm-not-wf-P50-ibm50n06.xml ibm-not-wf-P51-ibm51n01.xml ibm-not-wf-P51-ibm51n02.xml
ibm-not-wf-P51-ibm51n03.xml ibm-not-wf-P51-ibm51n04.xml ibm-not-wf-P51-ibm51n05.xml
ibm-not-wf-P51-ibm51n07.xml ibm-not-wf-P52-ibm52n01.xml ibm-not-wf-P52-ibm52n02.xml
ibm-not-wf-P52-ibm52n03.xml ibm-not-wf-P52-ibm52n04.xml ibm-not-wf-P52-ibm52n06.xml
ibm-not-wf-P53-ibm53n01.xml ibm-not-wf-P53-ibm53n02.xml ibm-not-wf-P53-ibm53n03.xml
ibm-not-wf-P53-ibm53n04.xml ibm-not-wf-P53-ibm53n05.xml ibm-not-wf-P53-ibm53n06.xml
ibm-not-wf-P53-ibm53n07.xml ibm-not-wf-P53-ibm53n08.xml ibm-not-wf-P54-ibm54n01.xml
ibm-not-wf-P54-ibm54n02.xml ibm-not-wf-P55-ibm55n01.xml ibm-not-wf-P55-ibm55n02.xml
ibm-not-wf-P55-ibm55n03.xml ibm-not-wf-P56-ibm56n01.xml ibm-not-wf-P56-ibm56n02.xml
ibm-not-wf-P56-ibm56n03.xml ibm-not-wf-P56-ibm56n04.xml ibm-not-wf-P56-ibm56n05.xml
ibm-not-wf-P56-ibm56n06.xml ibm-not-wf-P56-ibm56n07.xml ibm-not-wf-P57-ibm57n01.xml
ibm-not-wf-P58-ibm58n01.xml ibm-not-wf-P58-ibm58n02.xml ibm-not-wf-P58-ibm58n03.xml
ibm-not-wf-P58-ibm58n04.xml ibm-not-wf-P58-ibm58n05.xml ibm-not-wf-P58-ibm58n06.xml
ibm-not-wf-P58-ibm58n07.xml ibm-not-wf-P58-ibm58n08.xml ibm-not-wf-P59-ibm59n01.xml
ibm-not-wf-P59-ibm59n02.xml ibm-not-wf-P59-ibm59n03.xml ibm-not-wf-P59-ibm59n04.xml
ibm-not-wf-P59-ibm59n05.xml ibm-not-wf-P59-ibm59n06.xml ibm-not-wf-P60-ibm60n01.xml
ibm-not-wf-P60-ibm60n02.xml ibm-not-wf-P60-ibm60n03.xml ibm-not-wf-P60-ibm60n04.xml
ibm-not-wf-P60-ibm60n05.xml ibm-not-wf-P60-ibm60n06.xml ibm-not-wf-P60-ibm60n08.xml
ibm-not-wf-P68-ibm68n07.xml ibm-not-wf-P69-ibm69n01.xml ibm-not-wf-P69-ibm69n02.xml
ibm-not-wf-P69-ibm69n03.xml ibm-not-wf-P69-ibm69n04.xml ibm-not-wf-P71-ibm70n01.xml
ibm-not-wf-P72-ibm72n07.xml ibm-not-wf-P85-ibm85n01.xml ibm-not-wf-P85-ibm85n02.xml
ibm-not-wf-P88-ibm88n01.xml ibm-not-wf-P88-ibm88n02.xml ibm-not-wf-P89-ibm89n01.xml
ibm-not-wf-P89-ibm89n02.xml rmt-e3e-12
)"},
    {Accepts, "less", R"(
ibm-not-wf-P41-ibm41n13.xml ibm-not-wf-P41-ibm41n14.xml ibm-not-wf-P60-ibm60n07.xml
)"},
    {Accepts, "external", R"(
not-wf-sa-081 not-wf-sa-082 ibm-not-wf-P41-ibm41n10.xml ibm-not-wf-P41-ibm41n11.xml
ibm-not-wf-P41-ibm41n12.xml ibm-not-wf-P68-ibm68n08.xml
)"},
    {Accepts, "crossing", R"(
not-wf-sa-074 not-wf-sa-104
)"},
    {Accepts, "prefixes", R"(
rmt-ns10-014 rmt-ns10-016 rmt-ns10-023 rmt-ns10-025 rmt-ns10-026 rmt-ns10-029 rmt-ns10-030
rmt-ns10-031 rmt-ns10-032 rmt-ns10-033 rmt-ns10-043 rmt-ns-e1.0-13a rmt-ns-e1.0-13b
rmt-ns-e1.0-13c
)"},
    {Accepts, "encodings", R"(
not-wf-sa-101 encoding01 encoding02 encoding04 encoding05 encoding06 ibm-not-wf-P81-ibm81n01.xml
ibm-not-wf-P81-ibm81n02.xml ibm-not-wf-P81-ibm81n03.xml ibm-not-wf-P81-ibm81n04.xml
ibm-not-wf-P81-ibm81n05.xml ibm-not-wf-P81-ibm81n06.xml ibm-not-wf-P81-ibm81n07.xml
ibm-not-wf-P81-ibm81n08.xml ibm-not-wf-P81-ibm81n09.xml hst-lhs-007
)"},
    {Accepts, "noncharacters", R"(
not-wf-sa-166 not-wf-sa-167 not-wf-sa-171 not-wf-sa-172 not-wf-sa-173 not-wf-sa-174
not-wf-sa-175 not-wf-sa-177 o-p02fail30 o-p02fail31 ibm-not-wf-P02-ibm02n32.xml
ibm-not-wf-P02-ibm02n33.xml
)"},
    {Accepts, "types", R"(
rmt-ns10-012
)"},
    {Accepts, "parameters", R"(
not-wf-not-sa-002
)"},
    {Refuses, "names", R"(
weekly-little weekly-utf-16 weekly-utf-8 o-p04pass1 o-p05pass1 invalid-sa-140 invalid-sa-141
x-rmt5-014 x-rmt5-016 x-rmt5-019 x-ibm-1-0.5-valid-P04-ibm04v01.xml
x-ibm-1-0.5-valid-P04-ibm04av01.xml x-ibm-1-0.5-valid-P05-ibm05v01.xml
x-ibm-1-0.5-valid-P05-ibm05v02.xml x-ibm-1-0.5-valid-P05-ibm05v03.xml
x-ibm-1-0.5-valid-P05-ibm05v05.xml ibm-invalid-P89-ibm89n06.xml ibm-invalid-P89-ibm89n07.xml
ibm-invalid-P89-ibm89n08.xml ibm-invalid-P89-ibm89n09.xml ibm-invalid-P89-ibm89n10.xml
ibm-invalid-P89-ibm89n11.xml ibm-invalid-P89-ibm89n12.xml
)"},
    {Refuses, "versions", R"(
x-rmt-008b
)"},
    {Refuses, "languages", R"(
v-lang04
)"},
    {Refuses, "space", R"(
rmt-e2e-57
)"},
    {Refuses, "elsewhere", R"(
valid-not-sa-031 not-sa03 v-pe00 ibm-valid-P09-ibm09v03.xml ibm-valid-P09-ibm09v05.xml
ibm-valid-P32-ibm32v02.xml rmt-e2e-18 rmt-e2e-19 rmt-e3e-13
)"},
    {Refuses, "notations", R"(
notation01 inv-dtd02 ibm-invalid-P56-ibm56i11.xml ibm-invalid-P56-ibm56i12.xml
ibm-invalid-P56-ibm56i14.xml ibm-invalid-P56-ibm56i15.xml ibm-invalid-P76-ibm76i01.xml
ibm-valid-P54-ibm54v01.xml ibm-valid-P82-ibm82v01.xml rmt-e3e-06b rmt-e3e-06d rmt-e3e-06i
)"},
    {Refuses, "parameters", R"(
v-pe02
)"},
    {Tells, "defaults", R"(
valid-sa-044 valid-sa-045 valid-sa-046 valid-sa-080 valid-sa-091 valid-sa-094 valid-sa-096
valid-sa-097 valid-not-sa-006 valid-not-sa-009 valid-not-sa-010 not-sa04 sa02 sa04 v-sgml01 id04
id05 attr09 attr10 o-p52pass1 o-p60pass1 ibm-invalid-P32-ibm32i04.xml
ibm-invalid-P56-ibm56i03.xml
)"},
    {Tells, "types", R"(
valid-sa-058 valid-sa-111 not-sa04 sa02 sa04 o-p08pass1
)"},
    {Tells, "references", R"(
valid-sa-067 valid-sa-068 valid-sa-098 valid-sa-105 valid-sa-106 valid-sa-107 valid-sa-110
inv-not-sa02 inv-not-sa08 o-p12pass1 o-p11pass1 ibm-valid-P14-ibm14v02.xml
ibm-valid-P66-ibm66v01.xml rmt-e2e-20
)"},
};

}  // namespace

std::span<const DefaultDifference> DefaultDifferences() { return kDifferences; }

std::vector<std::string> TestsOf(const DefaultDifference& difference) {
    std::vector<std::string> names;
    std::istringstream text(difference.tests);
    for (std::string name; text >> name;)
        names.push_back(name);
    return names;
}

}  // namespace conformance
