// SPDX-License-Identifier: MIT
// pugixml saves a tree, which is loaded once from what our writer writes; saving alone is measured.
#include "writer/DocumentWriter.h"

#include <pugixml.hpp>
#include <stdexcept>

namespace bench {

namespace {

class StringWriter final : public pugi::xml_writer {
public:
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

class PugixmlSave final : public DocumentWriter {
public:
    explicit PugixmlSave(const Recording& recording) {
        const auto writer = MakeEspalierWriter(recording);
        writer->Write();
        const std::string_view source = writer->Output();
        const pugi::xml_parse_result result =
            document_.load_buffer(source.data(), source.size(),
                                  pugi::parse_full | pugi::parse_ws_pcdata, pugi::encoding_utf8);
        if (!result) throw std::runtime_error(result.description());
    }

    void Write() override {
        writer_.text.clear();
        document_.save(writer_, "", pugi::format_raw | pugi::format_no_declaration,
                       pugi::encoding_utf8);
    }

    std::string_view Output() const override { return writer_.text; }

private:
    pugi::xml_document document_;
    StringWriter writer_;
};

}  // namespace

std::unique_ptr<DocumentWriter> MakePugixmlSave(const Recording& recording) {
    return std::make_unique<PugixmlSave>(recording);
}

std::string PugixmlVersion() {
    return std::to_string(PUGIXML_VERSION / 1000) + "." +
           std::to_string(PUGIXML_VERSION / 10 % 100);
}

}  // namespace bench
