// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/CharCodec.h"

// The one instance of each codec. They are constants: they exist before any code runs, nothing
// happens at their end, and any thread may use them. Compare codecs by address.

namespace Xml::detail {

const CharCodec& Utf8Codec();
const CharCodec& Utf16BeCodec();
const CharCodec& Utf16LeCodec();
const CharCodec& Ucs2BeCodec();
const CharCodec& Ucs2LeCodec();
const CharCodec& Ucs4BeCodec();
const CharCodec& Ucs4LeCodec();
const CharCodec& AsciiCodec();
const CharCodec& Latin1Codec();
const CharCodec& Windows1250Codec();
const CharCodec& Windows1251Codec();
const CharCodec& Windows1252Codec();
const CharCodec& Windows1254Codec();
const CharCodec& Windows1257Codec();
const CharCodec& Gb2312Codec();
const CharCodec& EucKrCodec();

/// Returns the codec of the same name that gives characters above U+07FF as UTF-8, too; most codecs
/// do so themselves.
const CharCodec& ExactCodec(const CharCodec& codec);

}  // namespace Xml::detail
