// SPDX-License-Identifier: MIT
// Picks a few records out of an export of a million that never exists as a whole: a stream makes
// it, a reader reads it, and neither holds more than a record of it.
#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextReader.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>

namespace {

//! [own stream]
// An export with so many records, made while it is read.
class ExportStream : public IO::Stream {
public:
    explicit ExportStream(long records) : records_(records) {}

    bool CanRead() const override { return true; }
    void Close() override {}

    int Read(unsigned char* buffer, int offset, int count) override {
        if (given_ == piece_.size() && !NextPiece()) return 0;
        const std::size_t left = piece_.size() - given_;
        const std::size_t taken = std::min(left, static_cast<std::size_t>(count));
        std::memcpy(buffer + offset, piece_.data() + given_, taken);
        given_ += taken;
        return static_cast<int>(taken);
    }

private:
    bool NextPiece() {
        given_ = 0;
        const long record = next_++;
        if (record > records_ + 1) return false;
        if (record == 0) {
            piece_ = "<export>\n";
        } else if (record <= records_) {
            const char* const state = record % 300'000 == 0 ? "overdue" : "paid";
            piece_ = "<record amount='" + std::to_string(record) + "' state='" + state +
                     "'><to>Hill &amp; Son</to></record>\n";
        } else {
            piece_ = "</export>\n";
        }
        return true;
    }

    std::string piece_;
    std::size_t given_ = 0;
    long next_ = 0;
    long records_;
};
//! [own stream]

//! [pick records]
// Prints the records that are overdue, as they are written, and passes over all others.
void PrintOverdue(IO::Stream& stream) {
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.ReadStartElement("export");
    while (reader.IsStartElement("record")) {
        if (reader.GetAttribute("state") == "overdue") {
            std::cout << reader.ReadOuterXml() << "\n";
        } else {
            reader.SkipElement();
        }
    }
}
//! [pick records]

//! [sum records]
std::int64_t SumAmounts(IO::Stream& stream) {
    std::int64_t sum = 0;
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    while (reader.Read()) {
        if (reader.NodeType() != Xml::XmlNodeType::Element || reader.Name() != "record") continue;
        const std::string_view amount = reader.GetAttribute("amount");
        std::int64_t value = 0;
        std::from_chars(amount.data(), amount.data() + amount.size(), value);
        sum += value;
    }
    return sum;
}
//! [sum records]

}  // namespace

int main() {
    try {
        ExportStream picked(1'000'000);
        PrintOverdue(picked);
        ExportStream summed(100'000);
        std::cout << SumAmounts(summed) << "\n";
    } catch (const Xml::Exception& error) {
        std::cerr << "line " << error.LineNumber() << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
