# SPDX-License-Identifier: GPL-3.0-or-later
"""A table edited in the designer's window by mouse and menu, and what the saved report then exports."""

import csv
import sqlite3
import subprocess
import time
import unittest
from xml.etree import ElementTree

from designer import PICTURES, DesignerTest
from harness import STAGE

SCHEMA = "http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition"
HEAD = (255, 0, 128)  # colour of the first cell


def box(name, value, style=""):
    return (f"<Textbox Name='{name}'><Paragraphs><Paragraph><TextRuns><TextRun><Value>{value}</Value></TextRun></TextRuns>"
            f"</Paragraph></Paragraphs><Style>{style}</Style></Textbox>")


def cell(name, value, style=""):
    return f"<TablixCell><CellContents>{box(name, value, style)}</CellContents></TablixCell>"


REPORT = f"""<?xml version="1.0" encoding="utf-8"?>
<Report xmlns="{SCHEMA}" xmlns:rd="http://schemas.microsoft.com/SQLServer/reporting/reportdesigner">
  <DataSources>
    <DataSource Name="Store">
      <ConnectionProperties><DataProvider>SQLite</DataProvider><ConnectString>Data Source=store.db</ConnectString></ConnectionProperties>
    </DataSource>
  </DataSources>
  <DataSets>
    <DataSet Name="Sales">
      <Query><DataSourceName>Store</DataSourceName><CommandText>select Region, Net from Sales</CommandText></Query>
      <Fields>
        <Field Name="Region"><DataField>Region</DataField><rd:TypeName>System.String</rd:TypeName></Field>
        <Field Name="Net"><DataField>Net</DataField><rd:TypeName>System.Int64</rd:TypeName></Field>
      </Fields>
    </DataSet>
  </DataSets>
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
          <Tablix Name="List">
            <TablixBody>
              <TablixColumns><TablixColumn><Width>4cm</Width></TablixColumn></TablixColumns>
              <TablixRows>
                <TablixRow><Height>1cm</Height><TablixCells>{cell("Head", "Region", "<BackgroundColor>#ff0080</BackgroundColor>")}</TablixCells></TablixRow>
                <TablixRow><Height>1cm</Height><TablixCells>{cell("Place", "=Fields!Region.Value")}</TablixCells></TablixRow>
              </TablixRows>
            </TablixBody>
            <TablixColumnHierarchy><TablixMembers><TablixMember /></TablixMembers></TablixColumnHierarchy>
            <TablixRowHierarchy>
              <TablixMembers>
                <TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember>
                <TablixMember><Group Name="Details" /></TablixMember>
              </TablixMembers>
            </TablixRowHierarchy>
            <DataSetName>Sales</DataSetName>
            <Top>1cm</Top>
            <Left>1cm</Left>
          </Tablix>
        </ReportItems>
        <Height>6cm</Height>
      </Body>
      <Width>12cm</Width>
      <Page><PageHeight>29.7cm</PageHeight><PageWidth>21cm</PageWidth></Page>
    </ReportSection>
  </ReportSections>
</Report>
"""
ROWS = [("North", 120), ("South", 45), ("North", 7), ("East", 3000)]


class TableInTheDesigner(DesignerTest):
    def setUp(self):
        super().setUp()
        self.report = self.folder / "sales.rdl"
        self.report.write_text(REPORT)
        with sqlite3.connect(self.folder / "store.db") as store:
            store.execute("create table Sales (Region text, Net integer)")
            store.executemany("insert into Sales values (?, ?)", ROWS)

    def head(self):
        """The area of the coloured head cell; None while it is not painted."""
        pixels = self.pixels()
        return self.area(pixels, lambda at: tuple(pixels[at:at + 3]) == HEAD)

    def saved(self):
        before = self.report.read_text()
        self.keys("ctrl+s")
        self.wait(lambda: self.report.read_text() != before, "saved file")
        return ElementTree.parse(self.report)

    def texts(self, tree):
        return [value.text or "" for value in tree.iter("{%s}Value" % SCHEMA) if not value.text or "!" in value.text]

    def test_a_border_a_field_and_a_total(self):
        window = self.start(self.report)
        left, top, right, bottom = self.wait(self.head, "table")
        centimetre = (right - left) / 4
        middle = (left + right) / 2, (top + bottom) / 2
        # The border of the only column is pulled by a centimetre.
        self.click(middle)
        self.press((right, round(middle[1])), (round(right + centimetre), round(middle[1])))
        self.wait(lambda: self.title(window).startswith("sales.rdl*"), "change")
        widths = [width.text for width in self.saved().iter("{%s}Width" % SCHEMA)]
        self.assertEqual(widths, ["5cm", "12cm"])
        # A field is dragged beside the table: a new column with its head.
        self.keys("F6", "F6", "Home", "Down")
        time.sleep(0.4)
        self.press(self.place_of_row(left, "Down"), (round(right + centimetre + 10), round(middle[1])))
        time.sleep(0.5)
        tree = self.saved()
        self.assertIn("=Fields!Net.Value", self.texts(tree))
        # The total of the details is a command of the menu.
        self.click((middle[0], middle[1] + centimetre))
        self.keys("alt+b")
        time.sleep(0.3)
        self.keys("t")
        time.sleep(0.3)
        if PICTURES:
            self.display.screenshot(PICTURES + "/design_table.png")
        tree = self.saved()
        self.assertIn("=Sum(Fields!Net.Value)", self.texts(tree))
        self.quit()
        output = self.folder / "sales.csv"
        subprocess.run([STAGE / "oxc-report", "export", self.report, "-f", "csv", "-o", output], check=True, timeout=60)
        with sqlite3.connect(self.folder / "store.db") as store:
            (total,) = store.execute("select sum(Net) from Sales").fetchone()
        with open(output, newline="", encoding="utf-8-sig") as file:
            cells = [text for row in csv.reader(file) for text in row]
        self.assertIn(str(total), cells)
        for region, net in ROWS:
            self.assertIn(region, cells)
            self.assertIn(str(net), cells)


if __name__ == "__main__":
    unittest.main()
