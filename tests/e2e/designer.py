# SPDX-License-Identifier: GPL-3.0-or-later
"""The designer as a process on a display of its own, driven by mouse and keys."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import unittest

from editor import Display
from harness import STAGE

PICTURES = os.environ.get("OXC_PICTURES")  # a folder for pictures of the screen


class DesignerTest(unittest.TestCase):
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
        self.process = subprocess.Popen([STAGE / "oxc-design", *files], env=self.environment(), stdout=log, stderr=log)
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

    def quit(self):
        self.keys("ctrl+q")
        self.assertEqual(self.process.wait(10), 0)
