// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>  // std::min, std::max, std::fill_n
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <functional>  // std::hash
#include <memory>      // std::allocator
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

/// A read-only view of the 8-bit characters in [begin, end), which it does not own.
class TstrCharacterRange {
public:
    constexpr TstrCharacterRange() = default;
    constexpr TstrCharacterRange(const char* begin, const char* end) : begin_(begin), end_(end) {}

    /// Returns the first character.
    constexpr const char* begin() const { return begin_; }
    /// Returns the place behind the last character.
    constexpr const char* end() const { return end_; }
    /// Returns the number of bytes.
    constexpr std::size_t length() const { return static_cast<std::size_t>(end_ - begin_); }

    constexpr operator std::string_view() const { return {begin_, length()}; }

private:
    const char* begin_ = nullptr;
    const char* end_ = nullptr;
};

/// A string of characters with value semantics, always NUL-terminated and free to hold NULs.
///
/// The operations carry the names, the semantics and the errors of std::string: a position past
/// the end throws std::out_of_range. Lengths and positions are counted in bytes. A View is taken
/// wherever a text is wanted, and std::string, std::string_view, character strings and
/// TstrCharacterRange convert to it; none of them may be a null pointer.
///
/// \code
///     astring name = "book";
///     name.append(":title");                   // any text
///     std::string_view view = name;            // valid until the string changes
///     if (name == "book:title") std::cout << name;
/// \endcode
///
/// \note Different objects may be used from different threads at once; copies share nothing.
template <typename Char>
class BasicString {
public:
    /// \name Types
    /// Those that a standard container has, a view of the text, and the standard's string.
    /// @{
    using value_type = Char;
    using size_type = std::size_t;
    using iterator = Char*;
    using const_iterator = const Char*;
    using View = std::basic_string_view<Char>;
    using Standard = std::basic_string<Char>;
    /// @}

    /// A buffer that somebody else owns, with a text in it.
    struct Placed {
        Char* buffer;      ///< outlives the string, and those that it is moved to
        size_type length;  ///< of the text, which a NUL follows
        size_type room;    ///< of the buffer, with the NUL
    };

    /// "Not found", and "to the end" where a count is wanted.
    static constexpr size_type npos = Standard::npos;

    BasicString() noexcept { inside_[0] = Char(); }
    BasicString(const Char* text) : BasicString(View(text)) {}
    BasicString(std::nullptr_t) = delete;
    BasicString(const Char* text, size_type length) : BasicString(View(text, length)) {}
    BasicString(size_type count, Char character) : BasicString() { append(count, character); }
    BasicString(View text) : BasicString() { append(text); }
    BasicString(const Standard& text) : BasicString(View(text)) {}
    explicit BasicString(TstrCharacterRange range) : BasicString(View(range)) {}
    /// Makes a string whose text is in the buffer of somebody else. A longer text gets another
    /// buffer, and so does the text of a copy.
    explicit BasicString(Placed text) noexcept
        : data_(text.buffer), length_(text.length), capacity_((text.room - 1) | kIsPlaced) {}
    BasicString(const BasicString& other) : BasicString(other.view()) {}
    BasicString(BasicString&& other) noexcept : BasicString() { Take(other); }
    ~BasicString() { Free(); }

    /// Gives the text as a view, valid until the string changes.
    operator View() const noexcept { return view(); }
    /// Gives a copy of the text as a standard string.
    operator Standard() const { return str(); }

    /// Returns the text as a view, valid until the string changes.
    View view() const noexcept { return View(data_, length_); }
    /// Returns a copy of the text as a standard string.
    Standard str() const { return Standard(view()); }

    BasicString& operator=(const BasicString& other) {
        return this == &other ? *this : assign(other.view());
    }
    BasicString& operator=(BasicString&& other) noexcept {
        if (this != &other) {
            Free();
            Take(other);
        }
        return *this;
    }
    BasicString& operator=(const Char* text) { return assign(View(text)); }
    BasicString& operator=(View text) { return assign(text); }
    BasicString& operator=(const Standard& text) { return assign(View(text)); }

    /// \name Replace the whole text
    /// The new text may be a part of the old one.
    /// @{
    BasicString& assign(View text) { return replace(0, npos, text); }
    BasicString& assign(const Char* text, size_type length) { return assign(View(text, length)); }
    BasicString& assign(size_type count, Char character) {
        clear();
        return append(count, character);
    }
    /// @}

    /// Makes the text the `length` characters at `text`, copying whole blocks of 16 bytes.
    /// \pre `text` is readable up to the next multiple of 16 bytes and lies outside of this string,
    ///     whose buffer was not somebody else's
    void assign_padded(const Char* text, size_type length) {
        if (length > capacity()) {
            clear();
            Grow(length);
        }
        if (length <= kLongCopy) {
            for (size_type i = 0; i < length; i += kBlock) {
                std::memcpy(data_ + i, text + i, kBlock * sizeof(Char));
            }
        } else {
            std::memcpy(data_, text, length * sizeof(Char));
        }
        SetLength(length);
    }

    /// Makes the text the `length` characters at `text`, less than 16 bytes of them.
    /// \pre 16 bytes are readable at `text`, and they lie outside of this string
    void assign_short(const Char* text, size_type length) noexcept {
        std::memcpy(data_, text, kBlock * sizeof(Char));
        SetLength(length);
    }

    /// \name Add to the end
    /// The text may be a part of this string. Adding one character after the other takes time in
    /// proportion to their number.
    /// @{
    BasicString& append(View text) {
        if (text.size() <= capacity() - length_) {
            // The text may be a part of this string; it does not reach behind the end.
            CopyTo(data_ + length_, text);
            SetLength(length_ + text.size());
            return *this;
        }
        return replace(length_, 0, text);
    }
    BasicString& append(const Char* text, size_type length) { return append(View(text, length)); }
    BasicString& append(size_type count, Char character) {
        if (count > capacity() - length_) Grow(SumOf(length_, count));
        std::fill_n(data_ + length_, count, character);
        SetLength(length_ + count);
        return *this;
    }
    void push_back(Char character) {
        if (length_ == capacity()) Grow(SumOf(length_, 1));
        data_[length_] = character;
        SetLength(length_ + 1);
    }
    BasicString& operator+=(View text) { return append(text); }
    BasicString& operator+=(Char character) {
        push_back(character);
        return *this;
    }
    /// @}

    /// \name Change a part
    /// `count` characters from `position` on, or as many as there are, make room for the text,
    /// which may be a part of this string.
    /// \throws std::out_of_range when `position` is past the end
    /// @{
    BasicString& insert(size_type position, View text) { return replace(position, 0, text); }
    BasicString& insert(size_type position, size_type count, Char character) {
        return replace(position, 0, BasicString(count, character).view());
    }
    BasicString& erase(size_type position = 0, size_type count = npos) {
        return replace(position, count, View());
    }
    BasicString& replace(size_type position, size_type count, View text) {
        if (position > length_) throw std::out_of_range("BasicString: position past the end");
        count = std::min(count, length_ - position);
        const size_type rest = length_ - position - count;
        const size_type length = SumOf(length_ - count, text.size());
        if (length > capacity()) {
            ReplaceInNewBuffer(position, count, text);
        } else if (rest > 0 && IsPart(text)) {
            return replace(position, count, BasicString(text).view());
        } else {
            Char* const at = data_ + position;
            std::memmove(at + text.size(), at + count, rest * sizeof(Char));
            MoveTo(at, text);
        }
        SetLength(length);
        return *this;
    }
    /// @}

    /// \name Find
    /// From `position` on; the result is npos when there is none.
    /// @{
    size_type find(Char character, size_type position = 0) const noexcept {
        return view().find(character, position);
    }
    size_type find(View text, size_type position = 0) const noexcept {
        return view().find(text, position);
    }
    /// @}

    /// Compares byte by byte: below 0 when this text comes first, 0 when both are equal.
    int compare(View text) const noexcept { return view().compare(text); }
    /// Returns a copy of `count` characters from `position` on, or of as many as there are.
    /// \throws std::out_of_range when `position` is past the end
    BasicString substr(size_type position = 0, size_type count = npos) const {
        return BasicString(view().substr(position, count));
    }

    /// Makes room for `capacity` characters, so that a text of that length needs no other buffer.
    void reserve(size_type capacity) {
        if (capacity > this->capacity()) Reallocate(capacity);
    }
    /// Changes the length; new characters are `fill`.
    void resize(size_type length, Char fill = Char()) {
        if (length > length_) {
            append(length - length_, fill);
        } else {
            SetLength(length);
        }
    }
    /// Makes the text empty; the buffer stays.
    void clear() noexcept { SetLength(0); }
    /// Exchanges the texts.
    void swap(BasicString& other) noexcept { std::swap(*this, other); }

    /// \name The text and its length
    /// The pointers are valid until the string changes; a NUL stands behind the last character.
    /// @{
    const Char* c_str() const noexcept { return data_; }
    const Char* data() const noexcept { return data_; }
    size_type length() const noexcept { return length_; }
    size_type size() const noexcept { return length_; }
    size_type capacity() const noexcept { return IsInside() ? kBlock - 1 : capacity_ & ~kIsPlaced; }
    bool empty() const noexcept { return length_ == 0; }
    /// @}

    /// \name Characters
    /// A position is not checked, except by at(), which throws std::out_of_range. front() and
    /// back() want a text that is not empty.
    /// @{
    iterator begin() noexcept { return data_; }
    iterator end() noexcept { return data_ + length_; }
    const_iterator begin() const noexcept { return data_; }
    const_iterator end() const noexcept { return data_ + length_; }

    Char& operator[](size_type position) { return data_[position]; }
    const Char& operator[](size_type position) const { return data_[position]; }
    Char& at(size_type position) { return data_[Checked(position)]; }
    const Char& at(size_type position) const { return data_[Checked(position)]; }
    Char& front() { return data_[0]; }
    Char& back() { return data_[length_ - 1]; }
    const Char& front() const { return data_[0]; }
    const Char& back() const { return data_[length_ - 1]; }
    /// @}

    /// Returns a writable buffer of at least `capacity` characters that begins with the text.
    /// Write into it, then call release_buffer(); no other member may be called in between.
    Char* get_buffer(size_type capacity) {
        if (capacity > length_) resize(capacity);
        return data_;
    }
    /// Ends direct access: the text is the first `length` characters of the buffer.
    void release_buffer(size_type length) { resize(length); }

    /// Compares with any text, byte by byte; with the other operand first, too.
    template <typename Text>
    requires std::convertible_to<const Text&, View>
    friend bool operator==(const BasicString& a, const Text& b) { return View(a) == View(b); }
    template <typename Text>
    requires std::convertible_to<const Text&, View>
    friend std::strong_ordering operator<=>(const BasicString& a, const Text& b) {
        return View(a).compare(View(b)) <=> 0;
    }

    template <typename Text>
    requires std::convertible_to<const Text&, View>
    friend BasicString operator+(BasicString a, const Text& b) {
        a.append(View(b));
        return a;
    }
    template <typename Text>
    requires std::convertible_to<const Text&, View> &&
        (!std::derived_from<Text, BasicString>)friend BasicString
        operator+(const Text& a, const BasicString& b) {
        return BasicString(View(a)) + View(b);
    }
    friend BasicString operator+(BasicString a, Char b) {
        a.push_back(b);
        return a;
    }
    friend BasicString operator+(Char a, const BasicString& b) {
        return BasicString(1, a) + View(b);
    }

    friend std::basic_ostream<Char>& operator<<(std::basic_ostream<Char>& out,
                                                const BasicString& text) {
        return out << text.view();
    }

private:
    // Short texts stand inside of the object, others in a buffer of their own. Both are a whole
    // number of blocks long, so that copying may write the last block in full.
    static constexpr size_type kBlock = 16 / sizeof(Char);
    static constexpr size_type kLongCopy = 128 / sizeof(Char);  // memcpy is worth its call

    bool IsInside() const noexcept { return data_ == inside_; }

    void SetLength(size_type length) noexcept {
        length_ = length;
        data_[length] = Char();
    }

    static void CopyTo(Char* destination, View text) noexcept {
        if (!text.empty()) std::memcpy(destination, text.data(), text.size() * sizeof(Char));
    }
    static void MoveTo(Char* destination, View text) noexcept {
        if (!text.empty()) std::memmove(destination, text.data(), text.size() * sizeof(Char));
    }

    bool IsPart(View text) const noexcept {
        const std::less<const Char*> isBefore;
        return !isBefore(text.data(), data_) && isBefore(text.data(), data_ + length_);
    }

    size_type Checked(size_type position) const {
        if (position >= length_) throw std::out_of_range("BasicString: position past the end");
        return position;
    }

    static size_type SumOf(size_type a, size_type b) {
        if (b > kMostCharacters - a) throw std::length_error("BasicString: text too long");
        return a + b;
    }

    // Makes room for at least `length` characters, and for as many again as there was room for.
    void Grow(size_type length) { Reallocate(std::max(length, 2 * capacity())); }

    // The room of a buffer for `capacity` characters and a terminator.
    static size_type RoomFor(size_type capacity) {
        if (capacity > kMostCharacters) throw std::length_error("BasicString: text too long");
        return (capacity / kBlock + 1) * kBlock;
    }

    void Reallocate(size_type capacity) {
        const size_type room = RoomFor(capacity);
        Char* const buffer = std::allocator<Char>().allocate(room);
        std::memcpy(buffer, data_, (length_ + 1) * sizeof(Char));
        Adopt(buffer, room);
    }

    void ReplaceInNewBuffer(size_type position, size_type count, View text) {
        const size_type length = length_ - count + text.size();
        const size_type room = RoomFor(std::max(length, 2 * capacity()));
        Char* const buffer = std::allocator<Char>().allocate(room);
        CopyTo(buffer, view().substr(0, position));
        CopyTo(buffer + position, text);
        CopyTo(buffer + position + text.size(), view().substr(position + count));
        Adopt(buffer, room);
    }

    void Adopt(Char* buffer, size_type room) noexcept {
        Free();
        data_ = buffer;
        capacity_ = room - 1;
    }

    void Free() noexcept {
        if (IsInside() || (capacity_ & kIsPlaced) != 0) return;
        std::allocator<Char>().deallocate(data_, capacity_ + 1);
    }

    // Takes the text of `other`, which becomes empty; this string's own text is gone already.
    void Take(BasicString& other) noexcept {
        length_ = other.length_;
        if (other.IsInside()) {
            data_ = inside_;
            std::memcpy(inside_, other.inside_, sizeof inside_);
        } else {
            data_ = other.data_;
            capacity_ = other.capacity_;
            other.data_ = other.inside_;
        }
        other.SetLength(0);
    }

    static constexpr size_type kMostCharacters = npos / (2 * sizeof(Char)) - kBlock;
    static constexpr size_type kIsPlaced = ~(npos >> 1);  // in the capacity: not to be freed

    Char* data_ = inside_;
    size_type length_ = 0;
    union {
        size_type capacity_;  // of a buffer of its own
        Char inside_[kBlock];
    };
};

/// The string type of the library: names, values and messages, all of it UTF-8.
using astring = BasicString<char>;

/// \cond
template <typename Char>
struct std::hash<BasicString<Char>> {
    std::size_t operator()(const BasicString<Char>& text) const noexcept {
        return std::hash<std::basic_string_view<Char>>()(text.view());
    }
};
/// \endcond
