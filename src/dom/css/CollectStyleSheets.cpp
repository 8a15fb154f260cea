// SPDX-License-Identifier: MIT
#include <espalier/dom/Document.h>
#include <espalier/dom/css/CSSImportRule.h>
#include <espalier/dom/css/CollectStyleSheets.h>
#include <espalier/dom/css/ParseStyleSheet.h>

#include "dom/NodeAccess.h"
#include "dom/UriReference.h"
#include "dom/XhtmlNames.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"
#include "dom/css/SheetDecoding.h"
#include "dom/css/SheetLink.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <utility>  // std::move

namespace Dom::CSS {

using Dom::detail::NodeAccess;
using Dom::detail::ResolveReference;

namespace {

// A sheet that has been read, and whose imports are to come before it.
struct OpenSheet {
    std::unique_ptr<CSSStyleSheet> sheet;
    std::vector<astring> importMedia = {};
    astring encoding = {};   // for what it imports
    unsigned long next = 0;  // the rule to look at
    bool isText = false;     // not read from its address
};

// Gets sheets from the host, within limits, and puts what they import before them.
class SheetGetter {
public:
    SheetGetter(const StyleSheetHost& host, std::vector<MissingSheet>* missing,
                const SheetLimits& limits)
        : host_(host), missing_(missing), limits_(limits) {}

    // Adds a sheet with an empty text, and what it imports.
    // \param charset the encoding that the link states, or empty
    // \param environment the encoding of what links to the sheet
    void AddLinked(std::unique_ptr<CSSStyleSheet> sheet, const astring& charset,
                   std::string_view environment) {
        OpenSheet open{.sheet = std::move(sheet)};
        if (Read(open, charset, detail::IsEncodingName(charset) ? charset.view() : environment)) {
            Add(std::move(open));
        }
    }

    // Adds a sheet that has its text, and what it imports.
    void AddRead(std::unique_ptr<CSSStyleSheet> sheet, std::string_view encoding) {
        Add({.sheet = std::move(sheet), .encoding = astring(encoding), .isText = true});
    }

    /// Tells whether a limit has been reached, so that nothing more is got.
    bool IsAtEnd() const { return isAtEnd_; }
    std::vector<CollectedSheet> Take() { return std::move(sheets_); }

private:
    void Add(OpenSheet&& sheet);
    void Import(CSSImportRule& rule);
    bool AddMedia(OpenSheet& open, const CSSImportRule& rule);
    bool Read(OpenSheet& open, const astring& charset, std::string_view environment);
    bool IsOpen(std::string_view address) const;
    bool Spend(std::size_t bytes, const astring& address);
    bool Refuse(const astring& address, std::string_view reason);
    bool End(const astring& address, std::string_view reason);

    const StyleSheetHost& host_;
    std::vector<MissingSheet>* const missing_;
    const SheetLimits limits_;
    std::size_t bytes_ = 0;
    std::size_t count_ = 0;
    bool isAtEnd_ = false;  // a limit has been reached
    std::vector<CollectedSheet> sheets_;
    std::vector<OpenSheet> open_;  // each imports the next one
};

void SheetGetter::Add(OpenSheet&& sheet) {
    open_.push_back(std::move(sheet));
    while (!open_.empty()) {
        OpenSheet& last = open_.back();
        CSSRuleList& rules = last.sheet->CssRules();
        if (last.next < rules.Length()) {
            CSSRule* const rule = rules.Item(last.next++);
            if (rule->Type() == CSSRule::IMPORT_RULE) Import(static_cast<CSSImportRule&>(*rule));
            continue;
        }
        sheets_.push_back({std::move(last.sheet), std::move(last.importMedia)});
        open_.pop_back();
    }
}

void SheetGetter::Import(CSSImportRule& rule) {
    const OpenSheet& from = open_.back();
    const std::string_view href = detail::Trimmed(rule.Href());
    if (isAtEnd_ || !detail::LeadsElsewhere(href)) return;
    const astring address = ResolveReference(from.sheet->Href(), href);
    OpenSheet open{.sheet = std::make_unique<CSSStyleSheet>(&rule, from.sheet.get(), address, "")};
    if (!Read(open, {}, from.encoding) || !AddMedia(open, rule)) return;
    open_.push_back(std::move(open));
}

// Notes the media for which a sheet is imported. Returns false when it is to be left out.
bool SheetGetter::AddMedia(OpenSheet& open, const CSSImportRule& rule) {
    const OpenSheet& from = open_.back();
    const auto lists = {&std::as_const(*from.sheet).GetMediaList(), &rule.GetMediaList()};
    std::size_t bytes = 0;
    for (const astring& media : from.importMedia)
        bytes += media.size();
    for (const StyleSheets::MediaList* const list : lists)
        bytes += list->MediaText().size();
    if (!Spend(bytes, open.sheet->Href())) return false;
    open.importMedia = from.importMedia;
    for (const StyleSheets::MediaList* const list : lists) {
        if (!list->IsEmpty()) open.importMedia.push_back(list->MediaText());
    }
    return true;
}

// Gets the text of a sheet that has an address. Returns false when it is to be left out.
bool SheetGetter::Read(OpenSheet& open, const astring& charset, std::string_view environment) {
    const astring& address = open.sheet->Href();
    if (isAtEnd_) return false;
    if (count_ >= limits_.sheets) return End(address, detail::Message::kTooManySheets);
    ++count_;
    if (!Spend(address.size(), address)) return false;
    if (IsOpen(address)) return Refuse(address, detail::Message::kImportedByItself);
    // Those that are open import this one.
    const auto depth = static_cast<std::size_t>(std::max(limits_.importDepth, 0));
    if (open_.size() > depth) return Refuse(address, detail::Message::kImportedTooDeep);
    const std::optional<astring> bytes = host_ ? host_(address, charset) : std::nullopt;
    if (!bytes) return Refuse(address, detail::Message::kNotFound);
    if (!Spend(bytes->size(), address)) return false;
    const std::span<const unsigned char> span(reinterpret_cast<const unsigned char*>(bytes->data()),
                                              bytes->size());
    ParseStyleSheet(*open.sheet, span, {.environmentEncoding = environment});
    open.encoding = detail::EncodingName(span, {}, environment);
    return true;
}

bool SheetGetter::IsOpen(std::string_view address) const {
    return std::ranges::any_of(open_, [address](const OpenSheet& open) {
        return !open.isText && open.sheet->Href() == address;
    });
}

bool SheetGetter::Spend(std::size_t bytes, const astring& address) {
    if (bytes > limits_.bytes - bytes_) return End(address, detail::Message::kTooManyBytes);
    bytes_ += bytes;
    return true;
}

bool SheetGetter::Refuse(const astring& address, std::string_view reason) {
    if (missing_ != nullptr) missing_->push_back({address, astring(reason)});
    return false;
}

bool SheetGetter::End(const astring& address, std::string_view reason) {
    isAtEnd_ = true;
    return Refuse(address, reason);
}

// Finds the sheets of a document.
class Collector {
public:
    Collector(const Document& document, SheetGetter& getter)
        : document_(document), getter_(getter), base_(document.DocumentURI()) {
        const Element* const root = document.DocumentElement();
        const bool isPlain = root != nullptr && detail::IsNamed(*root, "", "html");
        if (isPlain) xhtml_ = {};
    }

    void Collect() {
        bool isInProlog = true;
        for (Node* node = NodeAccess::First(document_); node != nullptr;
             node = NodeAccess::NextBelow(document_, *node)) {
            if (node->NodeType() == Node::ELEMENT_NODE) {
                isInProlog = false;
                Visit(static_cast<Element&>(*node));
            } else if (isInProlog && node->NodeType() == Node::PROCESSING_INSTRUCTION_NODE) {
                Add(detail::LinkOf(static_cast<ProcessingInstruction&>(*node)));
            }
        }
    }

private:
    void Visit(Element& element) {
        // Nearly all elements have nothing to do with sheets.
        if (!hasBase_ && detail::IsNamed(element, xhtml_, "base")) return SetBase(element);
        Add(detail::LinkOf(element, xhtml_));
    }

    void SetBase(const Element& element) {
        const std::string_view href = detail::Trimmed(Dom::detail::XhtmlAttribute(element, "href"));
        if (href.empty() || href.size() > kLongestBase) return;
        hasBase_ = true;
        base_ = ResolveReference(base_, href);
    }

    void Add(const std::optional<detail::SheetLink>& link) {
        if (!link || !(link->isText || detail::LeadsElsewhere(link->href))) return;
        if (!link->isText && getter_.IsAtEnd()) return;
        const astring address = link->isText ? base_ : ResolveReference(base_, link->href);
        auto sheet = std::make_unique<CSSStyleSheet>(link->owner, nullptr, address, link->title);
        sheet->GetMediaList().SetMediaText(link->media);
        const astring& encoding = document_.InputEncoding();
        if (!link->isText) return getter_.AddLinked(std::move(sheet), link->charset, encoding);
        const astring text = detail::TextIn(static_cast<const Element&>(*link->owner));
        ParseStyleSheet(*sheet, text.view());
        getter_.AddRead(std::move(sheet), encoding);
    }

    // Each element "style" has a copy of the address.
    static constexpr std::size_t kLongestBase = 4096;

    const Document& document_;
    SheetGetter& getter_;
    std::string_view xhtml_ = Dom::detail::kXhtmlUri;  // the namespace of XHTML, if it has one
    astring base_;                                     // of addresses
    bool hasBase_ = false;                             // an element "base" has said it
};

}  // namespace

std::vector<CollectedSheet> CollectStyleSheets(const Document& document, const StyleSheetHost& host,
                                               std::vector<MissingSheet>* missing,
                                               const SheetLimits& limits) {
    SheetGetter getter(host, missing, limits);
    Collector(document, getter).Collect();
    return getter.Take();
}

}  // namespace Dom::CSS
