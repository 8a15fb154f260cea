// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Declares the classes of the streams for headers that only point to them.

namespace IO {

class BufferedStream;
class CompressionMode;
class FileMode;
class FileStream;
class GZipStream;
class MemoryStream;
class SeekOrigin;
class Stream;
class StringStream;
class ZipFileStream;

}  // namespace IO

namespace Xml {

class Exception;

}  // namespace Xml
