// SPDX-License-Identifier: MIT
// expat with namespaces. A name is delivered as namespace, separator, local name. That it could add
// the prefix (XML_SetReturnNSTriplet) is left alone: it costs it time, so prefixes and qualified
// names are not delivered. The parser is kept and reset for each further document.
#include "reader/ExpatEncoding.h"
#include "reader/Library.h"

#include <expat.h>

#include <cstring>
#include <stdexcept>

namespace bench {

namespace {

constexpr XML_Char kSeparator = '\n';

class ExpatNamespacesVisitor final : public Visitor {
public:
    ExpatNamespacesVisitor() : parser_(XML_ParserCreateNS(nullptr, kSeparator)) {
        if (parser_ == nullptr) throw std::runtime_error("no parser");
    }
    ExpatNamespacesVisitor(const ExpatNamespacesVisitor&) = delete;
    ExpatNamespacesVisitor& operator=(const ExpatNamespacesVisitor&) = delete;
    ~ExpatNamespacesVisitor() override { XML_ParserFree(parser_); }

    void Visit(std::string_view document, Totals& totals) override {
        XML_ParserReset(parser_, nullptr);
        XML_SetUserData(parser_, &totals);
        XML_SetElementHandler(parser_, StartElement, EndElement);
        XML_SetStartNamespaceDeclHandler(parser_, StartNamespace);
        XML_SetCharacterDataHandler(parser_, Characters);
        XML_SetCommentHandler(parser_, Comment);
        XML_SetProcessingInstructionHandler(parser_, Instruction);
        XML_SetUnknownEncodingHandler(parser_, MapEncoding, nullptr);
        if (XML_Parse(parser_, document.data(), static_cast<int>(document.size()), XML_TRUE) !=
            XML_STATUS_OK) {
            throw std::runtime_error(XML_ErrorString(XML_GetErrorCode(parser_)));
        }
        totals.nameBytes = Totals::kNotDelivered;
        totals.prefixBytes = Totals::kNotDelivered;
    }

private:
    static Totals& TotalsOf(void* totals) { return *static_cast<Totals*>(totals); }

    static std::int64_t Length(const XML_Char* text) { return Bytes(std::strlen(text)); }

    // Adds the length of the local name to `localBytes` and that of the namespace to `uriBytes`.
    static void Split(std::string_view name, std::int64_t& localBytes, std::int64_t& uriBytes) {
        const std::size_t separator = name.rfind(kSeparator);
        if (separator == std::string_view::npos) {
            localBytes += Bytes(name.size());
        } else {
            localBytes += Bytes(name.size() - separator - 1);
            uriBytes += Bytes(separator);
        }
    }

    static void StartElement(void* user, const XML_Char* name, const XML_Char** attributes) {
        Totals& totals = TotalsOf(user);
        ++totals.elements;
        Split(name, totals.localBytes, totals.elementUriBytes);
        for (; *attributes != nullptr; attributes += 2) {
            ++totals.attributes;
            Split(attributes[0], totals.localBytes, totals.attributeUriBytes);
            totals.valueBytes += Length(attributes[1]);
        }
    }

    static void EndElement(void* user, const XML_Char* name) {
        TotalsOf(user).endTagBytes += Length(name);
    }

    static void StartNamespace(void* user, const XML_Char* prefix, const XML_Char* uri) {
        constexpr std::int64_t kXmlns = 5;
        Totals& totals = TotalsOf(user);
        ++totals.attributes;
        totals.localBytes += prefix == nullptr ? kXmlns : Length(prefix);
        totals.valueBytes += uri == nullptr ? 0 : Length(uri);
    }

    static void Characters(void* user, const XML_Char* /*text*/, int length) {
        TotalsOf(user).textBytes += length;
    }

    static void Comment(void* user, const XML_Char* text) {
        TotalsOf(user).commentBytes += Length(text);
    }

    static void Instruction(void* user, const XML_Char* target, const XML_Char* data) {
        TotalsOf(user).commentBytes += Length(target) + Length(data);
    }

    XML_Parser parser_;  // owned
};

}  // namespace

// It replaces references to internal entities unless it is told otherwise.
std::unique_ptr<Visitor> MakeExpatNamespaces(CorpusGroup /*group*/) {
    return std::make_unique<ExpatNamespacesVisitor>();
}

}  // namespace bench
