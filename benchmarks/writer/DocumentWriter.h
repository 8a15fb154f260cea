// SPDX-License-Identifier: MIT
#pragma once

#include "writer/Recording.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace bench {

/// Writes one document to memory, over and over. The memory is kept from time to time, in the way
/// in which the library does that best.
class DocumentWriter {
public:
    virtual ~DocumentWriter() = default;

    /// Writes the document.
    /// \throws std::exception when the library refuses something
    virtual void Write() = 0;

    /// Returns what the last Write() has written.
    virtual std::string_view Output() const = 0;
};

/// The libraries, in the order of WriterLibraries().
enum WriterIndex {
    kEspalierWriter,
    kTinyxml2Printer,
    kPugixmlSave,
    kLibxmlWriter,
    kPlainLoop,
    kRunLoop,
    kWriterCount
};

/// A library to compare.
struct WriterLibrary {
    const char* title;       ///< as in messages
    const char* shortTitle;  ///< as in heads of tables
    /// Makes a writer of a recording, which must outlive it.
    std::unique_ptr<DocumentWriter> (*make)(const Recording& recording);
    std::string (*version)();
};

// One file each.
std::unique_ptr<DocumentWriter> MakeEspalierWriter(const Recording& recording);
std::unique_ptr<DocumentWriter> MakeTinyxml2Printer(const Recording& recording);
std::unique_ptr<DocumentWriter> MakePugixmlSave(const Recording& recording);
std::unique_ptr<DocumentWriter> MakeLibxmlWriter(const Recording& recording);
std::unique_ptr<DocumentWriter> MakePlainLoop(const Recording& recording);
std::unique_ptr<DocumentWriter> MakeRunLoop(const Recording& recording);
std::string Tinyxml2Version();
std::string PugixmlVersion();
std::string LibxmlWriterVersion();

/// Returns all libraries, ours first.
std::span<const WriterLibrary, kWriterCount> WriterLibraries();

/// Writes the recording with every library, reads each output and compares the calls that it stands
/// for with the recording. The outputs of the loops must be ours, byte for byte.
/// \return an empty text when they agree, else which library wrote something else
std::string WriterDisagreement(const Recording& recording);

}  // namespace bench
