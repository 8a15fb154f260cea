// SPDX-License-Identifier: MIT
#pragma once

namespace Xml {

class ASCIIEncoding;
class Encoding;
class EucKrEncoding;
class Gb2312Encoding;
class Latin1Encoding;
class SingleByteEncoding;
class UTF8Encoding;
class Ucs4UnicodeEncoding;
class UnicodeEncoding;
class Windows1250Encoding;
class Windows1251Encoding;
class Windows1252Encoding;
class Windows1254Encoding;
class Windows1257Encoding;

namespace detail {

class CharCodec;  // private to the library

}  // namespace detail

}  // namespace Xml
