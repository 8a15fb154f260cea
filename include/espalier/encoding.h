// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The encodings that text is written in and converted between.

#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/DoubleByteEncodings.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/Forward.h>
#include <espalier/encoding/UnicodeEncodings.h>
