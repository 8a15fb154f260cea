// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The encodings that text is written in and converted between.

/// \namespace Xml
/// Encodings, the pull reader, the writer, the hash map, and the exception that everything throws.

#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/DoubleByteEncodings.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/Forward.h>
#include <espalier/encoding/UnicodeEncodings.h>
