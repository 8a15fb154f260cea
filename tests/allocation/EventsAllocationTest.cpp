// SPDX-License-Identifier: MIT
//
// Lets every single allocation of a parse fail, one run for each; and counts those of the steady
// state.
#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/AttributesImpl.h>
#include <espalier/sax/helpers/DefaultHandler.h>
#include <espalier/sax/helpers/NamespaceSupport.h>
#include <espalier/sax/helpers/SAXEnumeration.h>

#include "support/FailingAllocation.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>

namespace {

using sax::helpers::AttributesImpl;

enum class Ending { Complete, BadAlloc, OutOfMemory, OtherError };

template <typename Run>
Ending EndingOf(const Run& run) {
    try {
        run();
        return Ending::Complete;
    } catch (const std::bad_alloc&) {
        return Ending::BadAlloc;
    } catch (const Xml::Exception& error) {
        return std::strcmp(error.What(), "Out of memory") == 0 ? Ending::OutOfMemory
                                                               : Ending::OtherError;
    } catch (const sax::SAXParseException& error) {
        return error.getMessage() == "Out of memory" ? Ending::OutOfMemory : Ending::OtherError;
    }
}

bool IsFailureOfMemory(Ending ending) {
    return ending == Ending::BadAlloc || ending == Ending::OutOfMemory;
}

// Adds up what it is told, and keeps a copy of each element's attributes.
class Listener : public sax::helpers::DefaultHandler {
public:
    std::size_t length = 0;

    void notationDecl(const char* name, const char* publicId, const char* systemId) override {
        length += std::strlen(name) + std::strlen(publicId) + std::strlen(systemId);
    }
    void unparsedEntityDecl(const char* name, const char*, const char*,
                            const char* notationName) override {
        length += std::strlen(name) + std::strlen(notationName);
    }
    void startElement(const char* uri, const char* localName, const char* qName,
                      const sax::Attributes& attributes) override {
        length += std::strlen(uri) + std::strlen(localName) + std::strlen(qName);
        const AttributesImpl copy(attributes);
        for (int i = 0; i < copy.getLength(); ++i) {
            length += std::strlen(copy.getValue(i));
            length += static_cast<std::size_t>(
                attributes.getIndex(attributes.getURI(i), attributes.getLocalName(i)));
        }
    }
    void characters(const char*, int, int count) override {
        length += static_cast<std::size_t>(count);
    }
    void processingInstruction(const char* target, const char* data) override {
        length += std::strlen(target) + std::strlen(data);
    }
};

std::string Attributes(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += " attribute-" + std::to_string(i) + "='a value that no string keeps inside'";
    }
    return text;
}

const std::string kDocuments[] = {
    "<?xml version='1.0' standalone='yes'?>\n<root xmlns='urn:default-namespace-of-this' "
    "xmlns:p='urn:p'><p:child x='1' p:x='&lt;&#65;\r\n'>  text &amp; more \r\n"
    "<!-- a comment --><?target with some data in it?><![CDATA[a section]]></p:child></root>\n",
    "<a" + Attributes(40) + "><b" + Attributes(3) + "/></a>",
    "<!DOCTYPE root [\n"
    "<!NOTATION a-long-name-of-a-notation SYSTEM 'a-long-system-identifier'>\n"
    "<!ENTITY unparsed-entity-with-a-name SYSTEM 'somewhere' NDATA a-long-name-of-a-notation>\n"
    "<!ENTITY inner-entity-with-a-name 'the text of the inner &#65;&#38;#66; of an entity'>\n"
    "<!ENTITY outer-entity-with-a-name '<b>&inner-entity-with-a-name;</b> and more text'>]>\n"
    "<root xmlns:p='urn:&inner-entity-with-a-name;' a='before &inner-entity-with-a-name; behind' "
    "b='&inner-entity-with-a-name;'>before &outer-entity-with-a-name; behind</root>",
};

Ending ParseOnce(sax::XMLReader& reader, const std::string& document, std::size_t* length) {
    return EndingOf([&] {
        Listener listener;
        reader.setContentHandler(&listener);
        reader.setDTDHandler(&listener);
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        reader.parse(sax::InputSource(&stream, "a-system-identifier-of-some-length"));
        *length = listener.length;
    });
}

// As ParseOnce(), from a text in memory, for which the reader gets a stream to own.
Ending ParseTextOnce(sax::XMLReader& reader, const std::string& document) {
    return EndingOf([&] {
        Listener listener;
        reader.setContentHandler(&listener);
        reader.setDTDHandler(nullptr);
        sax::InputSource source;
        source.setCharacterStream(document.c_str());
        reader.parse(source);
    });
}

Ending ParseAnew(const std::string& document, bool reports, std::size_t* length) {
    Ending ending = Ending::Complete;
    const Ending outer = EndingOf([&] {
        sax::XMLReader reader;
        reader.setReportReaderErrors(reports);
        ending = ParseOnce(reader, document, length);
    });
    return outer == Ending::Complete ? ending : outer;
}

TEST(EventsAllocation, EveryAllocationMayFailAndNothingLeaks) {
    for (const std::string& document : kDocuments) {
        for (const bool reports : {false, true}) {
            std::size_t expectedLength = 0;
            ASSERT_EQ(ParseAnew(document, reports, &expectedLength), Ending::Complete);
            ASSERT_GT(expectedLength, 0U);
            long reported = 0;
            FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
                std::size_t length = 0;
                const Ending ending = ParseAnew(document, reports, &length);
                const bool isReported = IsFailureOfMemory(ending);
                FailingAllocation::Exempt([&] {
                    EXPECT_EQ(failure.LiveCount(), 0);
                    EXPECT_TRUE(isReported || ending == Ending::Complete);
                    if (!isReported) {
                        EXPECT_EQ(length, expectedLength);
                    }
                });
                if (isReported) ++reported;
            });
            EXPECT_GT(reported, 5);
        }
    }
}

TEST(EventsAllocation, TheSameReaderParsesAgainAfterAFailure) {
    for (const std::string& document : kDocuments) {
        std::size_t expectedLength = 0;
        sax::XMLReader first;
        ASSERT_EQ(ParseOnce(first, document, &expectedLength), Ending::Complete);
        bool isDone = false;
        for (long number = 1; !isDone; ++number) {
            SCOPED_TRACE(number);
            sax::XMLReader reader;
            std::size_t length = 0;
            {
                const FailingAllocation failure(number);
                const Ending ending = ParseOnce(reader, document, &length);
                isDone = !failure.HasFailed();
                FailingAllocation::Exempt(
                    [&] { ASSERT_TRUE(IsFailureOfMemory(ending) || ending == Ending::Complete); });
            }
            length = 0;
            ASSERT_EQ(ParseOnce(reader, document, &length), Ending::Complete);
            EXPECT_EQ(length, expectedLength);
        }
    }
}

TEST(EventsAllocation, AStreamThatTheReaderOwnsIsNotLost) {
    const std::string document = "<a>text</a>";
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        Ending ending = Ending::Complete;
        const Ending outer = EndingOf([&] {
            sax::XMLReader reader;
            ending = ParseTextOnce(reader, document);
        });
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(failure.LiveCount(), 0);
            for (const Ending one : {outer, ending})
                EXPECT_TRUE(IsFailureOfMemory(one) || one == Ending::Complete);
        });
    });
    EXPECT_GT(failures, 5);
}

// A file that the parse has opened is closed at once, not by the next parse.
TEST(EventsAllocation, AFileIsClosedWhateverFails) {
    const support::TemporaryDirectory directory;
    const std::string name = directory.Make("a.xml", "<a x='1'>text</a>");
    Listener listener;
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        std::optional<sax::XMLReader> reader;
        FailingAllocation::Exempt([&] {
            reader.emplace();
            reader->setContentHandler(&listener);
        });
        const Ending ending = EndingOf([&] { reader->parse(name.c_str()); });
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(ending == Ending::Complete, !failure.HasFailed());
            constexpr unsigned kWrite = 2;
            constexpr unsigned kDenyAll = 0;
            EXPECT_NO_THROW(
                IO::FileStream(name.c_str(), IO::FileMode::Open, kWrite, kDenyAll).Close());
        });
    });
    EXPECT_GT(failures, 5);
}

// An attribute that is not added whole is not there.
TEST(EventsAllocation, AnAttributeIsAddedWholeOrNotAtAll) {
    AttributesImpl attributes;
    attributes.addAttribute("urn:some-namespace-uri", "first", "p:first", "CDATA", "1");
    attributes.setURI(0, "urn:another-namespace-uri");  // from now on there is an index
    int count = 1;
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation&) {
        const Ending ending = EndingOf([&] {
            attributes.addAttribute("urn:some-namespace-uri", "a-second-name-of-some-length",
                                    "p:a-second-name-of-some-length", "CDATA", "2");
        });
        FailingAllocation::Exempt([&] {
            if (ending == Ending::Complete) ++count;
            ASSERT_EQ(attributes.getLength(), count);
            EXPECT_EQ(attributes.getIndex("urn:some-namespace-uri", "a-second-name-of-some-length"),
                      count == 1 ? -1 : 1);
            EXPECT_EQ(attributes.getIndex("urn:some-namespace-uri", "first"), 0);
        });
    });
    EXPECT_GT(failures, 3);
    EXPECT_EQ(count, 2);
}

// Looks for attributes of the first element while memory runs out, and of the second in peace.
class Stumbler : public sax::helpers::DefaultHandler {
public:
    explicit Stumbler(long number) : number_(number) {}
    bool hasFailed = false;
    int found = 0;

    void startElement(const char*, const char*, const char* qName,
                      const sax::Attributes& attributes) override {
        if (std::strcmp(qName, "first") == 0) {
            const FailingAllocation failure(number_);
            EndingOf([&] { attributes.getIndex("", "none"); });
            hasFailed = failure.HasFailed();
        }
        if (std::strcmp(qName, "second") != 0) return;
        for (int i = 0; i < attributes.getLength(); ++i) {
            if (attributes.getIndex("", attributes.getLocalName(i)) == i) ++found;
        }
    }

private:
    long number_;
};

TEST(EventsAllocation, ALookUpThatFailedLeavesNothingForTheNextElement) {
    constexpr int kCount = 20;  // so many that they are indexed
    std::string forwards;
    std::string backwards;
    for (int i = 0; i < kCount; ++i) {
        const std::string one = " an-attribute-of-some-length-" + std::to_string(i) + "='x'";
        forwards += one;
        backwards = one + backwards;
    }
    const std::string document = "<a><first" + forwards + "/><second" + backwards + "/></a>";
    long number = 1;
    for (bool hasFailed = true; hasFailed; ++number) {
        SCOPED_TRACE(number);
        Stumbler stumbler(number);
        sax::XMLReader reader;
        reader.setContentHandler(&stumbler);
        sax::InputSource source;
        source.setCharacterStream(document.c_str());
        reader.parse(source);
        EXPECT_EQ(stumbler.found, kCount);
        hasFailed = stumbler.hasFailed;
    }
    EXPECT_GT(number, kCount);
}

// The objects to keep: a failure leaves nothing behind, and setAttributes() nothing half done.
TEST(EventsAllocation, HelpersLoseNothing) {
    const auto work = [] {
        AttributesImpl attributes;
        for (const char* const name : {"a-name-of-some-length-1", "a-name-of-some-length-2"}) {
            attributes.addAttribute("urn:some-namespace-uri", name, name, "CDATA",
                                    "a value that no string keeps inside");
        }
        AttributesImpl copy(attributes);
        copy.setURI(0, "urn:another-namespace-uri");
        copy.setAttributes(attributes);
        attributes = copy;
        sax::helpers::NamespaceSupport support;
        support.setNamespaceDeclUris(true);
        support.pushContext();
        support.declarePrefix("a-prefix-of-some-length", "urn:some-namespace-uri");
        const sax::helpers::NamespaceSupport same(support);
        const std::unique_ptr<sax::helpers::SAXEnumeration> all(same.getPrefixes());
        const std::unique_ptr<sax::helpers::SAXEnumeration> own(support.getDeclaredPrefixes());
    };
    ASSERT_EQ(EndingOf(work), Ending::Complete);
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        const Ending ending = EndingOf(work);
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(failure.LiveCount(), 0);
            EXPECT_TRUE(IsFailureOfMemory(ending) || ending == Ending::Complete);
        });
    });
    EXPECT_GT(failures, 10);
}

// Looks at everything, and keeps nothing. Between two records the first allocation fails.
class SteadyListener : public sax::helpers::DefaultHandler {
public:
    std::size_t length = 0;
    bool hasAllocated = false;

    void startElement(const char* uri, const char*, const char* qName,
                      const sax::Attributes& attributes) override {
        length += std::strlen(uri);
        for (int i = 0; i < attributes.getLength(); ++i) {
            length += std::strlen(attributes.getQName(i)) + std::strlen(attributes.getValue(i));
            length += static_cast<std::size_t>(attributes.getIndex(attributes.getQName(i)));
            length += static_cast<std::size_t>(
                attributes.getIndex(attributes.getURI(i), attributes.getLocalName(i)));
        }
        if (std::strcmp(qName, "record") != 0) return;
        ++records_;
        if (records_ == 100) failure_.emplace(1);
        if (records_ != 900) return;
        hasAllocated = failure_->HasFailed();
        failure_.reset();
    }
    void characters(const char* text, int start, int count) override {
        length += static_cast<std::size_t>(count) + static_cast<unsigned char>(text[start]);
    }

private:
    int records_ = 0;
    std::optional<FailingAllocation> failure_;
};

TEST(EventsAllocation, TheSteadyStateAsksForNoMemory) {
    std::string document = "<records xmlns:p='urn:some-namespace'>";
    for (int i = 0; i < 1000; ++i) {
        document +=
            "<record id='a value that no string keeps inside' p:x='1' y='2 &amp; &#65;'><p:name/>"
            "text of some length &amp; with a reference<?target data?><!-- c -->"
            "<b z='before behind'/></record>\n";
    }
    document += "</records>";
    sax::XMLReader reader;
    SteadyListener listener;
    reader.setContentHandler(&listener);
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    reader.parse(sax::InputSource(&stream, ""));
    EXPECT_FALSE(listener.hasAllocated);
    EXPECT_GT(listener.length, 100000U);
}

}  // namespace
