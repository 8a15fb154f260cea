// SPDX-License-Identifier: MIT
#include <espalier/sax/InputSource.h>

#include "sax/ViewOf.h"

namespace sax {

using detail::ViewOf;

InputSource::InputSource() = default;
InputSource::InputSource(const char* systemId) : systemId_(ViewOf(systemId)) {}
InputSource::InputSource(const astring& systemId) : systemId_(systemId) {}
InputSource::InputSource(IO::Stream* stream, const char* systemId)
    : systemId_(ViewOf(systemId)), byteStream_(stream) {}
InputSource::InputSource(std::FILE* file, const char* systemId)
    : systemId_(ViewOf(systemId)), file_(file) {}
InputSource::InputSource(Xml::XmlTextReader* reader) : reader_(reader) {}

InputSource::InputSource(const InputSource& other) = default;
InputSource& InputSource::operator=(const InputSource& other) = default;
InputSource::~InputSource() = default;

void InputSource::setByteStream(IO::Stream* stream, const astring& systemId) {
    systemId_ = systemId;
    byteStream_ = stream;
}

void InputSource::setByteStream(std::FILE* file, const astring& systemId) {
    systemId_ = systemId;
    file_ = file;
}

}  // namespace sax
