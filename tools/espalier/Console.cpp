// SPDX-License-Identifier: MIT
#include "Console.h"

#include "Output.h"

#include <fmt/format.h>

#include <cstdlib>
#include <unistd.h>

namespace Tool {

namespace {

std::string_view Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

bool Console::ColorsErrors() const { return Colors(STDERR_FILENO); }

bool Console::ColorsOutput() const { return Colors(STDOUT_FILENO); }

bool Console::Colors(int descriptor) const {
    switch (choice_) {
    case ColorChoice::Always: return true;
    case ColorChoice::Never: return false;
    case ColorChoice::Auto: break;
    }
    return ::isatty(descriptor) != 0 && Variable("NO_COLOR").empty() && Variable("TERM") != "dumb";
}

void Console::Write(std::string_view text) {
    progress_.Erase();
    WriteToErrors(text);
}

void Console::Complain(std::string_view message) { Write(fmt::format("espalier: {}\n", message)); }

}  // namespace Tool
