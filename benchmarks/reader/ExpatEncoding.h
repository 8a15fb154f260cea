// SPDX-License-Identifier: MIT
#pragma once

#include <expat.h>

namespace bench {

/// Tells expat what the bytes of an encoding are that it does not know, as iconv says; only where
/// each is a character. To be set by XML_SetUnknownEncodingHandler().
int XMLCALL MapEncoding(void* unused, const XML_Char* name, XML_Encoding* encoding);

}  // namespace bench
