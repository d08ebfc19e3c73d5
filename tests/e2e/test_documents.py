# SPDX-License-Identifier: GPL-3.0-or-later
"""What the staged program opens outside of itself, by the associations of the user's desktop."""

import time
import unittest

from editor import EditorTest, write_program
from harness import CourierTest


class Documents(EditorTest):
    def choose_help_entry(self, number):
        window = self.open_editor()
        self.display.key("alt+h")
        self.courier.wait(lambda: [shown for shown in self.display.windows(self.courier.process.pid)
                                   if shown != window], 5, "the menu")
        # A menu opened by its letter stands on its first entry.
        self.display.key(*["Down"] * (number - 1), "Return")

    def test_help_opens_the_book_of_the_application_folder(self):
        note = self.associate("application/vnd.ms-htmlhelp")
        self.choose_help_entry(2)
        self.courier.wait(note.exists, 10, "the book")
        self.assertEqual(note.read_text().strip(), str(self.courier.app / "Oxbow Courier.chm"))
        self.assertIsNone(self.courier.process.poll())

    def test_help_is_shown_by_the_viewer_that_comes_with_the_system(self):
        self.choose_help_entry(2)
        search = ("xdotool", "search", "--onlyvisible", "--class", "xchm")
        self.courier.wait(lambda: self.display.run(*search).split(), 20, "the viewer")

        def links():
            # Blue as in every page; the text of a page's source is black. The viewer's pictures are small.
            return sum(sum(blue > 180 and red < 80 and green < 80 for red, green, blue in self.display.pixels(window))
                       for window in self.display.run(*search).split())
        self.courier.wait(lambda: links() > 60, 20, "a page with its links")

    def test_support_opens_the_page_in_the_browser(self):
        note = self.associate("x-scheme-handler/https")
        self.choose_help_entry(3)
        self.courier.wait(note.exists, 10, "the page")
        self.assertEqual(note.read_text().strip(), "https://oxbow-courier.example/Support.htm")

    def test_what_cannot_be_opened_is_passed_over(self):
        (self.courier.app / "Oxbow Courier.chm").unlink()
        self.choose_help_entry(2)
        time.sleep(1)
        self.assertIsNone(self.courier.process.poll())
        self.assertEqual(len(self.display.windows(self.courier.process.pid)), 1, "no box")


class WithoutADisplay(CourierTest):
    def test_programs_are_not_told_of_the_platform_that_the_scheduler_took(self):
        note = self.courier.folder / "environment"
        program = self.courier.folder / "mailer"
        write_program(program, 'cat > /dev/null\necho "${QT_QPA_PLATFORM-none}" > "%s"\n' % note)
        self.courier.profile("Transport=sendmail\nSendmail=%s\n" % program)
        key = self.courier.schedule()
        self.courier.parameters(key, "2024")
        self.courier.start()
        self.courier.wait(lambda: note.exists() and note.read_text(), 30, "a mail")
        self.assertEqual(note.read_text().strip(), "none")


if __name__ == "__main__":
    unittest.main()
