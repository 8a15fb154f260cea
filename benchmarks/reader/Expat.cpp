// SPDX-License-Identifier: MIT
// expat without namespaces: a declaration is an attribute like any other, and names are delivered
// only whole. The parser is kept and reset for each further document.
#include "reader/ExpatEncoding.h"
#include "reader/Library.h"

#include <expat.h>

#include <cstring>
#include <stdexcept>

namespace bench {

namespace {

class ExpatVisitor final : public Visitor {
public:
    ExpatVisitor() : parser_(XML_ParserCreate(nullptr)) {
        if (parser_ == nullptr) throw std::runtime_error("no parser");
    }
    ExpatVisitor(const ExpatVisitor&) = delete;
    ExpatVisitor& operator=(const ExpatVisitor&) = delete;
    ~ExpatVisitor() override { XML_ParserFree(parser_); }

    void Visit(std::string_view document, Totals& totals) override {
        XML_ParserReset(parser_, nullptr);
        XML_SetUserData(parser_, &totals);
        XML_SetElementHandler(parser_, StartElement, EndElement);
        XML_SetCharacterDataHandler(parser_, Characters);
        XML_SetCommentHandler(parser_, Comment);
        XML_SetProcessingInstructionHandler(parser_, Instruction);
        XML_SetUnknownEncodingHandler(parser_, MapEncoding, nullptr);
        if (XML_Parse(parser_, document.data(), static_cast<int>(document.size()), XML_TRUE) !=
            XML_STATUS_OK) {
            throw std::runtime_error(XML_ErrorString(XML_GetErrorCode(parser_)));
        }
        totals.localBytes = Totals::kNotDelivered;
        totals.prefixBytes = Totals::kNotDelivered;
        totals.elementUriBytes = Totals::kNotDelivered;
        totals.attributeUriBytes = Totals::kNotDelivered;
    }

private:
    static Totals& TotalsOf(void* totals) { return *static_cast<Totals*>(totals); }

    static std::int64_t Length(const XML_Char* text) { return Bytes(std::strlen(text)); }

    static void StartElement(void* user, const XML_Char* name, const XML_Char** attributes) {
        Totals& totals = TotalsOf(user);
        ++totals.elements;
        totals.nameBytes += Length(name);
        for (; *attributes != nullptr; attributes += 2) {
            ++totals.attributes;
            totals.nameBytes += Length(attributes[0]);
            totals.valueBytes += Length(attributes[1]);
        }
    }

    static void EndElement(void* user, const XML_Char* name) {
        TotalsOf(user).endTagBytes += Length(name);
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
std::unique_ptr<Visitor> MakeExpat(CorpusGroup /*group*/) {
    return std::make_unique<ExpatVisitor>();
}

std::string ExpatVersion() { return XML_ExpatVersion(); }

}  // namespace bench
