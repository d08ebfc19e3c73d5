"""Programs with no display, with one that does not answer, and with a wish for a platform that cannot be had: one line
where a window is needed, nothing to be said where none is."""

import pathlib
import subprocess
import unittest

from harness import CourierTest

# No server of the machine has such a number.
SILENT = ":4242"


class Displays(CourierTest):
    def run_scheduler(self, **variables):
        """What it said up to its first row."""
        self.courier.extra_environment.update(variables)
        self.courier.schedule()
        self.courier.run_until_history()
        return self.courier.said()

    def refusal(self, program, **variables):
        result = subprocess.run([str(self.courier.app / program)], capture_output=True, text=True, timeout=30,
                                env={**self.courier.environment(), **variables}, check=False)
        return result.returncode, result.stdout, result.stderr

    def test_scheduler_has_nothing_to_say_without_a_display(self):
        self.assertEqual(self.run_scheduler(XDG_RUNTIME_DIR=""), "")

    def test_scheduler_has_nothing_to_say_of_a_display_that_does_not_answer(self):
        self.assertEqual(self.run_scheduler(DISPLAY=SILENT), "")

    def test_scheduler_runs_whatever_platform_is_wished_for(self):
        self.assertEqual(self.run_scheduler(QT_QPA_PLATFORM="xcb"), "")

    def test_editor_names_the_display_that_does_not_answer(self):
        self.assertEqual(self.refusal("oxc", DISPLAY=SILENT),
                         (1, "", 'oxc: the display ":4242" does not answer; the scheduler (oxc -sched) runs without one\n'))

    def test_editor_names_the_platform_that_cannot_be_had(self):
        self.assertEqual(self.refusal("oxc", QT_QPA_PLATFORM="xcb"),
                         (1, "", 'oxc: no window can be opened with QT_QPA_PLATFORM "xcb"; '
                                 "the scheduler (oxc -sched) runs without one\n"))

    def test_mail_window_names_the_display_that_does_not_answer(self):
        self.assertEqual(self.refusal("oxc-mail", DISPLAY=SILENT),
                         (1, "", 'oxc-mail: the display ":4242" does not answer; '
                                 "oxc-mail --help tells the commands, which need none\n"))

    def test_scheduler_leaves_no_memory_on_the_disk(self):
        process = self.courier.start()
        self.courier.schedule()
        self.courier.wait(lambda: self.courier.history(), what="a run")
        limits = pathlib.Path("/proc/%d/limits" % process.pid).read_text()
        self.assertRegex(limits, r"Max core file size +0 ")


if __name__ == "__main__":
    unittest.main()
