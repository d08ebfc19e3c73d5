# SPDX-License-Identifier: GPL-3.0-or-later
"""The staged help book: complete, with links that lead somewhere and captions as the windows have them."""

import html
import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import urllib.parse
from html.parser import HTMLParser

TOP = pathlib.Path(__file__).resolve().parents[2]
PAGES = TOP / "help" / "pages"
BOOK = pathlib.Path(os.environ["OXC_STAGE"]) / "Oxbow Courier.chm"
VOID = {"meta", "link", "br", "img", "hr", "param"}


class Page(HTMLParser):
    """What the tests ask of a page: its links, its anchors, its captions by kind, and whether its tags pair up."""

    def __init__(self, text):
        super().__init__()
        self.links, self.anchors, self.faults = [], set(), []
        self.captions = {"menu": [], "control": []}
        self.title = ""
        self._open, self._caption = [], None
        self.feed(text)
        self.close()
        self.faults += self._open

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag not in VOID:
            self._open.append(tag)
        if "href" in values:
            self.links.append(values["href"])
        self.anchors.update(values[key] for key in ("name", "id") if tag == "a" and key in values)
        if values.get("class") in self.captions:
            self.captions[values["class"]].append("")
            self._caption = values["class"]

    def handle_endtag(self, tag):
        if not self._open or self._open.pop() != tag:
            self.faults.append(f"</{tag}> in line {self.getpos()[0]}")
        self._caption = None

    def handle_data(self, data):
        if self._caption:
            self.captions[self._caption][-1] += " ".join(data.split())
        if self._open[-1:] == ["title"]:
            self.title += data


def caption(text):
    """As it is seen: without its mnemonic and the blanks around it."""
    return text.replace("&", "").strip()


def menu_rows():
    source = (TOP / "src/app/Menus.cpp").read_text()
    rows = re.findall(r'\{"(\w+)", (?:"(\w+)"|nullptr), "([^"]*)"(, true)?\}', source)
    popups = {menu for menu, _, _, popup in rows if popup}
    return [(menu, entry, caption(text), menu in popups) for menu, entry, text, _ in rows]


def form_texts():
    texts = set()
    for form in (TOP / "src").rglob("*.ui"):
        texts.update(re.findall(r"<string>([^<]*)</string>", form.read_text()))
    return {caption(html.unescape(text)) for text in texts}


def designer_texts():
    """What stands in the designer's sources as a text, as it is seen."""
    texts = set()
    for source in (TOP / "src/designer").rglob("*.cpp"):
        texts.update(re.findall(r'"((?:[^"\\\n]|\\.)+)"', source.read_text()))
    return {caption(text).removesuffix("...") for text in texts}


def is_of_the_designer(name):
    return name.startswith("design_")


class Help(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        subprocess.run(["extract_chmLib", str(BOOK), cls.folder.name], check=True, stdout=subprocess.DEVNULL)
        cls.book = pathlib.Path(cls.folder.name)
        cls.pages = {path.name: Page(path.read_text()) for path in cls.book.glob("*.html")}

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_the_staged_file_is_a_help_book(self):
        self.assertEqual(BOOK.read_bytes()[:4], b"ITSF")

    def test_the_same_pages_give_the_same_bytes(self):
        book = BOOK.read_bytes()
        self.assertEqual(book[16:20], bytes(4))
        times = re.findall(rb"\x0a\x00\x04\x00(....)\x09\x00..HHA Version ", book, re.DOTALL)
        self.assertEqual(times, [bytes(4)])
        # Others are in the binary index.
        self.assertNotIn(b"$WWKeywordLinks", book)

    def test_it_holds_every_page_as_it_was_written(self):
        written = {path.name: path.read_bytes() for path in PAGES.iterdir()}
        held = {path.name: path.read_bytes() for path in self.book.iterdir() if path.suffix in (".html", ".css")}
        self.assertEqual(held, written)

    def test_every_link_leads_to_a_page_and_an_anchor_of_the_book(self):
        for name, page in self.pages.items():
            for link in page.links:
                path, fragment = urllib.parse.urldefrag(link)
                self.assertTrue((self.book / (path or name)).is_file(), f"{name}: {link}")
                if fragment:
                    self.assertIn(fragment, self.pages[path or name].anchors, f"{name}: {link}")

    def test_every_page_is_reached_by_the_contents_and_the_index(self):
        for index in ("book.hhc", "book.hhk"):
            listed = re.findall(r'name="Local" value="([^"]+)"', (self.book / index).read_text())
            self.assertEqual(set(listed), set(self.pages), index)

    def test_the_contents_name_each_page_by_its_title(self):
        text = (self.book / "book.hhc").read_text()
        named = re.findall(r'name="Name" value="([^"]+)">\s*<param name="Local" value="([^"]+)"', text)
        self.assertEqual({page: title for title, page in named},
                         {name: page.title for name, page in self.pages.items()})

    def test_every_page_is_linked_from_another(self):
        for name in set(self.pages) - {"welcome.html"}:
            linked = [link for other, page in self.pages.items() if other != name
                      for link in page.links if link.split("#")[0] == name]
            self.assertTrue(linked, name)

    def test_tags_pair_up_and_texts_are_plain_letters(self):
        for name, page in self.pages.items():
            self.assertEqual(page.faults, [], name)
            self.assertTrue((self.book / name).read_text().isascii(), name)

    def test_menus_are_spelled_as_in_the_menu_table(self):
        of_the_editor = {text for _, _, text, _ in menu_rows()}
        # A designer's command stands after its menu: "File, Save". The designer also names how the editor opens it.
        of_the_designer = designer_texts()
        for name, page in self.pages.items():
            if is_of_the_designer(name):
                texts = [part for text in page.captions["menu"] for part in text.split(", ")]
                known = of_the_designer | {"Design Current"}
            else:
                texts, known = page.captions["menu"], of_the_editor
            self.assertEqual([text for text in texts if text not in known], [], name)

    def test_the_menu_page_tells_of_every_entry_of_the_menu_bar(self):
        told = set(self.pages["main_window.html"].captions["menu"])
        self.assertEqual({text for _, _, text, popup in menu_rows() if not popup} - told, set())

    def test_the_tray_page_tells_of_every_entry_of_the_icons_menu(self):
        told = set(self.pages["tray.html"].captions["menu"])
        self.assertEqual({text for menu, entry, text, _ in menu_rows() if menu == "mnutb" and entry} - told, set())

    def test_controls_are_spelled_as_in_their_windows(self):
        known, of_the_designer = form_texts(), designer_texts()
        for name, page in self.pages.items():
            unknown = [text for text in page.captions["control"]
                       if text not in known and not (is_of_the_designer(name) and text in of_the_designer)]
            self.assertEqual(unknown, [], name)


if __name__ == "__main__":
    unittest.main()
