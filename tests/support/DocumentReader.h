// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"
#include "support/ReaderSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace support {

/// A reader at the beginning of a document, which it keeps.
class DocumentReader {
public:
    /// \param bytesPerRead how many bytes its stream gives at a time; 0 for as many as asked for
    explicit DocumentReader(std::string document, const ReaderSettings& settings = {},
                            int bytesPerRead = 0)
        : document_(std::move(document)), stream_(document_, bytesPerRead) {
        EXPECT_TRUE(reader_.SetStream(stream_.get(), false));
        settings.ApplyTo(reader_);
    }

    Xml::XmlTextReader* operator->() { return &reader_; }
    Xml::XmlTextReader& operator*() { return reader_; }

    /// Reads so many nodes, all of which must be there.
    void ReadNodes(int count) {
        for (int i = 0; i < count; ++i)
            ASSERT_TRUE(reader_.Read()) << document_;
    }

    /// Reads to the first element.
    void ReadToElement() {
        do {
            ASSERT_TRUE(reader_.Read()) << document_;
        } while (reader_.NodeType() != Xml::XmlNodeType::Element);
    }

    /// Reads to the end.
    void ReadAll() {
        while (reader_.Read())
            continue;
    }

private:
    std::string document_;
    DocumentStream stream_;
    Xml::XmlTextReader reader_;
};

}  // namespace support
