// SPDX-License-Identifier: MIT
#pragma once

#include "InputFile.h"
#include "InputOptions.h"
#include "Progress.h"
#include "RecodedStream.h"

#include <memory>

namespace Tool {

/// The text of a document: out of its archive, decompressed, and in an encoding that the reader
/// knows well.
struct Source {
    std::unique_ptr<IO::Stream> stream;
    /// What turns it into UTF-8, a part of `stream`; null when it is read as it is. Its declaration
    /// still names the encoding that it had.
    const RecodedStream* recoded = nullptr;
};

/// Opens a document. Documents that declare a code page are recoded even if nobody says so: what
/// the reader makes of some characters of them is no UTF-8.
/// \param progress is told what is read from disk or pipe; null for none
/// \throws Xml::Exception when the file, archive or member cannot be opened
Source OpenSource(const InputName& name, const InputOptions& options, Progress* progress);

}  // namespace Tool
