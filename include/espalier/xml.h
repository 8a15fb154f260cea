// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The reader and what belongs to it: namespaces and the hash map.

#include <espalier/io/Exception.h>
#include <espalier/xml/Formatting.h>
#include <espalier/xml/Forward.h>
#include <espalier/xml/HashItem.h>
#include <espalier/xml/HashIterator.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/NewLineHandling.h>
#include <espalier/xml/TextArgument.h>
#include <espalier/xml/WriteState.h>
#include <espalier/xml/XmlAttributeRange.h>
#include <espalier/xml/XmlAttributeRef.h>
#include <espalier/xml/XmlConformance.h>
#include <espalier/xml/XmlEntityHandling.h>
#include <espalier/xml/XmlEntityLimits.h>
#include <espalier/xml/XmlHash.h>
#include <espalier/xml/XmlNamespace.h>
#include <espalier/xml/XmlNodeType.h>
#include <espalier/xml/XmlNsSupport.h>
#include <espalier/xml/XmlSpace.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>
