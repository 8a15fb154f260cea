// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// All of the library.

#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/encoding.h>
#include <espalier/io.h>
#include <espalier/sax.h>
#include <espalier/xml.h>
