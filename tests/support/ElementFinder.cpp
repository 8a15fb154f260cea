// SPDX-License-Identifier: MIT
#include "support/ElementFinder.h"

#include <stdexcept>
#include <string>

namespace support {
namespace {

class Finder {
public:
    explicit Finder(std::string_view document) : document_(document) {}

    std::vector<FoundElement> Find() {
        while ((position_ = document_.find('<', position_)) != std::string_view::npos)
            TakeMarkup();
        if (!open_.empty()) Refuse("an element is not closed");
        return found_;
    }

private:
    struct Open {
        std::size_t index;         // in found_
        std::size_t begin;         // of "<"
        std::size_t contentBegin;  // behind the ">" of the start tag
    };

    [[noreturn]] void Refuse(const char* reason) const {
        throw std::invalid_argument(std::string(reason) + " at byte " + std::to_string(position_));
    }

    bool At(std::string_view text) const {
        return document_.substr(position_, text.size()) == text;
    }

    void SkipBehind(std::string_view text) {
        const std::size_t at = document_.find(text, position_);
        if (at == std::string_view::npos) Refuse("unfinished markup");
        position_ = at + text.size();
    }

    // Returns the text from `begin` up to `end`.
    std::string_view Slice(std::size_t begin, std::size_t end) const {
        return document_.substr(begin, end - begin);
    }

    void TakeMarkup() {
        if (At("<!--")) {
            position_ += 4;
            SkipBehind("-->");
        } else if (At("<![CDATA[")) {
            SkipBehind("]]>");
        } else if (At("<?")) {
            SkipBehind("?>");
        } else if (At("<!")) {
            SkipDocumentType();
        } else if (At("</")) {
            TakeEndTag();
        } else {
            TakeStartTag();
        }
    }

    void SkipDocumentType() {
        int level = 0;
        do {
            position_ = document_.find_first_of("<>'\"", position_);
            if (position_ == std::string_view::npos) Refuse("unfinished document type");
            if (At("<!--")) {
                position_ += 4;
                SkipBehind("-->");
                continue;
            }
            if (At("<?")) {
                SkipBehind("?>");
                continue;
            }
            const char found = document_[position_++];
            if (found == '<') ++level;
            if (found == '>') --level;
            if (found == '\'' || found == '"') SkipBehind(std::string_view(&found, 1));
        } while (level > 0);
    }

    void TakeStartTag() {
        const std::size_t begin = position_;
        const std::size_t nameEnd = document_.find_first_of(" \t\r\n/>", begin);
        position_ = nameEnd;
        for (;;) {
            position_ = document_.find_first_of(">'\"", position_);
            if (position_ == std::string_view::npos) Refuse("unfinished start tag");
            const char found = document_[position_++];
            if (found == '>') break;
            SkipBehind(std::string_view(&found, 1));
        }
        FoundElement element;
        element.name = Slice(begin + 1, nameEnd);
        element.isEmptyTag = document_[position_ - 2] == '/';
        if (element.isEmptyTag) {
            element.outer = Slice(begin, position_);
        } else {
            open_.push_back({found_.size(), begin, position_});
        }
        found_.push_back(element);
    }

    void TakeEndTag() {
        if (open_.empty()) Refuse("an end tag too many");
        const Open open = open_.back();
        open_.pop_back();
        FoundElement& element = found_[open.index];
        element.inner = Slice(open.contentBegin, position_);
        position_ += 2;
        if (!At(element.name)) Refuse("another end tag is due");
        SkipBehind(">");
        element.outer = Slice(open.begin, position_);
    }

    std::string_view document_;
    std::size_t position_ = 0;
    std::vector<FoundElement> found_;
    std::vector<Open> open_;
};

}  // namespace

std::vector<FoundElement> FindElements(std::string_view document) {
    return Finder(document).Find();
}

}  // namespace support
