// SPDX-License-Identifier: MIT
#include "support/Refusal.h"

#include <espalier/io/Exception.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/EscapedText.h"
#include "support/NodeDump.h"

#include <gtest/gtest.h>

namespace support {
namespace {

// Resolves the references among the parts of the values of an element.
void StepThroughValues(Xml::XmlTextReader& reader, const ReaderSettings& settings) {
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        while (reader.ReadAttributeValue()) {
            if (settings.resolve && reader.NodeType() == Xml::XmlNodeType::EntityReference) {
                reader.ResolveEntity();
            }
        }
    }
}

void ReadToTheError(const std::string& document, const ReaderSettings& settings) {
    DocumentReader reader(document, settings);
    while (reader->Read()) {
        if (settings.resolve && reader->NodeType() == Xml::XmlNodeType::EntityReference) {
            reader->ResolveEntity();
        }
        if (settings.parts && reader->NodeType() == Xml::XmlNodeType::Element) {
            StepThroughValues(*reader, settings);
        }
    }
}

}  // namespace

void ExpectRefusal(const std::string& document, const Refusal& refusal,
                   const ReaderSettings& settings, Cause cause) {
    SCOPED_TRACE(std::string(refusal.input) + "  (" + refusal.reason + ")");
    try {
        ReadToTheError(document, settings);
        ADD_FAILURE() << "is accepted";
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), refusal.message);
        EXPECT_STREQ(error.Argument(), refusal.argument);
        EXPECT_EQ(error.LineNumber(), refusal.line);
        if (refusal.column != Refusal::kAny) {
            EXPECT_EQ(error.LinePos(), refusal.column);
        }
    }
    const std::string whole = DumpDocument(document, settings);
    EXPECT_GE(ExpectNodesInAllForms(document, settings, whole), 5);
    if (cause == Cause::Text) {
        const std::string more = "<!--" + std::string(3000, 'c') + "-->";
        EXPECT_EQ(DumpDocument(document + more, settings), whole);
    }
}

void ExpectRefusal(const Refusal& refusal, const ReaderSettings& settings, Cause cause) {
    ExpectRefusal(Unescape(refusal.input), refusal, settings, cause);
}

std::string ErrorOf(const std::string& document, int bytesPerRead) {
    try {
        DocumentReader reader(document, {}, bytesPerRead);
        reader.ReadAll();
        return "";
    } catch (const Xml::Exception& error) {
        return error.What();
    }
}

}  // namespace support
