# SPDX-License-Identifier: GPL-3.0-or-later
"""Sessions with the Desktop of the real program, mostly by keys.

With OXC_PICTURES set to a folder, pictures of the steps are left there."""

import os
import pathlib
import time

from editor import EditorTest

PICTURES = os.environ.get("OXC_PICTURES")


class DeskSession(EditorTest):
    scale = 1

    # Where things are in the first Desktop window.
    NEW_FOLDER = (45, 80)
    ROOT = (75, 122)  # of the tree

    def setUp(self):
        super().setUp()
        self.courier.extra_environment["QT_SCALE_FACTOR"] = str(self.scale)

    def picture(self, name):
        if PICTURES:
            time.sleep(0.4)
            self.display.screenshot(pathlib.Path(PICTURES) / ("%s@%d.png" % (name, self.scale)))

    def type(self, text):
        self.display.run("xdotool", "type", "--delay", "40", text)

    def others(self):
        return [window for window in self.display.windows(self.courier.process.pid) if window != self.main]

    def next_window(self, what):
        """Waits for a box or a menu. Boxes are given the keys: there is no window manager to do it."""
        self.courier.wait(self.others, 10, what)
        return self.others()[0]

    def back_to_main(self):
        self.courier.wait(lambda: not self.others(), 10, "end of the box")
        self.display.focus(self.main)
        self.courier.settle()

    def start_session(self):
        self.main = self.open_editor()
        self.courier.wait(lambda: not self.others(), 10, "end of the splash")
        self.fill_screen()

    def fill_screen(self):
        self.display.run("xdotool", "windowsize", "--sync", str(self.main), "100%", "100%")
        time.sleep(0.5)
        self.display.focus(self.main)

    def click(self, x, y, button="1"):
        """A place of the window, in pixels at scale 1."""
        self.display.run("xdotool", "mousemove", "--window", str(self.main), str(x * self.scale), str(y * self.scale),
                         "click", button)
        self.courier.settle()

    def press(self, *keys):
        self.display.key(*keys)
        self.courier.settle()

    def rows(self, statement):
        return [row[0] for row in self.courier.sql(statement)]

    def to_list(self):
        self.click(*self.ROOT)
        self.press("Tab")
