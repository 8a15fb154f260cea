// SPDX-License-Identifier: MIT
#include <espalier/sax/helpers/LocatorImpl.h>

#include <gtest/gtest.h>

namespace {

using sax::helpers::LocatorImpl;

// Tells a place that changes, and may have no identifiers.
class MovingLocator : public sax::Locator {
public:
    explicit MovingLocator(const char* id) : id_(id) {}
    const char* getPublicId() const override { return id_; }
    const char* getSystemId() const override { return id_; }
    int getLineNumber() const override { return line; }
    int getColumnNumber() const override { return line + 1; }

    int line = 3;

private:
    const char* id_;
};

void ExpectPlace(const sax::Locator& locator, const char* publicId, const char* systemId, int line,
                 int column) {
    EXPECT_STREQ(locator.getPublicId(), publicId);
    EXPECT_STREQ(locator.getSystemId(), systemId);
    EXPECT_EQ(locator.getLineNumber(), line);
    EXPECT_EQ(locator.getColumnNumber(), column);
}

LocatorImpl Make() {
    LocatorImpl locator;
    locator.setPublicId("public");
    locator.setSystemId("system");
    locator.setLineNumber(7);
    locator.setColumnNumber(8);
    return locator;
}

TEST(LocatorImpl, AFreshOneIsEmptyStringsAndZeros) { ExpectPlace(LocatorImpl(), "", "", 0, 0); }

TEST(LocatorImpl, SettersSetEachField) { ExpectPlace(Make(), "public", "system", 7, 8); }

TEST(LocatorImpl, CopiesTakeAllFields) {
    LocatorImpl original = Make();
    const LocatorImpl copy(original);
    LocatorImpl assigned;
    assigned = original;
    original.setPublicId("other");
    original.setLineNumber(9);
    ExpectPlace(copy, "public", "system", 7, 8);
    ExpectPlace(assigned, "public", "system", 7, 8);
}

TEST(LocatorImpl, TakesOverWhatALocatorTellsAtThatMoment) {
    MovingLocator moving("id");
    const LocatorImpl kept(&moving);
    moving.line = 100;
    ExpectPlace(kept, "id", "id", 3, 4);
}

TEST(LocatorImpl, ANullPointerIsAnEmptyText) {
    LocatorImpl locator = Make();
    locator.setPublicId(nullptr);
    locator.setSystemId(nullptr);
    ExpectPlace(locator, "", "", 7, 8);
    const MovingLocator without(nullptr);
    ExpectPlace(LocatorImpl(&without), "", "", 3, 4);
    ExpectPlace(LocatorImpl(nullptr), "", "", 0, 0);
}

}  // namespace
