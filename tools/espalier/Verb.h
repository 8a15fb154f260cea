// SPDX-License-Identifier: MIT
#pragma once

#include "Context.h"
#include "ExitCode.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Tool {

/// One of the things that the program can do: `espalier NAME ...`.
///
/// A verb is a class in a file of its own, made by a function that is declared below and listed in
/// AllVerbs(); the rest of the program does not know it.
class Verb {
public:
    virtual ~Verb() = default;

    /// Returns the word that calls the verb.
    virtual const char* Name() const = 0;

    /// Returns what the verb does, in one sentence.
    virtual const char* Summary() const = 0;

    /// Returns what stands at the end of the verb's help: what else there is to know, and two
    /// examples.
    virtual const char* Footer() const = 0;

    /// Adds the verb's own arguments and options.
    virtual void AddOptions(CLI::App& app) = 0;

    /// Tells whether the verb reads documents by the rules that --standard asks for, or else by
    /// those of the reader.
    virtual bool TakesStandard() const { return true; }

    /// Does the work. Called once, after the options have been parsed.
    virtual ExitCode Run(Context& context) = 0;
};

std::unique_ptr<Verb> MakeCheck();
std::unique_ptr<Verb> MakeCss();
std::unique_ptr<Verb> MakeEvents();
std::unique_ptr<Verb> MakeFormat();
std::unique_ptr<Verb> MakeSelect();
std::unique_ptr<Verb> MakeStyle();
std::unique_ptr<Verb> MakeTree();

/// Returns all verbs, in the order of the help.
std::vector<std::unique_ptr<Verb>> AllVerbs();

}  // namespace Tool
