// SPDX-License-Identifier: MIT

// The texts beside the one that the stream gives: those of entities, which are scanned in the place
// of references, and the one that is collected from what is passed.

#include "encoding/Codecs.h"
#include "encoding/Utf8.h"
#include "xml/RunScan.h"
#include "xml/XmlScanner.h"

#include <algorithm>  // std::min
#include <cstring>
#include <limits>
#include <utility>  // std::exchange, std::move

namespace Xml::detail {

namespace {

// Returns how many bytes of `text`, at most `most`, are whole characters. Where too many
// continuation bytes follow each other to belong to one, that is anywhere.
std::size_t WholeCharacters(std::string_view text, std::size_t most) {
    constexpr std::size_t kMostContinuations = 5;
    if (text.size() <= most) return text.size();
    for (std::size_t back = 0; back <= std::min(most, kMostContinuations); ++back) {
        if (!utf8::IsContinuation(static_cast<unsigned char>(text[most - back])))
            return most - back;
    }
    return most;
}

}  // namespace

// Texts of entities.

void XmlScanner::PushString(std::string_view text) {
    SettlePlaces();
    FlushCapture();
    const Place place = places_.At(position_);
    const std::size_t size = std::min<std::size_t>(text.size(), kBufferSize);
    auto store = std::make_unique<unsigned char[]>(1 + size + kScanPadding);
    unsigned char* const window = store.get() + 1;
    saved_.push_back({std::move(store), window_, position_, dataEnd_, rest_, codec_, place,
                      mostWhitespace_, direct_, badAhead_, filled_});
    window_ = window;
    position_ = dataEnd_ = window_;
    rest_ = text;
    codec_ = &Utf8Codec();
    mostWhitespace_ = std::numeric_limits<int>::max();
    direct_ = badAhead_ = false;
    places_.Start(position_, place);
    CloseWindow();
    RefillPushed();
}

void XmlScanner::PopState() {
    NodePlace();
    FlushCapture();
    const SavedState& state = saved_.back();
    window_ = state.window;
    position_ = state.position;
    dataEnd_ = state.dataEnd;
    rest_ = state.rest;
    codec_ = state.codec;
    mostWhitespace_ = state.mostWhitespace;
    direct_ = state.direct;
    badAhead_ = state.badAhead;
    filled_ = state.filled;
    places_.Start(position_, state.place);
    saved_.pop_back();
    captureLevel_ = std::min(captureLevel_, saved_.size());
    if (captureLevel_ == saved_.size()) captureFrom_ = position_;
}

// Takes more of a pushed text into its window.
XmlScanner::Fill XmlScanner::RefillPushed() {
    const int held = MoveToFront();
    filled_ = true;
    const std::size_t room = WholeCharacters(rest_, static_cast<std::size_t>(kBufferSize - held));
    if (room == 0) return rest_.empty() ? Fill::End : Fill::Full;
    std::memcpy(dataEnd_, rest_.data(), room);
    dataEnd_ += room;
    rest_.remove_prefix(room);
    CloseWindow();
    return Fill::More;
}

// Raw capture.

void XmlScanner::StartCapture(std::string_view before) {
    captured_ = before;
    ResumeCapture();
}

void XmlScanner::ResumeCapture() {
    capturing_ = true;
    captureLevel_ = saved_.size();
    captureFrom_ = position_;
}

// Collects what lies before the position; what is pushed on top of it does not count.
void XmlScanner::FlushCapture() {
    if (!capturing_ || captureLevel_ != saved_.size()) return;
    captured_.append(reinterpret_cast<const char*>(captureFrom_),
                     static_cast<std::size_t>(position_ - captureFrom_));
    captureFrom_ = position_;
}

std::size_t XmlScanner::CapturedLengthAt(const unsigned char* at) const {
    const bool isHere = capturing_ && captureLevel_ == saved_.size();
    return captured_.length() + (isHere ? static_cast<std::size_t>(at - captureFrom_) : 0);
}

std::string_view XmlScanner::EndCapture() {
    const bool isInWindow = captured_.empty() && captureLevel_ == saved_.size();
    if (!isInWindow) FlushCapture();
    capturing_ = false;
    if (!isInWindow) return captured_;
    return {reinterpret_cast<const char*>(captureFrom_),
            static_cast<std::size_t>(position_ - captureFrom_)};
}

// A long text is moved. Smaller ones are copied, and leave their memory, which the cache holds, to
// the next.
astring XmlScanner::TakeCapture(std::size_t length) {
    constexpr std::size_t kWorthMoving = std::size_t{64} * 1024;
    const std::string_view captured = EndCapture();
    if (captured.size() < kWorthMoving) return astring(captured.substr(0, length));
    captured_.resize(std::min(length, captured.size()));
    return std::exchange(captured_, astring());
}

}  // namespace Xml::detail
