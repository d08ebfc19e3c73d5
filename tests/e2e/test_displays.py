# SPDX-License-Identifier: GPL-3.0-or-later
"""Programs with no display, with one that refuses, with one that takes the connection and stays silent, and with a wish
for a platform that cannot be had: one line where a window is needed, and the scheduler goes on."""

import os
import pathlib
import socket
import subprocess
import time
import unittest

from harness import CourierTest

# No server of the machine has such a number.
REFUSED = ":4242"
# Longer than the programs wait for a display.
PATIENCE = 60
EDITOR_ADVICE = "the scheduler (oxc -sched) runs without one"
MAIL_ADVICE = "oxc-mail --help lists the commands, which need none"


class Displays(CourierTest):
    def run_scheduler(self, **variables):
        """What it said in sentences up to its first row."""
        self.courier.extra_environment.update(variables)
        self.courier.schedule()
        self.courier.run_until_history()
        return self.courier.sentences()

    def refusal(self, program, **variables):
        result = subprocess.run([str(self.courier.app / program)], capture_output=True, text=True, timeout=30,
                                env={**self.courier.environment(), **variables}, check=False)
        return result.returncode, result.stdout, result.stderr

    def test_scheduler_has_nothing_to_say_without_a_display(self):
        self.assertEqual(self.run_scheduler(XDG_RUNTIME_DIR=""), "")

    def test_scheduler_has_nothing_to_say_without_a_folder_for_what_runs(self):
        for folder in ("/dev/null", "/proc", "/none"):
            with self.subTest(folder=folder):
                self.courier.sql("delete from ReportHistory")
                self.assertEqual(self.run_scheduler(XDG_RUNTIME_DIR="", TMPDIR=folder), "")
                self.assertEqual(self.run_scheduler(XDG_RUNTIME_DIR=folder), "")

    def test_scheduler_has_nothing_to_say_of_a_display_that_does_not_answer(self):
        self.assertEqual(self.run_scheduler(DISPLAY=REFUSED), "")

    def test_scheduler_runs_whatever_platform_is_wished_for(self):
        self.assertEqual(self.run_scheduler(QT_QPA_PLATFORM="xcb"), "")

    def test_editor_names_the_display_that_does_not_answer(self):
        self.assertEqual(self.refusal("oxc", DISPLAY=REFUSED),
                         (1, "", 'oxc: the display ":4242" does not answer; the scheduler (oxc -sched) runs without one\n'))

    def test_editor_names_the_platform_that_cannot_be_had(self):
        self.assertEqual(self.refusal("oxc", QT_QPA_PLATFORM="xcb"),
                         (1, "", 'oxc: no window can be opened with QT_QPA_PLATFORM "xcb"; '
                                 "the scheduler (oxc -sched) runs without one\n"))

    def test_mail_window_names_the_display_that_does_not_answer(self):
        self.assertEqual(self.refusal("oxc-mail", DISPLAY=REFUSED),
                         (1, "", 'oxc-mail: the display ":4242" does not answer; '
                                 "oxc-mail --help lists the commands, which need none\n"))

    def silent_display(self):
        """The number of a display that takes connections and never answers one."""
        pathlib.Path("/tmp/.X11-unix").mkdir(mode=0o1777, exist_ok=True)
        server = socket.socket(socket.AF_UNIX)
        self.addCleanup(server.close)
        for number in range(7000 + os.getpid() % 1000, 9000):
            path = "/tmp/.X11-unix/X%d" % number
            try:
                server.bind(path)
            except OSError:
                continue
            self.addCleanup(os.unlink, path)
            server.listen(20)
            return ":%d" % number
        raise AssertionError("every display is taken")

    def silent_compositor(self):
        server = socket.socket(socket.AF_UNIX)
        self.addCleanup(server.close)
        path = str(self.courier.folder / "wayland-7")
        server.bind(path)
        server.listen(20)
        return path

    def check_scheduler_goes_on(self, display, **variables):
        self.courier.extra_environment.update(variables)
        key = self.courier.schedule()
        begin = time.monotonic()
        self.courier.start()
        self.courier.wait(lambda: self.courier.history(), PATIENCE, "a run")
        self.assertEqual([row[2] for row in self.courier.history(key)], ["Success"])
        self.assertGreater(time.monotonic() - begin, 5)
        self.assertRegex(self.courier.sentences(),
                         r'\A[-0-9]{10} [:0-9]{8} No window is shown: the display "%s" does not answer\n\Z' % display)

    def check_is_refused(self, program, advice, display, **variables):
        result = subprocess.run([str(self.courier.app / program)], capture_output=True, text=True, timeout=PATIENCE,
                                env={**self.courier.environment(), **variables}, check=False)
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (1, "", '%s: the display "%s" does not answer; %s\n' % (program, display, advice)))

    def test_scheduler_goes_on_without_a_display_that_stays_silent(self):
        display = self.silent_display()
        self.check_scheduler_goes_on(display, DISPLAY=display)

    def test_programs_that_the_scheduler_starts_are_told_of_the_display(self):
        display = self.silent_display()
        mailer = self.courier.folder / "mailer"
        mailer.write_text("#!/bin/sh\nenv >'%s/environment'\ncat >/dev/null\n" % self.courier.folder)
        mailer.chmod(0o755)
        self.courier.profile("Transport=sendmail\nSendmail=%s\n" % mailer)
        self.check_scheduler_goes_on(display, DISPLAY=display)
        told = (self.courier.folder / "environment").read_text().splitlines()
        self.assertIn("DISPLAY=" + display, told)
        self.assertEqual([line for line in told if "PLATFORM" in line], [])

    def test_scheduler_goes_on_without_a_compositor_that_stays_silent(self):
        display = self.silent_compositor()
        self.courier.extra_environment.update(WAYLAND_DISPLAY=display)
        key = self.courier.schedule()
        self.courier.start()
        self.courier.wait(lambda: self.courier.history(), PATIENCE, "a run")
        self.assertEqual([row[2] for row in self.courier.history(key)], ["Success"])

    def test_editor_does_not_wait_for_ever(self):
        display = self.silent_display()
        self.check_is_refused("oxc", EDITOR_ADVICE, display, DISPLAY=display)

    def test_mail_window_does_not_wait_for_ever(self):
        display = self.silent_display()
        self.check_is_refused("oxc-mail", MAIL_ADVICE, display, DISPLAY=display)

    def test_editor_does_not_wait_for_ever_for_a_compositor(self):
        display = self.silent_compositor()
        self.check_is_refused("oxc", EDITOR_ADVICE, display, WAYLAND_DISPLAY=display)

    def test_scheduler_leaves_no_memory_on_the_disk(self):
        process = self.courier.start()
        self.courier.schedule()
        self.courier.wait(lambda: self.courier.history(), what="a run")
        limits = pathlib.Path("/proc/%d/limits" % process.pid).read_text()
        self.assertRegex(limits, r"Max core file size +0 ")


if __name__ == "__main__":
    unittest.main()
