// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "Context.h"
#include "Diagnostic.h"
#include "EntityTrace.h"
#include "Excerpt.h"
#include "ExitCode.h"
#include "Input.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tool {

/// How many root elements a document may have.
enum class Roots {
    One,  ///< XML 1.0 [1]: a second one is an error
    Any   ///< as many as there are, as the reader has it
};

/// A document read node by node, which knows enough about where it has been to explain an error.
class Document {
public:
    /// Opens the document.
    /// \param name a file name, or "-" for standard input
    /// \throws Xml::Exception when it cannot be opened
    Document(const std::string& name, Context& context, Roots roots);

    /// Returns the name for messages.
    const std::string& DisplayName() const { return input_.DisplayName(); }

    /// Returns the reader: for settings before the first Next(), for the node after each.
    Xml::XmlTextReader& Reader() { return reader_; }

    /// Tells whether the document has been turned into UTF-8, whether that has made a difference so
    /// far, and whether its declaration still names the encoding that it was in.
    bool IsChangedByRecoding() const { return input_.IsChangedByRecoding(); }
    bool DeclaresFormerEncoding() const { return !input_.Mask().name.empty(); }

    /// Returns the value of the current node as the document has it. The reader's own is another
    /// one in the declaration of a document that has been recoded.
    std::string Value() const;

    /// Says that the entities that the document declares are to be expanded. References are let
    /// pass in a document that may have declarations where nobody reads them: in a file that its
    /// document type names, or behind a reference to a parameter entity. To be called before the
    /// first Next().
    void ExpandDeclaredEntities();

    /// Says who is shown all bytes of the document, in order, as the reader takes them. To be
    /// called before the first Next().
    void Observe(std::function<void(std::string_view)> observer) {
        input_.Observe(std::move(observer));
    }

    /// Says that ColumnOf() will be asked. To be called before the first Next(), with namespaces
    /// switched on or off already.
    void FollowColumns() { input_.FollowColumns(Names()); }

    /// Returns the column of a place that the reader tells as people count it, who do not leave
    /// out colons. Inside of the text of an entity, places are those that follow its reference.
    long ColumnOf(Place place) { return input_.ColumnOf(place); }

    /// Moves to the next node.
    /// \return false at the end
    /// \throws Xml::Exception for an error in the document (see Explain())
    bool Next();

    /// Writes about an error that Next() has thrown: where it is, what it is, the line, and where
    /// it helps the other end. Ends the reading.
    ExitCode Explain(const Xml::Exception& error);

    /// Writes about something in the document that cannot be written to where it should go: where
    /// it is, what it is, and the line. Ends the reading.
    /// \param place with the column as `count` says
    ExitCode ExplainRefusal(Place place, ColumnCount count, std::string_view text);

private:
    bool IsJudgedByStandard() const;
    MarkupTracker::Names Names() const;
    void NoteEncoding();
    void Follow();
    void FollowElement();
    void FollowDocumentType();
    // What is known about where an error is.
    struct Trace {
        std::optional<TracedReference> reference;  // the one that it comes from, if any
        bool isUnsure = false;                     // nobody can tell whether there is one
    };

    Trace TraceError(const Xml::Exception& error);
    void ExplainAt(Place place, std::string_view text, const Excerpt& excerpt);
    Excerpt Find(Place place, ColumnCount count);
    void ExplainOtherEnd(const Xml::Exception& error, const Excerpt& excerpt);
    void Note(const Excerpt& excerpt, Place place, std::string_view text);

    Context& context_;
    Input input_;
    Xml::XmlTextReader reader_;
    Roots roots_;
    bool started_ = false;     // a node has been read, so the encoding is known
    std::vector<Place> open_;  // where the open elements start, columns as the reader counts
    Place root_;               // where the first root element starts, counted likewise
    bool rootSeen_ = false;
    bool expandsDeclared_ = false;   // references are let pass when others may be declared
    bool isStandalone_ = false;      // it says that there are no others
    bool declaresEntities_ = false;  // it may, in its internal subset
};

/// Opens the document `name`, hands it to `work` before its first node, and writes about what goes
/// wrong.
/// \param work called with the Document
template <typename Work>
ExitCode WithDocument(const std::string& name, Context& context, Roots roots, Work work) {
    std::unique_ptr<Document> document;
    try {
        document = std::make_unique<Document>(name, context, roots);
    } catch (const Xml::Exception& error) {
        return ExplainOpening(name, error, context);
    }
    try {
        work(*document);
    } catch (const Xml::Exception& error) {
        context.out.Flush();  // on a terminal the error comes after the nodes before it
        return document->Explain(error);
    }
    return ExitCode::Yes;
}

}  // namespace Tool
