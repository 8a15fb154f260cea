// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/sax/Forward.h>
#include <espalier/xml/XmlEntityLimits.h>
#include <espalier/xml/XmlTextReader.h>

#include <memory>
#include <string_view>

namespace sax::detail {

/// What a user sets: handlers, which are not owned, and features.
struct ParserSettings {
    EntityResolver* entityResolver = nullptr;
    ContentHandler* contentHandler = nullptr;
    DTDHandler* dtdHandler = nullptr;
    ErrorHandler* errorHandler = nullptr;
    bool namespaces = true;
    bool namespacePrefixes = false;
    bool normalization = false;
    bool reportsReaderErrors = false;
    Xml::XmlEntityLimits entityLimits;
};

/// The parser behind XMLReader.
class Parser {
public:
    Parser();
    ~Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// Handlers may be replaced during a parse: each event asks for them anew.
    ParserSettings settings;

    bool GetFeature(std::string_view name) const;
    void SetFeature(std::string_view name, bool value);
    void Parse(const InputSource& input);

private:
    class Run;
    using TextEvent = void (ContentHandler::*)(const char* text, int start, int length);

    Xml::XmlTextReader& OpenInput(const InputSource& input);
    void ParseDocument(const InputSource& input, Run& run);
    void ReadNodes(Run& run);
    bool IsOnNode(const Run& run) const;
    bool IsOnNodeElse(const Run& run) const;
    bool Dispatch(Run& run);
    bool DispatchRare(Run& run);
    bool EnterEntity(Run& run);
    bool ReportStart(Run& run);
    bool ReportEnd(Run& run);
    void ReportText(const astring& text, TextEvent event) const;
    void ReportLongText(const astring& text, TextEvent event) const;
    void ReportInstruction(const Run& run) const;
    void ReportDeclarations(const Run& run) const;
    template <typename Action>
    bool AskReader(Run& run, const Action& action);
    void ReportFatal(const SAXParseException& exception) const;
    void ReportFatal(const char* message, const Locator& locator) const;

    bool isBusy_ = false;                      // a document is being parsed, and no other can be
    bool isParsing_ = false;                   // its nodes are being read
    bool standalone_ = false;                  // what its declaration says
    std::unique_ptr<Xml::XmlTextReader> own_;  // for inputs that bring none; kept for its memory
};

}  // namespace sax::detail
