// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Declares the classes of this folder for headers that only name them.

namespace Xml {
class XmlEntityHandling;
class XmlNodeType;
class XmlSpace;
class XmlTextReader;
}  // namespace Xml
