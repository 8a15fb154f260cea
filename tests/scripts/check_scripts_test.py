# SPDX-License-Identifier: MIT
"""Shows that the checks in scripts/ find what they are there to find."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPTS = Path(__file__).resolve().parent.parent.parent / "scripts"
sys.path.insert(0, str(SCRIPTS))
import documentation_site  # noqa: E402
HEADER = "// SPDX-License-Identifier: MIT\n#pragma once\n"
SOURCE = "// SPDX-License-Identifier: MIT\n"

# A tree without faults: a private header in io/, used from xml/.
SOUND = {
    "include/espalier/espalier.h": HEADER + "#include <espalier/io/Stream.h>\n",
    "include/espalier/io/Stream.h": HEADER,
    "include/espalier/CMakeLists.txt": "target_sources(x PUBLIC espalier.h io/Stream.h)\n",
    "src/io/Handle.h": HEADER + "#include <fcntl.h>\n",
    "src/io/CMakeLists.txt": "target_sources(x PRIVATE Handle.cpp)\n",
    "src/io/Handle.cpp": SOURCE + '#include "io/Handle.h"\n',
    "src/xml/CMakeLists.txt": "target_sources(x PRIVATE Reader.cpp)\n",
    "src/xml/Reader.cpp": SOURCE + '#include <espalier/io/Stream.h>\n#include "io/Handle.h"\n',
}


class CheckTest(unittest.TestCase):
    def run_on(self, script, changes):
        """Runs a check on the sound tree with some files changed: exit status and output."""
        with tempfile.TemporaryDirectory() as folder:
            for name, text in {**SOUND, **changes}.items():
                path = Path(folder) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            done = subprocess.run([sys.executable, SCRIPTS / script, folder],
                                  capture_output=True, text=True)
            return done.returncode, done.stdout + done.stderr

    def expect_found(self, script, changes, *lines):
        status, output = self.run_on(script, changes)
        self.assertEqual((status, output.splitlines()[:-1]), (1, list(lines)))


class CheckLayers(CheckTest):
    def test_a_sound_tree_passes(self):
        self.assertEqual(self.run_on("check-layers", {}), (0, "4 files, 0 problems\n"))

    def test_an_empty_tree_is_no_success(self):
        with tempfile.TemporaryDirectory() as folder:
            done = subprocess.run([sys.executable, SCRIPTS / "check-layers", folder],
                                  capture_output=True)
            self.assertEqual(done.returncode, 1)

    def test_an_include_of_a_higher_layer_is_found(self):
        self.expect_found(
            "check-layers",
            {"src/xml/Reader.h": HEADER, "src/io/Handle.cpp": SOURCE + '#include "xml/Reader.h"\n'},
            "src/io/Handle.cpp:2: is in io/, which does not stand above xml/, and includes: "
            "xml/Reader.h")

    def test_sax_and_dom_never_meet(self):
        self.expect_found(
            "check-layers",
            {"src/sax/A.h": HEADER, "src/dom/B.h": HEADER + '#  include "sax/A.h"\n'},
            "src/dom/B.h:3: is in dom/, which does not stand above sax/, and includes: sax/A.h")

    def test_a_public_header_with_a_private_one_is_found(self):
        self.expect_found(
            "check-layers",
            {"include/espalier/io/Stream.h": HEADER + '#include "io/Handle.h"\n'},
            "include/espalier/io/Stream.h:3: is a public header and includes a private one: "
            "io/Handle.h")

    def test_an_umbrella_inside_the_library_is_found(self):
        self.expect_found(
            "check-layers",
            {"src/io/Handle.cpp": SOURCE + "#include <espalier/espalier.h>\n"},
            "src/io/Handle.cpp:2: includes an umbrella header: espalier/espalier.h")

    def test_a_private_header_is_named_from_src_on(self):
        for name in ("Handle.h", "../io/Handle.h"):
            self.expect_found(
                "check-layers",
                {"src/io/Handle.cpp": SOURCE + f'#include "{name}"\n'},
                "src/io/Handle.cpp:2: includes a private header not named from src/ on: " + name)

    def test_a_public_header_that_does_not_exist_is_found(self):
        self.expect_found(
            "check-layers",
            {"src/io/Handle.cpp": SOURCE + "#include <espalier/io/None.h>\n"},
            "src/io/Handle.cpp:2: includes a public header that does not exist: "
            "espalier/io/None.h")

    def test_locks_are_found_everywhere(self):
        for name in ("mutex", "thread"):
            self.expect_found(
                "check-layers",
                {"src/io/Handle.cpp": SOURCE + f"#include <{name}>\n"},
                "src/io/Handle.cpp:2: includes a header of threads or locks: " + name)

    def test_system_headers_stand_in_io_alone(self):
        for name in ("unistd.h", "sys/stat.h"):
            self.expect_found(
                "check-layers",
                {"src/xml/Reader.cpp": SOURCE + f"#include <{name}>\n"},
                "src/xml/Reader.cpp:2: includes a system header outside src/io: " + name)

    def test_a_file_without_a_layer_is_found(self):
        self.expect_found("check-layers", {"src/Loose.h": HEADER},
                          "src/Loose.h: stands in no layer's folder")
        self.expect_found("check-layers", {"src/attic/Old.h": HEADER},
                          "src/attic/Old.h: attic/ is no layer")


class CheckFiles(CheckTest):
    def test_a_sound_tree_passes(self):
        self.assertEqual(self.run_on("check-files", {}), (0, "5 files, 0 problems\n"))

    def test_faults_of_form_are_found(self):
        name = "src/io/Handle.h"
        for text, problem in (
            ("#pragma once\n", ":1: does not start with // SPDX-License-Identifier: MIT"),
            (SOURCE, ": has no #pragma once"),
            (HEADER + "// end", ": does not end in one newline"),
            (HEADER + "\n", ": does not end in one newline"),
            (HEADER + "\tint i;\n", ":3: holds a tab"),
            (HEADER + "// \u00e9\n", ":3: is not ASCII"),
        ):
            with self.subTest(problem):
                self.expect_found("check-files", {name: text}, name + problem)

    def test_sources_that_no_list_names_are_found(self):
        for name, text in (("src/io/Lost.cpp", SOURCE), ("include/espalier/io/Lost.h", HEADER),
                           ("tests/io/LostTest.cpp", SOURCE)):
            with self.subTest(name):
                self.expect_found("check-files", {name: text},
                                  name + ": no CMakeLists.txt names it")


# One message from each place where messages stand, and the page that lists them.
ERRORS = {
    "src/xml/Messages.h": HEADER + 'inline constexpr char kBadName[] = "Bad name";\n',
    "src/xml/PenMessages.h": HEADER + 'inline constexpr char kNoInk[] = "No ink";\n',
    "src/io/Handle.cpp": SOURCE + 'constexpr char kReadError[] =\n    "Read error";\n'
                         + '// "No message"\nint f() { return "Open error"; }\n'
                         + 'int g() { Throw::ThrowException("Closed"); }\n',
    "docs/errors.md": '`examples/errors.cpp`\n| "Bad name" | no name | `<a>&;</a>` | 1:5 | `x` |\n'
                      '| "Read error" | |\n| "Open error" | |\n| "Closed" | |\n'
                      '`examples/pen_errors.cpp`\n| "No ink" | code 7: empty | `Write()` |\n',
    "examples/expected/errors.txt": "<a>&;</a>\n    1:5: Bad name (x)\n",
    "examples/expected/pen_errors.txt": "Write()\n    -1:-1: No ink (7)\n",
}


class CheckErrors(CheckTest):
    def test_a_complete_page_passes(self):
        self.assertEqual(self.run_on("check-errors", ERRORS), (0, "5 messages, 0 problems\n"))

    def test_a_message_without_a_row_is_found(self):
        for row, file in (("Read error", "io/Handle.cpp"), ("Open error", "io/Handle.cpp"),
                          ("Closed", "io/Handle.cpp")):
            page = ERRORS["docs/errors.md"].replace(f'| "{row}" | |\n', "")
            with self.subTest(row):
                self.expect_found("check-errors", {**ERRORS, "docs/errors.md": page},
                                  f"src/{file}: not in docs/errors.md: {row}")

    def test_a_message_of_a_part_without_a_row_is_found(self):
        more = ERRORS["src/xml/PenMessages.h"] + 'inline constexpr char kBroken[] = "Broken";\n'
        self.expect_found("check-errors", {**ERRORS, "src/xml/PenMessages.h": more},
                          "src/xml/PenMessages.h: not in docs/errors.md: Broken")

    def test_a_message_in_a_folder_of_a_layer_without_a_row_is_found(self):
        more = {"src/dom/css/Messages.h": HEADER + 'inline constexpr char kColon[] = "No colon";\n'}
        self.expect_found("check-errors", {**ERRORS, **more},
                          "src/dom/css/Messages.h: not in docs/errors.md: No colon")

    def test_literals_that_follow_each_other_are_one_message(self):
        more = ('inline constexpr char kLong[] =\n    "Say \\"please\\" "\n    "first";\n')
        source = {"src/xml/PenMessages.h": ERRORS["src/xml/PenMessages.h"] + more}
        page = ERRORS["docs/errors.md"]
        self.expect_found("check-errors", {**ERRORS, **source},
                          'src/xml/PenMessages.h: not in docs/errors.md: Say "please" first')
        source["docs/errors.md"] = page + '| "Say "please" first" | |\n'
        self.assertEqual(self.run_on("check-errors", {**ERRORS, **source}),
                         (0, "6 messages, 0 problems\n"))

    def test_messages_that_are_put_together_are_one(self):
        parts = "".join(f"inline constexpr char k{name}[] = \"{text}\";\n" for name, text in (
            ("NoNodeNamed", "No node "), ("InThisMap", " here"),
            ("MismatchedEndTag1", "Not '"), ("MismatchedEndTag2", "' but '")))
        source = {"src/xml/PenMessages.h": ERRORS["src/xml/PenMessages.h"] + parts}
        found = "src/xml/PenMessages.h: not in docs/errors.md: "
        self.expect_found("check-errors", {**ERRORS, **source},
                          found + "Not 'b' but 'a'", found + "No node x here")

    def test_other_calls_than_in_the_example_are_found(self):
        page = ERRORS["docs/errors.md"].replace("Write()", "Draw()")
        self.expect_found("check-errors", {**ERRORS, "docs/errors.md": page},
                          "docs/errors.md: shows 'Draw()', the example 'Write()'")

    def test_a_row_without_a_message_is_found(self):
        page = ERRORS["docs/errors.md"] + '| "No message" | |\n'
        self.expect_found("check-errors", {**ERRORS, "docs/errors.md": page},
                          "docs/errors.md: no message of the library: No message")

    def test_another_place_than_in_the_example_is_found(self):
        page = ERRORS["docs/errors.md"].replace("1:5", "1:6")
        self.expect_found("check-errors", {**ERRORS, "docs/errors.md": page},
                          "docs/errors.md: shows '1:6: Bad name (x)', "
                          "the example '1:5: Bad name (x)'")

    def test_another_code_than_in_the_example_is_found(self):
        page = ERRORS["docs/errors.md"].replace("code 7", "code 8")
        self.expect_found("check-errors", {**ERRORS, "docs/errors.md": page},
                          "docs/errors.md: shows 'No ink', the example '-1:-1: No ink (7)'")

    def test_an_example_that_is_not_there_is_found(self):
        page = ERRORS["docs/errors.md"] + "`examples/ink_errors.cpp`\n"
        self.expect_found("check-errors", {**ERRORS, "docs/errors.md": page},
                          "docs/errors.md: no such example: ink_errors")

    def test_an_example_that_is_not_shown_is_found(self):
        more = ERRORS["examples/expected/pen_errors.txt"] + "<b>\n    1:4: Bad name\n"
        self.expect_found("check-errors", {**ERRORS, "examples/expected/pen_errors.txt": more},
                          "docs/errors.md: shows another number of inputs than the example")


class CheckSurprises(CheckTest):
    CODE = {"src/xml/Reader.cpp": SOURCE + "// Deliberate: so it\n// has always been.\n"}
    ROW = '| a | b | c | `xml/Reader.cpp`: "so it has" |\n'

    def test_a_complete_page_passes(self):
        self.assertEqual(self.run_on("check-surprises", {**self.CODE, "docs/surprises.md": self.ROW}),
                         (0, "1 comments, 0 problems\n"))

    def test_a_comment_without_a_row_is_found(self):
        self.expect_found("check-surprises", {**self.CODE, "docs/surprises.md": "# Surprises\n"},
                          "xml/Reader.cpp: in 0 rows of docs/surprises.md: \"so it has always been.\"")

    def test_a_row_without_a_comment_is_found(self):
        gone = '| a | b | c | `xml/Reader.cpp`: "so it has"; `io/Handle.h`: "gone" |\n'
        self.expect_found("check-surprises", {**self.CODE, "docs/surprises.md": gone},
                          'docs/surprises.md: no such comment: io/Handle.h: "gone"')


class DocumentationSite(unittest.TestCase):
    def broken_links(self, pages):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in pages.items():
                (Path(folder) / name).write_text(text, encoding="utf-8")
            return documentation_site.broken_links(Path(folder))

    def test_links_that_lead_somewhere_pass(self):
        pages = {"a.html": '<p id="p"><a href="b.html#x">b</a><a href="#p">p</a>'
                           '<a href="https://host.example/none">h</a><img src="i.svg"/>',
                 "b.html": '<a name="x"></a>', "i.svg": "<svg/>"}
        self.assertEqual(self.broken_links(pages), ([], 3))

    def test_links_that_lead_nowhere_are_found(self):
        pages = {"a.html": '<a href="c.html">c</a>\n<a href="b.html#y">b</a>\n<a href="#q">q</a>',
                 "b.html": '<p id="x">'}
        self.assertEqual(self.broken_links(pages), (
            ["a.html:1: no such file: c.html", "a.html:2: no such place: b.html#y",
             "a.html:3: no such place: #q"], 3))

    def test_pages_that_the_main_page_leaves_out_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder).resolve()
            (root / "docs").mkdir()
            (root / "docs/mainpage.md").write_text("## Guide\n| [A](a.md) | one |\n", encoding="utf-8")
            (root / "docs/a.md").write_text("# A\n", encoding="utf-8")
            self.assertEqual(documentation_site.pages_not_listed(root), [])
            (root / "docs/b.md").write_text("# B\n", encoding="utf-8")
            self.assertEqual(documentation_site.pages_not_listed(root),
                             ["docs/mainpage.md: no link to docs/b.md"])
            self.assertIn('title="A" url="@ref md_docs_a"', documentation_site.layout(root))


class RunTestsTest(unittest.TestCase):
    """scripts/run-tests, with scripts in the place of programs of tests."""

    OK = "echo '[ RUN      ] A.Good'; echo '[       OK ] A.Good (0 ms)'; "
    BAD = "echo '[ RUN      ] A.Bad'; echo why; echo '[  FAILED  ] A.Bad (0 ms)'; "
    END = "echo '[==========] 2 tests from 1 test suite ran. (0 ms total)'; "

    def run_tests(self, program, seconds=10):
        run = subprocess.run([SCRIPTS / "run-tests", str(seconds), "bash", "-c", program],
                             capture_output=True, text=True, check=False)
        return run.returncode, run.stdout

    def test_is_quiet_when_all_is_well(self):
        self.assertEqual(self.run_tests(self.OK + self.END), (0, "1 passed, 0 skipped, 0 failed\n"))

    def test_shows_and_names_what_fails(self):
        status, output = self.run_tests(self.OK + self.BAD + self.END + "exit 1")
        self.assertEqual(status, 1)
        self.assertIn("why\n", output)
        self.assertIn("FAILED: A.Bad\n1 passed, 0 skipped, 1 failed\n", output)

    def test_names_what_ran_when_the_program_ended(self):
        status, output = self.run_tests(self.OK + "echo '[ RUN      ] A.Crash'; echo report; exit 3")
        self.assertEqual(status, 3)
        self.assertIn("report\nFAILED: A.Crash ended the program, or took too long\n", output)

    def test_names_what_takes_too_long(self):
        status, output = self.run_tests("echo '[ RUN      ] A.Slow'; sleep 20", seconds=1)
        self.assertNotEqual(status, 0)
        self.assertIn("FAILED: A.Slow ended the program, or took too long\n", output)

    def test_fails_without_tests(self):
        for program in ("true", self.END):
            self.assertNotEqual(self.run_tests(program)[0], 0)


class FuzzReport(unittest.TestCase):
    # What libFuzzer prints: progress, a slow input, and its last lines.
    PROGRESS = ("#2\tINITED cov: 10 ft: 11 corp: 1/1b exec/s: 0 rss: 30Mb\n"
                "#{runs}\tNEW    cov: {edges} ft: 40 corp: 7/2Kb lim: 4 exec/s: 9 rss: 31Mb L: 4/4\n"
                "artifact_prefix='f/'; Test unit written to f/slow-unit-1\n")
    DONE = "Done {runs} runs in {seconds} second(s)\nstat::number_of_executed_units: {runs}\n"
    FAILED = ("artifact_prefix='f/'; Test unit written to f/a-crash-2\n"
              "stat::number_of_executed_units: 30\nscripts/fuzz: 5 seconds, status 77\n")

    def report(self, logs):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in logs.items():
                path = Path(folder) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            done = subprocess.run([sys.executable, SCRIPTS / "fuzz-report", folder],
                                  capture_output=True, text=True)
            return done.returncode, done.stdout.splitlines()[2:]

    def done(self, runs, seconds, edges):
        return (self.PROGRESS + self.DONE).format(runs=runs, seconds=seconds, edges=edges)

    def test_adds_runs_up_and_tells_the_most_that_one_reached(self):
        logs = {"a/1.log": self.done(3000, 10, 25), "a/2.log": self.done(1000, 30, 20),
                "b-peer/1.log": self.done(6, 0, 5)}
        self.assertEqual(self.report(logs), (0, [
            "| a | 2 | 40 | 4,000 | 100 | 25 | 40 | 7 | 0 |",
            "| b-peer | 1 | 0 | 6 | 6 | 10 | 40 | 7 | 0 |",
            "| all | 3 | 40 | 4,006 | 100 | | | | 0 |"]))

    def test_names_what_failed_and_counts_what_was_run_until_then(self):
        logs = {"a/1.log": self.PROGRESS.format(runs=20, edges=3) + self.FAILED}
        self.assertEqual(self.report(logs), (0, [
            "| a | 1 | 5 | 30 | 6 | 10 | 40 | 7 | 1 |",
            "| all | 1 | 5 | 30 | 6 | | | | 1 |", "", "- f/a-crash-2"]))

    def test_seconds_are_those_of_the_processor_where_a_log_has_them(self):
        logs = {"a/1.log": self.done(3000, 10, 25)
                           + "scripts/fuzz: 6.502 + 1.499 seconds of the processor\n"
                           + "scripts/fuzz: 10 seconds, status 0\n",
                "a/2.log": self.done(1000, 30, 20)}
        self.assertEqual(self.report(logs)[1][0],
                         "| a | 2 | 38 | 4,000 | 105 | 25 | 40 | 7 | 0 |")

    def test_a_run_that_was_killed_counts_as_far_as_it_told(self):
        logs = {"a/1.log": "scripts/fuzz: started at 99999999999\n"
                           + self.PROGRESS.format(runs=64, edges=30)}
        self.assertEqual(self.report(logs)[1][0], "| a | 1 | 0 | 64 | 64 | 30 | 40 | 7 | 0 |")

    def test_no_logs_are_no_report(self):
        self.assertNotEqual(self.report({})[0], 0)


if __name__ == "__main__":
    unittest.main()
