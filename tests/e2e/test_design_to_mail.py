# SPDX-License-Identifier: GPL-3.0-or-later
"""From data to a mail by mouse and keys: the wizard of the designer, changes on the page, the preview, the schedule in
the editor, a run of the scheduler, and the numbers of the PDF that comes out of it."""

import re
import sqlite3
import subprocess
import time
import unittest

from designer import PICTURES, DesignerTest
from editor import SCREEN
from harness import Courier, attachment, pdf_text, system_path
from mail_server import Server

ORDERS = ("select r.name as Region, c.company as Customer, sum(l.quantity) as Pieces, "
          "sum(l.quantity * l.unit_price) as Amount from orders o join customers c using (customer_id) "
          "join regions r using (region_id) join order_lines l using (order_id) group by 1, 2")
HEAD = bytes((0x3c, 0x46, 0x50))  # of the theme Slate: the row of headings
FILL = bytes((0xff, 0xc0, 0xcb))  # of the title, as it is changed on the page


class FromDataToMail(DesignerTest):
    def setUp(self):
        super().setUp()
        self.courier = Courier()
        self.addCleanup(self.courier.close)
        self.courier.write_days_year_first()
        self.courier.sql("insert into Folders(FolderName, Parent) values('Sales', 0)")
        self.program = self.courier.app / "oxc-design"
        self.report = self.courier.folder / "sales.rdl"
        self.editor = None
        self.addCleanup(self.end_editor)

    def environment(self):
        return {**self.courier.environment(), **super().environment(), "XDG_CONFIG_HOME": str(self.courier.folder / "config"),
                "XDG_DATA_HOME": str(self.courier.folder / "data"), "OXC_HOME": str(self.courier.app),
                "LC_ALL": "C.UTF-8", "LANGUAGE": ""}

    def end_editor(self):
        if self.editor:
            subprocess.run(["kill", str(self.editor)], check=False)

    def picture(self, name):
        if PICTURES:
            time.sleep(0.4)
            self.display.screenshot(f"{PICTURES}/to_mail_{name}.png")

    # The designer

    def finish_wizard(self, main):
        self.go_on("Look")
        self.type("Figures")
        self.keys("alt+c")
        self.type("Col")
        self.keys("alt+m")
        self.type("Sl")
        time.sleep(0.5)
        self.picture("look")
        self.keys("alt+f")
        self.wait(lambda: not self.display.windows(self.process.pid, "New Report From Data"), "end of the wizard")
        self.wait(lambda: self.title(main).startswith("New Report*"), "new report")
        self.display.focus(main)
        time.sleep(0.5)

    def make_report(self, fill_source, kind):
        """The wizard, with the amounts left out of it: they are added on the page."""
        main = self.start()
        self.keys("ctrl+shift+n")
        self.window("New Report From Data: Data source")
        fill_source()
        self.go_on("Layout")
        self.go_on("Columns")
        self.add("r", "g")
        self.add("p", "t")
        self.keys(*["Tab"] * 7, "End", "Delete")
        self.picture(kind + "_columns")
        self.finish_wizard(main)
        self.change_on_the_page("a")
        designed = self.wait(self.title_box, "coloured title")
        self.keys("F5")
        self.wait(lambda: self.title_box() not in (None, designed), "preview")
        self.picture(kind + "_preview")
        self.keys("F7")
        self.save_as(main)
        self.schedule()
        self.end_editor()
        return self.run_and_read_mail()

    def title_box(self):
        """The area with the fill of the title; None while it is not on the screen."""
        pixels = self.pixels()
        return self.area(pixels, lambda at: pixels[at:at + 3] == FILL)

    def assert_numbers(self, text, database, rows):
        """Compares the totals of the document with those of the rows, which are given as a query."""
        self.assertIn("Sales by region", text)
        number = r"([\d,]+)\s+([\d,.]+)"
        told = {region: (int(pieces.replace(",", "")), float(amount.replace(",", ""))) for region, pieces, amount in
                re.findall(r"(?m)^Total (\S.*?)\s{2,}" + number + "$", text)}
        known = {region: (pieces, round(amount, 2)) for region, pieces, amount in
                 database.execute(f"select Region, sum(Pieces), sum(Amount) from ({rows}) group by 1")}
        self.assertEqual(told, known)
        whole, = re.findall(r"(?m)^Total\s+([\d,]+)$", text)
        self.assertEqual(int(whole.replace(",", "")), sum(pieces for pieces, _ in known.values()))

    def test_from_the_sample_database(self):
        sales = self.courier.app / "samples" / "sales.db"

        def fill_source():
            self.keys("alt+i")
            self.type(str(sales))
            self.go_on("Rows")
            self.keys("alt+q")
            self.type(ORDERS)
            self.keys("ctrl+Return")

        text = self.make_report(fill_source, "database")
        database = sqlite3.connect(sales)
        self.addCleanup(database.close)
        self.assert_numbers(text, database, ORDERS)

    def test_from_a_csv_file(self):
        orders = [("North", "Berg", 12, 120.5), ("North", "Dahl", 8, 80.25), ("South", "Costa", 9, 99.0),
                  ("South", "Rossi", 1400, 10250.75), ("West", "O'Neill", 3, 7.5)]
        data = self.courier.folder / "orders.csv"
        data.write_text("Region,Customer,Pieces,Amount\n" + "".join("%s,%s,%d,%.2f\n" % order for order in orders))

        def fill_source():
            self.type("CSV")
            self.keys("alt+i")
            self.type(str(data))
            self.go_on("Rows")

        text = self.make_report(fill_source, "csv")
        for _, customer, _, _ in orders:
            self.assertIn(customer, text)
        database = sqlite3.connect(":memory:")
        self.addCleanup(database.close)
        database.execute("create table Orders (Region, Customer, Pieces, Amount)")
        database.executemany("insert into Orders values (?, ?, ?, ?)", orders)
        self.assert_numbers(text, database, "select * from Orders")

    # On the page

    def table(self):
        """Left and right side, and the lower edge of the row of headings, on the screen."""
        pixels = self.pixels()
        width = int(SCREEN.split("x", maxsplit=1)[0])
        for row in range(len(pixels) // 3 // width - 1, 0, -1):
            line = pixels[row * width * 3:(row + 1) * width * 3]
            columns = [column for column in range(width) if line[column * 3:column * 3 + 3] == HEAD]
            if len(columns) > 200:
                return columns[0], columns[-1], row
        return None

    def change_on_the_page(self, field):
        left, right, bottom = self.wait(self.table, "table")
        self.click((left + 60, bottom + 35))  # a cell of the details
        self.keys("F6", "F6", "Home")
        time.sleep(0.3)
        field = self.place_of_row(left, field)
        self.press(field, (right + 12, bottom - 8))
        time.sleep(0.5)
        self.picture("column")
        self.press(field, (right + 30, bottom + 58))
        time.sleep(0.5)
        self.picture("total")
        self.click((left + 30, 177))
        self.keys("F2", "ctrl+a")
        self.type("Sales by region")
        self.keys("Return", "F6", "F6", "F6", "F6")
        self.type("Background c")
        self.keys("Return", "ctrl+a")
        self.type("Pink")
        self.keys("Return")
        time.sleep(0.4)
        self.picture("changed")

    def save_as(self, main):
        self.display.focus(main)
        self.keys("ctrl+s")
        self.window("Save Report As")
        self.type(str(self.report))
        self.keys("Return")
        self.wait(self.report.exists, "saved file")
        self.wait(lambda: self.title(main).startswith("sales.rdl -"), "title of the saved file")
        self.display.focus(main)

    # The editor

    def editor_window(self, title):
        find = lambda: self.display.run("xdotool", "search", "--onlyvisible", "--name", f"^{title}$").split()
        window = self.wait(find, "window " + title)[0]
        self.display.focus(window)
        time.sleep(0.4)
        return window

    def next(self):
        self.keys("alt+n")
        time.sleep(0.4)

    def schedule(self):
        """What a clerk types into the wizard that the designer's command opens: the file is in it."""
        self.keys("F9")
        wizard = self.editor_window("Schedule Report Wizard")
        self.editor = int(self.display.run("xdotool", "getwindowpid", wizard))
        self.picture("wizard")
        self.keys("ctrl+a")
        self.type("Sales")
        self.keys("Tab", "Tab", "Tab", "alt+Down", "Down", "Return")
        self.display.focus(int(wizard))
        self.next()
        self.keys(*["Tab"] * 6)
        self.type("0000")
        self.next()
        self.type("ann@example.com")
        self.keys("Tab")
        self.type("Sales by region")
        self.next()
        self.keys("Tab", "Down")
        self.next()
        self.picture("wizard_end")
        self.keys("alt+f")
        self.wait(lambda: self.courier.sql("select count(*) from ReportScheduler") == [(1,)], "schedule")

    def run_and_read_mail(self):
        self.assertEqual(self.courier.sql("select ReportTitle, Format, Parent, OriginalPath from ReportScheduler"),
                         [("Sales", "Acrobat Format (PDF)", "Sales", system_path(self.report))])
        server = Server(self.courier.folder / "mail")
        self.addCleanup(server.close)
        self.courier.profile("Transport=smtp\nHost=127.0.0.1\nPort=%d\nSecurity=none\n" % server.port)
        self.courier.run_until_history()
        self.assertEqual([row[2] for row in self.courier.history()], ["Success"])
        mail, = server.messages()
        self.assertEqual((mail["To"], mail["Subject"]), ("ann@example.com", "Sales by region"))
        _, kind, data = attachment(mail)
        self.assertEqual(kind, "application/pdf")
        if PICTURES:
            (self.folder / "mailed.pdf").write_bytes(data)
            subprocess.run(["pdftoppm", "-png", "-r", "60", self.folder / "mailed.pdf", f"{PICTURES}/to_mail_pdf"], check=True)
        return pdf_text(data)


if __name__ == "__main__":
    unittest.main()
