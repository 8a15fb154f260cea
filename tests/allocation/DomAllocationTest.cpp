// SPDX-License-Identifier: MIT
//
// Lets every single allocation of loading, editing, copying and writing a tree fail, one run for
// each: nothing is lost, the tree is whole, and it can be used and destroyed.
#include <espalier/dom.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/FailingAllocation.h"
#include "support/TreeDump.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace {

using Dom::Document;
using Dom::Element;
using Dom::Node;
using Dom::NodePtr;
using support::TreeBelow;
using Lines = std::vector<std::string>;

// No string keeps it inside.
#define LONG(text) text "-that-is-longer-than-what-a-string-keeps-inside"

// Runs and tells whether there was memory enough; any other error fails the test.
template <typename Run>
bool HasMemory(const Run& run) {
    try {
        run();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const Xml::Exception& error) {
        const bool isOutOfMemory = std::strcmp(error.What(), "Out of memory") == 0;
        FailingAllocation::Exempt([&] { EXPECT_TRUE(isOutOfMemory) << error.What(); });
        return false;
    }
}

// A document whose nodes its factory makes.
class FactoryDocument : public Document {};

std::string Attributes(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += " attribute-" + std::to_string(i) + "='" LONG("value") "'";
    return text;
}

const std::string kDocuments[] = {
    "<?xml version='1.0' encoding='UTF-8' standalone='yes'?><!--" LONG("c") "--><?" LONG(
        "p") " " LONG("d") "?><a xmlns='" LONG("urn:d") "' xmlns:p='" LONG("urn:p") "'><p:b x='1' "
                           "p:y='" LONG("v") "'/>" LONG("text") "<![CDATA[" LONG(
                               "section") "]]> <c><!--c--></c></a><!--behind-->",
    "<a" + Attributes(30) + "><b" + Attributes(3) + "/><" LONG("c") " x='1'/></a>",
    "<!DOCTYPE a [<!ENTITY e 'E'>]><a x='" LONG("1") "&e;" LONG("2") "'>1&e;2&" LONG("e") ";</a>",
    "<?xml-stylesheet href='" LONG("a.css") "'?><a>" + std::string(3000, 't') + "</a>",
};

void Load(Document& document, const std::string& text, bool namespaces) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNamespaces(namespaces);
    document.Load(reader, LONG("uri"));
}

// Uses a tree, which may be a part of one.
void ExpectUsable(Document& document) {
    EXPECT_EQ(support::WrongLink(document), "");
    const NodePtr copy(document.CloneTree());
    EXPECT_EQ(TreeBelow(*copy), TreeBelow(document));
    document.LoadXml("<again x='1'/>");
    EXPECT_EQ(TreeBelow(document), Lines{"Element again x=\"1\""});
}

template <typename Class>
void ExpectSafeLoad(const std::string& text, bool namespaces) {
    Document whole;
    Load(whole, text, namespaces);
    const Lines expected = TreeBelow(whole);
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        {
            std::optional<Class> document;
            const bool hasMemory = HasMemory([&] {
                document.emplace();
                Load(*document, text, namespaces);
            });
            FailingAllocation::Exempt([&] {
                EXPECT_EQ(hasMemory, !failure.HasFailed());
                if (!document) return;
                if (hasMemory) {
                    EXPECT_EQ(TreeBelow(*document), expected);
                }
                ExpectUsable(*document);
            });
        }
        FailingAllocation::Exempt([&] { EXPECT_EQ(failure.LiveCount(), 0); });
    });
    EXPECT_GT(failures, 10);
}

TEST(DomAllocation, EveryAllocationOfALoadMayFail) {
    for (const std::string& text : kDocuments) {
        for (const bool namespaces : {true, false}) {
            SCOPED_TRACE(text);
            ExpectSafeLoad<Document>(text, namespaces);
            ExpectSafeLoad<FactoryDocument>(text, namespaces);
        }
    }
}

TEST(DomAllocation, TheSameDocumentLoadsAgainAfterAFailure) {
    for (long number = 1;; ++number) {
        SCOPED_TRACE(number);
        Document document;
        document.LoadXml("<old x='1'><b/></old>");
        bool hasFailed = false;
        {
            const FailingAllocation failure(number);
            HasMemory([&] { document.LoadXml(kDocuments[0]); });
            hasFailed = failure.HasFailed();
        }
        document.LoadXml("<new/>");
        ASSERT_EQ(TreeBelow(document), Lines{"Element new"});
        if (!hasFailed) break;
    }
}

// Edits.

using Edit = void (*)(Document& document, Element& root);

constexpr char kEdited[] =
    "<r x='1' xmlns:p='urn:p' p:y='2'><a>text</a><b id='i'><c/></b>t1<d/>t2</r>";

const Edit kEdits[] = {
    [](Document& d, Element& r) {
        NodePtr made(d.CreateElementNS(LONG("urn:e"), LONG("p:e")));
        r.AppendChild(made.get());
        made.release();
    },
    [](Document& d, Element& r) {
        NodePtr made(d.CreateTextNode(LONG("text")));
        r.InsertBefore(made.get(), r.LastChild());
        made.release();
    },
    [](Document& d, Element& r) {
        NodePtr made(d.CreateComment(LONG("comment")));
        const NodePtr old(r.ReplaceChild(made.get(), r.FirstChild()->NextSibling()));
        made.release();
    },
    [](Document& d, Element& r) {
        NodePtr made(d.CreateCDATASection(LONG("section")));
        const NodePtr old(r.ExchangeChild(made.get(), r.FirstChild()));
        made.release();
    },
    [](Document&, Element& r) { r.SetAttribute(LONG("attribute"), LONG("value")); },
    [](Document&, Element& r) { r.SetAttribute("x", LONG("value")); },
    [](Document&, Element& r) {
        r.SetAttributeNS(LONG("urn:n"), LONG("n:attribute"), LONG("value"));
    },
    [](Document& d, Element& r) {
        std::unique_ptr<Dom::Attr> made(d.CreateAttribute("x"));
        made->SetValue(LONG("value"));
        const NodePtr old(r.SetAttributeNode(made.get()));
        made.release();
    },
    [](Document&, Element& r) {
        const NodePtr removed(r.RemoveAttributeNode(r.GetAttributeNode("x")));
    },
    [](Document&, Element& r) { r.RemoveAttributeNS("urn:p", "y"); },
    [](Document& d, Element& r) {
        NodePtr made(d.CreateEntityReference(LONG("entity")));
        Dom::Attr* const attribute = r.GetAttributeNode("x");
        attribute->AppendChild(made.get());
        made.release();
        EXPECT_EQ(attribute->Value(), "1");
    },
    [](Document&, Element& r) {
        static_cast<Dom::Text*>(r.FirstChild()->FirstChild())->SplitText(2);
    },
    [](Document&, Element& r) { static_cast<Dom::Text*>(r.LastChild())->AppendData(LONG("more")); },
    [](Document&, Element& r) { r.GetAttributeNodeNS("urn:p", "y")->SetPrefix(LONG("prefix")); },
    [](Document&, Element& r) { const NodePtr clone(r.CloneNode(true)); },
    [](Document&, Element& r) { const NodePtr clone(r.CloneTree()); },
    [](Document& d, Element& r) { const NodePtr copy(d.ImportNode(r, true)); },
    [](Document& d, Element& r) {
        NodePtr made(d.CreateTextNode(LONG("text")));
        r.AppendChild(made.get());
        made.release();
        r.Normalize();
    },
    [](Document& d, Element&) { d.GetElementsByTagName(LONG("name")).Length(); },
    [](Document& d, Element& r) {
        r.ChildNodes().Item(2);
        EXPECT_EQ(d.GetElementById("i"), r.FirstChild()->NextSibling());
    },
    [](Document& d, Element& r) { NodePtr(d.RemoveChild(&r)); },
};

TEST(DomAllocation, EveryAllocationOfAnEditMayFail) {
    long all = 0;
    int number = 0;
    for (const Edit edit : kEdits) {
        SCOPED_TRACE("edit " + std::to_string(number++));
        all += FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
            {
                std::unique_ptr<Document> document;
                FailingAllocation::Exempt([&] {
                    document = std::make_unique<Document>();
                    document->LoadXml(kEdited);
                });
                const bool hasMemory =
                    HasMemory([&] { edit(*document, *document->DocumentElement()); });
                FailingAllocation::Exempt([&] {
                    // Where there is no memory to remember that a link differs from the true one,
                    // the true one shows.
                    EXPECT_TRUE(hasMemory || failure.HasFailed());
                    const NodePtr copy(document->CloneTree());
                    EXPECT_EQ(TreeBelow(*copy), TreeBelow(*document));
                    if (!hasMemory) edit(*document, *document->DocumentElement());
                    document->LoadXml("<again/>");
                    EXPECT_EQ(TreeBelow(*document), Lines{"Element again"});
                });
            }
            FailingAllocation::Exempt([&] { EXPECT_EQ(failure.LiveCount(), 0); });
        });
    }
    // 42 with pointers of 64 bits, 32 with those of 32; each edit that allocates does in both.
    EXPECT_GT(all, sizeof(void*) < 8 ? 30 : 40);
}

// Writing.

class NullWriteStream : public IO::Stream {
public:
    long written = 0;

    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char*, int, int count) override { written += count; }
};

TEST(DomAllocation, EveryAllocationOfWritingMayFail) {
    Document document;
    Load(document, kDocuments[0], true);
    Element& root = *document.DocumentElement();
    root.SetAttributeNS(LONG("urn:n"), "n", LONG("value"));
    root.AppendChild(document.CreateElementNS(LONG("urn:q"), LONG("q:q")));
    root.AppendChild(document.CreateComment(LONG("--")));
    const Lines before = TreeBelow(document);
    long length = 0;
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        NullWriteStream stream;
        const bool hasMemory = HasMemory([&] {
            Xml::UTF8Encoding utf8(false, false);
            Xml::XmlTextWriter writer(&stream, &utf8);
            Dom::WriteNode(document, writer);
            writer.Close();
        });
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(hasMemory, !failure.HasFailed());
            EXPECT_EQ(failure.LiveCount(), 0);
            EXPECT_EQ(TreeBelow(document), before);
        });
        length = stream.written;
    });
    EXPECT_GT(failures, 10);
    EXPECT_GT(length, 500);
}

}  // namespace
