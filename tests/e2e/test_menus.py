# SPDX-License-Identifier: GPL-3.0-or-later
"""The menus of the real main window: each opens by its letter with as many entries as it has, and a few are used.

With OXC_PICTURES set to a folder, a picture of the screen with each open menu is left there."""

import os
import pathlib
import time
import unittest

from editor import EditorTest

ENTRIES = {"File": 2, "Tools": 5, "View": 4, "Help": 3}
PICTURES = os.environ.get("OXC_PICTURES")


class Menus(EditorTest):
    def setUp(self):
        super().setUp()
        self.main = self.open_editor()
        self.pid = self.courier.process.pid

    def popups(self):
        return [window for window in self.display.windows(self.pid) if window != self.main]

    def open_menu(self, name):
        self.display.key("alt+" + name[0].lower())
        self.courier.wait(self.popups, what="menu " + name)
        if PICTURES:
            time.sleep(0.3)
            self.display.screenshot(pathlib.Path(PICTURES) / (name + ".png"))
        self.assertEqual(len(self.popups()), 1, name)
        return self.popups()[0]

    def close_menu(self):
        self.display.key("Escape", "Escape")
        self.courier.wait(lambda: not self.popups(), what="end of the menu")

    def height(self, name):
        height = self.display.size(self.open_menu(name))[1]
        self.close_menu()
        return height

    def test_each_menu_of_the_bar_opens_with_its_entries(self):
        heights = {name: self.height(name) for name in ENTRIES}
        # Two menus give the height of an entry and of the frame; the others must fit.
        entry = (heights["Tools"] - heights["File"]) / (ENTRIES["Tools"] - ENTRIES["File"])
        frame = heights["File"] - entry * ENTRIES["File"]
        self.assertGreater(entry, 8)
        self.assertEqual(heights, {name: entry * count + frame for name, count in ENTRIES.items()})
        # The three commands, and after them the open windows.
        self.assertGreaterEqual(self.height("Windows"), entry * 3 + frame)

    def test_exit_ends_the_process(self):
        self.open_menu("File")
        self.display.key("e")
        self.assertEqual(self.courier.process.wait(5), 0)

    def test_about_box_holds_nothing_up_and_goes_by_a_click(self):
        def about():
            return self.display.windows(self.pid, "^About Oxbow Courier$")

        self.open_menu("Help")
        self.display.key("Return")
        self.courier.wait(about, what="about box")
        # Not modal: the main window's menus still open beside it.
        self.display.focus(self.main)
        self.display.key("alt+f")
        self.courier.wait(lambda: len(self.popups()) == 2, what="menu beside the box")
        self.display.key("Escape", "Escape")
        self.courier.wait(lambda: self.popups() == about(), what="end of the menu")
        self.display.click(about()[0], 5, 5)
        self.courier.wait(lambda: not about(), what="end of the about box")
        self.assertIsNone(self.courier.process.poll())


if __name__ == "__main__":
    unittest.main()
