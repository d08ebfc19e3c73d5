# SPDX-License-Identifier: GPL-3.0-or-later
"""What the built programs say of their own command lines, for comparison with what is written about them."""

import os
import pathlib
import re
import subprocess

TOP = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("OXC_BUILD", TOP / "build" / "release")).resolve()
PROGRAMS = tuple(line for line in (TOP / "packaging" / "programs.txt").read_text().splitlines() if not line.startswith("#"))
# Programs that print a usage. oxc does not: whatever stands on its command line means the scheduler.
WITH_USAGE = tuple(program for program in PROGRAMS if program != "oxc")
# Programs whose first word is a command.
WITH_COMMANDS = tuple(program for program in WITH_USAGE if program != "oxc-design")


def usage(program):
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}
    return subprocess.run([BUILD / "stage" / program, "--help"], capture_output=True, text=True, check=True,
                          env=environment, timeout=60).stdout


def options(text):
    return set(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", text))


def commands(program):
    text = usage(program)
    named = set(re.findall(rf"^{program} ([a-z]+)", text, re.MULTILINE))
    if named:
        return named
    # The program's name stands once; commands of several forms share a line that begins with "list".
    words = set(re.findall(r"^  ([a-z]+) ", text, re.MULTILINE))
    return words | set(re.findall(r"\| ([a-z]+)", re.search(r"^  list .*", text, re.MULTILINE).group()))


def formats():
    return re.search(r" -f ([a-z|]+) ", usage("oxc-report")).group(1).split("|")


def profile_keys():
    """Names of the keys of the mail profile that `oxc-mail set` takes."""
    text = usage("oxc-mail")
    text = text[text.index("Keys:") + 5:text.index("The password is")]
    text = re.sub(r"\([^)]*\)|^ *[a-z, ]+:", "", text, flags=re.MULTILINE)
    return set(re.findall(r"[A-Z]\w+", text))
