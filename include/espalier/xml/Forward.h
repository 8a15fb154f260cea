// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Declares the classes of this folder for headers that only name them.

namespace Xml {
class XmlAttributeRange;
class XmlAttributeRef;
class XmlConformance;
class XmlEntityHandling;
class XmlNodeType;
class XmlSpace;
class XmlTextReader;
struct XmlEntityLimits;
}  // namespace Xml
