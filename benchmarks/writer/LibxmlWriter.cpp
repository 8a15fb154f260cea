// SPDX-License-Identifier: MIT
// The text writer of libxml2 on a buffer, which is kept.
#include "writer/DocumentWriter.h"

#include <libxml/xmlversion.h>
#include <libxml/xmlwriter.h>

#include <new>
#include <stdexcept>

namespace bench {

namespace {

const xmlChar* Chars(std::string_view text) {
    return reinterpret_cast<const xmlChar*>(text.data());
}

class LibxmlWriter final : public DocumentWriter {
public:
    explicit LibxmlWriter(const Recording& recording)
        : recording_(recording), buffer_(xmlBufferCreate()) {
        if (buffer_ == nullptr) throw std::bad_alloc();
    }
    LibxmlWriter(const LibxmlWriter&) = delete;
    LibxmlWriter& operator=(const LibxmlWriter&) = delete;
    ~LibxmlWriter() override { xmlBufferFree(buffer_); }

    void Write() override {
        xmlBufferEmpty(buffer_);
        writer_ = xmlNewTextWriterMemory(buffer_, 0);
        if (writer_ == nullptr) throw std::bad_alloc();
        isRefused_ = false;
        Replay(recording_, *this);
        xmlFreeTextWriter(writer_);  // hands on what it still holds
        if (isRefused_) throw std::runtime_error("a call was refused");
    }

    std::string_view Output() const override {
        return {reinterpret_cast<const char*>(xmlBufferContent(buffer_)),
                static_cast<std::size_t>(xmlBufferLength(buffer_))};
    }

    // See Replay().
    void Start(std::string_view name) { Check(xmlTextWriterStartElement(writer_, Chars(name))); }
    void Attribute(std::string_view name, std::string_view value) {
        Check(xmlTextWriterWriteAttribute(writer_, Chars(name), Chars(value)));
    }
    void Text(std::string_view text) { Check(xmlTextWriterWriteString(writer_, Chars(text))); }
    void End() { Check(xmlTextWriterEndElement(writer_)); }

private:
    void Check(int result) { isRefused_ = isRefused_ || result < 0; }

    const Recording& recording_;
    xmlBufferPtr buffer_;                // owned
    xmlTextWriterPtr writer_ = nullptr;  // owned, while a document is written
    bool isRefused_ = false;
};

}  // namespace

std::unique_ptr<DocumentWriter> MakeLibxmlWriter(const Recording& recording) {
    return std::make_unique<LibxmlWriter>(recording);
}

std::string LibxmlWriterVersion() { return LIBXML_DOTTED_VERSION; }

}  // namespace bench
