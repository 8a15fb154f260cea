// SPDX-License-Identifier: MIT
#include "Differences.h"

#include <expat.h>

#include <algorithm>
#include <string>

namespace differential {

namespace {

using enum Effect;

// Stands for any character beyond ASCII in a list of signs.
constexpr char kBeyondAscii[] = "\x80";

constexpr Difference kDifferences[] = {
    {Accepted,
     "two-roots",
     "A document has one root element (XML 1.0 [1]).",
     "reads further elements behind it.",
     "A row of records, or a log that grows, can be read without a root around it. "
     "`espalier check` asks for one root.",
     {"<"},
     {},
     {XML_ERROR_JUNK_AFTER_DOC_ELEMENT}},
    {Accepted,
     "spaces",
     "White space stands between attributes, between the parts of the XML declaration, and around "
     "keywords in a document type ([40], [24], [28], [70], [75]).",
     "passes over white space wherever it may be, and asks for it where two names would be one "
     "without it, before NDATA and in declarations of notations.",
     "Nothing can be misunderstood where a quotation mark or a percent sign separates.",
     {"\"", "'"},
     {},
     {XML_ERROR_INVALID_TOKEN, XML_ERROR_XML_DECL, XML_ERROR_SYNTAX}},
    {Accepted,
     "subset",
     "All that stands in the internal subset follows the grammar ([28a] to [65]), also the "
     "declarations of elements and attributes and the targets of instructions.",
     "looks at declarations of entities and notations, comments and instructions, and steps over "
     "all else by counting brackets.",
     "The rest serves validation, which the reader does not do.",
     {"<!DOCTYPE"},
     {},
     {XML_ERROR_SYNTAX, XML_ERROR_INVALID_TOKEN, XML_ERROR_PARTIAL_CHAR, XML_ERROR_PARAM_ENTITY_REF,
      XML_ERROR_UNDEFINED_ENTITY, XML_ERROR_MISPLACED_XML_PI, XML_ERROR_INCOMPLETE_PE,
      XML_ERROR_UNCLOSED_TOKEN, XML_ERROR_RECURSIVE_ENTITY_REF,
      XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF}},
    {Accepted,
     "less",
     "The text of an entity that is used in an attribute has no \"<\" (3.1, No < in Attribute "
     "Values).",
     "puts the text into the value as it is.",
     "There it is text in any case, and the value is escaped again when it is written.",
     {"<!ENTITY"},
     {},
     {XML_ERROR_INVALID_TOKEN}},
    {Accepted,
     "external",
     "External entities are not referred to in attributes, nor unparsed ones anywhere but in "
     "values "
     "of type ENTITY (3.1, No External Entity References; 4.1, Parsed Entity).",
     "lets them stand for nothing, as it does with external entities in text.",
     "Nothing but the document is ever fetched, so all external entities are alike.",
     {"<!ENTITY"},
     {},
     {XML_ERROR_ATTRIBUTE_EXTERNAL_ENTITY_REF, XML_ERROR_BINARY_ENTITY_REF}},
    {Accepted,
     "crossing",
     "An element ends in the entity in which it begins (4.3.2).",
     "counts tags, wherever they come from. A tag, a comment, a section and a reference do end "
     "where they begin.",
     "The nodes are in order, because end tags match start tags.",
     {"<!ENTITY"},
     {},
     {XML_ERROR_ASYNC_ENTITY, XML_ERROR_TAG_MISMATCH, XML_ERROR_NO_ELEMENTS}},
    {Accepted,
     "brackets",
     "\"]]>\" does not stand in text ([14]), nor in the text of an entity.",
     "refuses it in the document itself and in entities with tags, but takes the text of other "
     "entities as it is.",
     "It is text, and escaped again when it is written.",
     {"<!ENTITY"},
     {},
     {XML_ERROR_INVALID_TOKEN}},
    {Accepted,
     "prefixes",
     "Prefixes are declared and not bound to an empty name, the prefixes xml and xmlns keep their "
     "meaning, the local part of a name is a name, and names of entities have no colon (Namespaces "
     "in XML 3 to 7).",
     "takes such names as they are; what has no namespace has an empty one.",
     "Such documents are about, and their nodes can be told.",
     {":"},
     {},
     {XML_ERROR_UNBOUND_PREFIX, XML_ERROR_UNDECLARING_PREFIX, XML_ERROR_RESERVED_PREFIX_XML,
      XML_ERROR_RESERVED_PREFIX_XMLNS, XML_ERROR_RESERVED_NAMESPACE_URI, XML_ERROR_INVALID_TOKEN,
      XML_ERROR_SYNTAX}},
    {Accepted,
     "encodings",
     "It is fatal when an encoding is unknown or not the one that is declared, and its name "
     "follows [81] (4.3.3).",
     "goes on with the encoding that the first bytes show, UTF-8 in general.",
     "Declarations are wrong more often than bytes are; bytes that are no UTF-8 are refused.",
     {"encoding"},
     {},
     {XML_ERROR_UNKNOWN_ENCODING, XML_ERROR_XML_DECL, XML_ERROR_INVALID_TOKEN, XML_ERROR_SYNTAX}},
    {Accepted,
     "noncharacters",
     "U+FFFE and U+FFFF are no characters ([2]).",
     "accepts them in text, comments and values, though not as references.",
     "The codecs class each character above ASCII as letter, digit, combining or other, and leave "
     "it at that.",
     {kBeyondAscii},
     {},
     {XML_ERROR_INVALID_TOKEN}},
    {Accepted,
     "ascii",
     "Bytes above 7F are no ASCII (4.3.3).",
     "takes a document that declares US-ASCII for one of ISO-8859-1.",
     "Both are one codec. See encodings.md.",
     {"encoding"},
     {},
     {XML_ERROR_INVALID_TOKEN}},
    {Accepted,
     "cut",
     "A character that the end of the input cuts is an error (4.3.3).",
     "takes it for the end of the input.",
     "What went before was complete; where it was not, that is the error.",
     {kBeyondAscii},
     {},
     {XML_ERROR_PARTIAL_CHAR, XML_ERROR_UNCLOSED_TOKEN, XML_ERROR_JUNK_AFTER_DOC_ELEMENT}},

    {Refused,
     "names",
     "Names follow [4] and [4a].",
     "takes the letters, digits and combining characters of the tables of the fourth edition, "
     "without ideographs and extenders, and in ISO-8859-1 and US-ASCII no accented letters. With "
     "namespaces off no name of an element begins with a colon.",
     "The classes of characters are those of the codecs, and are the same for all that they are "
     "used for.",
     {kBeyondAscii, "&#"},
     {"Syntax error: Expected element name", "Unexpected token", "Syntax error in element",
      "Unexpected token in processing instruction", "Bad name"},
     {}},
    {Refused,
     "spellings",
     "The names of encodings mean the same in capitals and small letters (4.3.3).",
     "knows the spellings that encodings.md lists, and takes another for the name of an unknown "
     "encoding.",
     "The spellings are those of the registry of names.",
     {"encoding"},
     {"Invalid character"},
     {}},
    {Refused,
     "versions",
     "A processor of XML 1.0 reads documents of all versions 1.x ([26]).",
     "reads \"1.0\" only.",
     "The rules of version 1.1 are other ones.",
     {"version"},
     {"Unsupported XML version"},
     {}},
    {Refused,
     "languages",
     "xml:lang may have any value (2.12).",
     "asks for a language tag of the form \"en-GB\", or nothing; with `ExpandNothing` and "
     "`ExpandCharEntities` a reference to an entity is no such tag.",
     "XmlLang() then is a language tag that can be compared.",
     {"xml:lang"},
     {"Bad language ID"},
     {}},
    {Refused,
     "space",
     "Other values of xml:space than \"default\" and \"preserve\" are an error that need not "
     "be fatal (2.10).",
     "refuses them, and with `ExpandNothing` and `ExpandCharEntities` references to entities, too.",
     "GetXmlSpace() is to mean something.",
     {"xml:space"},
     {"Invalid xml:space attribute value"},
     {}},
    {Refused,
     "elsewhere",
     "With an external subset, or behind a reference to a parameter entity, an undeclared entity "
     "is no "
     "error (4.1, Entity Declared).",
     "with `ExpandEntities` refuses every reference to an entity that the internal subset does not "
     "declare. With "
     "`ExpandNothing` and `ExpandCharEntities` it refuses none of them.",
     "Whoever asks for all entities to be expanded is told when that cannot be done.",
     {"SYSTEM", "PUBLIC", "%"},
     {"Undeclared entity"},
     {}},
    {Refused,
     "notations",
     "That notations are declared, and once, is a matter of validity (4.7), and white space may "
     "follow a public identifier ([82]).",
     "asks for a notation to be declared before NDATA names it, and once, and for \">\" right "
     "behind a public identifier alone.",
     "What is declared can be looked up at once; white space announces a system identifier.",
     {"NOTATION", "NDATA"},
     {"Reference to undeclared notation", "Duplicate notation name",
      "Public ID requires two literals"},
     {}},
    {Refused,
     "limits",
     "Nothing is said about lengths.",
     "refuses names and identifiers of more than 1024 bytes, and entities that expand beyond all "
     "measure. See limits.md.",
     "A stranger's document may not ask for endless memory and time.",
     {"<"},
     {"Buffer overflow while reading markup token", "Input buffer overflow",
      "Entity expansion limit exceeded", "Entity nesting limit exceeded"},
     {}},

    {Told,
     "defaults",
     "Attributes have the defaults that the internal subset declares (3.3.2).",
     "tells the attributes of the tag.",
     "Lists of attributes are stepped over.",
     {"<!ATTLIST"},
     {},
     {}},
    {Told,
     "types",
     "Values of types other than CDATA are trimmed, and their white space joined (3.3.3).",
     "takes all values for CDATA.",
     "Lists of attributes are stepped over.",
     {"<!ATTLIST"},
     {},
     {}},
    {Told,
     "references",
     "Line ends become line feeds, and white space in public identifiers blanks; a line end or a "
     "tab that a character reference stands for stays as it is (2.11, 3.3.3, 4.2.2).",
     "with `SetNormalization(true)` normalizes that, too, but nothing in instructions and in the "
     "document type; otherwise it normalizes nothing.",
     "A value is normalized as a whole, when it is asked for.",
     {"&#", "\r"},
     {},
     {}},
    {Told,
     "parameters",
     "Parameter entities between declarations are replaced, and declarations behind one that was "
     "not read do not count (2.8, 5.1).",
     "replaces none; all declarations of the internal subset count.",
     "What the document itself declares is known.",
     {"%"},
     {},
     {}},
};

}  // namespace

bool Difference::HasMessage(std::string_view message) const {
    return std::any_of(messages.begin(), messages.end(),
                       [message](const char* own) { return own != nullptr && message == own; });
}

bool Difference::HasExpatError(int error) const {
    return error != 0 &&
           std::find(expatErrors.begin(), expatErrors.end(), error) != expatErrors.end();
}

bool Difference::MayShowIn(std::string_view document) const {
    std::string text(document);
    std::erase(text, '\0');  // as UTF-16 has them
    return std::any_of(signs.begin(), signs.end(), [&text](const char* sign) {
        if (sign == nullptr) return false;
        if (sign != kBeyondAscii) return text.find(sign) != std::string::npos;
        return std::any_of(text.begin(), text.end(),
                           [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    });
}

std::span<const Difference> Differences() { return kDifferences; }

const Difference* FindDifference(std::string_view name) {
    const auto found =
        std::find_if(std::begin(kDifferences), std::end(kDifferences),
                     [name](const Difference& difference) { return name == difference.name; });
    return found == std::end(kDifferences) ? nullptr : &*found;
}

}  // namespace differential
