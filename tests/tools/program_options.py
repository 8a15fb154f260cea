# SPDX-License-Identifier: MIT
"""What the program says that it takes: the verbs, their options, and the values of these."""

import re
import subprocess
import tempfile

# The general help tells these once for all verbs.
COMMON = {"-h", "--help", "--color", "--progress"}


def output_of(program, *arguments):
    with tempfile.TemporaryDirectory() as folder:  # some options name a file to be written
        done = subprocess.run([program, *arguments], capture_output=True, text=True, cwd=folder,
                              stdin=subprocess.DEVNULL)
    return done.returncode, done.stdout + done.stderr


def verbs_of(program):
    text = output_of(program, "--help")[1]
    names = re.findall(r"^  (\w+) ", text.split("Verbs:\n")[1].split("\n\n")[0], re.MULTILINE)
    assert len(names) >= 7, text
    return names


def help_of(program, verb):
    status, text = output_of(program, verb, "--help")
    assert status == 0 and f"Usage: espalier {verb} " in text, text
    return text.split("\nExamples:")[0]


def options_of(program, verb):
    """Returns all options of a verb, those in one letter, too."""
    text = help_of(program, verb)
    return (COMMON | set(re.findall(r"(?<![\w-])--[a-z][\w-]*", text))
            | set(re.findall(r"^  (-\w),--", text, re.MULTILINE)))


def values_of(program, verb, option):
    """Returns the words that an option can be set to, as the program names them when it gets
    another; None when there is no such list."""
    arguments = {"select": ["a"], "style": ["-", "a"]}.get(verb, [])
    status, text = output_of(program, verb, option, "no such value", *arguments)
    match = re.search(r'"no such value" is none of (.*)', text)
    return match.group(1).split(", ") if match and status == 2 else None


def choices_of(program, verb):
    """Returns the options of a verb that have a list of values, with these."""
    choices = {option: values_of(program, verb, option)
               for option in sorted(options_of(program, verb)) if option.startswith("--")}
    return {option: values for option, values in choices.items() if values}
