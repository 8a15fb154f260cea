// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/Formatting.h>
#include <espalier/xml/NewLineHandling.h>
#include <espalier/xml/TextArgument.h>
#include <espalier/xml/WriteState.h>
#include <espalier/xml/XmlNsSupport.h>
#include <espalier/xml/XmlSpace.h>

#include "xml/WriterFile.h"
#include "xml/WriterOutput.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <new>  // std::bad_alloc
#include <span>
#include <string_view>
#include <vector>

namespace Xml {

class Encoding;
class XmlTextReader;

namespace detail {

/// What a copy of a writer takes over.
struct WriterSettings {
    Formatting formatting = Formatting::None;
    int indentation = 2;
    char indentChar = ' ';
    bool namespaces = true;
    char quoteChar = '"';
    astring newLineChars = "\r\n";
    bool closeOutput = false;
    NewLineHandling newLineHandling = NewLineHandling::Replace;
    bool checkCharacters = true;
};

/// An element that is open.
struct WriterFrame {
    /// Whether the default namespace must still be declared on the element.
    enum class Declaration : unsigned char { None = 0, Pending = 2, Written = 3 };

    std::size_t nameBegin = 0;           ///< of its name in the names of all open elements
    std::size_t textsBefore = 0;         ///< how many texts the outer elements keep
    const astring* defaultNs = nullptr;  ///< the default namespace in force
    const astring* language = nullptr;   ///< the xml:lang in force
    XmlSpace space;                      ///< the xml:space in force
    Declaration declaration = Declaration::None;
    bool isMixed = false;  ///< it has text, so white space in it would change its content
};

/// What an attribute means to the writer.
enum class AttributeRole : unsigned char {
    Ordinary,
    DefaultNamespace,  ///< xmlns
    Namespace,         ///< xmlns:...
    Language,          ///< xml:lang
    Space              ///< xml:space
};

/// The namespaces in scope.
class WriterNamespaces : public sax::XmlNsSupport {
public:
    WriterNamespaces() {
        if (DeclarePrefix("xmlns", "http://www.w3.org/2000/xmlns/") == nullptr) {
            throw std::bad_alloc();
        }
    }
};

/// The writer behind XmlTextWriter: its state, its checks and its output.
///
/// Each operation checks all that can be wrong before it writes anything, so an error leaves the
/// writer as it was.
class WriterCore {
public:
    WriterSettings settings;

    void Open(IO::Stream* stream, const Encoding* encoding);
    void OpenFile(const astring& name, const Encoding* encoding);

    WriteState::WRITE_STATE State() const {
        return output_.HasFailed() ? WriteState::Closed : state_;
    }
    XmlSpace Space() const;
    const astring& Language() const;
    const astring& PrefixOf(std::string_view ns) const { return namespaces_.GetPrefix(ns); }

    void Flush();
    void Close();
    void StartDocument(const char* standalone);
    void EndDocument();
    void DocType(std::string_view name, std::string_view publicId, std::string_view systemId,
                 std::string_view subset);
    void StartElement(std::string_view prefix, std::string_view localName, std::string_view ns);
    void EndElement();
    void FullEndElement();
    void ElementString(std::string_view prefix, std::string_view localName, std::string_view ns,
                       std::string_view text);
    void StartAttribute(std::string_view prefix, std::string_view localName, TextArgument ns);
    void EndAttribute();
    void AttributeString(std::string_view prefix, std::string_view localName, TextArgument ns,
                         std::string_view value);
    void String(std::string_view text);
    void Whitespace(std::string_view text);
    void CData(std::string_view text);
    void Comment(std::string_view text);
    void Instruction(std::string_view name, std::string_view text);
    void EntityRef(std::string_view name);
    void Name(std::string_view name);
    void NmToken(std::string_view token);
    void Raw(std::string_view text);
    void Base64(std::span<const unsigned char> bytes);
    void BinHex(std::span<const unsigned char> bytes);

private:
    /// How a name is written.
    struct QualifiedName {
        std::string_view prefix;
        std::string_view local;
    };
    struct ElementPlan {
        std::string_view prefix;
        bool binds = false;     ///< the prefix is declared on the element
        bool defaults = false;  ///< the namespace becomes the default
    };
    struct AttributePlan {
        std::string_view prefix;
        AttributeRole role = AttributeRole::Ordinary;
        bool binds = false;      ///< the prefix is declared on the element
        bool generates = false;  ///< a new prefix is declared on the element
    };

    // WriterCore.cpp: checks, elements, markup.
    [[noreturn]] static void Throw(const char* message);

    // Makes a change for which memory may be missing. It cannot be taken back when half of it is
    // made, so the writer is closed then.
    template <typename Change>
    void Make(const Change& change) {
        try {
            change();
        } catch (...) {
            state_ = WriteState::Closed;
            throw;
        }
    }
    void RequireOpen() const;
    void RequireText() const;
    void RequireTextOrEnd() const;
    bool CheckText(std::string_view text) const;
    bool IsInElement() const;
    bool IsBehindRoot() const;
    bool Indents() const;
    void NewLine(std::size_t depth);
    void CloseTag() {
        if (tagOpen_) FinishOpenTag();
    }
    void FinishOpenTag();
    void FinishTag(bool isEmpty);
    bool NeedsDeclarations() const {
        return Top().declaration == WriterFrame::Declaration::Pending ||
               namespaces_.FirstDeclaredNs() != nullptr;
    }
    void DeclareBound();
    void CollectBound();
    void WriteDeclaration(std::string_view prefix, std::string_view uri);
    void BeginElement(const ElementPlan& plan, std::string_view localName, std::string_view ns);
    void BeginMarkup();
    void BeginContent();
    void Push(const ElementPlan& plan, std::string_view localName, std::string_view ns);
    void Pop();
    const astring* Keep(std::string_view text);
    std::string_view TopName() const { return names_.view().substr(Top().nameBegin); }
    WriterFrame& Top() { return frames_[depth_ - 1]; }
    const WriterFrame& Top() const { return frames_[depth_ - 1]; }

    // WriterNames.cpp: prefixes and attributes.
    ElementPlan PlanElement(std::string_view prefix, std::string_view localName,
                            std::string_view ns) const;
    AttributePlan PlanAttribute(std::string_view prefix, std::string_view localName,
                                TextArgument ns) const;
    AttributePlan PlanPrefixed(std::string_view prefix, TextArgument ns) const;
    void RequireStartTag() const;
    bool AttributeQuickly(std::string_view prefix, std::string_view localName, TextArgument ns,
                          std::string_view value);
    void BeginAttribute(const AttributePlan& plan, std::string_view localName, std::string_view ns);
    void CheckAttribute(AttributeRole role, std::string_view value) const;
    bool IsBound(std::string_view prefix) const;
    void NoteUse(std::string_view prefix);
    bool IsUsed(const sax::XmlNamespace& ns) const;
    void SettleAttribute() {
        if (state_ == WriteState::Attribute) SettleOpenAttribute();
    }
    void SettleOpenAttribute();
    void TakeValue();

    // Settles the open attribute, which a plan must know; but what cannot be planned is refused
    // before anything has changed.
    template <typename Plan>
    auto SettleAndPlan(const Plan& plan) {
        if (state_ == WriteState::Attribute) {
            CheckAttribute(role_, value_);
            plan();
            SettleOpenAttribute();
        }
        return plan();
    }
    void FinishAttribute();
    void Declare(std::string_view prefix, std::string_view uri);
    std::string_view GeneratePrefix();

    // WriterText.cpp: texts and values.
    bool BreaksArePlain() const { return settings.newLineHandling == NewLineHandling::NoHandling; }
    bool StringQuickly(std::string_view text);
    void PutContent(std::string_view text, bool escapes);
    void PutEscaped(std::string_view text);
    void PutValue(std::string_view text, bool escapes) {
        if (escapes) {
            PutEscaped(text);
        } else {
            output_.PutData(text);
        }
    }
    const char* PutControl(const char* at, const char* end);
    void NoteValue(std::string_view text);

    // WriterBinary.cpp
    void PutLine(std::string_view line);
    void PutPartOfLine(std::string_view line);

    WriterOutput output_;
    IO::Stream* stream_ = nullptr;  // not owned
    const Encoding* encoding_ = nullptr;
    std::unique_ptr<WriterFile> file_;
    WriteState::WRITE_STATE state_ = WriteState::Closed;
    bool tagOpen_ = false;  // the start tag of the innermost element has no ">" yet
    astring docTypeName_;
    int prefixCount_ = 0;
    astring newPrefix_;
    const astring empty_;

    WriterNamespaces namespaces_;
    std::vector<WriterFrame>
        frames_;  // the first depth_ ones; the others are kept for their memory
    std::size_t depth_ = 0;
    astring names_;  // of the open elements as they are written, one behind the other

    // The default namespaces and languages that open elements have set: the first textCount_ ones;
    // the others are kept for their memory. None of them moves or changes while its element is
    // open, because a caller may hand one back as the argument of a call.
    std::deque<astring> texts_;
    std::size_t textCount_ = 0;
    std::vector<const sax::XmlNamespace*> written_;  // declared by attributes of the open tag
    static constexpr std::size_t kMostUsed = 16;
    std::vector<const sax::XmlNamespace*> used_;   // by the open tag, up to one more than that
    std::vector<const sax::XmlNamespace*> bound_;  // while the others are declared

    // The attribute that is open.
    AttributeRole role_ = AttributeRole::Ordinary;
    char quote_ = '"';        // that began it
    astring declaredPrefix_;  // when it declares one
    astring value_;           // what has been written of it, when it means something
};

}  // namespace detail
}  // namespace Xml
