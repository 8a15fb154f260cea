# SPDX-License-Identifier: MIT
"""Shows that check-abi finds what would break programs that were built before, on a library of one
class."""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parent.parent.parent / "scripts" / "check-abi"

HEADER = """// SPDX-License-Identifier: MIT
#pragma once
namespace Tiny {
class __attribute__((visibility("default"))) Pot {
public:
    virtual ~Pot();
    virtual int Size() const;
    virtual void Water();

private:
    int size_ = 0;
};
__attribute__((visibility("default"))) int Count(const Pot& pot);
}  // namespace Tiny
"""
SOURCE = """#include <Pot.h>
namespace Tiny {
Pot::~Pot() = default;
int Pot::Size() const { return size_; }
void Pot::Water() { ++size_; }
int Count(const Pot& pot) { return pot.Size(); }
}  // namespace Tiny
"""
LISTS = """cmake_minimum_required(VERSION 3.25)
project(tiny VERSION 1.0.0 LANGUAGES CXX)
add_library(espalier SHARED Pot.cpp)
target_include_directories(espalier PRIVATE include)
"""
GONE = "is gone: _ZN4Tiny5CountERKNS_3PotE Tiny::Count(Tiny::Pot const&)"
WITHOUT_COUNT = {"include/Pot.h": HEADER.replace(
    '__attribute__((visibility("default"))) int Count(const Pot& pot);\n', ""),
    "Pot.cpp": SOURCE.replace("int Count(const Pot& pot) { return pot.Size(); }\n", "")}
LARGER = {"include/Pot.h": HEADER.replace("    int size_ = 0;", "    int size_ = 0;\n    long age_ = 0;")}


class CheckAbi(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.write({"include/Pot.h": HEADER, "Pot.cpp": SOURCE, "CMakeLists.txt": LISTS,
                    ".gitignore": "/build/\n"})
        self.build()
        self.assertEqual(self.check("--update"), (0, ["9 symbols, 1 classes, 0 problems"]))

    def write(self, files):
        for name, text in files.items():
            path = self.root / name
            path.parent.mkdir(exist_ok=True)
            path.write_text(text, encoding="utf-8")

    def build(self, options=()):
        folder = self.root / "build" / "release"
        folder.mkdir(parents=True, exist_ok=True)
        subprocess.run(["g++", "-shared", "-fPIC", "-fvisibility=hidden", *options,
                        f"-I{self.root}/include", self.root / "Pot.cpp",
                        "-o", folder / "libespalier.so"], check=True)

    def check(self, *arguments):
        done = subprocess.run([sys.executable, SCRIPT, "--root", self.root, *arguments],
                              capture_output=True, text=True)
        return done.returncode, (done.stdout + done.stderr).splitlines()

    def change(self, files):
        self.write(files)
        self.build()

    def test_nothing_has_changed(self):
        self.assertEqual(self.check(), (0, ["9 symbols, 1 classes, 0 problems"]))

    def test_the_lists_say_what_there_is(self):
        self.assertEqual((self.root / "abi/classes.txt").read_text().splitlines(),
                         ["Tiny::Pot size=16 align=8", "    Tiny::Pot::~Pot", "    Tiny::Pot::~Pot",
                          "    Tiny::Pot::Size", "    Tiny::Pot::Water"])
        self.assertIn(GONE[9:] + "\n", (self.root / "abi/symbols.txt").read_text())

    def test_a_symbol_that_goes_away_is_found(self):
        self.change(WITHOUT_COUNT)
        self.assertEqual(self.check(), (1, [GONE, "8 symbols, 1 classes, 1 problems"]))

    def test_a_new_symbol_has_to_be_written_down(self):
        self.change({"Pot.cpp": SOURCE + '__attribute__((visibility("default"))) int More = 1;\n'})
        self.assertEqual(self.check(), (1, ["is new: More More", "10 symbols, 1 classes, 1 problems"]))

    def test_a_class_that_grows_is_found(self):
        self.change(LARGER)
        self.assertEqual(self.check(), (1, [
            "has changed: class Tiny::Pot size=16 align=8; now Tiny::Pot size=24 align=8",
            "9 symbols, 1 classes, 1 problems"]))

    def test_virtual_functions_that_change_places_are_found(self):
        size, water = "    virtual int Size() const;\n", "    virtual void Water();\n"
        self.change({"include/Pot.h": HEADER.replace(size + water, water + size)})
        self.assertEqual(self.check(), (1, [
            "has changed: class Tiny::Pot: Tiny::Pot::Size; now Tiny::Pot::Water",
            "9 symbols, 1 classes, 1 problems"]))

    def test_a_further_virtual_function_is_found(self):
        self.change({"include/Pot.h": HEADER.replace("Water();", "Water();\n    virtual void Dry();"),
                     "Pot.cpp": SOURCE + "void Tiny::Pot::Dry() {}\n"})
        self.assertEqual(self.check(), (1, [
            "has changed: class Tiny::Pot: Tiny::Pot::Dry is new",
            "is new: _ZN4Tiny3Pot3DryEv Tiny::Pot::Dry()",
            "10 symbols, 1 classes, 2 problems"]))

    def test_what_is_not_meant_to_be_exported_is_found_even_when_it_is_written_down(self):
        self.write({"Pot.cpp": SOURCE + '__attribute__((visibility("default"))) int x(int);\n'
                    'namespace Tiny::detail {\n__attribute__((visibility("default"))) int Inner() '
                    '{ return 1; }\n}\n#include <vector>\ntemplate class std::vector<Tiny::Pot*>;\n'})
        self.build(["-fno-implicit-templates"])
        status, lines = self.check("--update")
        self.assertEqual(status, 1)
        self.assertIn("is exported and should not be: Tiny::detail::Inner()", lines)
        self.assertTrue(any(line.startswith("is exported and should not be: std::vector<Tiny::Pot*")
                            for line in lines), lines)

    def test_lists_that_are_missing_are_no_success(self):
        (self.root / "abi/symbols.txt").unlink()
        self.assertEqual(self.check()[0], 1)

    # --- since the newest tag --------------------------------------------------------------------

    def git(self, *arguments):
        subprocess.run(["git", "-C", self.root, "-c", "user.name=T", "-c", "user.email=t@example.org",
                        *arguments], check=True, capture_output=True)

    def release(self):
        if not shutil.which("git"):
            self.skipTest("git is not installed")
        self.git("init", "-q")
        self.git("add", ".")
        self.git("commit", "-q", "-m", "tiny: Begin")
        self.assertEqual(self.check("--since-tag"), (77, ["there is no tag v* to compare with"]))
        self.git("tag", "v1.0.0")

    def change_since(self, files):
        self.release()
        self.change(files)
        self.assertEqual(self.check("--update")[0], 0)

    def test_nothing_has_changed_since_a_tag(self):
        self.release()
        self.assertEqual(self.check("--since-tag"), (0, ["since v1.0.0: 0 new, 0 problems"]))

    def test_what_has_gone_since_a_tag_is_found(self):
        self.change_since(WITHOUT_COUNT)
        self.assertEqual(self.check("--since-tag"), (1, [GONE, "since v1.0.0: 0 new, 1 problems"]))

    def test_all_may_go_with_a_new_soversion(self):
        self.change_since({**WITHOUT_COUNT, "CMakeLists.txt": LISTS.replace("1.0.0", "2.0.0")})
        self.assertEqual(self.check("--since-tag"),
                         (0, ["SOVERSION was 1 and is 2: all may change", GONE]))

    def test_what_is_new_since_a_tag_may_be(self):
        more = '__attribute__((visibility("default"))) int More = 1;\n'
        self.change_since({"Pot.cpp": SOURCE + more})
        self.assertEqual(self.check("--since-tag"),
                         (0, ["is new: More More", "since v1.0.0: 1 new, 0 problems"]))

    def test_a_tag_without_lists_is_nothing_to_compare_with(self):
        self.release()
        self.git("rm", "-q", "-r", "abi")
        self.git("commit", "-q", "-m", "tiny: Drop the lists")
        self.git("tag", "v1.0.1")
        self.assertEqual(self.check("--since-tag")[0], 77)

    def test_abidiff_finds_what_the_lists_do_not_say(self):
        if not shutil.which("abidiff"):
            self.skipTest("abidiff is not installed")
        self.release()
        self.assertEqual(self.check("--since-tag", "--build"),
                         (0, ["since v1.0.0, by abidiff, 0 problems"]))
        self.write({"include/Pot.h": HEADER.replace("int size_ = 0;", "unsigned size_ = 0;")
                    .replace("int Count", "long Count"),
                    "Pot.cpp": SOURCE.replace("int Count", "long Count")})
        status, lines = self.check("--since-tag", "--build")
        self.assertEqual(status, 1)
        self.assertIn("return type changed", "\n".join(lines))


if __name__ == "__main__":
    unittest.main()
