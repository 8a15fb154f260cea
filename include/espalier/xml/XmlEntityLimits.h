// SPDX-License-Identifier: MIT
#pragma once

namespace Xml {

/// How far the entities of one document may expand, so that a small document cannot ask for
/// endless work ("billion laughs").
///
/// A reference is measured when it is met, before anything is expanded: it costs the bytes of the
/// entity's text, and of all that the references in that text expand to. Entities that are
/// declared and never referred to cost nothing.
struct XmlEntityLimits {
    /// The most bytes that all references of a document may expand to together, once that is also
    /// more than `amplification` times the bytes of input read so far.
    long long expandedBytes = 8LL * 1024 * 1024;

    /// How many times the bytes of input read so far may be expanded in any case.
    long long amplification = 100;

    /// How many entities may be nested, one in the text of the other.
    int nesting = 1024;
};

}  // namespace Xml
