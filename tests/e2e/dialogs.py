# SPDX-License-Identifier: GPL-3.0-or-later
"""Dialogs of the real program, driven by keys.

With OXC_PICTURES set to a folder, pictures of the steps are left there."""

import os
import pathlib
import time

from editor import EditorTest

PICTURES = os.environ.get("OXC_PICTURES")


class DialogTest(EditorTest):
    scale = "1"

    def setUp(self):
        super().setUp()
        self.courier.extra_environment["QT_SCALE_FACTOR"] = self.scale

    def shown(self, title):
        return self.display.windows(self.courier.process.pid, "^%s$" % title)

    def window(self, title):
        """Waits for the window and gives it the keys: there is no window manager to do it."""
        self.courier.wait(lambda: self.shown(title), 10, title)
        window = self.shown(title)[0]
        self.display.focus(window)
        self.courier.settle()
        return window

    def gone(self, title, back_to=None):
        self.courier.wait(lambda: not self.shown(title), 10, "end of " + title)
        if back_to:
            self.display.focus(back_to)
            self.courier.settle()

    def box(self, main):
        """Waits for a box, which bears the main window's title, and gives it the keys."""
        boxes = lambda: [window for window in self.shown("Oxbow Courier") if window != main]
        self.courier.wait(boxes, 30, "box")
        self.display.focus(boxes()[0])
        self.courier.settle()

    def picture(self, name):
        if PICTURES:
            time.sleep(0.3)
            self.display.screenshot(pathlib.Path(PICTURES) / ("%s@%s.png" % (name, self.scale)))

    def type(self, text):
        self.display.run("xdotool", "type", "--delay", "40", text)
