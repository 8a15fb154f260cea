// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

#include <exception>
#include <memory>

namespace Xml {

/// The exception that the library throws: a fixed English message, an optional argument that
/// names the offending token, operation or node type, and a line and a position in the input.
///
/// What() returns the message alone; Argument(), LineNumber() and LinePos() give the rest. It
/// derives from std::exception, so that a caller's general handler sees it too. Copies are cheap
/// and do not throw.
///
/// \code
///     try {
///         while (reader.Read()) {}
///     } catch (Xml::Exception& error) {
///         std::cerr << error.LineNumber() << ":" << error.LinePos() << ": " << error.What();
///     }
/// \endcode
class ESPALIER_EXPORT Exception : public std::exception {
public:
    /// Makes an exception with an empty argument and an unknown place (-1, -1).
    explicit Exception(const char* message);
    Exception(const char* message, const astring& argument, int lineNumber, int linePos);
    Exception(const astring& message, const astring& argument, int lineNumber, int linePos);

    Exception(const Exception& other) noexcept;
    Exception& operator=(const Exception& other) noexcept;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    ~Exception() noexcept override;

    /// Returns the message, without argument or place.
    virtual const char* What() const noexcept;

    const char* what() const noexcept override { return What(); }

    /// Returns the second text: a name, a value, the offending token; empty by default.
    const char* Argument() const noexcept;

    /// Returns the line, from 1 on, or -1 when it is not known.
    int LineNumber() const noexcept;

    /// Returns the position in the line in characters, from 1 on, or -1 when it is not known.
    int LinePos() const noexcept;

    /// \name Throw an exception made from the arguments
    /// The only way in which the library raises errors.
    /// @{
    [[noreturn]] static void ThrowException(const char* message);
    [[noreturn]] static void ThrowException(const char* message, const astring& argument,
                                            int lineNumber, int linePos);
    [[noreturn]] static void ThrowException(const astring& message, const astring& argument,
                                            int lineNumber, int linePos);
    /// @}

private:
    struct Texts;

    std::shared_ptr<const Texts> texts_;  // shared by copies, so that copying cannot fail
    int lineNumber_ = -1;
    int linePos_ = -1;
};

}  // namespace Xml
