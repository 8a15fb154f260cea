// SPDX-License-Identifier: MIT
// Reads documents that are small and mean endless work, each in a process of its own, and tells how
// each is refused: with which error, after how much processor time and with how much memory.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "common/Measure.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"
#include "common/Table.h"
#include "reader/Bombs.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_reader_bombs [--markdown] [--figures FILE] [--enforce]\n"
    "\n"
    "Reads small documents that mean endless work and prints how each is refused.\n"
    "\n"
    "  --markdown      print only the tables, in Markdown\n"
    "  --figures FILE  write the bars for scripts/benchmark\n"
    "  --enforce       exit with 3 when a bar is missed\n";

constexpr double kMostMilliseconds = 100;
constexpr double kMostMegabytes = 64;

// So that a bomb that goes off does so in its own process only.
constexpr rlim_t kSecondsOfChild = 20;
constexpr rlim_t kMemoryOfChild = rlim_t{2} * 1024 * 1024 * 1024;

enum class Mode {
    Expand,  ///< ExpandEntities
    Resolve  ///< ExpandCharEntities, and ResolveEntity() on everything that is reported
};

/// What a process says about its bomb; goes through a pipe as it is.
struct Verdict {
    char message[200] = "";   ///< empty when the document was read to its end
    int line = 0;             ///< where it was refused
    double milliseconds = 0;  ///< of processor time, from the first byte to the error
    double kilobytes = 0;     ///< of the document
};

// Reading.

// Looks at the parts of the current attribute's value.
std::size_t ResolveParts(Xml::XmlTextReader& reader) {
    std::size_t bytes = 0;
    while (reader.ReadAttributeValue()) {
        if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
        bytes += reader.Value().size();
    }
    return bytes;
}

std::size_t ResolveAll(Xml::XmlTextReader& reader) {
    std::size_t bytes = 0;
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandCharEntities);
    while (reader.Read()) {
        bytes += reader.Value().size();
        if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            bytes += ResolveParts(reader);
        }
    }
    return bytes;
}

std::size_t ExpandAll(Xml::XmlTextReader& reader) {
    std::size_t bytes = 0;
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    while (reader.Read()) {
        bytes += reader.Value().size();
        for (const Xml::XmlAttributeRef attribute : reader.Attributes()) {
            bytes += attribute.Value().size();
        }
    }
    return bytes;
}

Verdict ReadDocument(std::string_view document, Mode mode) {
    Verdict verdict;
    verdict.kilobytes = static_cast<double>(document.size()) / 1e3;
    const double start = bench::ProcessorSeconds();
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    volatile std::size_t sink = 0;
    try {
        sink = sink + (mode == Mode::Expand ? ExpandAll(reader) : ResolveAll(reader));
    } catch (const Xml::Exception& error) {
        std::snprintf(verdict.message, sizeof verdict.message, "%s", error.What());
        verdict.line = error.LineNumber();
    } catch (const std::exception& error) {  // no memory, for example
        std::snprintf(verdict.message, sizeof verdict.message, "(%s)", error.what());
    }
    verdict.milliseconds = (bench::ProcessorSeconds() - start) * 1e3;
    return verdict;
}

// Processes.

/// What is known about a bomb in the end.
struct Outcome {
    Verdict verdict;
    bool ended = false;    ///< the process came to its end by itself
    double megabytes = 0;  ///< peak of its resident memory, program and document included
};

[[noreturn]] void RunChild(const bench::Bomb& bomb, Mode mode, int pipe) {
    const rlimit time = {kSecondsOfChild, kSecondsOfChild};
    const rlimit memory = {kMemoryOfChild, kMemoryOfChild};
    setrlimit(RLIMIT_CPU, &time);
    setrlimit(RLIMIT_AS, &memory);
    const Verdict verdict = ReadDocument(bomb.make(bomb.where), mode);
    const bool isWritten = write(pipe, &verdict, sizeof verdict) == sizeof verdict;
    _exit(isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
}

// The document is made in the process that reads it, so that this one stays small: what it has at
// the fork counts for the child too.
Outcome Defuse(const bench::Bomb& bomb, Mode mode) {
    int pipes[2];
    if (pipe(pipes) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    const pid_t child = fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        close(pipes[0]);
        RunChild(bomb, mode, pipes[1]);
    }
    close(pipes[1]);
    Outcome outcome;
    const bool isRead =
        read(pipes[0], &outcome.verdict, sizeof outcome.verdict) == sizeof outcome.verdict;
    close(pipes[0]);
    int status = 0;
    rusage usage = {};
    if (wait4(child, &status, 0, &usage) != child) {
        throw std::system_error(errno, std::generic_category(), "wait4");
    }
    outcome.ended = isRead && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
    outcome.megabytes = static_cast<double>(usage.ru_maxrss) * 1024 / 1e6;
    return outcome;
}

bool IsMet(const bench::Bomb& bomb, const Outcome& outcome) {
    const Verdict& verdict = outcome.verdict;
    return outcome.ended && std::string_view(verdict.message) == bomb.message &&
           verdict.line >= bomb.leastLine && verdict.milliseconds < kMostMilliseconds &&
           outcome.megabytes < kMostMegabytes;
}

bench::TableRow RowFor(const bench::Bomb& bomb, Mode mode, const Outcome& outcome) {
    std::string answer = outcome.verdict.message;
    if (answer.empty()) answer = "(nothing)";
    if (!outcome.ended) answer = "(killed)";
    return {bomb.title,
            bomb.where == bench::BombPlace::Content ? "content" : "attribute",
            mode == Mode::Expand ? "expanded" : "resolved",
            bench::FormatNumber(outcome.verdict.kilobytes, 1),
            answer,
            bench::FormatNumber(outcome.verdict.milliseconds, 1),
            bench::FormatNumber(outcome.megabytes, 1),
            IsMet(bomb, outcome) ? "OK" : "MISS"};
}

int Run(const bench::RunOptions& options) {
    std::vector<bench::TableRow> rows = {
        {"bomb", "in", "entities", "KB", "refused with", "ms", "MB", "bar"}};
    bench::Bar refused = {"bombs refused with their own error, in time and memory", 0, 0, "bombs"};
    bench::Bar time = {"bombs, most processor time", kMostMilliseconds, 0, "ms", true};
    bench::Bar memory = {"bombs, most memory", kMostMegabytes, 0, "MB", true};
    for (const bench::Bomb& bomb : bench::Bombs()) {
        for (const Mode mode : {Mode::Expand, Mode::Resolve}) {
            const Outcome outcome = Defuse(bomb, mode);
            rows.push_back(RowFor(bomb, mode, outcome));
            refused.wanted += 1;
            refused.measured += IsMet(bomb, outcome) ? 1 : 0;
            time.measured = std::max(time.measured, outcome.verdict.milliseconds);
            memory.measured = std::max(memory.measured, outcome.megabytes);
        }
    }
    bench::Figures figures = bench::FiguresOfThisBuild();
    figures.libraries = {{"espalier", bench::EspalierVersion()}};
    figures.bars = {refused, time, memory};
    return bench::Publish(
        "Documents that mean endless work, and the error each has to be refused "
        "with, after less than " +
            bench::FormatNumber(kMostMilliseconds, 0) +
            " ms of\nprocessor time and with less than " + bench::FormatNumber(kMostMegabytes, 0) +
            " MB:\n\n" + bench::FormatTable(rows, options.format),
        figures, options);
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.offersCheck = false;
    options.entries = {&bench::CorpusEntries().front()};  // none is read
    return bench::RunProgram({"espalier_reader_bombs", kHelp, Run}, argc, argv, options);
}
