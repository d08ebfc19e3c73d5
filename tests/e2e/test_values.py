"""Stored parameter values, the record selection formula and the logon reach the report."""

import sqlite3
import unittest

from harness import CourierTest, attachment, pdf_text


class Values(CourierTest):
    def text(self, **columns):
        parameters = columns.pop("parameters", ())
        key = self.courier.schedule(**columns)
        self.courier.parameters(key, *parameters)
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key)[0][2:], ("Success", "None"))
        return " ".join(pdf_text(attachment(self.courier.mails()[0])[2]).split())

    def sales(self):
        return sqlite3.connect(self.courier.app / "samples" / "sales.db")

    def test_parameter_value_chooses_the_year(self):
        text = self.text(parameters=["2024"])
        self.assertIn("2024", text)

    def test_formula_filters_the_rows(self):
        regions = [name for (name,) in self.sales().execute("select name from regions order by name")]
        text = self.text(SelectionForm='{Region} = "%s"' % regions[0])
        self.assertIn(regions[0], text)
        for other in regions[1:]:
            self.assertNotIn(other, text)


if __name__ == "__main__":
    unittest.main()
