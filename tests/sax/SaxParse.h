// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/SAXException.h>
#include <espalier/sax/SAXNotRecognizedException.h>
#include <espalier/sax/SAXNotSupportedException.h>
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/XMLReader.h>

#include "support/DocumentStream.h"

#include <string>
#include <string_view>

namespace support {

/// Parses a text.
inline void ParseText(sax::XMLReader& reader, std::string_view document, int bytesPerRead = 0) {
    DocumentStream stream(document, bytesPerRead);
    reader.parse(sax::InputSource(stream.get(), "text"));
}

/// Calls and returns what was thrown, as "TYPE: MESSAGE"; "" for nothing. The type is one of
/// SAXException, SAXParseException, SAXNotRecognized, SAXNotSupported and Exception; a parse
/// exception and an Exception are followed by their place, an Exception by its argument too.
template <typename Call>
std::string WhatIsThrown(const Call& call) {
    try {
        call();
    } catch (const sax::SAXParseException& error) {
        return "SAXParseException: " + error.getMessage().str() + " @" +
               std::to_string(error.getLineNumber()) + ":" +
               std::to_string(error.getColumnNumber());
    } catch (const sax::SAXNotRecognizedException& error) {
        return "SAXNotRecognized: " + error.getMessage().str();
    } catch (const sax::SAXNotSupportedException& error) {
        return "SAXNotSupported: " + error.getMessage().str();
    } catch (const sax::SAXException& error) {
        return "SAXException: " + error.getMessage().str();
    } catch (const Xml::Exception& error) {
        std::string text = std::string("Exception: ") + error.What();
        if (*error.Argument() != '\0') text += std::string(" (") + error.Argument() + ")";
        return text + " @" + std::to_string(error.LineNumber()) + ":" +
               std::to_string(error.LinePos());
    }
    return "";
}

}  // namespace support
