# SPDX-License-Identifier: GPL-3.0-or-later
"""The Options dialog and the address book of the real program, by keys alone, at the usual size and at twice it.

With OXC_PICTURES set to a folder, pictures of both are left there."""

import unittest

from dialogs import DialogTest

CARDS = [("Ann Archer", "ann@example.com", "Boss"), ("Bob Bowman", "bob@example.org", "Bobby"),
         ("Cy Müller", "cy@example.com", "Cy")]


def cards():
    return "".join("BEGIN:VCARD\nVERSION:4.0\nFN:%s\nNICKNAME:%s\nEMAIL:%s\nEND:VCARD\n" % (name, nickname, address)
                   for name, address, nickname in CARDS)


class Options(DialogTest):
    def setUp(self):
        super().setUp()
        self.book = self.courier.folder / "contacts.vcf"
        self.book.write_text(cards())
        self.courier.profile("Transport=outbox\nOutboxFolder=%s\n[AddressBook]\nVCard=%s\n"
                             % (self.courier.outbox, self.book))

    def open_options(self):
        main = self.open_editor()

        def menus():
            return [window for window in self.display.windows(self.courier.process.pid) if window != main]

        self.display.key("alt+t")
        self.courier.wait(menus, 10, "menu")
        menu = menus()[0]
        width, height = self.display.size(menu)
        self.display.click(menu, width // 2, height // 2)  # the third of five
        return self.window("Options")

    def stored(self):
        lines = (self.courier.config / "settings.reg").read_text(encoding="utf-8").splitlines()
        return dict(line.replace('"', "").split("=", 1) for line in lines if line.startswith('"'))

    def test_names_are_picked_and_saved_by_keys_alone(self):
        options = self.open_options()
        self.display.key("ctrl+a")
        self.type("45")
        self.picture("options")
        self.display.key("alt+r")
        self.window("Address Book")
        self.type("example.com")
        self.picture("address-book")
        self.display.key("shift+Down", "Return")
        self.type("bobby")
        self.display.key("Return")
        self.picture("address-book-chosen")
        self.display.key("Return")
        self.gone("Address Book", options)
        self.display.key("alt+s")
        self.gone("Options")
        stored = self.stored()
        self.assertEqual(stored["Poll"], "45")
        self.assertEqual(stored["AlertWho"], "boss@example.comAnn Archer;Cy Müller;Bob Bowman;")
        self.assertIsNone(self.courier.process.poll())

    def test_cancelled_address_book_adds_nothing(self):
        options = self.open_options()
        self.display.key("alt+r")
        self.window("Address Book")
        self.type("ann")
        self.display.key("Escape")
        self.gone("Address Book", options)
        self.display.key("alt+s")
        self.gone("Options")
        self.assertEqual(self.stored()["AlertWho"], "boss@example.com")

    def test_empty_book_says_so(self):
        self.book.write_text("")
        self.open_options()
        self.display.key("alt+r")
        self.window("Address Book")
        self.picture("address-book-empty")
        self.display.key("Escape")
        self.gone("Address Book")

    def test_word_for_an_interval_ends_the_editor_with_its_box(self):
        self.open_options()
        self.display.key("ctrl+a")
        self.type("often")
        self.display.key("alt+s")
        self.window("Oxbow Courier")
        boxes = [window for window in self.display.windows(self.courier.process.pid)
                 if self.display.size(window)[0] < 700]
        self.display.focus(boxes[-1])
        self.picture("run-time-error")
        self.display.key("Return")
        self.assertEqual(self.courier.process.wait(5), 1)
        self.assertEqual(self.stored()["Poll"], "often")


class OptionsTwiceAsLarge(Options):
    scale = "2"


if __name__ == "__main__":
    unittest.main()
