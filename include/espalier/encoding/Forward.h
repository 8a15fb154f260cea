// SPDX-License-Identifier: MIT
#pragma once

namespace Xml {

class ASCIIEncoding;
class Encoding;
class Latin1Encoding;
class SingleByteEncoding;
class UTF8Encoding;
class Ucs4UnicodeEncoding;
class UnicodeEncoding;

namespace detail {

class CharCodec;  // private to the library

}  // namespace detail

}  // namespace Xml
