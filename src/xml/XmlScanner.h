// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "encoding/CharCodec.h"
#include "xml/PlaceCounter.h"
#include "xml/RunScan.h"
#include "xml/XmlToken.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace IO {
class Stream;
}

namespace Xml::detail {

/// A name that was scanned; a view into the scanner, valid until its next operation.
struct ScannedName {
    XmlToken token = XmlToken::ERROR;  ///< NAME, ERROR (no name starts here) or ENDOFFILE
    std::string_view text;
    int colon = -1;  ///< bytes before the colon that splits the name, -1 without one
};

/// Splits the input into tokens.
///
/// The scanner holds at most 1024 bytes of encoded input, the raw buffer, and sees them as UTF-8
/// through its window. For UTF-8 input the window is the raw buffer; other encodings are converted
/// into it at each refill. Behind the data stand zero bytes, so that runs end by themselves.
///
///     window_        position_                        dataEnd_
///     |  scanned      |  to be scanned                 |  zeros  |
///
/// A refill moves what lies behind position_ to the front and asks the stream for as many bytes
/// as are then missing from 1024. What a scan has passed is gone, so scans of texts and values
/// append what they pass to a string of the caller: text of any length needs no more buffer. Where
/// a length is limited (names, literals, runs of white space), the limit counts encoded bytes, so
/// that it does not depend on how the stream cuts its data.
///
/// In the place of a reference, PushString() lets the scanner go on in the text of an entity: it
/// gets a window of its own, which takes the text by the same steps, and PopState() goes back to
/// behind the reference. Nothing but the end of a text between tokens leads back, so no token
/// begins in one text and ends in another.
///
/// Every error is thrown as Xml::Exception with the place of position_; the scanner must not be
/// used after that.
class XmlScanner {
public:
    /// The size of the raw buffer and the length limit of names and literals, in encoded bytes.
    static constexpr int kBufferSize = 1024;

    /// The length limit of names and literals in standard mode, which sets them none.
    static constexpr int kMostInStandard = 64 * kBufferSize;

    /// Most characters of white space before a text in standard mode: what is white space must not
    /// depend on the size of a buffer, since readers may leave it out.
    static constexpr int kMostBlanksInStandard = 1 << 28;

    /// What a refill brought.
    enum class Fill : unsigned char {
        More,  ///< new characters
        End,   ///< nothing, the input has ended
        Full   ///< nothing, all 1024 bytes of the buffer are waiting to be scanned
    };

    XmlScanner();
    ~XmlScanner();
    XmlScanner(const XmlScanner&) = delete;
    XmlScanner& operator=(const XmlScanner&) = delete;

    /// Names the stream to read, which is not owned. Reads nothing.
    void SetStream(IO::Stream* stream);

    /// Reads the first bytes of the stream, finds out their encoding and steps over a mark.
    void AttachStream();

    /// Splits names at their colon, or takes it for a letter.
    void SetNamespaces(bool namespaces);

    /// Takes the input and its names as the standard has them; to be called before AttachStream().
    /// Names are those of the fifth edition of XML 1.0; XmlScannerStandard.cpp tells the rest.
    void SetStandard(bool standard) { standard_ = standard; }

    /// Says whether the colons of names count as characters of the line. Only those of the names
    /// that are reported do not.
    void SetCountsColons(bool counts) { countsColons_ = counts; }

    /// Says that no declaration of an encoding will come any more. Until then the bytes of a window
    /// that shows them as they are may turn out to be something else than UTF-8.
    void SettleEncoding();

    /// Tells whether a byte-order mark begins the input.
    bool HasMark() const { return hasMark_; }

    /// Returns the codec in use, null before AttachStream(). That of a pushed text is UTF-8.
    const CharCodec* Codec() const { return codec_; }

    /// Returns the codec of the stream, null before AttachStream().
    const CharCodec* StreamCodec() const { return saved_.empty() ? codec_ : saved_.front().codec; }

    /// Returns how many bytes the stream has given.
    long long BytesRead() const { return bytesRead_; }

    /// Decodes from the next character on with `codec`.
    void InstallCodec(const CharCodec& codec);

    // Texts of entities.

    /// Goes on in `text`, which was scanned before and stays where it is until it is popped. Lines
    /// and columns count on.
    ///
    /// Deliberate: the bytes from 80 on are ordinary characters there and never an error, since the
    /// text that code pages give is not always UTF-8.
    void PushString(std::string_view text);

    /// Goes back to where the text that was pushed last stands, as if it had never been.
    void PopState();

    /// Returns how many texts are pushed.
    int PushedCount() const { return static_cast<int>(saved_.size()); }

    // Places.

    /// Remembers that a node starts at the position.
    void MarkNode() { nodeStart_ = position_; }

    /// Says where a node starts that begins before the position.
    void MarkNodeAt(Place place) {
        nodePlace_ = place;
        nodeStart_ = nullptr;
    }

    /// Says that nobody will ask any more where the marked node starts.
    void ForgetNode() { nodeStart_ = nullptr; }

    /// Returns where the marked node starts.
    Place NodePlace() const;

    /// Returns the place of the position.
    Place CurrentPlace() const { return places_.At(position_); }

    /// Returns the place of the position, and counts on from there for later ones.
    Place SettledPlace() {
        SettlePlaces();
        return places_.At(position_);
    }

    /// Returns the place of `at`, a position behind the marked node in the window.
    Place PlaceAt(const unsigned char* at) const;

    // Markup. A scan that finds what it looks for stands behind it.

    /// Scans markup at "<", where the position stands.
    /// \return TAG, ENDTAG, PI, COMMENT, CDATA or DECL
    XmlToken ScanMarkup();

    /// Skips white space and scans one token inside of markup. For NAME see Name().
    XmlToken NextMarkupToken();

    /// Scans a name at the position.
    const ScannedName& ScanName();

    /// Returns the name scanned last.
    const ScannedName& Name() const { return name_; }

    /// Returns the text of the last token of NextMarkupToken() or ScanMarkup(), for messages.
    std::string_view TokenText() const;

    /// Tells whether the input has ended.
    bool AtEnd() { return !HaveCharacter(); }

    /// Steps over white space.
    /// \return whether there was any
    bool SkipWhitespace();

    /// Tells whether the input goes on with `literal`.
    bool LookingAt(std::string_view literal);

    /// Steps over `literal` when the input goes on with it; otherwise stays.
    bool Accept(std::string_view literal);

    // Content.

    /// Scans what stands between tags and appends it to `text`.
    ///
    /// At "<" the result is NONE, or WHITESPACE when nothing but white space came before it. A run
    /// of white space also ends when it fills the buffer. Otherwise the characters up to "<" or "&"
    /// are a TEXT. Without any, "&" gives CHARREF (behind "&#") or ENTITYREF (behind "&"), the end
    /// of a pushed text ENDENTITY and the end of the input ENDOFFILE.
    /// \param limit most encoded bytes of a TEXT, 0 for any number
    XmlToken ScanText(astring& text, int limit = 0);

    /// Scans a part of an attribute's value and appends it to `text`.
    /// \return TEXT when there are characters, otherwise CHARREF, ENTITYREF, ENDQUOTE (behind the
    ///     quotation mark) or NONE at "<"
    XmlToken ScanValue(astring& text);

    /// Scans a part of the text of an attribute's value or of an entity in it, which was pushed.
    /// \return TEXT when there are characters, otherwise CHARREF, ENTITYREF or, at the end,
    ///     ENDENTITY
    XmlToken ScanValuePart(astring& text);

    /// Scans the digits of a character reference and the ";".
    /// \param digits receives them as they are written, with "x" and without ";"
    /// \param check whether the character must be one that XML allows
    /// \return the character's code
    int ScanCharRef(astring& digits, bool check = true);

    /// Scans up to "-->", "]]>" or "?>", steps over it, and appends what comes before to `text`.
    void ScanComment(astring& text);
    void ScanCData(astring& text);
    void ScanPI(astring& text);

    // The document type.

    /// Skips white space and scans one token of a declaration. For NAME see Name().
    XmlToken ScanDtdToken();

    /// Scans what follows "<" in the document type, where the position stands.
    /// \return DECL, COMMENT, PI, ENDTAG or TAG
    XmlToken ScanDtdMarkup();

    /// Scans a part of an entity's literal and appends it to `text`.
    /// \return ENTTEXT when there are characters, otherwise CHARREF, ENTITYREF, PEREF (behind "%"),
    ///     ENDQUOTE (behind the quotation mark) or ENDOFFILE
    XmlToken ScanEntityValue(astring& text);

    /// Scans a system identifier and appends it to `text`. Stops at its quotation mark.
    void ScanLiteral(astring& text);

    /// Scans a public identifier and appends it to `text`. Stops at its quotation mark.
    void ScanPubidLiteral(astring& text);

    /// As ScanLiteral() and ScanPubidLiteral(), for callers with a message of their own.
    /// \return false when the input ends before the quotation mark
    bool TakeLiteral(astring& text);
    bool TakePubidLiteral(astring& text);

    /// Steps over a name token, in which a colon is like any other character of a name.
    /// \return false when there is none
    bool SkipNameToken();

    /// Steps over everything up to and with "-->".
    /// \return false when the input ends before
    bool SkipComment();

    /// Steps over everything up to and with "?>".
    /// \return false when the input ends before
    bool SkipPI();

    /// Steps over the quotation mark that a literal ends with.
    void SkipEndQuote() { ++position_; }

    /// Steps over everything up to and with the quotation mark `quote`.
    /// \return false when the input ends before
    bool SkipLiteral(char quote);

    /// Steps over everything up to and with the next character that the nesting of the document
    /// type depends on.
    /// \return that character, one of "<>[]'" and '"', or 0 at the end of the input
    char NextDtdDelimiter();

    char QuoteChar() const { return quoteChar_; }

    // Raw capture.

    /// Starts to collect the input from the position on, behind `before`. In a pushed text that is
    /// what it holds; what is pushed later is not collected.
    void StartCapture(std::string_view before = {});

    /// Goes on collecting, behind what was collected last.
    void ResumeCapture();

    bool IsCapturing() const { return capturing_; }

    /// Returns how many bytes have been collected up to the position.
    std::size_t CapturedLength() const { return CapturedLengthAt(position_); }

    /// The same up to `at`, a place in the window.
    std::size_t CapturedLengthAt(const unsigned char* at) const;

    /// Ends the collecting and returns what was passed, as a view that is good until the scanner
    /// goes on.
    std::string_view EndCapture();

    /// The same as a string, of its first `length` bytes.
    astring TakeCapture(std::size_t length);

    /// Throws Xml::Exception with the current place.
    [[noreturn]] void Throw(const char* message, std::string_view argument = {}) const;

    // The window, for the reader's quick path over start and end tags: it scans the bytes between
    // Position() and DataEnd() itself and says with Consume() how far it came.

    const unsigned char* Position() const { return position_; }
    const unsigned char* DataEnd() const { return dataEnd_; }
    void Consume(const unsigned char* end) { position_ = end; }
    PlaceCounter& Places() { return places_; }

    /// Returns the first position from `from` on that holds a stop, or no character, or a cut one.
    template <char A, char B = A, char C = A, Blanks kBlanks = Blanks::Pass>
    const unsigned char* Find(const unsigned char* from) const {
        return direct_ ? FindStop<A, B, C, kBlanks>(from, dataEnd_)
                       : FindInDecoded<A, B, C, kBlanks>(from);
    }

    /// Advances over characters that may stand in a name.
    /// \return the first other position; one where the data ends or a character is cut included
    const unsigned char* SkipNameCharacters(const unsigned char* at) const;

    /// Tells whether a name starts at `at`.
    bool StartsName(const unsigned char* at) const;

    /// Reads more, keeping what lies behind the position.
    Fill Refill();

    /// Returns how many characters of white space one token may hold.
    int MostWhitespace() const { return mostWhitespace_; }

    /// Tells whether the buffer can take no more before something is scanned, or nothing is left.
    bool IsFilled() const { return filled_; }

private:
    /// Where the scanner stood when a text was pushed, and how the bytes there are to be read.
    struct SavedState {
        std::unique_ptr<unsigned char[]> store;  // of the window above, for the texts that follow
        unsigned char* window;
        const unsigned char* position;
        unsigned char* dataEnd;
        std::string_view rest;
        const CharCodec* codec;
        Place place;  // of the position
        int mostWhitespace;
        bool direct;
        bool badAhead;
        bool filled;
    };

    int MoveToFront();
    Fill RefillPushed();
    Fill RefillDirect();
    Fill RefillDecoded();
    DecodeEnd DecodeRaw();
    int ReadStream(unsigned char* buffer, int room);
    void TakeRaw(const unsigned char* begin, int length);
    void CloseWindow();
    void TakeByStandard(const unsigned char* from);
    void RemoveByte(const unsigned char* at);
    void NormalizeReturns(const unsigned char* from);
    void MarkInvalid(const unsigned char* from);
    bool MarkCutEnd();
    void SettlePlaces();
    int UnitSize() const;
    std::size_t MostBytes() const {
        return static_cast<std::size_t>(standard_ ? kMostInStandard : kBufferSize);
    }
    const unsigned char* Within(const unsigned char* end, std::size_t room) const;
    template <char A, char B, char C, Blanks kBlanks>
    const unsigned char* FindInDecoded(const unsigned char* from) const;
    int LengthAt(const unsigned char* at) const;
    int NonAsciiClass(const unsigned char* at) const;
    bool NonAsciiCut(const unsigned char* at) const;
    int ClassAtPosition() const;
    bool HaveCharacter();
    void RequireCharacter();
    bool GoOn();
    void FlushCapture();
    XmlToken EndOfText() const {
        return saved_.empty() ? XmlToken::ENDOFFILE : XmlToken::ENDENTITY;
    }
    void RequireInDtd(const char* message);
    XmlToken DtdName();
    template <char First>
    bool SkipUpTo(std::string_view terminator);
    void Take(astring& text, const unsigned char* end);
    void ScanLongName();
    void RequireLocalName();
    void TakeLongNamePart(std::size_t& taken);
    XmlToken MarkupDeclaration();
    XmlToken Finish(XmlToken token, std::string_view text);
    XmlToken FinishPair(XmlToken token, std::string_view text);
    XmlToken ScanReferenceStart();
    template <char A, char B>
    unsigned char TakeQuoted(astring& text, bool& any);
    XmlToken ScanCharacters(astring& text, int limit, int before);
    template <char First>
    void ScanUpTo(astring& text, std::string_view terminator, const char* eofMessage);

    // The input.
    IO::Stream* stream_ = nullptr;      // not owned
    const CharCodec* codec_ = nullptr;  // one of the static codecs
    bool streamEnded_ = false;          // the stream has no more bytes
    bool filled_ = false;               // the last refill left nothing to ask for
    bool direct_ = true;                // the window is the raw buffer
    bool badAhead_ = false;             // the window ends with kInvalidByte: no more was decoded
    int mostWhitespace_ = kBufferSize;  // white space that fills the buffer, in characters
    long long bytesRead_ = 0;

    // In standard mode.
    bool standard_ = false;
    bool filters_ = false;         // the window takes the input by the standard
    bool awaitsEncoding_ = false;  // the declaration may still name another encoding
    bool endsInReturn_ = false;    // the line feed that comes next belongs to a line end before it
    bool hasMark_ = false;
    bool countsColons_ = false;

    // The buffers; see the picture above.
    std::unique_ptr<unsigned char[]> windowStore_;
    std::unique_ptr<unsigned char[]> rawStore_;  // encoded bytes, when the window holds others
    unsigned char* window_ = nullptr;
    const unsigned char* position_ = nullptr;  // the next character
    unsigned char* dataEnd_ = nullptr;
    int rawLength_ = 0;  // bytes in the raw buffer; the last rawCut_ of them are not decoded yet
    int rawCut_ = 0;

    // The texts that are pushed, one state for each: what to go back to.
    std::vector<SavedState> saved_;
    std::string_view rest_;  // of the text pushed last, what its window has not taken yet

    // Places.
    mutable PlaceCounter places_;
    mutable Place nodePlace_{0, 0};
    mutable const unsigned char* nodeStart_ = nullptr;  // null once nodePlace_ is known

    // The current token.
    bool namespaces_ = true;
    char quoteChar_ = '"';
    ScannedName name_;
    std::string_view tokenText_;
    astring longName_;  // a name that did not lie in the window as a whole

    // Raw capture.
    bool capturing_ = false;
    std::size_t captureLevel_ = 0;                // the texts pushed where it collects
    const unsigned char* captureFrom_ = nullptr;  // what lies before it is in captured_
    astring captured_;
};

// Does the work of Find() in a window that holds UTF-8 by other ways than the stream.
template <char A, char B, char C, Blanks kBlanks>
[[gnu::noinline]] const unsigned char* XmlScanner::FindInDecoded(const unsigned char* from) const {
    const unsigned char* stop = FindStopInValid<A, B, C, kBlanks>(from);
    while (*stop == kInvalidByte && !saved_.empty())  // means nothing in a pushed text
        stop = FindStopInValid<A, B, C, kBlanks>(stop + 1);
    return stop;
}

// Takes what stands between quotation marks, up to the closing one, A or B. `any` tells whether
// that is anything.
// Returns the character that it stopped at, 0 at the end of the input.
template <char A, char B>
unsigned char XmlScanner::TakeQuoted(astring& text, bool& any) {
    const bool isDouble = quoteChar_ == '"';
    for (;;) {
        const unsigned char* const stop =
            isDouble ? Find<'"', A, B>(position_) : Find<'\'', A, B>(position_);
        any = any || stop != position_;
        Take(text, stop);
        if (position_ != dataEnd_) {
            const unsigned char c = *position_;
            if (c == A || c == B || c == static_cast<unsigned char>(quoteChar_)) return c;
        }
        if (!GoOn()) return 0;
    }
}

}  // namespace Xml::detail
