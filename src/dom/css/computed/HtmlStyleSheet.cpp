// SPDX-License-Identifier: MIT
#include <espalier/dom/css/HtmlStyleSheet.h>
#include <espalier/dom/css/ParseStyleSheet.h>

#include <memory>
#include <string_view>

// After CSS 2.1 appendix D and the section "Rendering" of the HTML standard, in their order.
//
// Browsers show a font family that is "monospace" alone at 13/16 of its size, however it is
// inherited; no rule of a sheet says that. So "code" and the like are as large as what is around
// them here.

namespace Dom::CSS {

namespace {

constexpr std::string_view kHidden = R"css(
[hidden], area, base, basefont, datalist, head, link, meta, noembed, noframes, param, rp, script,
style, template, title { display: none }
audio:not([controls]) { display: none }
input[type="hidden"] { display: none !important }
)css";

constexpr std::string_view kFlow = R"css(
html, body { display: block }
address, article, aside, blockquote, center, dd, details, dialog, dir, div, dl, dt, fieldset,
figcaption, figure, footer, form, frame, frameset, h1, h2, h3, h4, h5, h6, header, hgroup, hr,
legend, listing, main, menu, nav, ol, optgroup, option, p, plaintext, pre, search, section,
summary, ul, xmp { display: block }
slot { display: contents }
body { margin: 8px }
address, blockquote, center, dialog, div, figure, figcaption, footer, form, header, hr, legend,
listing, main, p, plaintext, pre, search, xmp, article, aside, h1, h2, h3, h4, h5, h6, hgroup, nav,
section, summary, dir, dd, dl, dt, menu, ol, ul, li, bdi, output, table, caption, colgroup, col,
thead, tbody, tfoot, tr, td, th, [dir="ltr"], [dir="rtl"], [dir="auto"] { unicode-bidi: isolate }
bdo, bdo[dir] { unicode-bidi: isolate-override }
[dir="ltr"] { direction: ltr }
[dir="rtl"] { direction: rtl }
blockquote, figure { margin: 1em 40px }
dir, dl, menu, ol, p, ul { margin-top: 1em; margin-bottom: 1em }
listing, plaintext, pre, xmp {
    margin-top: 1em; margin-bottom: 1em; font-family: monospace; white-space: pre
}
dd { margin-left: 40px }
center { text-align: -webkit-center }
hr {
    color: gray; border: 1px inset; margin: 0.5em auto; overflow: hidden
}
)css";

constexpr std::string_view kHeadings = R"css(
h1 { font-size: 2em; margin-top: 0.67em; margin-bottom: 0.67em }
h2 { font-size: 1.5em; margin-top: 0.83em; margin-bottom: 0.83em }
h3 { font-size: 1.17em; margin-top: 1em; margin-bottom: 1em }
h4 { margin-top: 1.33em; margin-bottom: 1.33em }
h5 { font-size: 0.83em; margin-top: 1.67em; margin-bottom: 1.67em }
h6 { font-size: 0.67em; margin-top: 2.33em; margin-bottom: 2.33em }
h1, h2, h3, h4, h5, h6 { font-weight: bold }
)css";

constexpr std::string_view kLists = R"css(
li { display: list-item }
dir, menu, ul { list-style-type: disc; padding-left: 40px }
ol { list-style-type: decimal; padding-left: 40px }
dir dir, dir menu, dir ul, menu dir, menu menu, menu ul, ol dir, ol menu, ol ul, ul dir, ul menu,
ul ul { list-style-type: circle }
dir dir dir, dir dir menu, dir dir ul, dir menu dir, dir menu menu, dir menu ul, dir ol dir,
dir ol menu, dir ol ul, dir ul dir, dir ul menu, dir ul ul, menu dir dir, menu dir menu,
menu dir ul, menu menu dir, menu menu menu, menu menu ul, menu ol dir, menu ol menu, menu ol ul,
menu ul dir, menu ul menu, menu ul ul, ol dir dir, ol dir menu, ol dir ul, ol menu dir,
ol menu menu, ol menu ul, ol ol dir, ol ol menu, ol ol ul, ol ul dir, ol ul menu, ol ul ul,
ul dir dir, ul dir menu, ul dir ul, ul menu dir, ul menu menu, ul menu ul, ul ol dir, ul ol menu,
ul ol ul, ul ul dir, ul ul menu, ul ul ul { list-style-type: square }
dir dir, dir dl, dir menu, dir ol, dir ul, dl dir, dl dl, dl menu, dl ol, dl ul, menu dir, menu dl,
menu menu, menu ol, menu ul, ol dir, ol dl, ol menu, ol ol, ol ul, ul dir, ul dl, ul menu, ul ol,
ul ul { margin-top: 0; margin-bottom: 0 }
)css";

constexpr std::string_view kPhrasing = R"css(
b, strong { font-weight: bolder }
address, cite, dfn, em, i, var { font-style: italic }
code, kbd, samp, tt { font-family: monospace }
big { font-size: larger }
small, sub, sup { font-size: smaller }
sub { vertical-align: sub }
sup { vertical-align: super }
mark { background-color: yellow; color: black }
a:link, area:link { color: #0000ee; cursor: pointer }
a:link { text-decoration: underline }
a:link:active, a:visited:active { color: #ff0000 }
ins, u { text-decoration: underline }
abbr[title], acronym[title] { text-decoration: underline dotted }
del, s, strike { text-decoration: line-through }
nobr { white-space: nowrap }
q::before { content: open-quote }
q::after { content: close-quote }
ruby { display: ruby }
rt { display: ruby-text; font-size: 50%; text-indent: 0 }
)css";

constexpr std::string_view kTables = R"css(
table {
    display: table; box-sizing: border-box; border-collapse: separate; border-spacing: 2px;
    text-indent: 0
}
caption { display: table-caption; text-align: -webkit-center }
colgroup { display: table-column-group }
colgroup[hidden] { visibility: collapse }
col { display: table-column }
thead { display: table-header-group; vertical-align: middle; border-color: inherit }
tbody { display: table-row-group; vertical-align: middle; border-color: inherit }
tfoot { display: table-footer-group; vertical-align: middle; border-color: inherit }
table > tr { vertical-align: middle }
tr { display: table-row; vertical-align: inherit; border-color: inherit }
table > tr { vertical-align: middle }
td, th { display: table-cell; vertical-align: inherit; padding: 1px }
th { font-weight: bold; text-align: center }
)css";

constexpr std::string_view kForms = R"css(
button, input, meter, progress, select, textarea { display: inline-block }
button, input, select, textarea {
    font-size: 13.3333px; font-family: Arial; font-style: normal; font-variant: normal;
    font-weight: 400; line-height: normal; letter-spacing: normal; word-spacing: normal;
    text-transform: none; text-indent: 0; text-shadow: none; text-align: start; color: black
}
button, select { background-color: #efefef; box-sizing: border-box; cursor: default }
button {
    border: 2px outset buttonborder; padding: 1px 6px; text-align: center
}
input {
    border: 2px inset #767676; padding: 1px 2px; background-color: white; cursor: text
}
select { border: 1px solid #767676; white-space: pre; align-items: center }
textarea {
    border: 1px solid #767676; padding: 2px; background-color: white; cursor: text; resize: both;
    overflow: auto; white-space: pre-wrap; overflow-wrap: break-word; font-family: monospace
}
input[type="button"], input[type="reset"], input[type="submit"] {
    background-color: #efefef; box-sizing: border-box; cursor: default; padding: 1px 6px;
    text-align: center; border: 2px outset buttonborder
}
input[type="checkbox"], input[type="radio"] {
    background-color: transparent; border: 0; box-sizing: border-box; cursor: default;
    margin: 3px 3px 3px 4px; padding: 0
}
input[type="radio"] { margin: 3px 3px 0 5px }
meter, progress { box-sizing: border-box; vertical-align: -0.2em }
label { cursor: default }
optgroup { font-weight: bolder }
option { padding: 0 2px 1px; white-space: nowrap }
fieldset {
    margin-left: 2px; margin-right: 2px; border: 2px groove #efefef;
    padding: 0.35em 0.75em 0.625em
}
legend { padding-left: 2px; padding-right: 2px }
)css";

constexpr std::string_view kEmbedded = R"css(
iframe { border: 2px inset }
canvas, embed, iframe, img, object, video { overflow: clip }
video { object-fit: contain }
summary { display: block }
details > summary:first-of-type { display: list-item; list-style: disclosure-closed inside }
details[open] > summary:first-of-type { list-style-type: disclosure-open }
dialog:not([open]) { display: none }
dialog {
    position: absolute; left: 0; right: 0; width: fit-content; height: fit-content; margin: auto;
    border: solid; padding: 1em; background-color: white; color: black
}
marquee { display: inline-block; overflow: hidden; white-space: nowrap }
)css";

std::unique_ptr<CSSStyleSheet> MakeSheet() {
    astring text;
    // What is hidden wins over how it is displayed.
    for (const std::string_view part :
         {kFlow, kHeadings, kLists, kPhrasing, kTables, kForms, kEmbedded, kHidden}) {
        text += part;
    }
    return ParseStyleSheet(text.view(), {.origin = CSSRule::UserAgent});
}

}  // namespace

const CSSStyleSheet& HtmlStyleSheet() {
    static const std::unique_ptr<CSSStyleSheet> sheet = MakeSheet();
    return *sheet;
}

}  // namespace Dom::CSS
