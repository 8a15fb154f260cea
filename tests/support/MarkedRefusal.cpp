// SPDX-License-Identifier: MIT
#include "support/MarkedRefusal.h"

#include "support/DocumentForms.h"
#include "support/NodeDump.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace support {

void ExpectMarked(const Marked& row, const std::string& before, const std::string& behind,
                  const ReaderSettings& settings, Cause cause) {
    std::string document = before + row.text + behind;
    const std::size_t mark = document.find('^');
    if (mark == std::string::npos) {
        SCOPED_TRACE(document);
        const std::string nodes = DumpDocument(document, settings);
        EXPECT_EQ(nodes.find("error "), std::string::npos) << nodes;
        EXPECT_GE(ExpectNodesInAllForms(document, settings, nodes), 5);
        return;
    }
    document.erase(mark, 1);
    const auto end = document.begin() + static_cast<std::ptrdiff_t>(mark);
    const auto line = std::count(document.begin(), end, '\n');
    const std::size_t lineStart = document.rfind('\n', mark == 0 ? 0 : mark - 1);
    const std::size_t column = lineStart == std::string::npos ? mark : mark - lineStart - 1;
    const Refusal refusal{row.text,
                          row.message,
                          row.argument,
                          static_cast<int>(line) + 1,
                          static_cast<int>(column) + 1,
                          "marked"};
    ExpectRefusal(document, refusal, settings, cause);
}

}  // namespace support
