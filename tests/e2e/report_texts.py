# SPDX-License-Identifier: GPL-3.0-or-later
"""What stands in an exported report, read back by other programs or by the rules of the format."""

import csv
import html.parser
import os
import pathlib
import re
import subprocess
import tempfile
import xml.etree.ElementTree
import zipfile


def squeezed(text):
    """Without white space: a line that was broken in a cell is the same text."""
    return re.sub(r"\s+", "", text.replace(" ", " "))


def pdf_pages(path):
    """The text of each page, a cell's lines one after another."""
    text = subprocess.run(["pdftotext", "-raw", str(path), "-"], check=True, capture_output=True).stdout.decode()
    return text.split("\f")[:-1]


class _Rows(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.rows = []
        self.text = []
        self._open = []  # the cells that stand open, the innermost last
        self._silent = 0

    def handle_starttag(self, tag, attrs):
        if tag in ("style", "title"):
            self._silent += 1
        elif tag == "tr":
            self.rows.append([])
            self._open.append(self.rows[-1])
        elif tag in ("td", "th"):
            self._open.append([])
        elif tag in ("br", "div", "p"):
            self.handle_data(" ")

    def handle_endtag(self, tag):
        if tag in ("style", "title"):
            self._silent -= 1
        elif tag == "tr":
            self._open.pop()
        elif tag in ("td", "th"):
            cell = self._open.pop()
            self._open[-1].append(" ".join("".join(cell).split()))

    def handle_data(self, data):
        if self._silent:
            return
        self.text.append(data)
        if self._open and (not self._open[-1] or isinstance(self._open[-1][-1], str)):
            self._open[-1].append(data)


def html_read(path):
    reader = _Rows()
    reader.feed(pathlib.Path(path).read_text(encoding="utf-8"))
    reader.close()
    return reader


def html_rows(path):
    """Each table row as the texts of its cells, spans counted once."""
    return html_read(path).rows


def html_text(path):
    return "".join(html_read(path).text)


def xls_rows(path):
    """The filled cells of each row of each sheet, as a spreadsheet program shows them."""
    rows = []
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["ssconvert", "-S", "-T", "Gnumeric_stf:stf_csv", str(path), folder + "/%n.csv"], check=True,
                       capture_output=True, env={**os.environ, "LC_ALL": "C.UTF-8"})
        for sheet in sorted(pathlib.Path(folder).iterdir(), key=lambda file: int(file.stem)):
            with open(sheet, newline="", encoding="utf-8") as file:
                rows += [[" ".join(cell.split()) for cell in row if cell.strip()] for row in csv.reader(file)]
    return [row for row in rows if row]


_SILENT = re.compile(r"\\(fonttbl|colortbl|info|pict|stylesheet|listtable|listoverridetable|\*)")
_TOKEN = re.compile(r"\\u(-?\d+) ?.?|\\'([0-9a-f]{2})|\\([a-zA-Z]+)(-?\d+)? ?|\\(.)|([{}])|([^\\{}]+)", re.DOTALL)


def rtf_text(path):
    """The text of body, headers and footers; what only tables and fields say of themselves is left out."""
    source = pathlib.Path(path).read_text(encoding="latin-1")
    out = []
    depth = 0
    silent = None
    for match in _TOKEN.finditer(source):
        unicode, byte, word, _, sign, brace, plain = match.groups()
        if brace == "{":
            depth += 1
            if silent is None and _SILENT.match(source, match.end()):
                silent = depth
        elif brace == "}":
            silent = None if silent == depth else silent
            depth -= 1
        elif silent is not None:
            continue
        elif unicode:
            out.append(chr(int(unicode) % 65536))
        elif byte:
            out.append(bytes([int(byte, 16)]).decode("cp1252"))
        elif word in ("cell", "nestcell", "row", "par", "line", "tab"):
            out.append("\n")
        elif sign and sign in "\\{}~":
            out.append(" " if sign == "~" else sign)
        elif plain:
            out.append(plain.replace("\r", "").replace("\n", ""))
    return "".join(out).encode("utf-16", "surrogatepass").decode("utf-16")


_WORD = "{http://schemas.openxmlformats.org/wordprocessingml/2006/main}"


def docx_text(path):
    """The text of body, headers and footers of a Word document; every part of it is well-formed."""
    out = []
    with zipfile.ZipFile(path) as archive:
        assert archive.testzip() is None
        for name in archive.namelist():
            if not name.endswith((".xml", ".rels")):
                continue
            root = xml.etree.ElementTree.fromstring(archive.read(name))
            for element in root.iter():
                if element.tag == _WORD + "t":
                    out.append(element.text or "")
                elif element.tag in (_WORD + "p", _WORD + "br", _WORD + "tab"):
                    out.append("\n")
    return "".join(out)
