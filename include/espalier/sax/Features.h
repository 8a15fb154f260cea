// SPDX-License-Identifier: MIT
#pragma once

/// The names of the features that an XMLReader knows.
namespace sax::features {

/// Names have a namespace and a local name. On at first.
inline constexpr char kNamespaces[] = "http://xml.org/sax/features/namespaces";
/// Is kept. Deliberate: it makes no difference, as declarations of namespaces are reported as
/// attributes always, and prefix mappings never.
inline constexpr char kNamespacePrefixes[] = "http://xml.org/sax/features/namespace-prefixes";
/// Is off and cannot be set.
inline constexpr char kValidation[] = "http://xml.org/sax/features/validation";
/// Is off and cannot be set: attributes that declare namespaces are in none.
inline constexpr char kXmlnsUris[] = "http://xml.org/sax/features/xmlns-uris";
/// Is off and cannot be set.
inline constexpr char kXml11[] = "http://xml.org/sax/features/xml-1.1";
/// Whether the document says that it is standalone. Can be read during a parse only.
inline constexpr char kIsStandalone[] = "http://xml.org/sax/features/is-standalone";
/// Line ends in values are normalized, as by Xml::XmlTextReader::SetNormalization(). Off at first.
inline constexpr char kNormalization[] = "http://espalier.example/sax/features/normalization";

}  // namespace sax::features
