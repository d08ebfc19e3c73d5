"""The check of the sources finds what asks the region of the process, and nothing else."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCES = pathlib.Path(os.environ["OXC_SOURCES"])
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

    def test_the_sources_of_the_programs_pass(self):
        done = subprocess.run([SOURCES / "tests" / "check_sources"], capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stdout), (0, ""))


if __name__ == "__main__":
    unittest.main()
