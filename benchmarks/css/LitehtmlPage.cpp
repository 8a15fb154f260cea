// SPDX-License-Identifier: MIT
#include "css/PageStyling.h"

#include <litehtml/litehtml.h>
#include <memory>
#include <vector>

namespace bench {

namespace {

// A window that gives the sheet, and where all letters are the same.
class Window final : public litehtml::document_container {
public:
    explicit Window(const std::string& sheet) : sheet_(sheet) {}

    void import_css(litehtml::tstring& text, const litehtml::tstring& /*url*/,
                    litehtml::tstring& /*baseurl*/) override {
        text = sheet_;
    }

    litehtml::uint_ptr create_font(const char* /*faceName*/, int size, int /*weight*/,
                                   litehtml::font_style /*italic*/, unsigned /*decoration*/,
                                   litehtml::font_metrics* metrics) override {
        metrics->ascent = size;
        metrics->descent = size / 4;
        metrics->height = metrics->ascent + metrics->descent;
        metrics->x_height = size / 2;
        return 1;
    }
    void delete_font(litehtml::uint_ptr /*font*/) override {}
    int text_width(const char* text, litehtml::uint_ptr /*font*/) override {
        return 8 * static_cast<int>(std::char_traits<char>::length(text));
    }
    int pt_to_px(int pt) const override { return pt * 4 / 3; }
    int get_default_font_size() const override { return 16; }
    const char* get_default_font_name() const override { return "serif"; }
    void get_client_rect(litehtml::position& client) const override {
        client = litehtml::position(0, 0, kWidth, kHeight);
    }
    void get_media_features(litehtml::media_features& media) const override {
        media.type = litehtml::media_type_screen;
        media.width = media.device_width = kWidth;
        media.height = media.device_height = kHeight;
        media.color = 8;
        media.color_index = 0;
        media.monochrome = 0;
        media.resolution = 96;
    }
    void get_language(litehtml::tstring& language, litehtml::tstring& culture) const override {
        language = "en";
        culture = "";
    }

    // All else is for what is shown.
    void draw_text(litehtml::uint_ptr /*hdc*/, const char* /*text*/, litehtml::uint_ptr /*font*/,
                   litehtml::web_color /*color*/, const litehtml::position& /*pos*/) override {}
    void draw_list_marker(litehtml::uint_ptr /*hdc*/,
                          const litehtml::list_marker& /*marker*/) override {}
    void load_image(const char* /*src*/, const char* /*baseurl*/, bool /*redraw*/) override {}
    void get_image_size(const char* /*src*/, const char* /*baseurl*/,
                        litehtml::size& /*size*/) override {}
    void draw_background(litehtml::uint_ptr /*hdc*/,
                         const litehtml::background_paint& /*background*/) override {}
    void draw_borders(litehtml::uint_ptr /*hdc*/, const litehtml::borders& /*borders*/,
                      const litehtml::position& /*position*/, bool /*root*/) override {}
    void set_caption(const char* /*caption*/) override {}
    void set_base_url(const char* /*url*/) override {}
    void link(const std::shared_ptr<litehtml::document>& /*document*/,
              const litehtml::element::ptr& /*element*/) override {}
    void on_anchor_click(const char* /*url*/, const litehtml::element::ptr& /*element*/) override {}
    void set_cursor(const char* /*cursor*/) override {}
    void transform_text(litehtml::tstring& /*text*/, litehtml::text_transform /*how*/) override {}
    void set_clip(const litehtml::position& /*position*/,
                  const litehtml::border_radiuses& /*radiuses*/, bool /*x*/, bool /*y*/) override {}
    void del_clip() override {}
    std::shared_ptr<litehtml::element> create_element(
        const char* /*name*/, const litehtml::string_map& /*attributes*/,
        const std::shared_ptr<litehtml::document>& /*document*/) override {
        return nullptr;
    }

private:
    static constexpr int kWidth = 1280;
    static constexpr int kHeight = 720;

    const std::string& sheet_;
};

// Texts have no names. What ":before" and ":after" would make is there for each element.
std::size_t CountElements(const litehtml::element::ptr& root) {
    std::size_t count = 0;
    std::vector<litehtml::element::ptr> pending = {root};
    while (!pending.empty()) {
        const litehtml::element::ptr element = pending.back();
        pending.pop_back();
        const char* const name = element->get_tagName();
        if (name != nullptr && *name != '\0' && *name != ':') ++count;
        for (std::size_t i = 0; i < element->get_children_count(); ++i)
            pending.push_back(element->get_child(static_cast<int>(i)));
    }
    return count;
}

}  // namespace

std::size_t StyleLitehtmlPage(const std::string& page, const std::string& sheet) {
    Window window(sheet);
    litehtml::context context;
    const litehtml::document::ptr document =
        litehtml::document::createFromString(page.c_str(), &window, &context);
    return CountElements(document->root());
}

}  // namespace bench
