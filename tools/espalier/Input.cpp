// SPDX-License-Identifier: MIT
#include "Input.h"

#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/MemoryStream.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace Tool {

namespace {

constexpr int kBlock = 65536;
constexpr unsigned kReadOnly = 1;
constexpr unsigned kShareAll = 3;

// FileStream reads the files it opens by name ahead; a descriptor it takes as it is.
std::unique_ptr<IO::Stream> OpenStream(const std::string& name) {
    if (name == "-") return std::make_unique<IO::FileStream>(STDIN_FILENO, kReadOnly, false);
    std::error_code error;
    if (std::filesystem::is_directory(name, error)) {
        Xml::Exception::ThrowException("Is a directory");
    }
    return std::make_unique<IO::FileStream>(name.c_str(), IO::FileMode::Open, kReadOnly, kShareAll);
}

bool CanOpenAgain(const std::string& name) {
    std::error_code error;
    return name != "-" && std::filesystem::is_regular_file(name, error);
}

struct Block {
    std::array<unsigned char, kBlock> bytes;
    std::size_t count = 0;

    std::string_view View() const { return {reinterpret_cast<const char*>(bytes.data()), count}; }
};

}  // namespace

// What is kept of a pipe: the block that is being read, the one before it, and how the text
// stood where that one starts.
struct Input::Window {
    Block current;
    Block previous;
    std::size_t position = 0;                // bytes of `current` that have been handed on
    std::string head;                        // first bytes of the document
    std::unique_ptr<SourceDecoder> decoder;  // stands at the start of `previous`
    MarkupTracker tracker;                   // stands there, too

    // Follows the text of `previous` and lets the next block take the place of `current`.
    void Rotate(std::string_view encoding, MarkupTracker::Names names) {
        if (head.empty()) head = current.View().substr(0, 4);
        if (previous.count > 0) {
            Begin(encoding, names);
            tracker.Advance(decoder->Decode(previous.View()));
        }
        previous.count = current.count;
        std::copy_n(current.bytes.begin(), current.count, previous.bytes.begin());
        current.count = 0;
        position = 0;
    }

    // Starts to decode, which has to wait until the encoding is known.
    void Begin(std::string_view encoding, MarkupTracker::Names names) {
        if (decoder != nullptr) return;
        decoder = std::make_unique<SourceDecoder>(DetectForm(head, encoding));
        tracker = MarkupTracker(names);
    }
};

class Input::FileText final : public SourceText {
public:
    FileText(std::unique_ptr<IO::Stream> stream, std::string encoding, MarkupTracker::Names names)
        : stream_(std::move(stream)), encoding_(std::move(encoding)), start_(names) {}

    const MarkupTracker& Start() const override { return start_; }

    std::string_view Next() override {
        for (;;) {
            block_.count = static_cast<std::size_t>(
                std::max(0, stream_->Read(block_.bytes.data(), 0, kBlock)));
            if (block_.count == 0) return {};
            if (decoder_ == nullptr) {
                decoder_ = std::make_unique<SourceDecoder>(DetectForm(block_.View(), encoding_));
            }
            const std::string_view text = decoder_->Decode(block_.View());
            if (!text.empty()) return text;
        }
    }

private:
    std::unique_ptr<IO::Stream> stream_;
    std::string encoding_;
    MarkupTracker start_;
    Block block_;
    std::unique_ptr<SourceDecoder> decoder_;
};

class Input::WindowText final : public SourceText {
public:
    explicit WindowText(const Window& window)
        : window_(window), decoder_(*window.decoder), blocks_{&window.previous, &window.current} {}

    const MarkupTracker& Start() const override { return window_.tracker; }

    std::string_view Next() override {
        while (next_ < blocks_.size()) {
            const std::string_view text = decoder_.Decode(blocks_[next_++]->View());
            if (!text.empty()) return text;
        }
        return {};
    }

private:
    const Window& window_;
    SourceDecoder decoder_;
    std::array<const Block*, 2> blocks_;
    std::size_t next_ = 0;
};

Input::Input(const std::string& name, Progress& progress)
    : name_(name),
      displayName_(name == "-" ? "<stdin>" : name),
      progress_(progress),
      stream_(OpenStream(name)),
      window_(CanOpenAgain(name) ? nullptr : std::make_unique<Window>()) {}

Input::~Input() = default;

void Input::SetEncoding(std::string_view encoding, MarkupTracker::Names names) {
    encoding_ = encoding;
    names_ = names;
    if (columns_ != nullptr) columns_->SetEncoding(encoding);
}

void Input::FollowColumns(MarkupTracker::Names names) {
    columns_ = std::make_unique<ReaderColumns>(names);
}

int Input::Read(unsigned char* buffer, int offset, int count) {
    const int read =
        window_ == nullptr ? ReadBelow(buffer, offset, count) : ReadWindow(buffer, offset, count);
    if (read > 0) {
        const std::string_view bytes(reinterpret_cast<const char*>(buffer) + offset,
                                     static_cast<std::size_t>(read));
        if (columns_ != nullptr) columns_->Take(bytes);
        if (observer_) observer_(bytes);
    }
    return read;
}

int Input::ReadWindow(unsigned char* buffer, int offset, int count) {
    Window& window = *window_;
    if (window.position == window.current.count) {
        if (window.current.count == kBlock) window.Rotate(encoding_, names_);
        const auto used = static_cast<int>(window.current.count);
        const int read = ReadBelow(window.current.bytes.data(), used, kBlock - used);
        window.current.count += static_cast<std::size_t>(std::max(0, read));
    }
    const std::size_t available = window.current.count - window.position;
    const std::size_t given = std::min(available, static_cast<std::size_t>(std::max(0, count)));
    std::copy_n(window.current.bytes.data() + window.position, given, buffer + offset);
    window.position += given;
    return static_cast<int>(given);
}

int Input::ReadBelow(unsigned char* buffer, int offset, int count) {
    try {
        const int result = stream_->Read(buffer, offset, count);
        progress_.Advance(result);
        return result;
    } catch (...) {
        failed_ = true;
        throw;
    }
}

std::unique_ptr<SourceText> Input::Reread() {
    if (window_ == nullptr) {
        return std::make_unique<FileText>(OpenStream(name_), encoding_, names_);
    }
    if (window_->head.empty()) window_->head = window_->current.View().substr(0, 4);
    window_->Begin(encoding_, names_);
    return std::make_unique<WindowText>(*window_);
}

std::unique_ptr<IO::Stream> Input::Reopen() {
    if (window_ == nullptr) return OpenStream(name_);
    if (window_->previous.count > 0) return nullptr;  // the start has been let go
    auto stream = std::make_unique<IO::MemoryStream>();
    stream->Write(window_->current.bytes.data(), 0, static_cast<int>(window_->current.count));
    stream->SetPosition(0);
    return stream;
}

void ExpectInputs(const std::vector<std::string>& names, Progress& progress) {
    for (const std::string& name : names) {
        if (!CanOpenAgain(name)) {
            progress.ExpectUnknown();
            continue;
        }
        std::error_code error;
        const auto size = std::filesystem::file_size(name, error);
        if (!error) progress.ExpectBytes(static_cast<long>(size));
    }
}

}  // namespace Tool
