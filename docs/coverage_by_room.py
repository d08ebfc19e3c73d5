# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints the table of docs/coverage.md from the summary of gcovr.

usage: docs/coverage_by_room.py SUMMARY.json"""

import collections
import json
import sys


def room(path):
    """The room of src/ that a file belongs to: a folder, or one of the folders of the three largest."""
    parts = path.split("/")[1:-1]
    return "/".join(parts[:2] if parts[0] in ("rdl", "platform", "designer") else parts[:1])


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        files = json.load(file)["files"]
    lines, run = collections.Counter(), collections.Counter()
    for entry in files:
        for name in (room(entry["filename"]), "all"):
            lines[name] += entry["line_total"]
            run[name] += entry["line_covered"]
    print("# Lines that the tests run\n")
    print("`tests/coverage` makes this table: a build that counts (the preset coverage), the whole suite in it, and gcovr.")
    print("Code that only a fault of the machine reaches (no memory, a full disk in the middle of a write) is most of the rest.")
    print("A program that a test kills and the confined report process leave no counts: `app`, `platform/qt`, `platform/shell` and")
    print("`platform/reports` run more than is counted here.\n")
    print("| room | lines of code | run by a test |\n| --- | ---: | ---: |")
    for name in sorted(lines, key=lambda name: (name == "all", name)):
        print("| %s | %d | %.1f %% |" % (name, lines[name], 100 * run[name] / lines[name]))


if __name__ == "__main__":
    main()
