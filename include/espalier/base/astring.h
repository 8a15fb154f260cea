// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <cstddef>
#include <functional>  // std::hash
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

/// A read-only view of the 8-bit characters in [begin, end).
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
/// The operations carry the names, the semantics and the errors of std::string, and lengths and
/// positions are counted in bytes. It converts from and to std::string and std::string_view.
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

    static constexpr size_type npos = Standard::npos;

    BasicString() = default;
    BasicString(const Char* text) : text_(text) {}
    BasicString(const Char* text, size_type length) : text_(text, length) {}
    BasicString(size_type count, Char character) : text_(count, character) {}
    BasicString(View text) : text_(text) {}
    BasicString(const Standard& text) : text_(text) {}
    BasicString(Standard&& text) noexcept : text_(std::move(text)) {}
    explicit BasicString(TstrCharacterRange range) : text_(range.begin(), range.end()) {}

    operator View() const noexcept { return text_; }
    explicit operator Standard() const { return text_; }
    /// Returns the text as a view, valid until the string changes.
    View view() const noexcept { return text_; }
    /// Returns a copy of the text as a standard string.
    Standard str() const { return text_; }

    BasicString& operator=(const Char* text) { return assign(View(text)); }
    BasicString& operator=(View text) { return assign(text); }

    BasicString& assign(View text) {
        text_.assign(text);
        return *this;
    }
    BasicString& assign(const Char* text, size_type length) {
        text_.assign(text, length);
        return *this;
    }
    BasicString& assign(TstrCharacterRange range) { return assign(View(range)); }
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
    BasicString& append(TstrCharacterRange range) { return append(View(range)); }
    BasicString& append(size_type count, Char character) {
        text_.append(count, character);
        return *this;
    }
    void push_back(Char character) { text_.push_back(character); }
    BasicString& operator+=(View text) { return append(text); }
    BasicString& operator+=(const Char* text) { return append(View(text)); }
    BasicString& operator+=(Char character) {
        text_.push_back(character);
        return *this;
    }

    BasicString& insert(size_type position, View text) {
        text_.insert(position, text);
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
    int compare(TstrCharacterRange range) const noexcept { return text_.compare(View(range)); }
    int compare(const Char* text) const { return text_.compare(text); }
    BasicString substr(size_type position = 0, size_type count = npos) const {
        return BasicString(View(text_).substr(position, count));
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

    friend bool operator==(const BasicString& a, const BasicString& b) noexcept {
        return a.text_ == b.text_;
    }
    friend bool operator==(const BasicString& a, const Char* b) { return View(a) == b; }
    friend bool operator==(const BasicString& a, View b) noexcept { return View(a) == b; }
    friend bool operator==(const BasicString& a, const Standard& b) noexcept { return a.text_ == b; }
    friend std::strong_ordering operator<=>(const BasicString& a, const BasicString& b) noexcept {
        return a.text_.compare(b.text_) <=> 0;
    }
    friend std::strong_ordering operator<=>(const BasicString& a, const Char* b) {
        return a.text_.compare(b) <=> 0;
    }
    friend std::strong_ordering operator<=>(const BasicString& a, View b) noexcept {
        return a.text_.compare(b) <=> 0;
    }

    friend BasicString operator+(BasicString a, const BasicString& b) {
        a.append(View(b));
        return a;
    }
    friend BasicString operator+(BasicString a, View b) {
        a.append(b);
        return a;
    }
    friend BasicString operator+(BasicString a, const Char* b) {
        a.append(View(b));
        return a;
    }
    friend BasicString operator+(BasicString a, Char b) {
        a.push_back(b);
        return a;
    }
    friend BasicString operator+(View a, const BasicString& b) { return BasicString(a) + View(b); }
    friend BasicString operator+(const Char* a, const BasicString& b) {
        return BasicString(a) + View(b);
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
