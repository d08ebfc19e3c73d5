#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs test programs over a team's store: starts a PostgreSQL server and names it to them in OXC_TEST_SERVER. The tests
below are left out. Ends with 1 if a program fails.

usage: over_server.py PROGRAM..."""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "e2e"))
from databases import POSTGRES, Postgres  # noqa: E402

# They fill the disk under the embedded database, lock its file or copy it.
EMBEDDED = ["LiveDatabase.ProcessesThatStartAtOnceLoseNoRow", "DeliveryRecords.NothingRunsOnADiskWithHardlyAnyRoom",
            "DeliveryRecords.DatabaseThatCannotEvenBeReadIsCalledBusyAndNotAMistakeOfAStatement"]
# They compare what the embedded database's library says after the system's own words.
WORDS = ["RunReport.KeyThatIsNoNumberFails", "PackageFinish.FailureTakesTheWaitAwayBeforeItIsTold",
         "PackageFinish.MarkInTheDestinationBreaksTheFirstStatement",
         "PackageFinish.FailedFirstStatementShowsOneBoxAndLeavesTheWizardHidden",
         "PackageFinish.FailureAfterTheFirstStatementLeavesAHalfMadePackage",
         "PropertiesCommands.RefreshRenewsTheCopyAndThenEndsTheProcessWithItsBox", "DeskProperties.OtherErrorsAreShown",
         "HistoryCommands.DeletionThatFailsIsTold",
         "HistoryFilling.WhatADatabaseCannotTellIsToldInABoxAndWhatWasReadStands",
         "HistoryFilling.FirstLoadThatFailsKeepsTheCaptionOfLoading",
         "HistoryFilling.ErrorWhileThePackagesAreReadEndsTheProcessWithItsBox",
         "DocumentCommands.DesignGivesUpWhenTheColumnIsMissingAgain"]
# A poll over a link reads each due row again and leaves one that has changed.
CLAIMS = ["BatchReport.ChangesOfTheNextRunAreNotSeenByTheRunningPoll"]
# The first countdown of a scheduler over a link is any number.
SPREAD = ["StartUp.SettingsHaveTheirDefaults", "StartUp.IntervalSavedInTheEditorDoesNotReachARunningScheduler"]


LEFT_OUT = EMBEDDED + WORDS + CLAIMS + SPREAD


def unknown():
    """Names above that no test has, because it was renamed."""
    sources = "".join(path.read_text() for path in pathlib.Path(__file__).resolve().parents[1].rglob("*_test.cpp"))
    return set(LEFT_OUT) - {".".join(names) for names in re.findall(r"^TEST(?:_F)?\((\w+),\s*(\w+)\)", sources, re.MULTILINE)}


def run(program, server):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen",
                       OXC_TEST_SERVER="Host=127.0.0.1;Port=%d;Username=postgres;Database=postgres" % server.port)
    done = subprocess.run([program, "--gtest_brief=1", "--gtest_filter=-" + ":".join(LEFT_OUT)],
                          env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return program, done.returncode, done.stdout


def main():
    if unknown():
        print("no test has the name", *sorted(unknown()))
        return 1
    if not POSTGRES:
        print("no PostgreSQL server is installed")
        return 77
    server = Postgres(locale="C.UTF-8", trusts_loopback=True)
    failed = False
    try:
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for program, code, output in pool.map(lambda name: run(name, server), sys.argv[1:]):
                print("%s: %s" % (os.path.basename(program), "passed" if code == 0 else "failed with %d" % code))
                if code != 0:
                    failed = True
                    print(output)
    finally:
        server.close()
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
