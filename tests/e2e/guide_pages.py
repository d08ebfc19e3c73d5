# SPDX-License-Identifier: GPL-3.0-or-later
"""The blocks of commands in the guides: between ```sh and ```, indented or not."""

import pathlib
import re
import textwrap

TOP = pathlib.Path(__file__).resolve().parent.parent.parent
PAGES = sorted([*TOP.glob("docs/**/*.md"), TOP / "README.md"])

FENCED = re.compile(r"^( *)```([^\n]*)\n(.*?)^ *```$", re.M | re.S)


def name_of(page):
    return str(page.relative_to(TOP))


def blocks(page):
    """All fenced blocks: (the word after the marks, the text without its indentation)."""
    return [(kind.strip(), textwrap.dedent(text)) for _, kind, text in FENCED.findall(page.read_text())]


def commands(page):
    return [text for kind, text in blocks(page) if kind == "sh"]


def unfenced_commands(page):
    """Lines of code by indentation alone, which nothing would run."""
    return re.findall(r"\n\n( {4}\S.*)", FENCED.sub("", page.read_text()))
