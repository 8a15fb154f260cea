// SPDX-License-Identifier: MIT
#include "css/MadePage.h"

#include "css/Vocabulary.h"

#include <utility>
#include <vector>

namespace bench {

namespace {

constexpr unsigned kSeed = 1121;  // any fixed number
constexpr std::size_t kDeepest = 12;

class PageMaker {
public:
    // Opens an element in the one that is open.
    void Open(const std::string& name) {
        text_ += "<" + name;
        if (dice_.Below(10) == 0) text_ += " id=\"" + dice_.Id() + "\"";
        if (dice_.Below(10) < 7) AddClasses();
        if (name == "input" && dice_.Below(2) == 0) text_ += " type=\"text\"";
        if (name == "a") text_ += " href=\"#\"";
        text_ += ">";
        open_.push_back(name);
    }

    void Close() {
        text_ += "text</" + open_.back() + ">\n";
        open_.pop_back();
    }

    // Opens an element of a random name in a random place.
    void AddOne() {
        while (open_.size() > 1 && (open_.size() == kDeepest || dice_.Below(5) < 2))
            Close();
        Open(dice_.ElementName());
    }

    std::string Take() {
        while (!open_.empty())
            Close();
        return std::move(text_);
    }

private:
    void AddClasses() {
        text_ += " class=\"" + dice_.ClassName();
        if (dice_.Below(2) == 0) text_ += " " + dice_.ClassName();
        text_ += "\"";
    }

    Dice dice_{kSeed};
    std::string text_;
    std::vector<std::string> open_;
};

}  // namespace

std::string MakePage(std::size_t elements) {
    PageMaker maker;
    maker.Open("html");
    for (std::size_t i = 1; i < elements; ++i)
        maker.AddOne();
    return maker.Take();
}

}  // namespace bench
