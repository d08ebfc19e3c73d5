# SPDX-License-Identifier: GPL-3.0-or-later
"""What goes wrong with a report leaves its row and the alert, and the scheduler lives on."""

import os
import pathlib
import unittest

from harness import CourierTest, attachment, system_path

LAUGHS = ('<?xml version="1.0"?><!DOCTYPE r [<!ENTITY a "ha">'
          + "".join('<!ENTITY %s "%s">' % (chr(98 + i), "&%s;" % chr(97 + i) * 10) for i in range(12))
          + ']><Report><Description>&m;</Description></Report>')
HEAD = '<?xml version="1.0"?><Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">'


def table_report(source, command, parameters="", field="name"):
    return HEAD + """<DataSources><DataSource Name="D"><ConnectionProperties><DataProvider>SQLITE</DataProvider>
<ConnectString>Data Source=%s</ConnectString></ConnectionProperties></DataSource></DataSources>
<DataSets><DataSet Name="S"><Query><DataSourceName>D</DataSourceName><CommandText>%s</CommandText></Query>
<Fields><Field Name="F"><DataField>%s</DataField></Field></Fields></DataSet></DataSets>%s
<ReportSections><ReportSection><Body><ReportItems><Textbox Name="T"><Paragraphs><Paragraph><TextRuns><TextRun>
<Value>=First(Fields!F.Value, "S")</Value></TextRun></TextRuns></Paragraph></Paragraphs><Height>1in</Height>
<Width>2in</Width></Textbox></ReportItems><Height>1in</Height></Body><Width>5in</Width><Page/></ReportSection>
</ReportSections></Report>""" % (source, command, field, parameters)


NUMBER_PARAMETER = """<ReportParameters><ReportParameter Name="N"><DataType>Integer</DataType><Prompt>N</Prompt>
</ReportParameter></ReportParameters>"""


class Failures(CourierTest):
    def report(self, content):
        path = self.courier.folder / "bad.rpt"
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def fails(self, path, *words, parameters=(), **columns):
        """Runs the report; its row says Failure in these words, the alert went out and the scheduler goes on."""
        key = self.courier.schedule(report=path, **columns)
        self.courier.parameters(key, *parameters)
        self.courier.start()
        self.courier.wait(lambda: self.courier.history(key), what="failure row")
        _, _, status, description = self.courier.history(key)[0]
        self.assertEqual(status, "Failure")
        self.assertNotIn("'", description)
        for word in words:
            self.assertIn(word.lower(), description.lower())
        self.courier.wait(lambda: self.courier.mails(), what="alert")
        alert = self.courier.mails()[0]
        self.assertEqual(alert["Subject"], "Pressroom Error")
        self.assertEqual(alert["To"], "boss@example.com")
        self.assertEqual(alert["Importance"].lower(), "high")
        text = " ".join(alert.get_body().get_content().split())
        self.assertTrue(text.startswith("An error occured in Schedchk. " + " ".join(description.split())), text)
        self.assertRegex(text, r"\[-?\d+\]$")
        # Another schedule put in now still runs once the bad one is gone.
        self.courier.sql("delete from ReportScheduler where ReportID = ?", key)
        good = self.courier.schedule()
        self.courier.wait(lambda: self.courier.history(good), what="good run")
        self.assertEqual(self.courier.history(good)[0][2], "Success")
        return description

    def test_empty_file(self):
        self.fails(self.report(b""), "empty")

    def test_file_that_is_cut_off(self):
        self.fails(self.report(table_report("x.db", "select 1")[:400]), "bad.rpt")

    def test_binary_file(self):
        self.fails(self.report(bytes(range(256)) * 40), "bad.rpt")

    def test_compound_file(self):
        self.fails(self.report(b"\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1" + bytes(2000)), "compound")

    def test_other_xml(self):
        self.fails(self.report("<?xml version='1.0'?><html><body/></html>"), "html")

    def test_billion_laughs(self):
        self.fails(self.report(LAUGHS), "bad.rpt")

    def test_a_megabyte_of_nesting(self):
        self.fails(self.report(HEAD + "<a>" * 350_000), "bad.rpt")

    def test_missing_cache_file(self):
        self.fails(self.courier.app / "Cache" / "gone.rpt", "gone.rpt")

    def test_missing_table(self):
        database = self.courier.app / "samples" / "sales.db"
        self.fails(self.report(table_report(database, "select * from nowhere")), "nowhere")

    def test_missing_database(self):
        self.fails(self.report(table_report("/nowhere/none.db", "select 1")), "none.db")

    def test_word_for_a_number(self):
        database = self.courier.app / "samples" / "sales.db"
        path = self.report(table_report(database, "select name from regions", NUMBER_PARAMETER))
        description = self.fails(path, parameters=["abc"])
        self.assertEqual(description, "Type mismatch")

    def test_formula_that_does_not_compile(self):
        self.fails(self.courier.app / "samples" / "sales_by_region.rpt", SelectionForm="{region} = = 3")

    def test_mark_in_a_path_does_not_reach_the_statement(self):
        self.fails(self.courier.folder / "ann's.rpt", 'ann"s.rpt')

    def test_missing_output_folder_of_an_html_schedule(self):
        output = self.courier.app / "output"
        for file in output.iterdir():
            file.unlink()
        output.rmdir()
        self.fails(self.courier.app / "samples" / "sales_by_region.rpt", "output", Format="DHTML")


if __name__ == "__main__":
    unittest.main()
