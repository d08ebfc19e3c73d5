# SPDX-License-Identifier: GPL-3.0-or-later
"""Cross tables, ledgers, calendars: what tables with groups look like over several pages."""
from kit import (AFTER, BEFORE, REPEATED, at, box, boxes, data, e, edges, group, kind, member, rectangle, report,
                 section, t, tablix)

HEAD = {"BackgroundColor": "#1F3A5F", "Color": "White", "FontWeight": "Bold"}
GRID = {"borders": edges(All="#909090 Solid 0.5pt")}
NUMBER = {"TextAlign": "Right", "Format": "N0", **GRID}
BOLD = {"FontWeight": "Bold", **GRID}
PAGES = section("PageFooter", 0.8, box('="Page " & Globals!PageNumber & " of " & Globals!TotalPages', at(0.1, 0, 0.6, 6)),
                box("=Globals!PageName", at(0.1, 8, 0.6, 8), TextAlign="Right"))


@kind
def cross_three_levels():
    """Region, country, city by year, quarter, month; a total on every level of both directions."""
    places = [("North", "Norway", "Oslo"), ("North", "Norway", "Bergen"), ("North", "Sweden", "Lund"),
              ("South", "Italy", "Rome"), ("South", "Spain", "Vigo"), ("South", "Spain", "Jaen")]
    months = [(2024, 1, 1), (2024, 1, 2), (2024, 2, 4), (2025, 1, 1), (2025, 1, 3)]
    rows = [(*place, *month, (i + 1) * 10 + j) for i, place in enumerate(places) for j, month in enumerate(months)]
    value = "=Sum(Fields!Amount.Value)"
    total = {**NUMBER, "FontWeight": "Bold", "BackgroundColor": "#E4E9F0"}
    head = {**HEAD, **GRID}

    def total_of(size, text, **more):
        return (size, box(text, **{**head, **more}))
    months_of = group("Month", "=Fields!Month.Value", head=(0.6, box("=MonthName(Fields!Month.Value, true)", **head)))
    quarters = group("Quarter", "=Fields!Quarter.Value", head=(0.6, box('="Q" & Fields!Quarter.Value', **head)),
                     members=[months_of, member(head=total_of(0.6, "Sum"))])
    years = group("Year", "=Fields!Year.Value", head=(0.6, box("=Fields!Year.Value", **head)), members=[
        quarters, member(head=total_of(0.6, "Year"), members=[member(head=total_of(0.6, ""))])])
    all_years = member(head=total_of(0.6, "All"), members=[member(head=total_of(0.6, ""), members=[
        member(head=total_of(0.6, ""))])])
    cities = group("City", "=Fields!City.Value", head=(1.8, box("=Fields!City.Value", **GRID)))
    countries = group("Country", "=Fields!Country.Value", head=(1.8, box("=Fields!Country.Value", **BOLD)), members=[
        cities, member(head=total_of(1.8, "Sum"))])
    regions = group("Region", "=Fields!Region.Value", head=(1.6, box("=Fields!Region.Value", **BOLD)), members=[
        countries, member(head=total_of(1.8, "Region"), members=[member(head=total_of(1.8, ""))])])
    all_regions = member(head=total_of(1.6, "All"), members=[member(head=total_of(1.8, ""), members=[
        member(head=total_of(1.8, ""))])])
    body = [(0.6, boxes([value] * 4, NUMBER if row == 0 else total, c1=total, c2=total, c3=total)) for row in range(4)]
    corner = [[(box("Region", **head), 1, 3), (box("Country", **head), 1, 3), (box("City", **head), 1, 3)],
              [None] * 3, [None] * 3]
    table = tablix("Sales", [1.3] * 4, body, [regions, all_regions], [years, all_years], corner,
                   extra=t("RepeatColumnHeaders", "true") + t("RepeatRowHeaders", "true"))
    return report([data("Sales", "Region:String Country:String City:String Year:Integer Quarter:Integer Month:Integer "
                        "Amount:Integer", rows)], [table], width=17, paper=(29.7, 21), foot=PAGES)


@kind
def ledger_running_balance():
    """Accounts with a balance that runs in each and over all, the header with the account on every page."""
    rows = [(f"{1000 + a * 100}", f"2026-{1 + n // 28:02d}-{1 + n % 28:02d}", f"Voucher {a * 100 + n}",
             (n * 37 % 500) + 0.25 if n % 3 else None, None if n % 3 else (n * 53 % 700) + 0.5)
            for a in range(1, 4) for n in range(1, 46)]
    money = {"Format": "#,##0.00;-#,##0.00", "TextAlign": "Right", "borders": edges(Bottom="#C0C0C0 Solid 0.25pt")}
    plain = {"borders": edges(Bottom="#C0C0C0 Solid 0.25pt")}
    moved = "IIf(IsNothing(Fields!Debit.Value), 0, Fields!Debit.Value) - IIf(IsNothing(Fields!Credit.Value), 0, Fields!Credit.Value)"
    sums = [box('="Balance of " & Fields!Account.Value', FontWeight="Bold", name="Closing")] + [box("")] + [
        box(f"=Sum(Fields!{name}.Value)", **{**money, "FontWeight": "Bold"}) for name in ("Debit", "Credit")] + [
        box(f"=Sum({moved})", **{**money, "FontWeight": "Bold"}), box("")]
    table = tablix("Ledger", [2.6, 4.4, 2.4, 2.4, 2.6, 2.6], [
        (0.6, boxes(["Date", "Text", "Debit", "Credit", "Balance", "Of all"], HEAD, **{
            f"c{i}": {"TextAlign": "Right"} for i in range(2, 6)})),
        (0.6, [(box('="Account " & Fields!Account.Value', FontWeight="Bold", BackgroundColor="#E4E9F0"), 6, 1)] + [None] * 5),
        (0.55, [box("=Fields!Day.Value", **{**plain, "Format": "d"}), box("=Fields!Text.Value", **plain),
                box("=Fields!Debit.Value", **money), box("=Fields!Credit.Value", **money),
                box(f'=RunningValue({moved}, Sum, "Account")', **money),
                box(f'=RunningValue({moved}, Sum, "Books")', **money)]),
        (0.6, sums)], [
        member(REPEATED),
        group("Account", "=Fields!Account.Value", members=[member(REPEATED), group("Line", None), member(BEFORE)])],
        name="Books", extra=t("RepeatColumnHeaders", "true"))
    head = section("PageHeader", 0.8, box("General ledger", at(0, 0, 0.6, 8), FontSize="12pt", FontWeight="Bold"))
    return report([data("Ledger", "Account:String Day:Date Text:String Debit:Float Credit:Float", rows)], [table],
                  head=head, foot=PAGES, more=t("Language", "de-DE"))


@kind
def calendar_month():
    """A matrix of weeks by weekdays; the days hold what happens on them."""
    events = {4: "Audit", 11: "Stock taking in all three stores", 12: "Fair", 20: "Payday", 28: "Close"}
    rows = [(f"2026-05-{day:02d}", events.get(day)) for day in range(1, 32)]
    day = rectangle([box("=Day(First(Fields!Day.Value))", at(0, 1.4, 0.5, 0.8), TextAlign="Right", FontWeight="Bold",
                         Color='=IIf(Weekday(First(Fields!Day.Value)) = 1, "Red", "Black")'),
                     box("=First(Fields!Event.Value)", at(0.55, 0, 0.6, 2.2), FontSize="7pt", Color="#1F5F3A")],
                    borders=edges(All="Gray Solid 0.5pt"),
                    BackgroundColor='=IIf(Weekday(First(Fields!Day.Value), 2) > 5, "#F4ECEC", "White")')
    table = tablix("Days", [2.2], [(1.6, [day])],
                   [group("Week", "=DatePart(\"ww\", Fields!Day.Value, 2, 2)",
                          head=(1, box('="W" & DatePart("ww", First(Fields!Day.Value), 2, 2)', **HEAD)))],
                   [group("Weekday", "=Weekday(Fields!Day.Value, 2)", head=(
                       0.6, box("=WeekdayName(Weekday(First(Fields!Day.Value), 2), true, 2)", TextAlign="Center", **HEAD)),
                       sort=[("=Weekday(Fields!Day.Value, 2)", "Ascending")])],
                   [[box("May", **HEAD)]], top=1.2)
    return report([data("Days", "Day:Date Event:String", rows)],
                  [box("May 2026", at(0, 0, 1, 16), FontSize="18pt", TextAlign="Center"), table], width=17)


@kind
def wide_table_pages():
    """Thirty months to the right: three pages wide, the row header on each."""
    rows = [(f"Product {p:02d}", f"{2024 + m // 12}-{m % 12 + 1:02d}", p * 100 + m) for p in range(1, 41) for m in range(30)]
    table = tablix("Sales", [1.6], [(0.6, [box("=Sum(Fields!Amount.Value)", **NUMBER)])],
                   [group("Product", "=Fields!Product.Value", head=(3, box("=Fields!Product.Value", **BOLD)))],
                   [group("Month", "=Fields!Month.Value", head=(0.7, box("=Fields!Month.Value", TextAlign="Right", **HEAD)))],
                   [[box("Product", **HEAD)]], extra=t("RepeatColumnHeaders", "true") + t("RepeatRowHeaders", "true"))
    return report([data("Sales", "Product:String Month:String Amount:Integer", rows)], [table], width=4.6, foot=PAGES)


@kind
def rtl_price_table():
    """A table from right to left with two spans, Hebrew and Arabic texts and numbers in them."""
    rows = [("מחברת", "A-100", 12.5), ("עט כחול", "A-101", 3.9), ("قلم رصاص", "B-200", 1.25), ("دفتر كبير (A4)", "B-201", 18)]
    table = tablix("Prices", [5, 3, 3], [
        (0.7, [(box("מחירון 2026", Direction="RTL", TextAlign="Center", **HEAD), 2, 1), None, box("מחיר", **HEAD)]),
        (0.6, [box("=Fields!Name.Value", Direction="RTL", **GRID), box("=Fields!Code.Value", **GRID),
               box("=Fields!Price.Value", **{**NUMBER, "Format": "N2"})]),
        (0.6, [box("סך הכל", Direction="RTL", **BOLD), box("=Count(Fields!Code.Value)", **BOLD),
               box("=Sum(Fields!Price.Value)", **{**NUMBER, "Format": "N2", "FontWeight": "Bold"})])],
        [member(REPEATED), group("Line", None), member(BEFORE)], extra=t("LayoutDirection", "RTL"), left=3)
    return report([data("Prices", "Name:String Code:String Price:Float", rows)], [table])


@kind
def rotated_headings():
    """Column headings that stand upright, in both directions, and a group's name along its rows."""
    rows = [(dept, person, skill, (i * 7 + j * 3) % 5) for i, (dept, person) in enumerate(
        [("Workshop", "Ann Lee"), ("Workshop", "Bo Dahl"), ("Workshop", "Cy Roe"), ("Office", "Di Fox"), ("Office", "Ed Orr")])
        for j, skill in enumerate(["Welding", "Forklift licence", "First aid", "Accounting of projects", "French"])]
    skill = box("=Fields!Skill.Value", WritingMode="Rotate270", VerticalAlign="Middle", **GRID)
    table = tablix("Skills", [1], [(0.7, [box("=Sum(Fields!Level.Value)", TextAlign="Center", BackgroundColor=
                   '=Choose(Sum(Fields!Level.Value) + 1, "White", "#FFE0E0", "#FFF4D0", "#E8F4D8", "#B8E0B0")', **GRID)])],
                   [group("Dept", "=Fields!Dept.Value", head=(
                       0.9, box("=Fields!Dept.Value", WritingMode="Vertical", TextAlign="Center", VerticalAlign="Middle", **BOLD)),
                       members=[group("Person", "=Fields!Person.Value", head=(3, box("=Fields!Person.Value", **GRID)))])],
                   [group("Skill", "=Fields!Skill.Value", head=(3.4, skill))], [[(box("Skills matrix", **HEAD), 2, 1), None]])
    return report([data("Skills", "Dept:String Person:String Skill:String Level:Integer", rows)], [table])


@kind
def org_chart():
    """A recursive group: who reports to whom, indented by level, with the number of people below."""
    people = [("Mia Holt", None), ("Tom Reed", "Mia Holt"), ("Ida Lund", "Mia Holt"), ("Leo Park", "Tom Reed"),
              ("Eva Stein", "Tom Reed"), ("Jon Vik", "Leo Park"), ("Amy Cole", "Ida Lund"), ("Max Bell", "Jon Vik")]
    table = tablix("People", [8, 3, 3], [
        (0.6, boxes(["Name", "Level", "People"], HEAD)),
        (0.6, [box("=Fields!Name.Value", PaddingLeft='=(2 + Level("Person") * 15) & "pt"', **GRID),
               box('=Level("Person")', **NUMBER), box('=Count(Fields!Name.Value, "Person", Recursive)', **NUMBER)])],
        [member(REPEATED), group("Person", "=Fields!Name.Value", inside=t("Parent", "=Fields!Boss.Value"),
                                 sort=[("=Fields!Name.Value", "Ascending")])])
    return report([data("People", "Name:String Boss:String", people)], [table])


@kind
def inventory_page_names():
    """Each store on its own page with its own name and page numbers, a summary of all at the end."""
    rows = [(store, f"Part {n:03d}", n * 3 % 40, 1.5 + n) for store, count in (("Aalto", 70), ("Bruk", 20), ("Cove", 55))
            for n in range(1, count + 1)]
    table = tablix("Stock", [5, 3, 3, 3], [
        (0.7, boxes(["Part", "Quantity", "Price", "Value"], HEAD)),
        (0.7, [(box('="Store " & Fields!Store.Value', FontSize="12pt", FontWeight="Bold"), 4, 1)] + [None] * 3),
        (0.55, [box("=Fields!Part.Value", **GRID), box("=Fields!Quantity.Value", **NUMBER),
                box("=Fields!Price.Value", **{**NUMBER, "Format": "N2"}),
                box("=Fields!Quantity.Value * Fields!Price.Value", **{**NUMBER, "Format": "N2"})]),
        (0.6, boxes(['="Total " & Fields!Store.Value', "=Sum(Fields!Quantity.Value)", "",
                     "=Sum(Fields!Quantity.Value * Fields!Price.Value)"], {**NUMBER, "FontWeight": "Bold"})),
        (0.6, boxes(["All stores", "=Sum(Fields!Quantity.Value)", "", "=Sum(Fields!Quantity.Value * Fields!Price.Value)"],
                    {**NUMBER, **HEAD}))],
        [member(REPEATED),
         group("Store", "=Fields!Store.Value", members=[member(REPEATED), group("Line", None), member(BEFORE)],
               inside=e("PageBreak", t("BreakLocation", "Between"), t("ResetPageNumber", "true"))
               + t("PageName", '=Fields!Store.Value')),
         member(BEFORE)], name="Inventory")
    return report([data("Stock", "Store:String Part:String Quantity:Integer Price:Float", rows)], [table], foot=PAGES,
                  more=t("InitialPageName", "Inventory"))


@kind
def spans_over_pages():
    """A group's header beside more rows than a page holds, a second level of it, and a total of each."""
    rows = [(f"Zone {z}", f"Route {z}{r}", f"Stop {n}", n) for z, count in ((1, 62), (2, 9)) for r in "ab" for n in range(1, count + 1)]
    table = tablix("Stops", [4, 2.5], [
        (0.6, boxes(["Stop", "Minutes"], HEAD)), (0.6, [box("=Fields!Stop.Value", **GRID), box("=Fields!Minutes.Value", **NUMBER)]),
        (0.6, boxes(['="Total " & Fields!Route.Value', "=Sum(Fields!Minutes.Value)"], {**NUMBER, "FontWeight": "Bold"}))],
        [member(REPEATED, head=(3, box("Zone", **HEAD)), members=[member(head=(3, box("Route", **HEAD)))]),
         group("Zone", "=Fields!Zone.Value", head=(3, box("=Fields!Zone.Value", VerticalAlign="Middle", **BOLD)), members=[
             group("Route", "=Fields!Route.Value", head=(3, box("=Fields!Route.Value", BackgroundColor="#E4E9F0", **BOLD)),
                   members=[group("Stop", None), member(BEFORE)])])], name="Plan")
    return report([data("Stops", "Zone:String Route:String Stop:String Minutes:Integer", rows)], [table], foot=PAGES)


@kind
def nested_boxes_grow():
    """Rectangles in rectangles in a list; texts grow and push what is below them, what is beside stays."""
    rows = [(n, "A remark that takes its space. " * (n * 3 % 8 + 1), f"Answer {n}") for n in range(1, 10)]
    inner = rectangle([box("=Fields!Remark.Value", at(0.1, 0.1, 0.5, 4)), box("=Fields!Answer.Value", at(0.7, 0.1, 0.5, 4),
                       BackgroundColor="#E8F4D8")], at(0.7, 0.5, 1.3, 4.4), borders=edges(All="Red Solid 1pt"))
    side = rectangle([box('="No " & Fields!No.Value', at(0.1, 0.1, 0.6, 3), FontWeight="Bold"),
                      box("=Len(Fields!Remark.Value)", at(0.8, 0.1, 0.6, 3))], at(0.7, 6, 1.5, 3.4),
                     borders=edges(All="Blue Solid 1pt"))
    below = box('="Below " & Fields!No.Value', at(2.3, 0.5, 0.5, 9), BackgroundColor="#F4ECEC")
    outer = rectangle([box('="Case " & Fields!No.Value', at(0, 0, 0.6, 10), **HEAD), inner, side, below],
                      extra=t("KeepTogether", "true"), borders=edges(All="Gray Solid 0.5pt"))
    table = tablix("Cases", [10], [(3, [outer])], [group("Case", None)])
    return report([data("Cases", "No:Integer Remark:String Answer:String", rows)], [table], foot=PAGES)


@kind
def columns_with_groups():
    """A phone list in three columns; each initial heads its names and repeats in the next column."""
    rows = [(f"{initial}{name}", 1000 + 17 * n + 100 * i) for i, initial in enumerate("ABCDEFGH")
            for n, name in enumerate(["bel", "dams", "ker", "lin", "mes", "nders", "rthur", "shby", "tkins", "yers", "zur",
                                      "cer", "gnew", "insley", "bbott", "lvarez", "vila"])]
    table = tablix("Phones", [3.4, 1.9], [
        (0.7, [(box("=Left(Fields!Name.Value, 1)", FontSize="12pt", FontWeight="Bold", borders=edges(
            Bottom="Black Solid 1pt")), 2, 1), None]),
        (0.5, [box("=Fields!Name.Value"), box("=Fields!Phone.Value", TextAlign="Right")])],
        [group("Initial", "=Left(Fields!Name.Value, 1)", members=[member(REPEATED), group("Line", None)])])
    return report([data("Phones", "Name:String Phone:Integer", rows)], [table], width=5.3, foot=PAGES,
                  page=t("Columns", 3) + t("ColumnSpacing", "0.5cm"))


@kind
def keep_together_blocks():
    """Orders of seven lines that are not parted, with a heading that stays with its first order."""
    rows = [(f"Customer {c}", f"Order {c}{o}", f"Line {n}", n * c) for c in range(1, 6) for o in range(1, 5) for n in range(1, 8)]
    table = tablix("Orders", [5, 4, 3], [
        (0.8, [(box("=Fields!Customer.Value", FontSize="12pt", **HEAD), 3, 1), None, None]),
        (0.6, [(box("=Fields!Order.Value", **BOLD), 3, 1), None, None]),
        (0.6, boxes(["", "=Fields!Line.Value", "=Fields!Amount.Value"], GRID)),
        (0.6, boxes(["", '="Total " & Fields!Order.Value', "=Sum(Fields!Amount.Value)"], BOLD))],
        [group("Customer", "=Fields!Customer.Value", members=[
            member(AFTER), group("Order", "=Fields!Order.Value", t("KeepTogether", "true"), members=[
                member(AFTER), group("Line", None), member(BEFORE)])])])
    return report([data("Orders", "Customer:String Order:String Line:String Amount:Integer", rows)], [table], foot=PAGES)
