// SPDX-License-Identifier: MIT
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/css/StyleResolver.h>

#include "dom/NodeAccess.h"
#include "dom/css/computed/ElementStyles.h"
#include "dom/css/computed/Explaining.h"
#include "dom/css/computed/StyleSources.h"
#include "dom/css/computed/StyleTable.h"

#include <utility>

namespace Dom::CSS {

class StyleResolver::Contents {
public:
    explicit Contents(const MediaContext& context) : sources(context) {}

    detail::StyleSources sources;
    detail::StyleTable table{sources};
    detail::ElementStyles elements{sources, table};

    void Forget() {
        elements.Clear();
        table.Clear();
        sources.Forget();
    }
};

StyleResolver::StyleResolver(const MediaContext& context)
    : contents_(std::make_unique<Contents>(context)) {}
StyleResolver::~StyleResolver() = default;

void StyleResolver::AddSheet(const CSSStyleSheet& sheet) {
    contents_->Forget();
    contents_->sources.Add(sheet);
}

void StyleResolver::AddSheets(std::vector<CollectedSheet> sheets) {
    contents_->Forget();
    for (CollectedSheet& sheet : sheets)
        contents_->sources.Add(std::move(sheet));
}

void StyleResolver::AddSheetsOf(const Document& document, const StyleSheetHost& host) {
    AddSheets(CollectStyleSheets(document, host));
}

std::vector<const CSSStyleSheet*> StyleResolver::Sheets() const {
    return contents_->sources.Sheets();
}

ComputedStyle StyleResolver::StyleOf(const Element& element, std::string_view pseudo) {
    const detail::StyleData* const style = contents_->elements.StyleOf(element, pseudo);
    return style != nullptr ? ComputedStyle(style->shared_from_this()) : ComputedStyle();
}

StyleExplanation StyleResolver::Explain(const Element& element, std::string_view property,
                                        std::string_view pseudo) {
    return detail::Explain(contents_->elements, element, property, pseudo);
}

void StyleResolver::RuleHasChanged(const CSSStyleRule& rule) {
    const detail::DeclarationBlock* const block = contents_->sources.Update(rule);
    if (block == nullptr) return;
    contents_->table.Update(*block);
    contents_->elements.ForgetStyles();
}

void StyleResolver::SheetsHaveChanged() { contents_->Forget(); }

void StyleResolver::OverridesHaveChanged() { contents_->elements.Clear(); }

void StyleResolver::SetContext(const MediaContext& context) {
    contents_->Forget();
    contents_->sources.SetContext(context);
}

}  // namespace Dom::CSS
