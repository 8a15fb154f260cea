// SPDX-License-Identifier: MIT
//
// All documents of the suite in bytes that are not their own, and pieces of them.
#include "Outcome.h"
#include "Rewriting.h"
#include "Suite.h"
#include "support/DocumentForms.h"
#include "support/EscapedText.h"
#include "support/Sanitizers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

namespace {

using conformance::Mode;
using conformance::Outcome;
using conformance::Rewrite;
using conformance::SuiteFile;
using conformance::SuiteTest;
using conformance::SuiteTests;
using support::DocumentForm;
using Unit = support::DocumentForm::Unit;

// Documents with more characters than this are not cut everywhere.
constexpr std::size_t kLongestToCutEverywhere = 4096;

// Of the pieces one in so many is read by single bytes as well.
constexpr std::size_t kBySingleBytes = 37;

constexpr DocumentForm kUtf8 = {"UTF-8", Unit::Utf8, false};
constexpr DocumentForm kMarkedUtf8 = {"UTF-8 with mark", Unit::Utf8, true};
constexpr DocumentForm kUtf16LE = {"UTF-16LE with mark", Unit::Utf16LE, true};
constexpr DocumentForm kUtf16BE = {"UTF-16BE with mark", Unit::Utf16BE, true};

Mode ModeOf(const SuiteTest& test, Xml::XmlConformance conformance) {
    return {conformance, test.namespaces};
}

Mode StandardFor(const SuiteTest& test) { return ModeOf(test, Xml::XmlConformance::Standard); }

std::string_view NameOf(const DocumentForm& form) {
    return form.unit == Unit::Utf8 ? "UTF-8" : "UTF-16";
}

// Compares what was told, and shows no more than where it differs.
void ExpectSame(const Outcome& actual, const Outcome& expected, const std::string& where) {
    EXPECT_EQ(actual.error, expected.error) << where;
    constexpr std::size_t kShown = 40;
    const std::string& form = actual.form;
    const auto place = static_cast<std::size_t>(
        std::mismatch(form.begin(), form.end(), expected.form.begin(), expected.form.end()).first -
        form.begin());
    EXPECT_TRUE(form == expected.form)
        << where << " differs at " << place << ": "
        << support::Escape(std::string_view(form).substr(place, kShown)) << "\n    instead of "
        << support::Escape(std::string_view(expected.form).substr(place, kShown));
}

TEST(SuiteDocuments, TellTheSameInReadsOfAnySize) {
    ESPALIER_REQUIRE_SUITE();
    for (const SuiteTest& test : SuiteTests()) {
        const std::string document = SuiteFile(test.path);
        for (const auto conformance :
             {Xml::XmlConformance::Standard, Xml::XmlConformance::Compatible}) {
            const Mode mode = ModeOf(test, conformance);
            const Outcome whole = ReadNodes(document, mode);
            for (const int bytesPerRead : {1, 2, 3, 7}) {
                ExpectSame(ReadNodes(document, mode, bytesPerRead), whole,
                           test.id + " by " + std::to_string(bytesPerRead) + ", " +
                               mode.conformance.ToString());
            }
        }
    }
}

TEST(SuiteDocuments, TellTheSameInOtherEncodings) {
    ESPALIER_REQUIRE_SUITE();
    int rewritten = 0;
    for (const SuiteTest& test : SuiteTests()) {
        const std::string document = SuiteFile(test.path);
        const Outcome own = ReadNodes(document, StandardFor(test));
        for (const DocumentForm& form : {kUtf8, kMarkedUtf8, kUtf16LE, kUtf16BE}) {
            const std::optional<std::string> other = Rewrite(document, form, NameOf(form));
            if (!other || test.type == "error") continue;
            const Outcome outcome = ReadNodes(*other, StandardFor(test));
            const std::string where = test.id + " in " + form.name;
            EXPECT_EQ(outcome.IsAccepted(), own.IsAccepted())
                << where << ": " << outcome.error << own.error;
            if (own.IsAccepted()) ExpectSame(outcome, own, where);
            ++rewritten;
        }
    }
    EXPECT_EQ(rewritten, 7830);
}

// What remains of a document is one, too, when only the white space behind it is missing, or some
// of the comments and instructions there.
class Cutter {
public:
    Cutter(const SuiteTest& test, std::string_view document, std::size_t unit)
        : test_(test), mode_(StandardFor(test)), document_(document), unit_(unit) {
        whole_ = ReadNodes(document, mode_);
        end_ = document.size();
        while (end_ >= unit && IsBlankAt(end_ - unit))
            end_ -= unit;
    }

    // Reads what is left of the document before that offset.
    void CutAt(std::size_t offset) {
        ++pieces_;
        const std::string_view piece = document_.substr(0, offset);
        const Outcome outcome = ReadNodes(piece, mode_);
        if (offset % kBySingleBytes == document_.size() % kBySingleBytes) {
            ExpectSame(ReadNodes(piece, mode_, 1), outcome, Where(offset));
        }
        if (!whole_.IsAccepted()) return;
        if (outcome.IsAccepted()) {
            EXPECT_TRUE(IsWhole(outcome, offset)) << Where(offset);
        } else {
            EXPECT_TRUE(offset < end_ || offset % unit_ != 0) << Where(offset) << outcome.error;
        }
    }

    int Pieces() const { return pieces_; }

private:
    bool IsBlankAt(std::size_t offset) const {
        const std::string_view unit = document_.substr(offset, unit_);
        if (unit_ == 1) return Contains(" \t\r\n", unit[0]);
        const bool isLittle = document_.starts_with("\xFF\xFE");
        return unit[isLittle ? 1 : 0] == '\0' && Contains(" \t\r\n", unit[isLittle ? 0 : 1]);
    }

    static bool Contains(std::string_view set, char c) {
        return set.find(c) != std::string_view::npos;
    }

    // Tells whether nothing but instructions is missing in the form of an accepted piece.
    bool IsWhole(const Outcome& piece, std::size_t offset) const {
        if (offset % unit_ != 0 || !whole_.form.starts_with(piece.form)) return false;
        const std::string_view rest = std::string_view(whole_.form).substr(piece.form.size());
        return !piece.form.empty() && (rest.empty() || rest.starts_with("<?"));
    }

    std::string Where(std::size_t offset) const {
        return test_.id + " in units of " + std::to_string(unit_) + ", cut at " +
               std::to_string(offset) + ": ";
    }

    const SuiteTest& test_;
    Mode mode_;
    std::string_view document_;
    std::size_t unit_;  // bytes
    Outcome whole_;
    std::size_t end_ = 0;  // behind all that is not white space at the end
    int pieces_ = 0;
};

// Cuts a document everywhere; a long one at fewer places, so that no more is read for it.
int CutEverywhere(const SuiteTest& test, std::string_view document, std::size_t unit) {
    const std::size_t times = 1 + document.size() / (unit * kLongestToCutEverywhere + 1);
    const std::size_t stride = times * times * support::kStride;
    Cutter cutter(test, document, unit);
    for (std::size_t offset = 0; offset < document.size(); offset += stride)
        cutter.CutAt(offset);
    return cutter.Pieces();
}

TEST(SuiteDocuments, AreRefusedWhenTheyAreCut) {
    ESPALIER_REQUIRE_SUITE();
    int pieces = 0;
    for (const SuiteTest& test : SuiteTests()) {
        const std::string document = SuiteFile(test.path);
        const bool isUtf16 = document.starts_with("\xFF\xFE") || document.starts_with("\xFE\xFF");
        pieces += CutEverywhere(test, document, isUtf16 ? 2 : 1);
        const std::optional<std::string> other = Rewrite(document, kUtf16LE, NameOf(kUtf16LE));
        if (other) pieces += CutEverywhere(test, *other, 2);
    }
    std::cout << pieces << " pieces of documents read\n";
    EXPECT_GE(pieces, 900000 / static_cast<int>(support::kStride));
}

}  // namespace
