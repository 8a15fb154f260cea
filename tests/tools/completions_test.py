# SPDX-License-Identifier: MIT
"""Shows that the completions of all shells offer what the program takes, and nothing else.

usage: completions_test.py PROGRAM FOLDER-OF-COMPLETIONS
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import program_options

PROGRAM, FOLDER = (Path(sys.argv.pop(1)).resolve() for _ in range(2))

BASH = """
source "$1"; shift
COMP_CWORD=$1; shift
COMP_WORDS=("$@")
complete -p espalier | grep -q -- '-F _espalier espalier$' || exit 3
_espalier espalier "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD-1]}"
((${#COMPREPLY[@]} == 0)) || printf '%s\\n' "${COMPREPLY[@]}"
"""

# The function is run with the commands that it calls replaced by ones that print what they get.
ZSH = """
_arguments() { print -rl -- "$@" }
_describe() { print -rl -- "${(P@)4}" }
words=("${(@)argv[3,-1]}"); CURRENT=$2
source "$1"
"""


def lines_of(*command, folder):
    done = subprocess.run(command, capture_output=True, text=True, cwd=folder)
    if done.returncode or done.stderr:
        raise AssertionError(f"{command}: {done.returncode}, {done.stderr}")
    return done.stdout.splitlines()


class Completion:
    """What every shell has to offer. `offers` is given the words of a command line, of which the
    last one is to be completed."""

    @classmethod
    def setUpClass(cls):
        if not shutil.which(cls.shell):
            raise unittest.SkipTest(f"{cls.shell} is not installed")
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        for name in ("one.xml", "two words.xml"):
            (Path(cls.folder.name) / name).touch()
        os.mkdir(Path(cls.folder.name) / "folder")

    def expect(self, words, offered):
        self.assertEqual(sorted(self.offers(*words)), sorted(offered), words)

    def test_verbs(self):
        verbs = program_options.verbs_of(PROGRAM)
        self.expect(["c"], [verb for verb in verbs if verb.startswith("c")])
        self.expect([""], [*verbs, "help"])
        self.expect(["--"], ["--help", "--version"])
        self.expect(["help", ""], verbs)

    def test_options_of_every_verb(self):
        for verb in program_options.verbs_of(PROGRAM):
            options = program_options.options_of(PROGRAM, verb)
            self.assertGreater(len(options), 8)
            self.expect([verb, "--"], [option for option in options if option[1] == "-"])

    def test_values_of_every_option_that_has_a_list_of_them(self):
        count = 0
        for verb in program_options.verbs_of(PROGRAM):
            for option, values in program_options.choices_of(PROGRAM, verb).items():
                self.expect([verb, option, ""], values)
                count += 1
        self.assertGreater(count, 20)

    def test_values_that_begin_as_given(self):
        self.expect(["format", "--to", "utf-16l"], ["utf-16le"])
        self.expect(["style", "--pseudo", "first"], ["first-line", "first-letter"])

    def test_files(self):
        for words in (["check"], ["check", "-v"], ["check", "one.xml"], ["css", "-o"],
                      ["css", "--output"], ["style"], ["style", "--sheet"], ["style", "--all"],
                      ["select", "a"], ["select", "--attr", "id", "a"]):
            self.expect([*words, ""], ["folder", "one.xml", "two words.xml"])
        self.expect(["tree", "o"], ["one.xml"])

    def test_no_files_where_none_can_stand(self):
        for words in (["select"], ["select", "--count"], ["select", "--attr", "id"],
                      ["select", "--attr"], ["style", "one.xml"],
                      ["style", "--property", "color", "one.xml"], ["tree", "--depth"],
                      ["help", "check"]):
            self.expect([*words, ""], [])


class Bash(Completion, unittest.TestCase):
    shell = "bash"

    def offers(self, *words):
        return lines_of("bash", "-c", BASH, "bash", str(FOLDER / "espalier.bash"), str(len(words)),
                        "espalier", *words, folder=self.folder.name)

    def test_options_in_one_letter(self):
        for verb in program_options.verbs_of(PROGRAM):
            options = program_options.options_of(PROGRAM, verb)
            self.expect([verb, "-"], options)

    def test_a_value_behind_an_equals_sign(self):
        self.expect(["tree", "--color", "=", "al"], ["always"])
        self.expect(["tree", "--color", "="], ["auto", "always", "never"])
        self.expect(["style", "--media", "=", "print", "one.xml", ""], [])

    def test_a_shell_that_is_asked(self):
        """What is registered is what a shell calls, with its own way to part words."""
        script = f'source "{FOLDER}/espalier.bash"; complete -p espalier'
        self.assertEqual(lines_of("bash", "-c", script, folder=self.folder.name),
                         ["complete -F _espalier espalier"])


class Fish(Completion, unittest.TestCase):
    shell = "fish"

    def offers(self, *words):
        line = " ".join(["espalier", *words])
        script = f'source {FOLDER}/espalier.fish; complete -C "{line}"'
        with tempfile.TemporaryDirectory() as home:
            os.environ["HOME"] = home
            lines = lines_of("fish", "--no-config", "-c", script, folder=self.folder.name)
        return [line.split("\t")[0].rstrip("/").replace("\\", "") for line in lines]


class Zsh(Completion, unittest.TestCase):
    shell = "zsh"

    def declarations(self, *words):
        return lines_of("zsh", "-f", "-c", ZSH, "zsh", str(FOLDER / "_espalier"),
                        str(len(words) + 1), "espalier", *words, folder=self.folder.name)

    def offers(self, *words):
        """Does with what is declared what _arguments would do, as far as the tests go."""
        options, arguments = {}, []
        lines = self.declarations(*words)
        if words[0] == "help" or len(words) == 1 and not words[0].startswith("-"):
            offered = [line.split(":")[0] for line in lines if re.match(r"\w+:", line)]
            return [word for word in offered if word.startswith(words[-1])]
        for line in lines:
            match = re.match(r"(?:\([^)]*\)|\*)?(--?[\w-]+)[=+]?\[[^]]*\](?::[^:]*:(.*))?$", line)
            if match:
                options[match.group(1)] = match.group(2)
            elif line != "-S":
                arguments.append(re.match(r"(\*?):[^:]*:(.*)$", line).groups())
        if words[-1].startswith("-"):
            return [name for name in options if name.startswith(words[-1])]
        return self.values(self.action(options, arguments, words[1:-1]), words[-1])

    @staticmethod
    def action(options, arguments, before):
        number = 0
        isValue = None
        for word in before:
            if isValue:
                isValue = None
            elif word.startswith("-"):
                isValue = options[word]
            else:
                number += 1
        if isValue:
            return isValue
        if number < len(arguments):
            return arguments[number][1]
        return arguments[-1][1] if arguments[-1][0] else " "

    def values(self, action, word):
        if action == "_files":
            offered = os.listdir(self.folder.name)
        else:
            offered = action.strip(" ()").split()
        return [name for name in offered if name.startswith(word)]

    def test_options_in_one_letter(self):
        for verb in program_options.verbs_of(PROGRAM):
            self.expect([verb, "-"], program_options.options_of(PROGRAM, verb))


if __name__ == "__main__":
    unittest.main()
