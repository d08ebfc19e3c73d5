# SPDX-License-Identifier: GPL-3.0-or-later
"""Another program keeps the database locked for longer than it is waited for."""

import sqlite3
import subprocess
import time
import unittest

from editor import EditorTest, write_program
from harness import CourierTest


class Lock:
    """The database as another program holds it that writes."""

    def __init__(self, courier, statement="begin immediate"):
        self.connection = sqlite3.connect(courier.database, timeout=10, isolation_level=None)
        self.connection.execute("pragma journal_mode=wal").fetchall()
        self.connection.execute(statement)

    def release(self):
        self.connection.close()


class LockedScheduler(CourierTest):
    def mail_program(self):
        """Takes mails, each of which it keeps, and waits with its answer until the test has seen it."""
        folder = self.courier.folder
        write_program(folder / "mailer", 'cat > "%s/mail.$$"\nwhile [ ! -e "%s/answer" ]; do sleep 0.05; done\n'
                      % (folder, folder))
        self.courier.profile("Transport=sendmail\nSendmail=%s\nTimeout=60\n" % (folder / "mailer"))

    def mails(self):
        """The reports that have gone out; alerts do not count."""
        texts = [path.read_text(errors="replace") for path in self.courier.folder.glob("mail.*")]
        return [text for text in texts if "Subject: Figures" in text]

    def deliver_under_lock(self):
        """The mail is out, and its date cannot be stored."""
        self.mail_program()
        key = self.courier.schedule()
        self.courier.start()
        self.courier.wait(self.mails, what="mail")
        lock = Lock(self.courier)
        self.addCleanup(lock.release)
        (self.courier.folder / "answer").touch()
        return key, lock

    def test_record_waits_for_the_lock_to_go(self):
        key, lock = self.deliver_under_lock()
        self.courier.wait(lambda: "The scheduler waits for its database." in self.courier.said(), what="line")
        lock.release()
        self.courier.wait(lambda: self.courier.history(key), what="history row")
        self.assertEqual(self.courier.history(key)[0][2:], ("Success", "None"))
        time.sleep(3)  # two polls
        self.assertEqual(len(self.mails()), 1)

    def test_killed_while_it_waits_it_does_not_mail_again(self):
        key, lock = self.deliver_under_lock()
        self.courier.wait((self.courier.app / "PressroomLive.delivered").exists, what="note")
        time.sleep(1)
        self.courier.process.kill()
        self.courier.process.wait()
        lock.release()
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key)[0][2:], ("Success", "None"))
        self.assertNotEqual(self.courier.next_run(key), time.strftime("%Y-%m-%d"))
        self.assertEqual(len(self.mails()), 1)

    def test_nothing_is_mailed_while_it_is_locked_before_the_poll(self):
        self.mail_program()
        (self.courier.folder / "answer").touch()
        key = self.courier.schedule()
        lock = Lock(self.courier)
        self.addCleanup(lock.release)
        self.courier.start()
        self.courier.wait(lambda: "The scheduler waits for its database." in self.courier.said(), what="line")
        self.assertEqual(self.mails(), [])
        lock.release()
        self.courier.wait(lambda: len(self.courier.history(key)) > 1, what="failure row and run")
        self.assertEqual([row[2] for row in self.courier.history(key)], ["Failure", "Success"])
        self.assertIn("is still in use by another program after 10 seconds", self.courier.history(key)[0][3])
        self.assertEqual(len(self.mails()), 1)


class LockedEditor(EditorTest):
    def picture(self, name):
        path = self.courier.folder / (name + ".png")
        self.display.screenshot(path)
        return path

    def differ(self, one, other):
        return subprocess.run(["compare", "-metric", "AE", one, other, "null:"], capture_output=True).returncode != 0

    def test_window_is_painted_while_its_start_waits_and_clicks_wait_too(self):
        lock = Lock(self.courier)
        self.addCleanup(lock.release)
        window = self.open_editor()  # shown; now it clears the history of old rows
        time.sleep(3)
        waiting = self.picture("waiting")
        colours = int(subprocess.run(["identify", "-format", "%k", waiting], capture_output=True, check=True).stdout)
        self.assertGreater(colours, 100)
        self.display.click(window, 20, 10)  # the menu "File"
        time.sleep(1)
        self.assertFalse(self.differ(waiting, self.picture("clicked")))
        lock.release()
        time.sleep(2)
        self.assertTrue(self.differ(waiting, self.picture("free")))
        self.assertIsNone(self.courier.process.poll())


if __name__ == "__main__":
    unittest.main()
