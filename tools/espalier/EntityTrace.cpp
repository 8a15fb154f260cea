// SPDX-License-Identifier: MIT
// A reader that expands entities by itself does not say where it begins to; one that is told to
// expand each does. So the document is read in that way here, its attributes too.
//
// By the standard, the text of an entity is judged before a reference to it is told. So the
// document is read a third time, by a reader that does not judge it: the reference that comes next
// behind those that were told is the one.
#include "EntityTrace.h"

#include <espalier/io/Exception.h>

#include "Utf8.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Tool {

namespace {

constexpr std::string_view kCyclicEntity = "Cyclic entity reference";

class Tracer {
public:
    Tracer(IO::Stream& document, bool namespaces) {
        reader_.SetNamespaces(namespaces);
        reader_.SetStream(&document, false);
        reader_.SetEntityHandling(Xml::XmlEntityHandling::ExpandCharEntities);
    }

    // Reads up to the error.
    void Read() {
        while (reader_.Read()) {
            switch (reader_.NodeType()) {
            case Xml::XmlNodeType::EntityReference: EnterEntity(); break;
            case Xml::XmlNodeType::EndEntity: --depth_; break;
            case Xml::XmlNodeType::Element: ReadAttributes(); break;
            default: break;
            }
        }
    }

    // Returns the outermost reference that was being expanded.
    std::optional<TracedReference> Reference() const {
        if (depth_ == 0) return std::nullopt;
        return outermost_;
    }

private:
    void EnterEntity() {
        const TracedReference reference{std::string(reader_.Name().view()),
                                        {reader_.LineNumber(), reader_.LinePosition()}};
        reader_.ResolveEntity();
        if (depth_++ == 0) outermost_ = reference;
    }

    // The texts of entities in values do not count: an error there has the place of the value.
    void ReadAttributes() {
        for (bool more = reader_.MoveToFirstAttribute(); more;
             more = reader_.MoveToNextAttribute()) {
            if (reader_.Value().find('&') == astring::npos) continue;
            while (reader_.ReadAttributeValue()) {
                if (reader_.NodeType() == Xml::XmlNodeType::EntityReference) {
                    reader_.ResolveEntity();
                }
            }
        }
        reader_.MoveToElement();
    }

    Xml::XmlTextReader reader_;
    std::size_t depth_ = 0;
    TracedReference outermost_;
};

}  // namespace

namespace {

// How far a reader has come, without resolving references.
class NodesTold {
public:
    // Takes note of a node. Returns whether it is a reference.
    bool Take(const Xml::XmlTextReader& reader) {
        const bool isReference = reader.NodeType() == Xml::XmlNodeType::EntityReference;
        elements_ += reader.NodeType() == Xml::XmlNodeType::Element;
        references_ += isReference;
        return isReference;
    }

    long Elements() const { return elements_; }
    long References() const { return references_; }

private:
    long elements_ = 0;
    long references_ = 0;
};

bool IsBefore(Place a, Place b) { return a.line != b.line ? a.line < b.line : a.column < b.column; }

// Returns the place behind a reference, which begins the text of the entity.
Place Behind(const TracedReference& reference) {
    const auto characters =
        std::ranges::count_if(reference.name, [](char byte) { return !IsContinuation(byte); });
    return {reference.place.line, reference.place.column + 2 + static_cast<long>(characters)};
}

Place PlaceOf(const Xml::Exception& error) { return {error.LineNumber(), error.LinePos()}; }

// Returns the reference that follows as many nodes as a reader has told, if that comes before
// further elements.
// \throws Xml::Exception when nobody can tell
std::optional<TracedReference> NextReference(const NodesTold& told, const Xml::Exception& error,
                                             IO::Stream& document,
                                             const Xml::XmlTextReader& settings) {
    Xml::XmlTextReader reader;
    reader.SetNamespaces(settings.Namespaces());
    reader.SetStream(&document, false);
    NodesTold progress;
    try {
        while (reader.Read()) {
            const bool isReference = progress.Take(reader);
            if (progress.Elements() > told.Elements()) return std::nullopt;
            if (!isReference || progress.References() <= told.References()) continue;
            return TracedReference{std::string(reader.Name().view()),
                                   {reader.LineNumber(), reader.LinePosition()}};
        }
    } catch (const Xml::Exception& own) {
        if (IsBefore(PlaceOf(own), PlaceOf(error))) throw;
    }
    return std::nullopt;
}

// Does the same as TraceErrorToReference() for a reader that judges by the standard.
std::optional<TracedReference> TraceByStandard(const Xml::Exception& error,
                                               const ReopenedDocument& reopen,
                                               const Xml::XmlTextReader& settings) {
    NodesTold told;
    const std::unique_ptr<IO::Stream> document = reopen();
    Xml::XmlTextReader reader;
    reader.SetNamespaces(settings.Namespaces());
    reader.SetConformance(Xml::XmlConformance::Standard);
    reader.SetStream(document.get(), false);
    try {
        while (reader.Read())
            told.Take(reader);
        return std::nullopt;
    } catch (const Xml::Exception& again) {
        if (std::string_view(again.What()) != error.What()) return std::nullopt;
    }
    const std::unique_ptr<IO::Stream> other = reopen();
    std::optional<TracedReference> next = NextReference(told, error, *other, settings);
    if (!next) return std::nullopt;
    if (error.What() == kCyclicEntity) return next;
    // What is wrong with the reference itself is told with the name of the entity.
    const bool isAboutIt = next->name == error.Argument();
    const bool isInText = !isAboutIt && !IsBefore(PlaceOf(error), Behind(*next));
    return isInText ? next : std::nullopt;
}

}  // namespace

std::optional<TracedReference> TraceErrorToReference(const Xml::Exception& error,
                                                     const ReopenedDocument& reopen,
                                                     const Xml::XmlTextReader& reader) {
    if (reader.Conformance() == Xml::XmlConformance::Standard) {
        return TraceByStandard(error, reopen, reader);
    }
    const std::unique_ptr<IO::Stream> document = reopen();
    Tracer tracer(*document, reader.Namespaces());
    try {
        tracer.Read();
    } catch (const Xml::Exception& again) {
        if (std::string_view(again.What()) == error.What()) return tracer.Reference();
    }
    return std::nullopt;
}

}  // namespace Tool
