// SPDX-License-Identifier: MIT
#include "css/CardPage.h"

#include "css/Vocabulary.h"

#include <array>
#include <string_view>
#include <utility>

namespace bench {

namespace {

constexpr unsigned kSeed = 2205;  // any fixed number
constexpr std::size_t kPerRare = 100;

constexpr std::array<const char*, 8> kColors = {"primary", "secondary", "success", "danger",
                                                "warning", "info",      "light",   "dark"};
constexpr std::array<const char*, 6> kSpaces = {"mt-3", "mb-4", "p-2", "px-3", "py-1", "m-0"};

class PageMaker {
public:
    explicit PageMaker(std::size_t elements) : left_(elements) {}

    std::string Make() {
        Open("html", "", " xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"en\"");
        Open("head");
        Leaf("title", "", "Cards");
        Open("link", "", " rel=\"stylesheet\" type=\"text/css\" href=\"bootstrap.css\"");
        Close("link");
        Close("head");
        Open("body", "bg-light text-body");
        constexpr std::size_t kMostInBlock = 60;
        while (left_ > kMostInBlock)
            Open("div", "container"), Block(), Close("div");
        while (left_ > 0)
            Leaf("p", "mb-1 text-muted");
        Close("body");
        Close("html");
        return std::move(text_);
    }

private:
    void Block() {
        switch (dice_.Below(4)) {
        case 0: return Cards();
        case 1: return Table();
        case 2: return List();
        default: return Form();
        }
    }

    void Cards() {
        Open("div", "row row-cols-1 row-cols-md-3 g-4");
        for (int card = 0; card < 3; ++card) {
            Open("div", "col");
            Open("div", std::string("card h-100 border-") + Color() + " " + Space());
            Leaf("div", "card-header", "Number");
            Open("div", "card-body");
            Leaf("h5", "card-title", "Title");
            Open("p", "card-text");
            Leaf("small", "text-muted", "Some");
            Leaf("a", "card-link", "link", " href=\"#\"");
            Close("p");
            Buttons(2);
            Close("div");
            Close("div");
            Close("div");
        }
        Close("div");
    }

    void Table() {
        Open("table", std::string("table table-striped table-hover table-") + Color());
        Open("tbody");
        for (int row = 0; row < 5; ++row) {
            Open("tr");
            for (int cell = 0; cell < 4; ++cell)
                Leaf("td", cell == 0 ? "text-end" : "", "1.5");
            Open("td", "align-middle");
            Leaf("span", std::string("badge rounded-pill bg-") + Color(), "new");
            Close("td");
            Close("tr");
        }
        Close("tbody");
        Close("table");
    }

    void List() {
        Open("ul", "list-group list-group-flush");
        for (std::size_t item = 0; item < 8; ++item) {
            const bool isActive = dice_.Below(8) == 0;
            Open("li", std::string("list-group-item d-flex justify-content-between ") +
                           (isActive ? "active" : Space()));
            Leaf("span", "", "Item");
            Leaf("strong", std::string("badge bg-") + Color(), "7");
            Close("li");
        }
        Close("ul");
        Buttons(3);
    }

    void Form() {
        Open("form", "row g-3 needs-validation");
        for (int field = 0; field < 3; ++field) {
            Open("div", std::string("col-md-4 ") + Space());
            Leaf("label", "form-label", "Name");
            Open("input", "form-control form-control-sm", " type=\"text\" disabled=\"disabled\"");
            Close("input");
            Close("div");
        }
        Buttons(2);
        Close("form");
    }

    void Buttons(int count) {
        Open("div", "btn-group btn-group-sm", " role=\"group\"");
        for (int i = 0; i < count; ++i) {
            Leaf("button",
                 std::string("btn btn-") + (dice_.Below(2) == 0 ? "outline-" : "") + Color(),
                 "Press", " type=\"button\"");
        }
        Close("div");
    }

    // Writes an element without elements in it, which may be the rare one.
    void Leaf(std::string_view name, std::string classes, std::string_view text = "text",
              std::string_view attributes = "") {
        if (made_ >= nextRare_) {
            classes += (classes.empty() ? "" : " ") + std::string(kRareClass);
            nextRare_ += kPerRare;
        }
        Open(name, classes, attributes);
        text_ += text;
        Close(name);
    }

    void Open(std::string_view name, std::string_view classes = "",
              std::string_view attributes = "") {
        --left_;
        ++made_;
        (text_ += '<') += name;
        text_ += attributes;
        if (!classes.empty()) ((text_ += " class=\"") += classes) += '"';
        text_ += IsVoid(name) ? "/>" : ">";
    }

    void Close(std::string_view name) {
        if (!IsVoid(name)) ((text_ += "</") += name) += ">\n";
    }

    static bool IsVoid(std::string_view name) { return name == "input" || name == "link"; }

    std::string Color() { return kColors[dice_.Below(kColors.size())]; }
    std::string Space() { return kSpaces[dice_.Below(kSpaces.size())]; }

    Dice dice_{kSeed};
    std::size_t left_;
    std::size_t made_ = 0;
    std::size_t nextRare_ = kPerRare;
    std::string text_;
};

}  // namespace

std::string MakeCardPage(std::size_t elements) { return PageMaker(elements).Make(); }

}  // namespace bench
