// SPDX-License-Identifier: MIT
#include "Events.h"

// expat.h shows its limits where this is defined; Debian's library has them.
#define XML_DTD
#include <expat.h>

#include <memory>
#include <utility>

namespace differential {
namespace {

constexpr char kSeparator = '\x01';  // between namespace and local name; in no document

struct State {
    XML_Parser parser;  // not owned
    Detail detail;
    EventList events;
    EventList::Attributes declarations = {};  // of namespaces, of the next start
    bool hasMarkupEntity = false;
    bool hasSkippedEntity = false;
    bool hasMissedParameter = false;
    bool isInDocumentType = false;
};

State& StateOf(void* data) { return *static_cast<State*>(data); }

std::string NameOf(const XML_Char* name) {
    const std::string_view text = name;
    const std::size_t end = text.find(kSeparator);
    if (end == std::string_view::npos) return ExpandedName("", text);
    return ExpandedName(text.substr(0, end), text.substr(end + 1));
}

void OnStart(void* data, const XML_Char* name, const XML_Char** attributes) {
    State& state = StateOf(data);
    const bool isExact = state.detail == Detail::Exact;
    // Attributes that the document type supplies come after those of the tag.
    const int specified = XML_GetSpecifiedAttributeCount(state.parser);
    EventList::Attributes taken = std::exchange(state.declarations, {});
    for (int i = 0; attributes[i] != nullptr && (isExact || i < specified); i += 2)
        taken.emplace_back(NameOf(attributes[i]), attributes[i + 1]);
    state.events.Start(NameOf(name), std::move(taken));
}

void OnDeclaration(void* data, const XML_Char* prefix, const XML_Char* uri) {
    const std::string name = prefix == nullptr ? "xmlns" : std::string("xmlns:") + prefix;
    StateOf(data).declarations.emplace_back(name, uri == nullptr ? "" : uri);
}

void OnEnd(void* data, const XML_Char* name) { StateOf(data).events.End(NameOf(name)); }

void OnText(void* data, const XML_Char* text, int length) {
    StateOf(data).events.Text({text, static_cast<std::size_t>(length)});
}

void OnComment(void* data, const XML_Char* text) {
    if (!StateOf(data).isInDocumentType) StateOf(data).events.Comment(text);
}

void OnInstruction(void* data, const XML_Char* target, const XML_Char* text) {
    if (!StateOf(data).isInDocumentType) StateOf(data).events.Instruction(target, text);
}

void OnDocumentType(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    StateOf(data).isInDocumentType = true;
}

void OnDocumentTypeEnd(void* data) { StateOf(data).isInDocumentType = false; }

void OnEntity(void* data, const XML_Char*, int isParameter, const XML_Char* value, int length,
              const XML_Char*, const XML_Char*, const XML_Char*, const XML_Char*) {
    if (isParameter != 0 || value == nullptr) return;
    const std::string_view text(value, static_cast<std::size_t>(length));
    if (text.find('<') != std::string_view::npos) StateOf(data).hasMarkupEntity = true;
}

void OnSkippedEntity(void* data, const XML_Char*, int isParameter) {
    State& state = StateOf(data);
    state.hasSkippedEntity = true;
    if (isParameter != 0) {
        state.hasMissedParameter = true;
    } else if (state.detail == Detail::Exact) {
        state.events.Reference();
    }
}

// Reads no external entity. One without a context is a parameter entity or the external subset.
int OnExternalEntity(XML_Parser parser, const XML_Char* context, const XML_Char*, const XML_Char*,
                     const XML_Char*) {
    State& state = StateOf(XML_GetUserData(parser));
    if (context == nullptr) {
        state.hasMissedParameter = true;
    } else {
        state.events.Reference();
    }
    return XML_STATUS_OK;
}

// What expat expands of entities before it looks at how much that is, in bytes. At first it is
// eight times as much, which takes a good part of a second.
constexpr unsigned long long kMostExpanded = 1'000'000;

}  // namespace

Reading ReadWithExpat(const std::string& document, Detail detail, Names names) {
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        names == Names::Qualified ? XML_ParserCreateNS(nullptr, kSeparator)
                                  : XML_ParserCreate(nullptr),
        &XML_ParserFree);
    State state{parser.get(), detail, EventList(detail)};
    if (detail == Detail::Exact) {
        XML_SetParamEntityParsing(parser.get(), XML_PARAM_ENTITY_PARSING_ALWAYS);
        XML_SetBillionLaughsAttackProtectionActivationThreshold(parser.get(), kMostExpanded);
        XML_SetExternalEntityRefHandler(parser.get(), OnExternalEntity);
        XML_SetStartNamespaceDeclHandler(parser.get(), OnDeclaration);
    }
    XML_SetUserData(parser.get(), &state);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetCharacterDataHandler(parser.get(), OnText);
    XML_SetCommentHandler(parser.get(), OnComment);
    XML_SetProcessingInstructionHandler(parser.get(), OnInstruction);
    XML_SetDoctypeDeclHandler(parser.get(), OnDocumentType, OnDocumentTypeEnd);
    XML_SetEntityDeclHandler(parser.get(), OnEntity);
    XML_SetSkippedEntityHandler(parser.get(), OnSkippedEntity);
    const auto length = static_cast<int>(document.size());
    const XML_Status status = XML_Parse(parser.get(), document.data(), length, XML_TRUE);
    Reading reading;
    reading.hasMarkupEntity = state.hasMarkupEntity;
    reading.hasSkippedEntity = state.hasSkippedEntity;
    reading.hasMissedParameter = state.hasMissedParameter;
    if (status == XML_STATUS_OK) {
        reading.lines = state.events.Lines();
        return reading;
    }
    reading.errorCode = XML_GetErrorCode(parser.get());
    reading.error = XML_ErrorString(XML_GetErrorCode(parser.get()));
    reading.errorOffset = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser.get()));
    reading.failedBeforeRoot = !state.events.HasStarted();
    return reading;
}

}  // namespace differential
