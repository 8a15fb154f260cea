// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// \file
/// The XML conformance test suite of the W3C, where ESPALIER_XMLCONF names a directory with
/// `xmlconf-manifest.tsv`, a list of its tests with a row of names above it, and `xmlconf/`, its
/// documents.
namespace conformance {

/// One of the tests of the suite.
struct SuiteTest {
    std::string id;
    std::string path;      ///< of the document, relative to `xmlconf/`
    std::string type;      ///< "valid", "invalid", "not-wf" or "error"
    std::string entities;  ///< the external entities that it takes: "none", "general", ...
    bool namespaces = true;
    std::string recommendation;  ///< "XML1.0", "NS1.0", or one of these with an erratum
    std::string output;          ///< the path of its canonical form, or empty

    /// Tells whether all that decides stands in the document.
    bool IsAlone() const { return entities == "none"; }

    bool IsWellFormed() const { return type == "valid" || type == "invalid"; }
};

/// Tells whether the suite was given.
bool HasSuite();

/// Returns the tests for version 1.0 of XML in its fifth edition and of Namespaces in XML, in the
/// order of the list.
const std::vector<SuiteTest>& SuiteTests();

/// Returns the bytes of a file of the suite.
/// \throws std::runtime_error when there is no such file
std::string SuiteFile(std::string_view path);

}  // namespace conformance

/// Ends a test that needs the suite where there is none.
#define ESPALIER_REQUIRE_SUITE()                                                               \
    if (!conformance::HasSuite()) {                                                            \
        GTEST_SKIP() << "the suite is not given: -DESPALIER_XMLCONF=DIR, see docs/testing.md"; \
    }                                                                                          \
    static_assert(true)
