# SPDX-License-Identifier: GPL-3.0-or-later
"""The designer as a process on a display, driven by mouse and keys: what it saves, and what is left after a kill."""

import subprocess
import time
import unittest
from xml.etree import ElementTree

from designer import PICTURES, DesignerTest
from editor import SCREEN
from harness import STAGE

REPORT = """<?xml version="1.0" encoding="utf-8"?>
<!-- Comments stay -->
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
          <Textbox Name="Title">
            <Paragraphs><Paragraph><TextRuns><TextRun><Value>Sales</Value></TextRun></TextRuns></Paragraph></Paragraphs>
            <Top>2cm</Top>
            <Left>2cm</Left>
            <Height>1cm</Height>
            <Width>6cm</Width>
            <Style><BackgroundColor>#ff0080</BackgroundColor></Style>
          </Textbox>
        </ReportItems>
        <Height>8cm</Height>
      </Body>
      <Width>12cm</Width>
      <Page>
        <PageHeight>29.7cm</PageHeight>
        <PageWidth>21cm</PageWidth>
      </Page>
    </ReportSection>
  </ReportSections>
</Report>
"""
COLOUR = (255, 0, 128)  # of the text box


class Designer(DesignerTest):
    def setUp(self):
        super().setUp()
        self.report = self.folder / "sales.rdl"
        self.report.write_text(REPORT)

    def box(self):
        """The area of the text box in pixels of the screen; None while it is not painted."""
        colours = subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"], timeout=20,
                                 env=self.display.environment(), capture_output=True, check=True).stdout
        width = int(SCREEN.split("x", maxsplit=1)[0])
        pixels = zip(colours[::3], colours[1::3], colours[2::3])
        places = [divmod(index, width) for index, pixel in enumerate(pixels) if pixel == COLOUR]
        if not places:
            return None
        rows, columns = [row for row, _ in places], [column for _, column in places]
        return min(columns), min(rows), max(columns), max(rows)

    def drag(self, begin, end):
        steps = []
        for part in (0.3, 0.6, 1):
            x, y = (round(begin[i] + part * (end[i] - begin[i])) for i in (0, 1))
            steps += ["mousemove", str(x), str(y), "sleep", "0.1"]
        self.display.run("xdotool", "mousemove", str(begin[0]), str(begin[1]), "sleep", "0.1", "mousedown", "1",
                         "sleep", "0.1", *steps, "mouseup", "1")

    def test_an_item_moved_by_mouse_changes_its_lines_only(self):
        window = self.start(self.report)
        left, top, right, bottom = self.wait(self.box, "text box")
        centimetre = (right - left) / 6
        middle = ((left + right) // 2, (top + bottom) // 2)
        target = (round(middle[0] + 2 * centimetre), round(middle[1] + 1 * centimetre))
        self.drag(middle, target)
        self.wait(lambda: self.title(window).startswith("sales.rdl*"), "change")
        self.assertEqual(self.report.read_text(), REPORT)
        self.display.key("ctrl+z")
        self.wait(lambda: self.title(window).startswith("sales.rdl -"), "undo")
        self.display.key("ctrl+shift+z")
        self.display.key("ctrl+s")
        self.wait(lambda: self.report.read_text() != REPORT, "saved file")
        self.assertEqual(self.report.read_text(), REPORT.replace("<Top>2cm", "<Top>3cm").replace("<Left>2cm", "<Left>4cm"))
        if PICTURES:
            self.display.screenshot(PICTURES + "/design.png")
        self.assertAlmostEqual(self.box()[0] - left, 2 * centimetre, delta=2)
        self.quit()

    def test_typed_text_is_saved_and_shown_in_the_preview(self):
        window = self.start(self.report)
        self.wait(self.box, "text box")
        self.display.key("Tab", "F2")
        time.sleep(0.3)
        self.display.run("xdotool", "type", "--delay", "40", "Costs & more")
        self.display.key("Return", "ctrl+s")
        self.wait(lambda: self.report.read_text() != REPORT, "saved file")
        self.assertEqual(self.report.read_text(), REPORT.replace("Sales", "Costs &amp; more"))
        self.display.key("F5")
        time.sleep(1)
        if PICTURES:
            self.display.screenshot(PICTURES + "/design_preview.png")
        self.assertTrue(self.box())
        self.display.key("F7", "ctrl+q")
        self.assertEqual(self.process.wait(10), 0)

    def test_what_a_kill_has_cut_off_is_offered(self):
        window = self.start(self.report)
        self.wait(self.box, "text box")
        self.display.key("Tab", "Right")
        self.wait(lambda: self.title(window).startswith("sales.rdl*"), "change")
        copies = self.folder / "state" / "oxbow-courier" / "designer"
        self.wait(lambda: list(copies.glob("*.unsaved")), "copy")
        self.process.kill()
        self.process.wait()
        self.start(self.report)
        time.sleep(1)
        self.display.key("Return")  # Recover
        window = self.window("sales.rdl")
        self.wait(lambda: self.title(window).startswith("sales.rdl*"), "recovered report")
        self.display.key("ctrl+s")
        self.wait(lambda: self.report.read_text() != REPORT, "saved file")
        self.assertEqual(self.report.read_text(), REPORT.replace("<Left>2cm", "<Left>2.25cm"))
        self.assertEqual(list(copies.glob("*.unsaved")), [])

    def test_an_expression_is_typed_with_the_names_that_it_can_use(self):
        window = self.start(self.report)
        self.wait(self.box, "text box")
        self.keys("Tab", "ctrl+e")
        self.window("Expression: Value")
        self.keys("ctrl+a", "Delete", "alt+n")
        self.type("user!userid")
        self.keys("Return")
        self.type(" & Foo")
        time.sleep(1)
        if PICTURES:
            self.display.screenshot(PICTURES + "/design_expression.png")
        self.keys("ctrl+Return")  # is refused
        time.sleep(0.3)
        self.keys("BackSpace", "BackSpace", "BackSpace", "1", "ctrl+Return")
        self.wait(lambda: self.title(window).startswith("sales.rdl*"), "change")
        self.display.focus(window)
        self.keys("ctrl+s")
        self.wait(lambda: self.report.read_text() != REPORT, "saved file")
        self.assertEqual(self.report.read_text(), REPORT.replace("<Value>Sales", "<Value>=User!UserID &amp; 1"))
        self.quit()

    def test_a_data_source_and_a_data_set_are_made(self):
        (self.folder / "orders.csv").write_text("Region,Amount\nNorth,120.50\n")
        window = self.start(self.report)
        self.wait(self.box, "text box")
        self.keys("ctrl+alt+s")
        self.window("Data Source")
        self.keys("alt+k")
        self.type("CSV")
        self.keys("alt+i")
        self.type("orders.csv")
        self.keys("Return")
        self.wait(lambda: self.title(window).startswith("sales.rdl*"), "data source")
        self.display.focus(window)
        self.keys("ctrl+alt+d")
        self.window("Data Set")
        self.keys("alt+n", "ctrl+a")
        self.type("Orders")
        if PICTURES:
            self.display.screenshot(PICTURES + "/design_data_set.png")
        self.keys("Return")
        self.wait(lambda: not self.display.windows(self.process.pid, "Data Set"), "end of the dialog")
        self.display.focus(window)
        self.keys("ctrl+s")
        self.wait(lambda: self.report.read_text() != REPORT, "saved file")
        report = ElementTree.fromstring(self.report.read_text())
        space = "{http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition}"
        self.assertEqual([one.text for one in report.iter(space + "ConnectString")], ["Data Source=orders.csv"])
        self.assertEqual([one.text for one in report.iter(space + "DataSourceName")], ["Source"])
        self.assertEqual([one.text for one in report.iter(space + "DataField")], ["Region", "Amount"])
        self.quit()

    def test_the_command_line(self):
        def run(*arguments, **environment):
            foreign = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")
            kept = {name: value for name, value in self.environment().items() if name not in foreign}
            result = subprocess.run([STAGE / "oxc-design", *arguments], capture_output=True, text=True, timeout=30,
                                    env={**kept, **environment}, check=False)
            return result.returncode, result.stdout, result.stderr
        self.assertEqual(run("--wrong"), (2, "", 'oxc-design: "--wrong" is no option (see oxc-design --help)\n'))
        self.assertEqual(run(), (1, "", "oxc-design: The designer needs a display\n"))
        self.assertEqual(run("--help")[0], 0)


if __name__ == "__main__":
    unittest.main()
