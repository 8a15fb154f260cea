// SPDX-License-Identifier: MIT

// The input side of the scanner: refills, places, names and the helpers of all scans.

#include "xml/XmlScanner.h"

#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>

#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Detection.h"
#include "xml/Messages.h"
#include "xml/NameBytes.h"
#include "xml/RunScan.h"
#include "xml/StandardMessages.h"
#include "xml/StandardNames.h"

#include <algorithm>
#include <cstring>
#include <utility>  // std::exchange

namespace Xml::detail {

namespace {

// No encoding takes fewer bytes for a character than a third of what UTF-8 takes.
constexpr int kWindowSize = 3 * XmlScanner::kBufferSize;

}  // namespace

XmlScanner::XmlScanner()
    : windowStore_(std::make_unique<unsigned char[]>(1 + kWindowSize + 1 + kScanPadding)),
      window_(windowStore_.get() + 1),
      position_(window_),
      dataEnd_(window_) {
    captured_.reserve(std::size_t{2} * kBufferSize);  // most tags that the window cuts are shorter
}

XmlScanner::~XmlScanner() = default;

void XmlScanner::SetStream(IO::Stream* stream) {
    capturing_ = false;
    while (!saved_.empty())
        PopState();
    stream_ = stream;
    codec_ = nullptr;
    mostWhitespace_ = kBufferSize;
    bytesRead_ = 0;
    streamEnded_ = false;
    filled_ = false;
    direct_ = true;
    badAhead_ = false;
    filters_ = awaitsEncoding_ = endsInReturn_ = hasMark_ = countsColons_ = false;
    position_ = dataEnd_ = window_;
    window_[-1] = 0;
    rawLength_ = rawCut_ = 0;
    places_.Start(window_);
    nodePlace_ = Place{0, 0};
    nodeStart_ = nullptr;
    CloseWindow();
}

void XmlScanner::AttachStream() {
    codec_ = &Utf8Codec();
    while (dataEnd_ - position_ < 4 && Refill() == Fill::More) {
    }
    const auto count = static_cast<std::size_t>(dataEnd_ - position_);
    const Detection detection = DetectEncoding(position_, count, *codec_);
    if (detection.ebcdic) Throw(Message::kEbcdic);
    const bool isHalfMark = count >= 2 && position_[0] == 0xFE && position_[1] != 0xFF;
    if (standard_ && isHalfMark) Throw(Message::kInvalidCharacter);
    const bool isMarkAlone =
        standard_ && count == 3 && std::memcmp(position_, "\xEF\xBB\xBF", 3) == 0;
    position_ += isMarkAlone ? 3 : detection.skip;
    hasMark_ = detection.skip > 0;
    places_.Start(position_);
    filters_ = awaitsEncoding_ = standard_;
    InstallCodec(*detection.codec);
    if (filters_ && direct_) TakeByStandard(position_);
}

void XmlScanner::SetNamespaces(bool namespaces) { namespaces_ = namespaces; }

void XmlScanner::InstallCodec(const CharCodec& codec) {
    const CharCodec& old = *codec_;
    codec_ = &codec;
    mostWhitespace_ = standard_ ? kMostBlanksInStandard : kBufferSize / UnitSize();
    const bool isPage =
        codec.Kind() == CodecKind::SingleByte || codec.Kind() == CodecKind::DoubleByte;
    const bool sameBytes = &codec == &old || (codec.Kind() == old.Kind() && !isPage);
    if (sameBytes) return;

    SettlePlaces();
    FlushCapture();
    const Place place = places_.At(position_);
    if (direct_) {
        TakeRaw(position_, static_cast<int>(dataEnd_ - position_));
    } else {
        const unsigned char* const end = badAhead_ ? dataEnd_ - 1 : dataEnd_;
        const auto ahead = static_cast<int>(old.EncodedLength(position_, end)) + rawCut_;
        TakeRaw(rawStore_.get() + rawLength_ - ahead, ahead);
    }
    direct_ = false;
    badAhead_ = false;
    window_[-1] = position_[-1];
    position_ = dataEnd_ = window_;
    places_.Start(position_, place);
    captureFrom_ = position_;
    // What was in the window has its line ends normalized already.
    const bool endedInReturn = std::exchange(endsInReturn_, false);
    DecodeRaw();
    endsInReturn_ = endsInReturn_ || endedInReturn;
}

// Makes the encoded bytes at `begin` the content of the raw buffer, none of them decoded yet.
void XmlScanner::TakeRaw(const unsigned char* begin, int length) {
    if (!rawStore_) rawStore_ = std::make_unique<unsigned char[]>(kBufferSize);
    std::memmove(rawStore_.get(), begin, static_cast<std::size_t>(length));
    rawLength_ = rawCut_ = length;
}

// Refills.

XmlScanner::Fill XmlScanner::Refill() {
    SettlePlaces();
    FlushCapture();
    if (!saved_.empty()) return RefillPushed();
    const Fill fill = direct_ ? RefillDirect() : RefillDecoded();
    filled_ = fill != Fill::More || streamEnded_ || badAhead_ || rawLength_ == kBufferSize;
    return fill;
}

// Moves what lies behind the position to the front of the window, and the byte before it with it.
// Returns how many bytes lie behind the position.
int XmlScanner::MoveToFront() {
    const auto held = static_cast<std::size_t>(dataEnd_ - position_);
    std::memmove(window_ - 1, position_ - 1, held + 1);
    position_ = window_;
    dataEnd_ = window_ + held;
    if (saved_.size() == captureLevel_) captureFrom_ = window_;
    places_.Relocate(window_);
    CloseWindow();
    return static_cast<int>(held);
}

XmlScanner::Fill XmlScanner::RefillDirect() {
    const int held = MoveToFront();
    if (streamEnded_) return Fill::End;
    if (held == kBufferSize) return Fill::Full;
    const unsigned char* const from = dataEnd_;
    dataEnd_ += ReadStream(dataEnd_, kBufferSize - held);
    rawLength_ = static_cast<int>(dataEnd_ - window_);
    CloseWindow();
    if (filters_) TakeByStandard(from);
    return !streamEnded_ || MarkCutEnd() ? Fill::More : Fill::End;
}

XmlScanner::Fill XmlScanner::RefillDecoded() {
    if (badAhead_) {
        MoveToFront();
        return Fill::End;  // the scanner refuses the byte when it gets there
    }
    const auto ahead = static_cast<int>(codec_->EncodedLength(position_, dataEnd_)) + rawCut_;
    MoveToFront();
    if (streamEnded_) return Fill::End;

    unsigned char* const raw = rawStore_.get();
    std::memmove(raw, raw + rawLength_ - ahead, static_cast<std::size_t>(ahead));
    rawLength_ = ahead;
    const unsigned char* const before = dataEnd_;
    while (dataEnd_ == before) {
        if (rawLength_ == kBufferSize) return Fill::Full;
        const int count = ReadStream(raw + rawLength_, kBufferSize - rawLength_);
        if (count == 0) return MarkCutEnd() ? Fill::More : Fill::End;
        rawLength_ += count;
        rawCut_ += count;
        DecodeRaw();
    }
    return Fill::More;
}

// Decodes what the raw buffer holds behind the window's end.
DecodeEnd XmlScanner::DecodeRaw() {
    const unsigned char* from = rawStore_.get() + rawLength_ - rawCut_;
    const unsigned char* const end = rawStore_.get() + rawLength_;
    const unsigned char* const begin = dataEnd_;
    const DecodeEnd result = codec_->DecodeRun(from, end, dataEnd_, window_ + kWindowSize);
    rawCut_ = static_cast<int>(end - from);
    if (result == DecodeEnd::Invalid) {
        *dataEnd_++ = kInvalidByte;
        badAhead_ = true;
    }
    CloseWindow();
    if (filters_) TakeByStandard(begin);
    return result;
}

// Asks the stream for `room` bytes; a stream that gives none has ended.
int XmlScanner::ReadStream(unsigned char* buffer, int room) {
    const int count = std::clamp(stream_->Read(buffer, 0, room), 0, room);
    if (count == 0) streamEnded_ = true;
    bytesRead_ += count;
    return count;
}

void XmlScanner::CloseWindow() { std::memset(dataEnd_, 0, kScanPadding); }

// Places.

Place XmlScanner::NodePlace() const {
    if (nodeStart_ != nullptr) {
        places_.Advance(nodeStart_);
        nodePlace_ = places_.At(nodeStart_);
        nodeStart_ = nullptr;
    }
    return nodePlace_;
}

Place XmlScanner::PlaceAt(const unsigned char* at) const {
    NodePlace();
    return places_.At(at);
}

// Counts all that is about to leave the window.
void XmlScanner::SettlePlaces() {
    NodePlace();
    places_.Advance(position_);
}

void XmlScanner::Throw(const char* message, std::string_view argument) const {
    const Place place = CurrentPlace();
    Exception::ThrowException(message, astring(argument), place.line, place.column);
}

// Helpers of all scans.

// The bytes that an ASCII character takes in the input.
int XmlScanner::UnitSize() const {
    switch (codec_->Kind()) {
    case CodecKind::Utf16: return 2;
    case CodecKind::Ucs4: return 4;
    case CodecKind::Utf8:
    case CodecKind::SingleByte:
    case CodecKind::DoubleByte: return 1;
    }
    return 1;
}

// The farthest character boundary up to `end` that is within `room` encoded bytes of position_.
const unsigned char* XmlScanner::Within(const unsigned char* end, std::size_t room) const {
    if (codec_->EncodedLength(position_, end) <= room) return end;
    const unsigned char* at = position_;
    for (;;) {
        const int length = *at < 0x80 ? 1 : std::max(1, LengthAt(at));
        const std::size_t taken = codec_->EncodedLength(at, at + length);
        if (taken > room) return at;
        room -= taken;
        at += length;
    }
}

// The length of the character above ASCII that starts at `at`, before the end of the data: 0 when
// the data ends inside of it, -1 when the bytes are no character. Only the bytes of the stream
// itself are judged. What a codec has decoded, and what is pushed, is as it should be but for
// kInvalidByte.
int XmlScanner::LengthAt(const unsigned char* at) const {
    if (direct_) return SequenceLength(at, dataEnd_);
    if (*at == kInvalidByte && saved_.empty()) return -1;
    return static_cast<int>(std::min<std::ptrdiff_t>(utf8::SequenceLength(*at), dataEnd_ - at));
}

// The class of the character above ASCII that starts at `at`.
int XmlScanner::NonAsciiClass(const unsigned char* at) const {
    const int length = LengthAt(at);
    if (length < 0) return ToInt(CharClass::Invalid);
    if (length == 0) return ToInt(CharClass::Partial);
    if (length == 1) return ToInt(CharClass::Other);
    const int code = utf8::Combine(at, length);
    if (standard_) return StandardClassOf(code);
    const CharCodec& codec = *StreamCodec();  // a pushed text has the letters of the document
    return codec.Kind() == CodecKind::SingleByte ? codec.ClassOfScalar(code)
                                                 : ClassOfScalarValue(code);
}

int XmlScanner::ClassAtPosition() const {
    if (position_ == dataEnd_) return ToInt(CharClass::End);
    return *position_ < 0x80 ? ToInt(kAsciiClass[*position_]) : NonAsciiClass(position_);
}

// Sees to it that a whole character stands at the position.
// Returns false at the end of the input; a character that is cut there counts as the end.
bool XmlScanner::HaveCharacter() {
    for (;;) {
        const int charClass = ClassAtPosition();
        if (charClass > ToInt(CharClass::Partial)) return true;
        if (charClass == ToInt(CharClass::Invalid)) return true;
        switch (Refill()) {
        case Fill::More: break;
        case Fill::End: return false;
        case Fill::Full: Throw(Message::kTokenTooBig);
        }
    }
}

// Sees to it that a valid character stands at the position.
void XmlScanner::RequireCharacter() {
    if (!HaveCharacter()) Throw(Message::kUnexpectedEof);
    if (ClassAtPosition() == ToInt(CharClass::Invalid)) Throw(Message::kInvalidCharacter);
}

bool XmlScanner::LookingAt(std::string_view literal) {
    for (std::size_t i = 0; i < literal.size(); ++i) {
        while (dataEnd_ - position_ <= static_cast<std::ptrdiff_t>(i)) {
            if (Refill() != Fill::More) return false;
        }
        if (position_[i] != static_cast<unsigned char>(literal[i])) return false;
    }
    return true;
}

bool XmlScanner::Accept(std::string_view literal) {
    if (!LookingAt(literal)) return false;
    position_ += literal.size();
    return true;
}

// Gets more input for a run that stopped at the position for none of its stops.
// Returns false at the end of the input.
bool XmlScanner::GoOn() {
    if (position_ != dataEnd_ && (*position_ < 0x80 || LengthAt(position_) < 0)) {
        Throw(Message::kInvalidCharacter);
    }
    return Refill() == Fill::More;
}

// Appends what lies before `end` to `text` and steps over it.
void XmlScanner::Take(astring& text, const unsigned char* end) {
    text.append(reinterpret_cast<const char*>(position_),
                static_cast<std::size_t>(end - position_));
    position_ = end;
}

bool XmlScanner::SkipWhitespace() {
    bool any = false;
    for (;;) {
        const unsigned char* const end = SkipBlanks(position_);
        any = any || end != position_;
        position_ = end;
        if (position_ != dataEnd_ || Refill() != Fill::More) return any;
    }
}

// Names.

bool XmlScanner::StartsName(const unsigned char* at) const {
    if (*at < 0x80) return IsAsciiNameStart(*at) || (*at == ':' && !namespaces_);
    return IsNameStartClass(NonAsciiClass(at));
}

const unsigned char* XmlScanner::SkipNameCharacters(const unsigned char* at) const {
    for (;;) {
        while (IsAsciiName(*at) || (*at == ':' && !namespaces_))
            ++at;
        if (*at < 0x80 || !IsNameClass(NonAsciiClass(at))) return at;
        at += LengthAt(at);
    }
}

const ScannedName& XmlScanner::ScanName() {
    name_ = ScannedName{};
    tokenText_ = {};
    if (!HaveCharacter()) {
        name_.token = XmlToken::ENDOFFILE;
        return name_;
    }
    if (!StartsName(position_)) return name_;

    const unsigned char* colon = nullptr;
    const unsigned char* end = SkipNameCharacters(position_);
    if (*end == ':' && namespaces_) {
        colon = end;
        end = SkipNameCharacters(end + 1);
    }
    if (end == dataEnd_ || NonAsciiCut(end)) {
        ScanLongName();
    } else {
        const char* begin = reinterpret_cast<const char*>(position_);
        name_.text = {begin, static_cast<std::size_t>(end - position_)};
        name_.token = XmlToken::NAME;
        if (colon != nullptr) {
            name_.colon = static_cast<int>(colon - position_);
            if (!countsColons_) places_.SkipColon(colon);
        }
        position_ = end;
        if (colon != nullptr && standard_ && !StartsName(colon + 1)) {
            position_ = colon + 1;
            Throw(Message::kExpectedLocalName);
        }
        if (colon != nullptr && *end == ':') Throw(Message::kSecondColon);
    }
    tokenText_ = name_.text;
    return name_;
}

bool XmlScanner::NonAsciiCut(const unsigned char* at) const {
    return *at >= 0x80 && LengthAt(at) == 0;
}

// Scans a name that reaches the end of the window, part by part.
void XmlScanner::ScanLongName() {
    longName_.clear();
    std::size_t taken = 0;  // encoded bytes
    for (;;) {
        TakeLongNamePart(taken);
        if (!HaveCharacter()) {
            name_.token = XmlToken::ENDOFFILE;
            break;
        }
        if (*position_ == ':' && namespaces_) {
            if (name_.colon >= 0) Throw(Message::kSecondColon);
            name_.colon = static_cast<int>(longName_.length());
            if (!countsColons_) places_.SkipColon(position_);
            taken += static_cast<std::size_t>(UnitSize());
            if (taken > MostBytes()) Throw(Message::kTokenOverflow);
            Take(longName_, position_ + 1);
            RequireLocalName();
        } else if (SkipNameCharacters(position_) == position_) {
            name_.token = XmlToken::NAME;
            break;
        }
    }
    name_.text = longName_.view();
}

// Sees to it that behind the colon of a name another name follows, where the standard asks for it.
void XmlScanner::RequireLocalName() {
    if (standard_ && (!HaveCharacter() || !StartsName(position_))) {
        Throw(Message::kExpectedLocalName);
    }
}

void XmlScanner::TakeLongNamePart(std::size_t& taken) {
    const unsigned char* const end = SkipNameCharacters(position_);
    const unsigned char* const reach = Within(end, MostBytes() - taken);
    taken += codec_->EncodedLength(position_, reach);
    Take(longName_, reach);
    if (reach != end) Throw(Message::kTokenOverflow);
}

}  // namespace Xml::detail
