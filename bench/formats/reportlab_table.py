# SPDX-License-Identifier: GPL-3.0-or-later
"""The rows of a database as a PDF table with a repeated header, a grid and page numbers, by reportlab.

usage: reportlab_table.py DATABASE OUT
"""
import sqlite3
import sys

from reportlab.lib import colors
from reportlab.lib.pagesizes import A4
from reportlab.lib.units import cm
from reportlab.platypus import LongTable, SimpleDocTemplate, TableStyle

WIDTHS = [width * cm for width in (2, 2.7, 2.3, 4, 2.2, 3)]


def number_page(canvas, document):
    canvas.setFont("Helvetica", 10)
    canvas.drawString(2 * cm, A4[1] - 1.9 * cm, f"Page {document.page}")


def main(database, out):
    cursor = sqlite3.connect(database).execute("select * from Orders")
    rows = [[column[0] for column in cursor.description]]
    rows += [[str(value) for value in row] for row in cursor]
    table = LongTable(rows, colWidths=WIDTHS, rowHeights=[0.48 * cm] * len(rows), repeatRows=1)
    table.setStyle(TableStyle([
        ("FONT", (0, 0), (-1, -1), "Helvetica", 9),
        ("GRID", (0, 0), (-1, -1), 1, colors.HexColor("#c0c0c0")),
        ("LEFTPADDING", (0, 0), (-1, -1), 2),
        ("TOPPADDING", (0, 0), (-1, -1), 0),
        ("BOTTOMPADDING", (0, 0), (-1, -1), 2),
    ]))
    document = SimpleDocTemplate(out, pagesize=A4, leftMargin=2 * cm, rightMargin=2 * cm, topMargin=2.5 * cm,
                                 bottomMargin=1.5 * cm)
    document.build([table], onFirstPage=number_page, onLaterPages=number_page)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2])
