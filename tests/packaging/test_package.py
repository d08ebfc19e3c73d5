# SPDX-License-Identifier: GPL-3.0-or-later
"""The descriptions of the Debian packages, without building them."""

import re
import subprocess
import unittest

from usage import TOP

DEBIAN = TOP / "packaging" / "debian"
LIST = (TOP / "packaging" / "debian-packages.txt").read_text()


def group(name):
    part = re.search(rf"^\[{name}\]\n(.*?)(?=^\[|\Z)", LIST, re.MULTILINE | re.DOTALL).group(1)
    return [line for line in part.splitlines() if line and not line.startswith("#")]


class Package(unittest.TestCase):
    def test_the_changelog_begins_with_the_version_of_the_project(self):
        version = re.search(r"^project\(\w+ VERSION (\S+) ", (TOP / "CMakeLists.txt").read_text(), re.MULTILINE).group(1)
        said = subprocess.run(["dpkg-parsechangelog", "-l", DEBIAN / "changelog", "-S", "Version"], check=True,
                              capture_output=True, text=True).stdout
        self.assertEqual(said, version + "\n")

    def test_relations_are_the_groups_of_the_one_list(self):
        said = subprocess.run([TOP / "package", "--control"], check=True, capture_output=True, text=True).stdout
        fields = re.findall(r"^(Build-Depends|Recommends):(.*\n(?: .*\n)*)", said, re.MULTILINE)
        relations = {name: [item.strip() for item in text.replace("\n", "").split(",")] for name, text in fields}
        build = sorted(set(group("build")) - {"build-essential"})
        self.assertEqual(relations, {"Build-Depends": ["debhelper-compat (= 13)", *build],
                                     "Recommends": sorted(group("run"))})

    def test_control_is_well_formed(self):
        said = subprocess.run([TOP / "package", "--control"], check=True, capture_output=True, text=True).stdout
        names = re.findall(r"^Package: (.*)$", said, re.MULTILINE)
        self.assertEqual(names, ["oxbow-courier", "oxbow-courier-scheduler"])
        self.assertNotIn("@", re.sub(r"^Maintainer: .*$", "", said, flags=re.MULTILINE))

    def test_a_group_that_is_asked_for_is_printed(self):
        said = subprocess.run([TOP / "packaging" / "install", "--list", "package", "coverage"], check=True,
                              capture_output=True, text=True).stdout
        self.assertEqual(said.split(), ["debhelper", "lintian", "gcovr"])


if __name__ == "__main__":
    unittest.main()
