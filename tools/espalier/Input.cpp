// SPDX-License-Identifier: MIT
#include "Input.h"

#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>

#include "MemberStream.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace Tool {

namespace {

constexpr int kBlock = 65536;

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

// What Input delivers, but for the mask.
class Input::WindowStream final : public InputStream {
public:
    explicit WindowStream(Input& input) : input_(input) {}

    int Read(unsigned char* buffer, int offset, int count) override {
        return input_.ReadPlain(buffer, offset, count);
    }

private:
    Input& input_;
};

Input::Input(const std::string& name, const InputOptions& options, Progress& progress)
    : name_(ParseInputName(name)),
      displayName_(name == "-" ? "<stdin>" : name),
      options_(options),
      source_(OpenSource(name_, options, &progress)),
      window_(CanOpenAgain(name_) ? nullptr : std::make_unique<Window>()) {}

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
        IsRecoded() ? ReadMasked(buffer, offset, count) : ReadPlain(buffer, offset, count);
    if (read > 0) {
        const std::string_view bytes(reinterpret_cast<const char*>(buffer) + offset,
                                     static_cast<std::size_t>(read));
        if (columns_ != nullptr) columns_->Take(bytes);
        if (observer_) observer_(bytes);
    }
    return read;
}

int Input::ReadMasked(unsigned char* buffer, int offset, int count) {
    if (masked_ == nullptr) {
        masked_ = std::make_unique<PeekedStream>(std::make_unique<WindowStream>(*this));
        mask_ = MaskDeclaredName(*masked_);
    }
    return masked_->Read(buffer, offset, count);
}

int Input::ReadPlain(unsigned char* buffer, int offset, int count) {
    return window_ == nullptr ? ReadBelow(buffer, offset, count)
                              : ReadWindow(buffer, offset, count);
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
        return source_.stream->Read(buffer, offset, count);
    } catch (const LimitReached&) {
        failure_ = ExitCode::Limit;
        throw;
    } catch (...) {
        failure_ = ExitCode::InputOutput;
        throw;
    }
}

std::unique_ptr<SourceText> Input::Reread() {
    if (window_ == nullptr) {
        return std::make_unique<FileText>(OpenSource(name_, options_, nullptr).stream, encoding_,
                                          names_);
    }
    if (window_->head.empty()) window_->head = window_->current.View().substr(0, 4);
    window_->Begin(encoding_, names_);
    return std::make_unique<WindowText>(*window_);
}

std::unique_ptr<IO::Stream> Input::Reopen() {
    std::unique_ptr<IO::Stream> again;
    if (window_ == nullptr) {
        again = OpenSource(name_, options_, nullptr).stream;
    } else {
        if (window_->previous.count > 0) return nullptr;  // the start has been let go
        again = std::make_unique<IO::MemoryStream>();
        again->Write(window_->current.bytes.data(), 0, static_cast<int>(window_->current.count));
        again->Seek(0, IO::SeekOrigin::Begin);
    }
    if (!IsRecoded()) return again;
    auto masked = std::make_unique<PeekedStream>(std::move(again));
    MaskDeclaredName(*masked);
    return masked;
}

void ExpectInputs(const std::vector<std::string>& names, Progress& progress) {
    for (const std::string& text : names) {
        const InputName name = ParseInputName(text);
        if (!CanOpenAgain(name)) {
            progress.ExpectUnknown();
        } else if (!name.member.empty()) {
            try {
                progress.ExpectBytes(MemberStream(name.file, name.member).StatedLength());
            } catch (const Xml::Exception&) {
                continue;  // told when it is opened to be read
            }
        } else {
            std::error_code error;
            const auto size = std::filesystem::file_size(name.file, error);
            if (!error) progress.ExpectBytes(static_cast<std::int64_t>(size));
        }
    }
}

}  // namespace Tool
