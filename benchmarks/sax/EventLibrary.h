// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "sax/EventSinks.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace bench {

/// A parser that is kept from document to document, in the way in which its library is reused best.
template <typename Sink>
class EventVisitor {
public:
    virtual ~EventVisitor() = default;

    /// Tells `sink` of every element, attribute, text and processing instruction of `document`.
    /// \throws std::exception when the document is refused
    virtual void Visit(std::string_view document, Sink& sink) = 0;
};

// One file each, for Touch and for Digest.
template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeEspalierSax();
template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeEspalierPull();
template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeExpatEvents();
template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeLibxmlEvents();
template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeQtEvents();
template <typename Sink>
std::unique_ptr<EventVisitor<Sink>> MakeXercesEvents();
std::string ExpatEventsVersion();
std::string LibxmlEventsVersion();
std::string QtEventsVersion();
std::string XercesEventsVersion();

/// The libraries, in the order of EventLibraries().
enum EventLibraryIndex {
    kEspalierSax,
    kEspalierPull,
    kExpatEvents,
    kLibxmlEvents,
#ifdef ESPALIER_HAS_QT
    kQtEvents,
#endif
#ifdef ESPALIER_HAS_XERCES
    kXercesEvents,
#endif
    kEventLibraryCount
};

/// Says yes.
constexpr bool TakesAllEvents(const CorpusEntry& /*entry*/) { return true; }

/// A library to compare.
struct EventLibrary {
    const char* title;
    const char* shortTitle;  ///< as in tables
    std::unique_ptr<EventVisitor<Touch>> (*makeTouching)();
    std::unique_ptr<EventVisitor<Digest>> (*makeDigesting)();
    std::string (*version)();
    bool (*takes)(const CorpusEntry& entry) = TakesAllEvents;  ///< whether a file is measured
    bool countsUnits = false;  ///< when it is measured, text is counted in units of UTF-16
};

/// Returns all libraries, our events first.
std::span<const EventLibrary, kEventLibraryCount> EventLibraries();

/// Visits all documents of `file` once.
template <typename Sink>
Sink VisitEvents(EventVisitor<Sink>& visitor, const CorpusFile& file) {
    Sink sink;
    for (const std::string& document : file.documents) {
        visitor.Visit(document, sink);
    }
    return sink;
}

/// Visits `file` with every library that takes it and compares the events and all their bytes.
/// \return an empty text when they agree, else which library found something else, or refused the
///     file
std::string EventDisagreement(const CorpusFile& file);

}  // namespace bench
