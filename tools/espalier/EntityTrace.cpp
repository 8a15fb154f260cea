// SPDX-License-Identifier: MIT
// A reader that expands entities by itself does not say where it begins to; one that is told to
// expand each does. So the document is read in that way here, its attributes too.
#include "EntityTrace.h"

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include <cstddef>
#include <string_view>

namespace Tool {

namespace {

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

std::optional<TracedReference> TraceErrorToReference(const Xml::Exception& error,
                                                     IO::Stream& document, bool namespaces) {
    Tracer tracer(document, namespaces);
    try {
        tracer.Read();
    } catch (const Xml::Exception& again) {
        if (std::string_view(again.What()) == error.What()) return tracer.Reference();
    }
    return std::nullopt;
}

}  // namespace Tool
