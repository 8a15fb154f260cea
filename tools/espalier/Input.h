// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include "MarkupTracker.h"
#include "Progress.h"
#include "ReaderColumns.h"
#include "SourceText.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tool {

/// A document to be read: a file, or standard input for the name "-".
///
/// It counts what is read for the progress line and can show the text around an error again. A
/// file is opened once more for that; of a pipe the last 64 to 128 KiB are kept, and older text
/// is only followed by a tracker, so that memory stays the same whatever comes in.
class Input final : public IO::Stream {
public:
    /// Opens the document.
    /// \param progress is told what is read; not owned, must live longer
    /// \throws Xml::Exception as IO::FileStream does, or "Is a directory"
    Input(const std::string& name, Progress& progress);
    ~Input() override;

    /// Returns the name for messages: the file's, or "<stdin>".
    const std::string& DisplayName() const { return displayName_; }

    /// Tells whether reading failed below the document: what is thrown then speaks of the file,
    /// not of its content.
    bool Failed() const { return failed_; }

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
    class WindowText;
    struct Window;

    int ReadWindow(unsigned char* buffer, int offset, int count);
    int ReadBelow(unsigned char* buffer, int offset, int count);

    std::string name_;
    std::string displayName_;
    Progress& progress_;
    std::unique_ptr<IO::Stream> stream_;
    std::unique_ptr<Window> window_;          // null for a file that can be opened again
    std::unique_ptr<ReaderColumns> columns_;  // null unless asked for
    std::function<void(std::string_view)> observer_;
    std::string encoding_;
    MarkupTracker::Names names_ = MarkupTracker::Names::Prefixed;
    bool failed_ = false;
};

/// Tells the progress line how many bytes the documents take, where that can be known.
void ExpectInputs(const std::vector<std::string>& names, Progress& progress);

}  // namespace Tool
