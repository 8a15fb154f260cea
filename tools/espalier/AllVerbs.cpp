// SPDX-License-Identifier: MIT
#include "Verb.h"

namespace Tool {

std::vector<std::unique_ptr<Verb>> AllVerbs() {
    std::vector<std::unique_ptr<Verb>> verbs;
    verbs.push_back(MakeCheck());
    verbs.push_back(MakeCss());
    verbs.push_back(MakeEvents());
    verbs.push_back(MakeFormat());
    verbs.push_back(MakeSelect());
    verbs.push_back(MakeStyle());
    verbs.push_back(MakeTree());
    return verbs;
}

}  // namespace Tool
