// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include "EncodingMask.h"
#include "ExitCode.h"
#include "MarkupTracker.h"
#include "PeekedStream.h"
#include "Progress.h"
#include "ReaderColumns.h"
#include "Source.h"
#include "SourceText.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tool {

/// A document to be read: a file, a member of an archive, or standard input for the name "-".
///
/// It delivers the text of the document (see Source). Of one that has been recoded, the name of the
/// encoding is masked in the declaration, so that the reader does not follow it.
///
/// It counts what is read for the progress line and can show the text around an error again. A
/// file is opened once more for that; of a pipe the last 64 to 128 KiB are kept, and older text
/// is only followed by a tracker, so that memory stays the same whatever comes in.
class Input final : public IO::Stream {
public:
    /// Opens the document.
    /// \param progress is told what is read; not owned, must live longer
    /// \throws Xml::Exception as OpenSource() does
    Input(const std::string& name, const InputOptions& options, Progress& progress);
    ~Input() override;

    /// Returns the name for messages: the file's, or "<stdin>".
    const std::string& DisplayName() const { return displayName_; }

    /// Tells whether reading failed below the document: what is thrown then speaks of the file,
    /// not of its content.
    bool Failed() const { return failure_ != ExitCode::Yes; }

    /// Returns what has gone wrong then: ExitCode::InputOutput or ExitCode::Limit.
    ExitCode Failure() const { return failure_; }

    /// Tells whether the document has been turned into another encoding, and whether that has made
    /// a difference so far.
    bool IsRecoded() const { return source_.recoded != nullptr; }
    bool IsChangedByRecoding() const { return IsRecoded() && source_.recoded->HasChanges(); }

    /// Returns what hides the encoding that the document has been in; without a name when nothing
    /// does.
    const EncodingMask& Mask() const { return mask_; }

    /// Says which encoding the reader has found and what it takes names for. To be called when
    /// the start of the document has been read.
    void SetEncoding(std::string_view encoding, MarkupTracker::Names names);

    /// Says who is shown all bytes, in order, as they are handed on. To be called before anything
    /// is read.
    void Observe(std::function<void(std::string_view)> observer) {
        observer_ = std::move(observer);
    }

    /// Says that ColumnOf() will be asked. To be called before anything is read.
    void FollowColumns(MarkupTracker::Names names);

    /// Returns the column of a place that the reader tells as people count it (see ReaderColumns).
    long ColumnOf(Place place) { return columns_->ColumnOf(place); }

    /// Returns the text of the document from its start on, or what is left of it; null when it
    /// cannot be had again. Ends the reading.
    std::unique_ptr<SourceText> Reread();

    /// Returns the bytes of the document from its start on; null when they cannot be had again.
    /// Ends the reading.
    std::unique_ptr<IO::Stream> Reopen();

    bool CanRead() const override { return true; }
    void Close() override {}
    int Read(unsigned char* buffer, int offset, int count) override;

private:
    class FileText;
    class WindowStream;
    class WindowText;
    struct Window;

    int ReadMasked(unsigned char* buffer, int offset, int count);
    int ReadPlain(unsigned char* buffer, int offset, int count);
    int ReadWindow(unsigned char* buffer, int offset, int count);
    int ReadBelow(unsigned char* buffer, int offset, int count);

    InputName name_;
    std::string displayName_;
    InputOptions options_;
    Source source_;
    std::unique_ptr<Window> window_;          // null for a file that can be opened again
    std::unique_ptr<ReaderColumns> columns_;  // null unless asked for
    std::function<void(std::string_view)> observer_;
    std::string encoding_;
    MarkupTracker::Names names_ = MarkupTracker::Names::Prefixed;
    std::unique_ptr<PeekedStream> masked_;  // null until something is read that has been recoded
    EncodingMask mask_;
    ExitCode failure_ = ExitCode::Yes;
};

/// Tells the progress line how many bytes the documents take, where that can be known.
void ExpectInputs(const std::vector<std::string>& names, Progress& progress);

}  // namespace Tool
