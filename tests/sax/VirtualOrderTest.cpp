// SPDX-License-Identifier: MIT
//
// The virtual functions of the interfaces stand in their tables in the order of the documentation.
#include <espalier/sax/Attributes.h>
#include <espalier/sax/ContentHandler.h>
#include <espalier/sax/DTDHandler.h>
#include <espalier/sax/EntityResolver.h>
#include <espalier/sax/ErrorHandler.h>
#include <espalier/sax/Locator.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <vector>

namespace {

// Returns which virtual function behind the destructor, which takes two places, a pointer is of.
// In the Itanium C++ ABI, as x86-64 has it, such a pointer begins with 1 more than an offset in the
// table.
template <typename Function>
std::size_t PlaceOf(Function function) {
    std::size_t word = 0;
    std::memcpy(&word, &function, sizeof(word));
    return (word - 1) / sizeof(void*) - 2;
}

template <typename... Functions>
void ExpectInOrder(Functions... functions) {
#ifdef __x86_64__
    const std::vector<std::size_t> places = {PlaceOf(functions)...};
    for (std::size_t i = 0; i < places.size(); ++i)
        EXPECT_EQ(places[i], i);
#else
    GTEST_SKIP() << "pointers to members are of another form here";
#endif
}

TEST(VirtualOrder, OfContentHandler) {
    using H = sax::ContentHandler;
    ExpectInOrder(&H::setDocumentLocator, &H::startDocument, &H::endDocument,
                  &H::startPrefixMapping, &H::endPrefixMapping, &H::startElement, &H::endElement,
                  &H::characters, &H::ignorableWhitespace, &H::processingInstruction,
                  &H::skippedEntity);
}

TEST(VirtualOrder, OfTheOtherHandlers) {
    ExpectInOrder(&sax::DTDHandler::notationDecl, &sax::DTDHandler::unparsedEntityDecl);
    ExpectInOrder(&sax::EntityResolver::resolveEntity);
    ExpectInOrder(&sax::ErrorHandler::warning, &sax::ErrorHandler::error,
                  &sax::ErrorHandler::fatalError);
}

TEST(VirtualOrder, OfLocator) {
    using L = sax::Locator;
    ExpectInOrder(&L::getPublicId, &L::getSystemId, &L::getLineNumber, &L::getColumnNumber);
}

TEST(VirtualOrder, OfAttributes) {
    using A = sax::Attributes;
    using ByIndex = const char* (A::*)(int) const;
    using ByName = const char* (A::*)(const char*) const;
    using ByPair = const char* (A::*)(const char*, const char*) const;
    ExpectInOrder(&A::getLength, &A::getURI, &A::getLocalName, &A::getQName,
                  static_cast<ByName>(&A::getType), static_cast<ByPair>(&A::getType),
                  static_cast<ByIndex>(&A::getType), static_cast<ByName>(&A::getValue),
                  static_cast<ByPair>(&A::getValue), static_cast<ByIndex>(&A::getValue),
                  static_cast<int (A::*)(const char*) const>(&A::getIndex),
                  static_cast<int (A::*)(const char*, const char*) const>(&A::getIndex));
}

}  // namespace
