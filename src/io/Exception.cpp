// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>

namespace Xml {

struct Exception::Texts {
    astring message;
    astring argument;
};

Exception::Exception(const char* message) : Exception(message, astring(), -1, -1) {}

Exception::Exception(const char* message, const astring& argument, int lineNumber, int linePos)
    : Exception(astring(message), argument, lineNumber, linePos) {}

Exception::Exception(const astring& message, const astring& argument, int lineNumber, int linePos)
    : texts_(std::make_shared<const Texts>(Texts{message, argument})),
      lineNumber_(lineNumber),
      linePos_(linePos) {}

Exception::Exception(const Exception& other) noexcept = default;
Exception& Exception::operator=(const Exception& other) noexcept = default;
Exception::~Exception() noexcept = default;

const char* Exception::What() const noexcept { return texts_->message.c_str(); }
const char* Exception::Argument() const noexcept { return texts_->argument.c_str(); }
int Exception::LineNumber() const noexcept { return lineNumber_; }
int Exception::LinePos() const noexcept { return linePos_; }

void Exception::ThrowException(const char* message) { throw Exception(message); }

void Exception::ThrowException(const char* message, const astring& argument, int lineNumber,
                               int linePos) {
    throw Exception(message, argument, lineNumber, linePos);
}

void Exception::ThrowException(const astring& message, const astring& argument, int lineNumber,
                               int linePos) {
    throw Exception(message, argument, lineNumber, linePos);
}

}  // namespace Xml
