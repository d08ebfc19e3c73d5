#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the sample database and the sample reports: make_samples.py [FOLDER] (default: where this file stands).

The same files come out every time, so that exports of them can be compared.
"""
import pathlib
import sys

sys.dont_write_bytecode = True  # the folder of the sources stays as it is

import charts_report  # noqa: E402
import invoice_report  # noqa: E402
import list_reports  # noqa: E402
import sales_database  # noqa: E402
import summary_report  # noqa: E402
import targets_report  # noqa: E402


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parent)
    folder.mkdir(parents=True, exist_ok=True)
    sales_database.make(folder / "sales.db")
    reports = {
        "sales_by_region.rpt": list_reports.sales_by_region(),
        "order_list.rpt": list_reports.order_list(),
        "summary.rpt": summary_report.summary(),
        "sales_charts.rpt": charts_report.charts(),
        "invoice.rpt": invoice_report.invoice(),
        "targets.rpt": targets_report.targets(),
    }
    for name, text in reports.items():
        (folder / name).write_text(text, encoding="utf-8", newline="\n")


if __name__ == "__main__":
    main()
