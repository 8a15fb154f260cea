// SPDX-License-Identifier: MIT
#include "ReaderColumns.h"

#include <gtest/gtest.h>

#include <string>

using Tool::MarkupTracker;
using Tool::ReaderColumns;

namespace {

ReaderColumns Columns(std::string_view text,
                      MarkupTracker::Names names = MarkupTracker::Names::Prefixed) {
    ReaderColumns columns(names);
    columns.Take(text);
    return columns;
}

}  // namespace

TEST(ReaderColumns, AddsTheColonsBeforeAPlace) {
    ReaderColumns columns = Columns("<p:a p:b='x:y'>\n<c/><p:d/><e/>");
    EXPECT_EQ(columns.ColumnOf({1, 1}), 1);
    EXPECT_EQ(columns.ColumnOf({1, 5}), 6);
    EXPECT_EQ(columns.ColumnOf({1, 14}), 16);
    EXPECT_EQ(columns.ColumnOf({2, 1}), 1);
    EXPECT_EQ(columns.ColumnOf({2, 5}), 5);
    EXPECT_EQ(columns.ColumnOf({2, 10}), 11);
}

TEST(ReaderColumns, WholeNamesChangeNothing) {
    ReaderColumns columns = Columns("<p:a p:b='1'>", MarkupTracker::Names::Whole);
    EXPECT_EQ(columns.ColumnOf({1, 13}), 13);
}

TEST(ReaderColumns, PlacesInTheTextOfAnEntityAreForgotten) {
    ReaderColumns columns = Columns("<p:a>&b;<p:c/><d/>\n<p:e/><f/>");
    EXPECT_EQ(columns.ColumnOf({1, 8}), 9);
    EXPECT_EQ(columns.ColumnOf({1, 500}), 502);
    EXPECT_EQ(columns.ColumnOf({90, 7}), 7);
    EXPECT_EQ(columns.ColumnOf({1, 8}), 9);    // <p:c/>
    EXPECT_EQ(columns.ColumnOf({1, 13}), 15);  // <d/>
    EXPECT_EQ(columns.ColumnOf({2, 6}), 7);
}

TEST(ReaderColumns, OtherEncodingsAreCountedInCharacters) {
    const std::string utf16("<\0p\0:\0\xE9\0>\0<\0b\0", 14);
    ReaderColumns columns(MarkupTracker::Names::Prefixed);
    columns.Take(utf16.substr(0, 5));
    columns.Take(utf16.substr(5));
    columns.SetEncoding("UTF-16LE");
    EXPECT_EQ(columns.ColumnOf({1, 5}), 6);

    ReaderColumns latin1(MarkupTracker::Names::Prefixed);
    latin1.Take("<p:\xE9\xE9>\xE9<b/>");
    latin1.SetEncoding("ISO-8859-1");
    EXPECT_EQ(latin1.ColumnOf({1, 7}), 8);
}

// A line of any length is followed; what has gone by is only counted.
TEST(ReaderColumns, ALineMayBeLong) {
    ReaderColumns columns(MarkupTracker::Names::Prefixed);
    const std::string element = "<p:a b:c='d'/>";  // 14 characters, 12 for the reader
    long expected = 1;
    long column = 1;
    for (int i = 0; i < 100000; ++i) {
        columns.Take(element);
        ASSERT_EQ(columns.ColumnOf({1, column}), expected) << i;
        ASSERT_EQ(columns.ColumnOf({1, column + 4}), expected + 5) << i;
        column += 12;
        expected += 14;
    }
}

// All of a start tag is read before its attributes are asked for.
TEST(ReaderColumns, ATagMayBeLong) {
    ReaderColumns columns(MarkupTracker::Names::Prefixed);
    columns.Take("<a");
    for (int i = 0; i < 50000; ++i)
        columns.Take(" p:b='c'");  // 8 characters, 7 for the reader
    for (long i = 0; i < 50000; ++i)
        ASSERT_EQ(columns.ColumnOf({1, 4 + 7 * i}), 4 + 8 * i) << i;
}
