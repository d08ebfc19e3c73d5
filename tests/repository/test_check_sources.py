# SPDX-License-Identifier: GPL-3.0-or-later
"""The check of the sources finds what asks the region of the process, and nothing else."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(os.environ["OXC_SOURCES"])
LICENCE = "# SPDX-License-Identifier: GPL-3.0-or-later\n"
TEST = LICENCE + "TEST(A, B) {}\n"
FORBIDDEN = {
    "#include <cctype>": "rdl/values/ascii.h",
    "return std::tolower(static_cast<unsigned char>(letter));": "platform/base/text.h",
    "if (isalnum(byte)) {": "platform/base/ascii.h",
    "#include <locale>": "newlocale",
    'std::setlocale(LC_ALL, "C");': "newlocale",
    "code = towupper(code);": "platform/base/text.h",
    "number = std::strtod(text.c_str(), &end);": "std::from_chars",
    "return std::stod(text);": "std::from_chars",
    "text = std::to_string(width / 100.0);": "std::to_chars",
    "text = std::to_string(static_cast<double>(width));": "std::to_chars",
    'std::snprintf(text, sizeof text, "%d %.2f", count, share);': "std::to_chars",
    'std::strftime(text, sizeof text, "%x", &parts);': "platform/contracts/dates.h",
    "if (strcasecmp(left, right) == 0) {": "EqualNoCase",
}
ALLOWED = """// std::tolower of a Turkish I is no i
std::snprintf(text, sizeof text, "%04d-%02d", year, month);
text = std::to_string(lines.size()) + " of 1.5 pages";
letter = towupper_l(letter, letters);
std::setlocale(LC_NUMERIC, "C");
const QString lower = text.toLower();
"""


class CheckSources(unittest.TestCase):
    def check(self, text):
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder) / "part.cpp"
            source.write_text("int one;\n" + text + "\n")
            done = subprocess.run([SOURCES / "tests" / "check_sources", folder], capture_output=True, text=True)
            return done.returncode, done.stdout.replace(str(source), "part.cpp")

    def test_each_is_named_with_its_line_and_what_to_use(self):
        for line, replacement in FORBIDDEN.items():
            with self.subTest(line):
                code, said = self.check(line)
                self.assertEqual(code, 1)
                self.assertTrue(said.startswith(f"part.cpp:2: {line}\n"), said)
                self.assertIn(replacement, said)

    def test_what_no_region_changes_passes(self):
        self.assertEqual(self.check(ALLOWED), (0, ""))

    def check_tree(self, files, scripts=()):
        """Runs a copy of the check over a project that holds `files`, those of `scripts` executable, and nothing
        else."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name in ("src", "tests", "bench", "assets", "samples", "docs", "help", "packaging", "cmake"):
                (root / name).mkdir()
            shutil.copy(SOURCES / "tests" / "check_sources", root / "tests")
            for name, text in files.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
                (root / name).chmod(0o755 if name in scripts else 0o644)
            done = subprocess.run([root / "tests" / "check_sources"], capture_output=True, text=True)
            return done.returncode, done.stdout

    def test_a_file_without_its_licence_is_named(self):
        self.assertEqual(self.check_tree({"src/a.cpp": "int one;\n", "docs/b.py": "#!/bin/x\n" + LICENCE}),
                         (1, "src/a.cpp: has no line SPDX-License-Identifier at its start\n"))

    def test_forms_templates_and_scripts_need_it_as_well(self):
        names = ["src/a.ui", "src/b.h.in", "src/c.sql", "tests/d.sh", "help/e.css", "tests/f", ".ci/run",
                 "CMakeLists.txt", "run", "test", "package"]
        scripts = {"tests/f", ".ci/run", "run", "test", "package"}
        code, said = self.check_tree({name: "text\n" for name in names}, scripts)
        self.assertEqual(code, 1)
        self.assertEqual(sorted(said.splitlines()),
                         sorted(f"{name}: has no line SPDX-License-Identifier at its start" for name in names))
        form = '<?xml version="1.0"?>\n<!-- SPDX-License-Identifier: GPL-3.0-or-later -->\n'
        self.assertEqual(self.check_tree({name: form for name in names}, scripts), (0, ""))

    def test_resources_and_manuals_need_it_as_well(self):
        code, said = self.check_tree({"src/a.qrc": "<RCC>\n</RCC>\n", "packaging/man/b.1.scd": 'b(1) "B"\n\n# NAME\n'})
        self.assertEqual(code, 1)
        self.assertEqual(sorted(said.splitlines()),
                         [f"{name}: has no line SPDX-License-Identifier at its start"
                          for name in ("packaging/man/b.1.scd", "src/a.qrc")])
        self.assertEqual(self.check_tree({
            "src/a.qrc": "<!-- SPDX-License-Identifier: GPL-3.0-or-later -->\n<RCC>\n</RCC>\n",
            "packaging/man/b.1.scd": 'b(1) "B"\n; SPDX-License-Identifier: GPL-3.0-or-later\n\n# NAME\n'}), (0, ""))

    def test_a_file_of_more_than_500_lines_is_named(self):
        full = LICENCE + "// the value of a property of an item\n" * 499
        self.assertEqual(self.check_tree({"src/a.cpp": full, "tests/b.py": full, "packaging/c.txt": full + full}), (0, ""))
        for name in ("src/a.cpp", "src/a.h", "tests/b.py"):
            self.assertEqual(self.check_tree({name: full + "\n"}), (1, f"{name}: 501 lines, at most 500\n"))

    def test_data_without_a_suffix_needs_none(self):
        self.assertEqual(self.check_tree({"tests/corpus/one": "text\n"}), (0, ""))

    def test_a_test_in_a_comment_or_under_a_similar_name_is_not_built(self):
        files = {"tests/x/a_test.cpp": TEST, "tests/x/b_test.cpp": TEST,
                 "tests/x/CMakeLists.txt": LICENCE + "oxc_test(x SOURCES\n    # a_test.cpp\n    b_test_cpp)\n"}
        said = self.check_tree(files)[1]
        for name in ("a_test.cpp", "b_test.cpp"):
            self.assertIn(f"tests/x/{name}: is in no list of tests/x/CMakeLists.txt, so nothing builds it\n", said)

    def test_a_test_that_nothing_builds_is_named(self):
        files = {"tests/x/a_test.cpp": TEST, "tests/x/b_a_test.cpp": TEST,
                 "tests/x/CMakeLists.txt": LICENCE + "oxc_test(x SOURCES b_a_test.cpp)\n"}
        self.assertEqual(self.check_tree(files),
                         (1, "tests/x/a_test.cpp: is in no list of tests/x/CMakeLists.txt, so nothing builds it\n"))

    def test_a_test_file_without_a_test_is_named(self):
        files = {"tests/x/a_test.cpp": LICENCE + "// TEST(\n", "tests/x/CMakeLists.txt": LICENCE + "a_test.cpp\n"}
        self.assertEqual(self.check_tree(files),
                         (1, "tests/x/a_test.cpp: has no test; what other files share is a fixture\n"))
        files["tests/x/a_test.cpp"] = LICENCE + "TEST_F(A, B) {}\n"
        self.assertEqual(self.check_tree(files), (0, ""))

    def test_the_sources_of_the_programs_pass(self):
        done = subprocess.run([SOURCES / "tests" / "check_sources"], capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stdout), (0, ""))


if __name__ == "__main__":
    unittest.main()
