# SPDX-License-Identifier: GPL-3.0-or-later
"""The manuals: well formed, complete, and true to the programs and files that they describe."""

import pathlib
import re
import subprocess
import unittest

from usage import BUILD, TOP, WITH_COMMANDS, WITH_USAGE, commands, formats, options, profile_keys, usage

SOURCES = TOP / "packaging" / "man"
MADE = BUILD / "packaging" / "man"


def source(page):
    return (SOURCES / (page + ".scd")).read_text()


def tags(text):
    """The bold words of the lines that begin an entry, in the order of the page."""
    lines = re.findall(r"^(\*\S+\*.*)\n\t", text, re.MULTILINE)
    return [word for line in lines for word in re.findall(r"(?:^|, )\*([^*]+)\*", line)]


def section(text, title):
    return re.search(rf"^# {title}\n(.*?)(?=^# |\Z)", text, re.MULTILINE | re.DOTALL).group(1)


class Manuals(unittest.TestCase):
    def test_every_program_has_a_page_and_every_page_is_made(self):
        programs = {path.name for path in (BUILD / "stage").glob("oxc*") if "." not in path.name}
        pages = {path.stem for path in SOURCES.glob("*.scd")}
        self.assertEqual({page for page in pages if page.endswith(".1")}, {program + ".1" for program in programs})
        self.assertEqual({path.name for path in MADE.iterdir()}, pages)

    def test_pages_have_no_faults(self):
        for page in sorted(MADE.iterdir()):
            said = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", page], capture_output=True,
                                  text=True).stdout
            # The compiler of the pages writes paragraphs that begin a section or end an entry.
            faults = [line for line in said.splitlines() if "skipping paragraph macro: PP" not in line]
            self.assertEqual(faults, [], page.name)

    def test_pages_refer_to_pages_that_exist(self):
        names = {path.stem for path in SOURCES.glob("*.scd")}
        for page in sorted(names):
            text = source(page)
            title = re.match(r"([a-z-]+)\((\d)\) ", text)
            self.assertEqual(".".join(title.groups()), page)
            references = {f"{name}.{number}" for name, number in re.findall(r"\*([a-z-]+)\*\((\d)\)", text)}
            self.assertEqual(references - names, set(), page)
            self.assertNotIn(page, references)

    def test_options_are_those_of_the_usage(self):
        for program in WITH_USAGE:
            text = source(program + ".1")
            self.assertEqual(set(tags(section(text, "OPTIONS"))), options(usage(program)), program)
            self.assertEqual(options(section(text, "SYNOPSIS")) - options(usage(program)), set(), program)

    def test_commands_are_those_of_the_usage(self):
        for program in WITH_COMMANDS:
            text = source(program + ".1")
            self.assertEqual(set(tags(section(text, "COMMANDS"))), commands(program), program)
            synopsis = section(text, "SYNOPSIS").replace("*", "")
            named = set(re.findall(rf"^{program} ([a-z]+)", synopsis, re.MULTILINE))
            self.assertEqual(named, commands(program), program)

    def test_formats_are_those_of_the_usage(self):
        entry = re.search(r"^\*-f\* _FORMAT_\n((?:\t.*\n)+)", source("oxc-report.1"), re.MULTILINE).group(1)
        self.assertEqual(re.findall(r"\*([a-z]+)\*", entry), formats())

    def test_words_of_a_new_report_are_those_of_the_usage(self):
        whole = usage("oxc-report").split("oxc-report new")[1]
        for option, name in (("--layout", "WORD"), ("--chart", "WORD"), ("--theme", "NAME")):
            entry = re.search(rf"^\*{option}\* _{name}_\n((?:\t.*\n)+)", source("oxc-report.1"), re.MULTILINE).group(1)
            words = re.search(rf"\[{option} ([a-z|]+)\]", whole).group(1).split("|")
            self.assertEqual(re.findall(r"\*([a-z]+)\*", entry), ["new"] + words, option)

    def test_variables_are_those_of_the_usage(self):
        environment = tags(section(source("oxc-report.1"), "ENVIRONMENT"))
        named = set(re.findall(r"\bOXC_[A-Z_]+", usage("oxc-report")))
        self.assertEqual(named - set(environment), set())

    def test_keys_of_the_mail_profile_are_those_of_the_program(self):
        text = source("oxbow-courier-mail.5")
        keys = tags(section(text, "SECTION PROFILE")) + tags(section(text, "SECTION ADDRESSBOOK"))
        self.assertEqual(len(keys), len(set(keys)))
        self.assertEqual(set(keys), profile_keys() | {"Password"})

    def test_settings_are_those_that_the_sources_use(self):
        pattern = re.compile(r'(?:SettingsKey, |Setting\(|\bSave\()"([A-Za-z]+)"')
        used = {name for folder in ("app", "desktop", "dialogs", "store", "tools")
                for path in (TOP / "src" / folder).rglob("*.cpp") for name in pattern.findall(path.read_text())}
        self.assertEqual(set(tags(section(source("oxbow-courier-settings.5"), "SETTINGS"))), used)

    def test_types_of_parameters_are_those_of_the_guide(self):
        guide = (TOP / "docs" / "report-files.md").read_text()
        table = guide[guide.index("| `DataType` |"):].split("\n\n")[0]
        self.assertEqual(tags(section(source("oxbow-courier-reports.5"), "PARAMETERS")),
                         re.findall(r"^\| `(\w+)` \| \d", table, re.MULTILINE))

    def test_schemas_are_those_of_the_guide(self):
        first = "".join((TOP / "docs" / "report-files.md").read_text().split("\n\n")[1])
        text = section(source("oxbow-courier-reports.5"), "DESCRIPTION")
        self.assertEqual(re.findall(r"20\d\d/\d\d", text), re.findall(r"20\d\d/\d\d", first))


if __name__ == "__main__":
    unittest.main()
