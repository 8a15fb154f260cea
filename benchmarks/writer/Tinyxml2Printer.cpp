// SPDX-License-Identifier: MIT
// The printer of tinyxml2 in compact mode, which keeps its buffer.
#include "writer/DocumentWriter.h"

#include <tinyxml2.h>

namespace bench {

namespace {

class Tinyxml2Printer final : public DocumentWriter {
public:
    explicit Tinyxml2Printer(const Recording& recording) : recording_(recording) {}

    void Write() override {
        printer_.ClearBuffer();
        Replay(recording_, *this);
    }

    std::string_view Output() const override {
        return {printer_.CStr(), static_cast<std::size_t>(printer_.CStrSize()) - 1};
    }

    // See Replay().
    void Start(std::string_view name) { printer_.OpenElement(name.data(), kCompact); }
    void Attribute(std::string_view name, std::string_view value) {
        printer_.PushAttribute(name.data(), value.data());
    }
    void Text(std::string_view text) { printer_.PushText(text.data()); }
    void End() { printer_.CloseElement(kCompact); }

private:
    static constexpr bool kCompact = true;

    const Recording& recording_;
    tinyxml2::XMLPrinter printer_{nullptr, kCompact};
};

}  // namespace

std::unique_ptr<DocumentWriter> MakeTinyxml2Printer(const Recording& recording) {
    return std::make_unique<Tinyxml2Printer>(recording);
}

std::string Tinyxml2Version() {
    return std::to_string(TINYXML2_MAJOR_VERSION) + "." + std::to_string(TINYXML2_MINOR_VERSION) +
           "." + std::to_string(TINYXML2_PATCH_VERSION);
}

}  // namespace bench
