# SPDX-License-Identifier: GPL-3.0-or-later
"""The designer as a process on a display of its own, driven by mouse and keys."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import unittest

from editor import SCREEN, Display
from harness import STAGE

PICTURES = os.environ.get("OXC_PICTURES")  # a folder for pictures of the screen


class DesignerTest(unittest.TestCase):
    program = STAGE / "oxc-design"

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="oxc-design-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.display = Display()
        self.addCleanup(self.display.close)
        manager = self.display.start_window_manager()
        self.addCleanup(manager.wait)
        self.addCleanup(manager.terminate)
        self.process = None

    def environment(self):
        return {**self.display.environment(), "QT_QPA_PLATFORM": "xcb", "HOME": str(self.folder),
                "XDG_CONFIG_HOME": str(self.folder / "config"), "XDG_STATE_HOME": str(self.folder / "state")}

    def start(self, *files):
        log = open(self.folder / "log", "ab")
        self.addCleanup(log.close)
        self.process = subprocess.Popen([self.program, *files], env=self.environment(), stdout=log, stderr=log)
        self.addCleanup(self.end)
        return self.window()

    def end(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()

    def wait(self, condition, what, seconds=20):
        for _ in range(seconds * 10):
            found = condition()
            if found:
                return found
            time.sleep(0.1)
        if PICTURES:
            self.display.screenshot(PICTURES + "/design_failed.png")
        self.fail("no " + what + "\n" + (self.folder / "log").read_text())

    def window(self, title="Oxbow Courier Designer"):
        window = self.wait(lambda: self.display.windows(self.process.pid, title), "window " + title)[0]
        self.display.focus(window)
        return window

    def title(self, window):
        return self.display.run("xdotool", "getwindowname", str(window)).strip()

    def keys(self, *keys):
        self.display.key(*keys)

    def type(self, text):
        self.display.run("xdotool", "type", "--delay", "15", text)

    def pixels(self):
        return subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"], timeout=20,
                              env=self.display.environment(), capture_output=True, check=True).stdout

    def area(self, pixels, takes):
        """The area of the pixels, by their offsets, that are taken; None if there are few of them."""
        width = int(SCREEN.split("x", maxsplit=1)[0])
        places = [divmod(at // 3, width) for at in range(0, len(pixels), 3) if takes(at)]
        if len(places) < 100:
            return None
        rows, columns = [row for row, _ in places], [column for _, column in places]
        return min(columns), min(rows), max(columns) + 1, max(rows) + 1

    def place_of_row(self, end, *keys):
        """A place on the row of the tree of the report's data that the keys go to: the mark of the current row comes
        there, left of `end`. The properties on the right follow the row."""
        width = int(SCREEN.split("x", maxsplit=1)[0])
        before = self.pixels()
        self.keys(*keys)
        time.sleep(0.4)
        after = self.pixels()
        left, top, _, bottom = self.area(after, lambda at: at // 3 % width < end and before[at:at + 3] != after[at:at + 3])
        return left + 50, round(bottom - min(6, (bottom - top) / 4))

    def press(self, begin, end):
        """Drags with the left button; a drop needs the pointer to rest a little on its way."""
        steps = []
        for part in (0.05, 0.3, 0.7, 0.95, 1, 1):
            steps += ["mousemove", *(str(round(begin[i] + part * (end[i] - begin[i]))) for i in (0, 1)), "sleep", "0.15"]
        self.display.run("xdotool", "mousemove", str(begin[0]), str(begin[1]), "sleep", "0.2", "mousedown", "1", "sleep", "0.2",
                         *steps, "mouseup", "1")

    def click(self, place):
        self.display.run("xdotool", "mousemove", str(round(place[0])), str(round(place[1])), "sleep", "0.1", "click", "1",
                         "sleep", "0.3")

    def go_on(self, page):
        """Presses Next in the wizard, which acts a moment later."""
        self.keys("alt+n")
        self.wait(lambda: self.display.windows(self.process.pid, "New Report From Data: " + page), "page " + page)
        time.sleep(0.2)

    def add(self, first_character, button):
        """Selects a column of the wizard's query and presses the button of a part, which acts a moment later."""
        self.keys("alt+q", first_character, "alt+" + button)
        time.sleep(0.4)

    def quit(self):
        self.keys("ctrl+q")
        self.assertEqual(self.process.wait(10), 0)
