// SPDX-License-Identifier: MIT
#include "TreeCounts.h"

#include "Escape.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

namespace {

using Entry = PathCounts::Entry;

// Writes what has been counted, entry by entry in the order of the documents.
class CountsWriter {
public:
    CountsWriter(Output& out, const PathCounts& counts, int levels)
        : out_(out), counts_(counts), levels_(levels) {}

    virtual ~CountsWriter() = default;

    void Write() {
        for (const int root : counts_.Roots())
            WriteFrom(root);
    }

protected:
    virtual void WriteEntry(const Entry& entry) = 0;

    const Entry& At(int index) const { return counts_.Entries()[static_cast<std::size_t>(index)]; }

    Output& out_;
    const PathCounts& counts_;
    int levels_;

private:
    // The depth of entries is bounded.
    void WriteFrom(int index) {
        if (At(index).level >= levels_) return;
        WriteEntry(At(index));
        for (const int child : At(index).children)
            WriteFrom(child);
    }
};

// A table: count, bytes of text, name, indented by its level.
class TextCounts final : public CountsWriter {
public:
    TextCounts(Output& out, const PathCounts& counts, int levels)
        : CountsWriter(out, counts, levels) {
        for (const Entry& entry : counts.Entries()) {
            if (entry.level >= levels) continue;
            countWidth_ = std::max(countWidth_, fmt::formatted_size("{}", entry.count));
            textWidth_ = std::max(textWidth_, fmt::formatted_size("{}", entry.textBytes));
            for (const PathCounts::Attribute& attribute : entry.attributes)
                countWidth_ = std::max(countWidth_, fmt::formatted_size("{}", attribute.count));
        }
        if (!counts.Entries().empty()) WriteLine("count", "text", 0, "", "element");
    }

private:
    void WriteEntry(const Entry& entry) override {
        const std::string text =
            entry.textBytes == 0 ? std::string() : fmt::format("{}", entry.textBytes);
        WriteLine(fmt::format("{}", entry.count), text, entry.level, "", entry.name);
        for (const PathCounts::Attribute& attribute : entry.attributes) {
            WriteLine(fmt::format("{}", attribute.count), "", entry.level + 1, "@", attribute.name);
        }
    }

    void WriteLine(std::string_view count, std::string_view text, int level, std::string_view mark,
                   std::string_view name) {
        out_.Write(fmt::format("{:>{}}  {:>{}}  {:{}}{}{}\n", count, countWidth_, text, textWidth_,
                               "", 2 * level, mark, name));
    }

    std::size_t countWidth_ = std::string_view("count").size();
    std::size_t textWidth_ = std::string_view("text").size();
};

class JsonCounts final : public CountsWriter {
public:
    using CountsWriter::CountsWriter;

private:
    void WriteEntry(const Entry& entry) override {
        path_.resize(static_cast<std::size_t>(entry.level));
        path_.push_back(entry.name);
        std::string path;
        for (const std::string_view name : path_)
            path.append("/").append(name);
        out_.Write("{\"path\":");
        WriteJsonString(out_, path);
        out_.Write(",\"count\":");
        out_.WriteNumber(entry.count);
        std::string_view intro = ",\"attributes\":{";
        for (const PathCounts::Attribute& attribute : entry.attributes) {
            out_.Write(intro);
            WriteJsonString(out_, attribute.name);
            out_.Write(':');
            out_.WriteNumber(attribute.count);
            intro = ",";
        }
        if (!entry.attributes.empty()) out_.Write('}');
        out_.Write(",\"text\":");
        out_.WriteNumber(entry.textBytes);
        out_.Write("}\n");
    }

    std::vector<std::string_view> path_;  // the names from the root to the last entry
};

}  // namespace

void WriteCountsAsText(Output& out, const PathCounts& counts, int levels) {
    TextCounts(out, counts, levels).Write();
}

void WriteCountsAsJson(Output& out, const PathCounts& counts, int levels) {
    JsonCounts(out, counts, levels).Write();
}

}  // namespace Tool
