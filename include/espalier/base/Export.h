// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Marks what the shared library offers to its users; everything else is hidden.

#if defined(_WIN32) && defined(ESPALIER_BUILDING)
#    define ESPALIER_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#    define ESPALIER_EXPORT __declspec(dllimport)
#else
#    define ESPALIER_EXPORT __attribute__((visibility("default")))
#endif
