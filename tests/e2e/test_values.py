# SPDX-License-Identifier: GPL-3.0-or-later
"""Stored parameter values, the record selection formula and the logon reach the report."""

import decimal
import sqlite3
import unittest

from harness import CourierTest, attachment, pdf_text


def cents(amount):
    """Halves away from zero, on the digits that a double surely has."""
    return decimal.Decimal("%.15g" % amount).quantize(decimal.Decimal("0.01"), decimal.ROUND_HALF_UP)


class Values(CourierTest):
    def text(self, **columns):
        parameters = columns.pop("parameters", ())
        key = self.courier.schedule(**columns)
        self.courier.parameters(key, *parameters)
        self.courier.run_until_history()
        self.assertEqual(self.courier.history(key)[0][2:], ("Success", "None"))
        return " ".join(pdf_text(attachment(self.courier.mails()[0])[2]).split())

    def expected(self, year, region=None):
        """Country lines as the report words them, straight from the data."""
        database = sqlite3.connect(self.courier.app / "samples" / "sales.db")
        rows = database.execute("""
            select c.country, r.name, count(distinct o.order_id), sum(l.quantity),
                   sum(l.quantity * l.unit_price * (1 - l.discount))
            from orders o join customers c using (customer_id) join regions r using (region_id)
                 join order_lines l using (order_id)
            where o.order_date like ? and o.status <> 'returned' group by c.country, r.name""",
                                ("%d-%%" % year,)).fetchall()
        self.assertGreater(len(rows), 10)
        return ["%s %d %s %s" % (country, orders, format(units, ","), format(cents(revenue), ","))
                for country, name, orders, units, revenue in rows if region in (None, name)]

    def check_lines(self, text, year, region=None):
        lines = self.expected(year, region)
        for line in lines:
            self.assertIn(line, text)
        return lines

    def test_defaults_give_the_year_of_the_report(self):
        self.check_lines(self.text(), 2025)

    def test_parameter_value_chooses_the_year(self):
        text = self.text(parameters=["2024"])
        self.check_lines(text, 2024)
        self.assertIn("2024", text)

    def test_formula_filters_the_rows(self):
        text = self.text(SelectionForm='{ByCustomer.Region} = "Northern Europe"')
        kept = self.check_lines(text, 2025, "Northern Europe")
        for line in self.expected(2025):
            self.assertEqual(line in kept, line in text, line)

    def test_formula_sees_the_parameter(self):
        text = self.text(parameters=["2026"], SelectionForm='{?Year} = 2026 and {units} > 0')
        self.check_lines(text, 2026)


if __name__ == "__main__":
    unittest.main()
