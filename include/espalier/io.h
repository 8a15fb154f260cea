// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// All of the streams: include this one, or the headers that are needed.

/// \namespace IO
/// Byte streams: files, memory, strings, gzip data, members of zip archives.

#include <espalier/base/astring.h>
#include <espalier/io/BufferedStream.h>
#include <espalier/io/CompressionMode.h>
#include <espalier/io/Exception.h>
#include <espalier/io/FileMode.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/Forward.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/SeekOrigin.h>
#include <espalier/io/Stream.h>
#include <espalier/io/StringStream.h>
#include <espalier/io/ZipFileStream.h>
