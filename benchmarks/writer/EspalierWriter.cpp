// SPDX-License-Identifier: MIT
// Our writer on a stream in memory, which keeps its buffer. Line breaks stay as they are: the peers
// do not change them either.
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/SeekOrigin.h>
#include <espalier/xml/XmlTextWriter.h>

#include "writer/DocumentWriter.h"
#include "writer/WriterCalls.h"

namespace bench {

namespace {

class EspalierWriter final : public DocumentWriter {
public:
    explicit EspalierWriter(const Recording& recording) : recording_(recording) {}

    void Write() override {
        stream_.Seek(0, IO::SeekOrigin::Begin);
        stream_.SetLength(0);
        Xml::XmlTextWriter writer(&stream_, &encoding_);
        writer.SetNewLineHandling(Xml::NewLineHandling::NoHandling);
        WriterCalls calls(writer);
        Replay(recording_, calls);
        writer.Close();
    }

    std::string_view Output() const override {
        return {reinterpret_cast<const char*>(stream_.GetBuffer()),
                static_cast<std::size_t>(stream_.Length())};
    }

private:
    const Recording& recording_;
    IO::MemoryStream stream_;
    Xml::UTF8Encoding encoding_;
};

}  // namespace

std::unique_ptr<DocumentWriter> MakeEspalierWriter(const Recording& recording) {
    return std::make_unique<EspalierWriter>(recording);
}

}  // namespace bench
