# SPDX-License-Identifier: GPL-3.0-or-later
"""Editors in real windows on a team's store: its server is away for a while, and two of them work beside schedulers."""

import collections
import os
import threading
import time
import unittest

from desk_session import DeskSession
from team import Member, TeamTest

LONG = bool(os.environ.get("OXC_LONG_TESTS"))


class Desk(DeskSession):
    """An editor with a display and a link of its own."""

    def __init__(self, server):
        super().__init__("start_session")
        self.server = server

    def setUp(self):
        super().setUp()
        self.courier.close()
        environment = self.courier.extra_environment
        self.courier = Member(self.server, "ed")
        self.courier.extra_environment = environment
        self.addCleanup(self.courier.close)

    def open_with_a_box(self):
        """Starts it while its store is away. Returns the box."""
        self.main = self.open_editor()
        return self.box()

    def box(self):
        """Waits for a box and gives it the keys."""
        self.courier.wait(lambda: len(self.others()) == 1 and not self.splash(), 30, "box")
        time.sleep(0.3)
        box = self.others()[0]
        self.display.focus(box)
        time.sleep(0.2)
        return box

    def splash(self):
        return [window for window in self.others() if self.display.size(window)[1] > 250]

    def answer(self, key):
        box = self.box()
        self.press(key)
        self.courier.wait(lambda: box not in self.others(), 20, "end of the box")

    def folders(self):
        return self.rows("select FolderName from Folders")

    def make_folder(self, name):
        self.click(*self.NEW_FOLDER)
        self.display.focus(self.next_window("question for a name"))
        self.type(name)
        self.press("Return")
        self.courier.wait(lambda: name in self.folders(), 20, "new folder " + name)
        self.back_to_main()

    def rename(self, old, new):
        self.to_list()
        self.type(old)
        self.press("F2")
        self.press("ctrl+a")
        self.type(new)
        self.press("Return")
        self.courier.wait(lambda: new in self.folders() and old not in self.folders(), 20, "new name " + new)


class TeamEditors(TeamTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(self.server.ensure)
        self.server.rows("insert into Folders(FolderName, Parent) values('Sales', 0)")

    def desk(self):
        desk = Desk(self.server)
        desk.setUp()
        self.addCleanup(desk.doCleanups)
        return desk

    def assert_alive_without_boxes(self, desk, seconds=3):
        time.sleep(seconds)
        self.assertEqual(desk.others(), [])
        self.assertIsNone(desk.courier.process.poll(), desk.courier.said())

    def test_server_that_is_away_at_start_is_asked_about(self):
        desk = self.desk()
        self.server.stop("fast")
        desk.open_with_a_box()
        desk.picture("away-at-start")
        desk.answer("alt+y")
        self.server.launch()
        desk.answer("alt+y")
        self.assert_alive_without_boxes(desk)
        desk.picture("back")
        desk.fill_screen()
        desk.make_folder("Ledger")

    def test_start_without_the_server_is_given_up_with_one_answer(self):
        desk = self.desk()
        self.server.stop("fast")
        desk.open_with_a_box()
        desk.answer("alt+n")
        self.assert_alive_without_boxes(desk)
        desk.picture("given-up")
        self.server.launch()
        desk.fill_screen()
        desk.click(*desk.ROOT)
        self.assert_alive_without_boxes(desk, 1)
        desk.picture("root-after-the-server-is-back")
        desk.rename("Sales", "Sold")

    def test_server_that_goes_away_is_asked_about_and_the_command_goes_on(self):
        desk = self.desk()
        desk.start_session()
        self.server.stop("fast")
        desk.click(*desk.ROOT)  # nothing handles an error of this command
        desk.picture("away-in-the-middle")
        desk.answer("alt+n")
        self.assert_alive_without_boxes(desk)
        desk.display.focus(desk.main)
        desk.click(*desk.ROOT)
        desk.box()
        self.server.launch()
        desk.answer("alt+y")
        self.assert_alive_without_boxes(desk, 1)
        desk.display.focus(desk.main)
        desk.rename("Sales", "Sold")

    def test_window_that_opens_without_the_server_is_empty(self):
        desk = self.desk()
        desk.start_session()
        self.server.stop("fast")
        desk.press("alt+f")
        desk.next_window("menu")
        desk.press("s")  # Show Desktop
        desk.answer("alt+n")
        self.assert_alive_without_boxes(desk)
        desk.picture("second-window")

    def test_two_editors_work_beside_three_schedulers(self):
        schedulers = [Member(self.server) for _ in range(3)]
        for scheduler in schedulers:
            self.addCleanup(scheduler.close)
        desks = [self.desk() for _ in range(2)]
        for desk in desks:
            desk.start_session()
        for scheduler in schedulers:
            scheduler.start()
        end = time.monotonic() + (120 if LONG else 20)
        faults, added = [], []

        def edit(number, desk):
            try:
                name = "F%d" % number
                desk.make_folder(name)
                while time.monotonic() < end:
                    first = number * 10_000 + len(added) * 4
                    self.server.schedules(first, 4, name)
                    added.append(range(first, first + 4))
                    renamed = "F%d%s" % (number, "abcdefghij"[len(added) % 10])
                    desk.rename(name, renamed)
                    name = renamed
                    desk.click(*desk.ROOT)
                    self.assertEqual(desk.others(), [])
            except BaseException as fault:
                desk.picture("fault-%d" % number)
                faults.append((number, fault))

        threads = [threading.Thread(target=edit, args=pair) for pair in enumerate(desks)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(faults, [])
        today = time.strftime("%Y-%m-%d")
        deadline = time.monotonic() + 120
        while self.server.rows("select count(*) from ReportScheduler where NextRun = '%s'" % today) != [("0",)]:
            self.assertLess(time.monotonic(), deadline, "\n".join(scheduler.said() for scheduler in schedulers))
            time.sleep(0.2)
        self.assertEqual(self.server.rows("select ErrMsg from ReportHistory where Status <> 'Success'"), [])
        self.assertEqual([scheduler.sentences() for scheduler in schedulers], ["", "", ""])
        mailed = collections.Counter(subject for scheduler in schedulers for subject in scheduler.subjects())
        self.assertEqual(mailed, collections.Counter("Run %d" % run for runs in added for run in runs))
        self.assertTrue(all(scheduler.subjects() for scheduler in schedulers), "one scheduler had nothing to do")
        for desk in desks:
            self.assert_alive_without_boxes(desk, 0)
        print("%d renames beside %d runs" % (len(added), sum(mailed.values())))
