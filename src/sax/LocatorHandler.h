// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/sax/InputSource.h>
#include <espalier/sax/Locator.h>
#include <espalier/xml/XmlTextReader.h>

namespace sax::detail {

/// Tells where a reader is in the document of an input source.
class LocatorHandler final : public Locator {
public:
    LocatorHandler(const Xml::XmlTextReader& reader, const InputSource& source)
        : reader_(reader), source_(source) {}

    const char* getPublicId() const override { return source_.getPublicId().c_str(); }
    const char* getSystemId() const override { return source_.getSystemId().c_str(); }
    int getLineNumber() const override { return reader_.LineNumber(); }
    int getColumnNumber() const override { return reader_.LinePosition(); }

private:
    const Xml::XmlTextReader& reader_;
    const InputSource& source_;
};

}  // namespace sax::detail
