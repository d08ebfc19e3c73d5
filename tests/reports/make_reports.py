#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""make_reports.py FOLDER: writes report files of many kinds with fictional data."""
import pathlib
import sys

import charts  # noqa: F401  each module adds its reports to REPORTS
import documents  # noqa: F401
import plans  # noqa: F401
import tables  # noqa: F401
from kit import REPORTS


def write_all(folder):
    for name, build in REPORTS.items():
        (pathlib.Path(folder) / f"{name}.rdl").write_text(build(), encoding="utf-8")


if __name__ == "__main__":
    write_all(sys.argv[1])
