// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>  // std::hash
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

/// A read-only view of the 8-bit characters in [begin, end), which it does not own.
class TstrCharacterRange {
public:
    constexpr TstrCharacterRange() = default;
    constexpr TstrCharacterRange(const char* begin, const char* end) : begin_(begin), end_(end) {}

    constexpr const char* begin() const { return begin_; }
    constexpr const char* end() const { return end_; }
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
    using value_type = Char;
    using size_type = std::size_t;
    using iterator = Char*;
    using const_iterator = const Char*;
    using View = std::basic_string_view<Char>;
    using Standard = std::basic_string<Char>;

    /// "Not found", and "to the end" where a count is wanted.
    static constexpr size_type npos = Standard::npos;

    BasicString() = default;
    BasicString(const Char* text) : text_(text) {}
    BasicString(std::nullptr_t) = delete;
    BasicString(const Char* text, size_type length) : text_(text, length) {}
    BasicString(size_type count, Char character) : text_(count, character) {}
    BasicString(View text) : text_(text) {}
    BasicString(const Standard& text) : text_(text) {}
    BasicString(Standard&& text) noexcept : text_(std::move(text)) {}
    explicit BasicString(TstrCharacterRange range) : text_(View(range)) {}

    /// Gives the text as a view, valid until the string changes.
    operator View() const noexcept { return text_; }
    /// Gives a copy of the text as a standard string.
    operator Standard() const { return text_; }

    /// Returns the text as a view, valid until the string changes.
    View view() const noexcept { return text_; }
    /// Returns the text as a standard string, valid as long as this one.
    const Standard& str() const noexcept { return text_; }

    BasicString& operator=(const Char* text) { return assign(text); }
    BasicString& operator=(View text) { return assign(text); }
    BasicString& operator=(const Standard& text) { return assign(text); }
    BasicString& operator=(Standard&& text) noexcept {
        text_ = std::move(text);
        return *this;
    }

    BasicString& assign(View text) {
        text_.assign(text);
        return *this;
    }
    BasicString& assign(const Char* text, size_type length) {
        text_.assign(text, length);
        return *this;
    }
    BasicString& assign(size_type count, Char character) {
        text_.assign(count, character);
        return *this;
    }

    BasicString& append(View text) {
        text_.append(text);
        return *this;
    }
    BasicString& append(const Char* text, size_type length) {
        text_.append(text, length);
        return *this;
    }
    BasicString& append(size_type count, Char character) {
        text_.append(count, character);
        return *this;
    }
    void push_back(Char character) { text_.push_back(character); }
    BasicString& operator+=(View text) { return append(text); }
    BasicString& operator+=(Char character) {
        text_.push_back(character);
        return *this;
    }

    BasicString& insert(size_type position, View text) {
        text_.insert(position, text);
        return *this;
    }
    BasicString& insert(size_type position, size_type count, Char character) {
        text_.insert(position, count, character);
        return *this;
    }
    BasicString& erase(size_type position = 0, size_type count = npos) {
        text_.erase(position, count);
        return *this;
    }
    BasicString& replace(size_type position, size_type count, View text) {
        text_.replace(position, count, text);
        return *this;
    }

    size_type find(Char character, size_type position = 0) const noexcept {
        return text_.find(character, position);
    }
    size_type find(View text, size_type position = 0) const noexcept {
        return text_.find(text, position);
    }
    int compare(View text) const noexcept { return text_.compare(text); }
    BasicString substr(size_type position = 0, size_type count = npos) const {
        return BasicString(text_.substr(position, count));
    }

    void reserve(size_type capacity) { text_.reserve(capacity); }
    /// Changes the length; new characters are `fill`.
    void resize(size_type length, Char fill = Char()) { text_.resize(length, fill); }
    void clear() noexcept { text_.clear(); }
    void swap(BasicString& other) noexcept { text_.swap(other.text_); }

    const Char* c_str() const noexcept { return text_.c_str(); }
    const Char* data() const noexcept { return text_.data(); }
    size_type length() const noexcept { return text_.size(); }
    size_type size() const noexcept { return text_.size(); }
    size_type capacity() const noexcept { return text_.capacity(); }
    bool empty() const noexcept { return text_.empty(); }

    iterator begin() noexcept { return text_.data(); }
    iterator end() noexcept { return text_.data() + text_.size(); }
    const_iterator begin() const noexcept { return text_.data(); }
    const_iterator end() const noexcept { return text_.data() + text_.size(); }

    Char& operator[](size_type position) { return text_[position]; }
    const Char& operator[](size_type position) const { return text_[position]; }
    Char& at(size_type position) { return text_.at(position); }
    const Char& at(size_type position) const { return text_.at(position); }
    Char& front() { return text_.front(); }
    Char& back() { return text_.back(); }
    const Char& front() const { return text_.front(); }
    const Char& back() const { return text_.back(); }

    /// Returns a writable buffer of at least `capacity` characters that begins with the text.
    /// Write into it, then call release_buffer(); no other member may be called in between.
    Char* get_buffer(size_type capacity) {
        if (capacity > text_.size()) text_.resize(capacity);
        return text_.data();
    }
    /// Ends direct access: the text is the first `length` characters of the buffer.
    void release_buffer(size_type length) { text_.resize(length); }

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
        return out << text.text_;
    }

private:
    Standard text_;
};

/// The string type of the library: names, values and messages, all of it UTF-8.
using astring = BasicString<char>;

template <typename Char>
struct std::hash<BasicString<Char>> {
    std::size_t operator()(const BasicString<Char>& text) const noexcept {
        return std::hash<std::basic_string_view<Char>>()(text.view());
    }
};
