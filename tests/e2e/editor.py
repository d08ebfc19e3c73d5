# SPDX-License-Identifier: GPL-3.0-or-later
"""The editor in a real window on a display of its own, driven by keys and clicks."""

import ctypes
import ctypes.util
import os
import re
import shutil
import subprocess
import time

from harness import CourierTest

SCREEN = "1280x800"


def write_program(path, text):
    path.write_text("#!/bin/sh\n" + text)
    path.chmod(0o755)


class Display:
    """An X server without a window manager; gone with the test."""

    def __init__(self, screen=SCREEN):
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write_end), "-screen", "0", screen + "x24",
                                        "-nolisten", "tcp", "-noreset"], pass_fds=[write_end],
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise AssertionError("Xvfb did not start")
        self.name = ":" + number

    def close(self):
        self.server.terminate()
        self.server.wait()

    def environment(self):
        return {**os.environ, "DISPLAY": self.name}

    def run(self, *command):
        return subprocess.run(command, env=self.environment(), capture_output=True, text=True).stdout

    def windows(self, pid, name=""):
        """Visible windows of the process whose title matches."""
        found = self.run("xdotool", "search", "--all", "--onlyvisible", "--pid", str(pid), "--name", name).split()
        return [int(window) for window in found]

    def size(self, window):
        text = self.run("xdotool", "getwindowgeometry", str(window))
        return tuple(int(side) for side in re.search(r"Geometry: (\d+)x(\d+)", text).groups())

    def key(self, *keys):
        self.run("xdotool", "key", "--delay", "60", *keys)

    def focus(self, window):
        self.run("xdotool", "windowfocus", "--sync", str(window))

    def click(self, window, x, y):
        self.run("xdotool", "mousemove", "--window", str(window), str(x), str(y), "click", "1")

    def screenshot(self, path):
        self.run("import", "-silent", "-window", "root", str(path))

    def start_window_manager(self):
        """Windows get frames and the keyboard as on a user's desktop. Returns the process."""
        manager = subprocess.Popen(["openbox", "--sm-disable"], env=self.environment(), stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        for _ in range(100):
            if self.run("xdotool", "get_num_desktops").strip() not in ("", "0"):  # as the first one says
                return manager
            time.sleep(0.1)
        raise AssertionError("the window manager did not start")

    def pixels(self, window):
        """What the screen shows where the window is: (red, green, blue) by pixel. Of a window that is gone, nothing."""
        place = self.run("xdotool", "getwindowgeometry", str(window))
        position = re.search(r"Position: (-?\d+),(-?\d+)", place)
        size = re.search(r"Geometry: (\d+)x(\d+)", place)
        if not position or not size:
            return []
        left, top = position.groups()
        width, height = size.groups()
        # Not of the window itself: the program would wait for a click when it is gone.
        colours = subprocess.run(["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}",
                                  "-depth", "8", "rgb:-"], env=self.environment(), capture_output=True,
                                 timeout=20).stdout
        return list(zip(colours[::3], colours[1::3], colours[2::3]))

    def close_box(self, window):
        """What a window manager sends when its close box is clicked."""
        library = ctypes.CDLL(ctypes.util.find_library("X11"))
        library.XOpenDisplay.restype = ctypes.c_void_p
        library.XInternAtom.restype = ctypes.c_ulong
        library.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
        library.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.c_void_p]
        library.XCloseDisplay.argtypes = [ctypes.c_void_p]
        display = library.XOpenDisplay(self.name.encode())
        event = _ClientMessage(type=33, window=window, format=32,
                               message_type=library.XInternAtom(display, b"WM_PROTOCOLS", 0))
        event.data[0] = library.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
        library.XSendEvent(display, window, 0, 0, ctypes.byref(event))
        library.XCloseDisplay(display)


class _ClientMessage(ctypes.Structure):
    """Xlib's XClientMessageEvent, as large as its XEvent."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("padding", ctypes.c_long * 12)]


class EditorTest(CourierTest):
    screen = SCREEN

    def setUp(self):
        super().setUp()
        self.display = Display(self.screen)
        self.addCleanup(self.display.close)
        self.courier.extra_environment = {"DISPLAY": self.display.name, "QT_QPA_PLATFORM": "xcb"}

    def associate(self, kind):
        """Opens documents of the kind with a program that only notes what it was given. Returns the note."""
        folder = self.courier.folder
        note = folder / "opened"
        write_program(folder / "viewer", 'echo "$1" > "%s.part"; mv "%s.part" "%s"\n' % (note, note, note))
        applications = folder / "data" / "applications"
        applications.mkdir(parents=True)
        (applications / "viewer.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=Viewer\nExec=%s %%u\n" % (folder / "viewer"))
        (folder / "config" / "mimeapps.list").write_text("[Default Applications]\n%s=viewer.desktop\n" % kind)
        return note

    def forget_settings(self):
        """As on a machine that the program has never run on."""
        shutil.rmtree(self.courier.folder / "config")
        (self.courier.folder / "config").mkdir()

    def open_editor(self):
        """Starts it and waits for its main window after the splash. Returns the window."""
        self.courier.start(arguments=())
        self.courier.wait(self.main_windows, what="main window")
        window = self.main_windows()[0]
        self.display.focus(window)
        return window

    def main_windows(self):
        return self.display.windows(self.courier.process.pid, "^Oxbow Courier$")
