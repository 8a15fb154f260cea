// SPDX-License-Identifier: MIT

// What is formatted reads back as it was, and formatting it again changes nothing.

#include <espalier/encoding/Encoding.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "Context.h"
#include "Rewriting.h"
#include "support/CaseFile.h"
#include "support/RandomDocument.h"
#include "tools/FormattedNodes.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>

namespace {

namespace fs = std::filesystem;
using Tool::TargetForm;

struct Way {
    const char* name;
    Tool::Rewriting rewriting;
};

const Way kWays[] = {
    {"indented", {}},
    {"not indented", {{0, ' ', false, "\n"}, std::nullopt}},
    {"by tabs, CR LF", {{1, '\t', false, "\r\n"}, std::nullopt}},
    {"compact", {{2, ' ', true, "\n"}, std::nullopt}},
    {"compact, CR LF", {{2, ' ', true, "\r\n"}, std::nullopt}},
    {"UTF-8", {{}, TargetForm::Utf8}},
    {"UTF-16LE", {{}, TargetForm::Utf16LE}},
    {"UTF-16BE, compact", {{2, ' ', true, "\n"}, TargetForm::Utf16BE}},
    {"ISO-8859-1", {{}, TargetForm::Latin1}},
    {"US-ASCII", {{}, TargetForm::Ascii}},
};

// The reader takes names of up to 1024 bytes; in UTF-16 they have twice as many.
const std::vector<std::string> kNameTooLong{"refused: Buffer overflow while reading markup token"};

bool IsUtf16(const Way& way) {
    return way.rewriting.to == TargetForm::Utf16LE || way.rewriting.to == TargetForm::Utf16BE;
}

class StringStream final : public IO::Stream {
public:
    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char* buffer, int offset, int count) override {
        bytes_.append(reinterpret_cast<const char*>(buffer) + offset,
                      static_cast<std::size_t>(count));
    }

    const std::string& Bytes() const { return bytes_; }

private:
    std::string bytes_;
};

// Returns the nodes, or what the reader has to say against them.
std::vector<std::string> NodesOf(std::string_view document,
                                 Xml::XmlEntityHandling::XML_ENTITY_HANDLING handling) {
    try {
        return FormattedNodes(document, handling);
    } catch (const Xml::Exception& error) {
        return {std::string("refused: ") + std::string(std::string_view(error.What()))};
    }
}

Xml::Encoding* WindowsPageOf(const std::string& document) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    try {
        reader.Read();
    } catch (const Xml::Exception&) {
        return nullptr;
    }
    for (Xml::Encoding* page : {Xml::Encoding::Windows_1250(), Xml::Encoding::Windows_1251(),
                                Xml::Encoding::Windows_1252(), Xml::Encoding::Windows_1254(),
                                Xml::Encoding::Windows_1257()}) {
        if (reader.Encoding() == page->EncodingName()) return page;
    }
    return nullptr;
}

// The reader's own text of a Windows page is not always UTF-8, but the program's is. So what a
// document in one has to become is told by its conversion, without the declaration.
std::string InUtf8(const std::string& document) {
    Xml::Encoding* const page = WindowsPageOf(document);
    if (page == nullptr) return document;
    const std::string rest = document.substr(document.find("?>") + 2);
    std::string text(4 * rest.size() + 8, '\0');
    text.resize(Xml::Encoding::Convert(
        page, Xml::Encoding::UTF8(), reinterpret_cast<const unsigned char*>(rest.data()),
        static_cast<unsigned>(rest.size()), reinterpret_cast<unsigned char*>(text.data()),
        static_cast<unsigned>(text.size())));
    return text;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class FormatRoundTrip : public testing::Test {
protected:
    // Returns the document formatted, or nothing if it is refused.
    std::optional<std::string> Formatted(const std::string& document, const Way& way) {
        // A file that is written anew each time, some systems bring to the disk each time.
        const std::string name = std::to_string(++files_) + ".xml";
        const std::string path = directory_.Write(name.c_str(), document);
        try {
            Tool::Document source(path, *context_, Tool::Roots::One);
            source.ExpandDeclaredEntities();
            StringStream out;
            Tool::Rewrite(source, way.rewriting, out, [](std::string_view) {});
            return out.Bytes();
        } catch (const Xml::Exception&) {
            return std::nullopt;
        } catch (const Tool::MissingCharacter&) {
            return std::nullopt;
        }
    }

    // Returns whether the document was accepted.
    bool Check(const std::string& document, const Way& way) {
        SCOPED_TRACE(way.name);
        const std::optional<std::string> once = Formatted(document, way);
        if (!once) return false;
        const bool refers =
            way.rewriting.to == TargetForm::Latin1 || way.rewriting.to == TargetForm::Ascii;
        const auto handling = refers ? Xml::XmlEntityHandling::ExpandCharEntities
                                     : Xml::XmlEntityHandling::ExpandNothing;
        const std::vector<std::string> nodes = NodesOf(*once, handling);
        if (nodes == kNameTooLong && IsUtf16(way)) return false;
        EXPECT_EQ(nodes, NodesOf(InUtf8(document), handling)) << *once;
        const std::optional<std::string> twice = Formatted(*once, way);
        EXPECT_TRUE(twice.has_value()) << *once;
        if (twice) {
            EXPECT_EQ(*twice, *once);
        }
        return true;
    }

    // Returns in how many ways the document was accepted.
    std::size_t CheckWays(const std::string& document) {
        SCOPED_TRACE(document.substr(0, 2000));
        return static_cast<std::size_t>(
            std::count_if(std::begin(kWays), std::end(kWays),
                          [&](const Way& way) { return Check(document, way); }));
    }

    TemporaryDirectory directory_;
    int files_ = 0;
    std::unique_ptr<Tool::Context> context_ = std::make_unique<Tool::Context>();
};

}  // namespace

TEST_F(FormatRoundTrip, OfTheSamples) {
    std::size_t accepted = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(ESPALIER_SAMPLES)) {
        SCOPED_TRACE(entry.path());
        // The test's own readers do not decompress.
        if (entry.path().extension() == ".gz") continue;
        if (entry.is_regular_file()) accepted += CheckWays(ReadFile(entry.path()));
    }
    EXPECT_EQ(accepted, 8 * std::size(kWays));  // the eight documents among the samples
}

TEST_F(FormatRoundTrip, OfTheReadersCases) {
    std::size_t accepted = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(ESPALIER_CASES)) {
        for (const support::ReaderCase& c : support::CaseFile::Load(entry.path()).cases)
            accepted += CheckWays(c.Document());
    }
    EXPECT_GT(accepted, 1000U);
}

// Behind the first bytes of a seed, which choose what is done with it, stands a document.
TEST_F(FormatRoundTrip, OfTheSeedsOfTheFuzzers) {
    std::size_t accepted = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(ESPALIER_FUZZ_CORPUS)) {
        const std::string seed = ReadFile(entry.path());
        accepted += CheckWays(seed.substr(std::min(seed.find('<'), seed.size())));
    }
    EXPECT_GT(accepted, 200U);
}

TEST_F(FormatRoundTrip, OfRandomDocuments) {
    support::RandomDocument random(20260101);
    std::size_t accepted = 0;
    for (int i = 0; i < 1000 && !HasFailure(); ++i)
        accepted += CheckWays(random.Write());
    EXPECT_GT(accepted, 1000U);
}
