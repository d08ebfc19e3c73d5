# SPDX-License-Identifier: GPL-3.0-or-later
"""A trading house's sales of the years 2024 to 2026, out of a fixed seed."""
import datetime
import os
import random
import sqlite3

SCHEMA = """
create table regions (region_id integer primary key, name text not null);
create table customers (customer_id integer primary key, company text not null, contact text not null,
    street text not null, postal_code text not null, city text not null, country text not null,
    region_id integer not null references regions (region_id), vat_id text);
create table products (product_id integer primary key, name text not null, category text not null,
    unit_price decimal not null);
create table orders (order_id integer primary key, customer_id integer not null references customers (customer_id),
    order_date date not null, ship_date date, status text not null);
create table order_lines (order_id integer not null references orders (order_id), line_no integer not null,
    product_id integer not null references products (product_id), quantity integer not null,
    unit_price decimal not null, discount decimal not null, primary key (order_id, line_no));
create index orders_by_date on orders (order_date);
create index lines_by_product on order_lines (product_id);
"""

# Country: region, prefix of VAT numbers, then cities with their postal codes.
COUNTRIES = {
    "Germany": ("Central Europe", "DE", [("München", "80331"), ("Köln", "50667"), ("Lübeck", "23552")]),
    "Austria": ("Central Europe", "ATU", [("Wien", "1010"), ("Graz", "8010")]),
    "Switzerland": ("Central Europe", "CHE", [("Zürich", "8001"), ("Genève", "1204")]),
    "Czechia": ("Central Europe", "CZ", [("Plzeň", "301 00"), ("Brno", "602 00")]),
    "France": ("Western Europe", "FR", [("Lyon", "69002"), ("Besançon", "25000")]),
    "Netherlands": ("Western Europe", "NL", [("Utrecht", "3511 AB"), ("'s-Hertogenbosch", "5211 AK")]),
    "Ireland": ("Western Europe", "IE", [("Cork", "T12 AB34"), ("Galway", "H91 XY56")]),
    "United Kingdom": ("Western Europe", "GB", [("Bristol", "BS1 4DJ"), ("Leeds", "LS1 2TW")]),
    "Sweden": ("Northern Europe", "SE", [("Malmö", "211 20"), ("Göteborg", "411 05")]),
    "Denmark": ("Northern Europe", "DK", [("Århus", "8000"), ("Køge", "4600")]),
    "Finland": ("Northern Europe", "FI", [("Jyväskylä", "40100"), ("Turku", "20100")]),
    "Italy": ("Southern Europe", "IT", [("L'Aquila", "67100"), ("Torino", "10121")]),
    "Spain": ("Southern Europe", "ES", [("A Coruña", "15001"), ("Málaga", "29001")]),
    "Portugal": ("Southern Europe", "PT", [("Évora", "7000-500"), ("Porto", "4000-322")]),
    "United States": ("North America", None, [("Portland", "97201"), ("Albany", "12207")]),
    "Canada": ("North America", None, [("Québec", "G1R 4P5"), ("Halifax", "B3J 1S9")]),
}

FIRST_NAMES = ["Anneke", "Björn", "Chiara", "Dónal", "Elsa", "François", "Grete", "Héctor", "Ingrid", "Jürgen",
               "Katja", "Luís", "Márta", "Niamh", "Oskar", "Paula", "Renée", "Søren", "Tomáš", "Zoë"]
LAST_NAMES = ["Almeida", "Bäcker", "Conti", "D'Angelo", "Eriksson", "Fischer", "Gagnon", "Hájek", "Iversen",
              "Jokinen", "Kowalski", "Lefèvre", "Müller", "Núñez", "O'Neill", "Petit", "Rossi", "Schäfer",
              "Thompson", "Vermeulen"]
TRADES = ["Foods", "Trading", "Import", "Delicatessen", "Provisions", "Wholesale", "Market", "Kitchens"]
FORMS = {"Germany": "GmbH", "Austria": "GmbH", "Switzerland": "AG", "Czechia": "s.r.o.", "France": "SARL",
         "Netherlands": "B.V.", "Ireland": "Ltd", "United Kingdom": "Ltd", "Sweden": "AB", "Denmark": "ApS",
         "Finland": "Oy", "Italy": "S.r.l.", "Spain": "S.L.", "Portugal": "Lda", "United States": "Inc.",
         "Canada": "Inc."}
STREETS = ["Harbour Road", "Mill Lane", "Station Street", "Market Square", "Garden Row", "Old Bridge", "Quay Street"]

PRODUCTS = {
    "Coffee & tea": [("Highland Arabica, 1 kg", 18.90), ("Espresso Blend, 1 kg", 16.50), ("Decaf Filter, 500 g", 9.80),
                     ("Earl Grey, 100 bags", 7.40), ("Sencha Loose Leaf, 250 g", 12.60)],
    "Cheese": [("Aged Gouda, wheel", 96.00), ("Gruyère, quarter", 74.50), ("Brie de Campagne, 1 kg", 15.20),
               ("Feta in Brine, 2 kg", 17.80)],
    "Preserves": [("Bitter Orange Marmalade", 4.35), ("Lingonberry Jam", 4.90), ("Dill Pickles, 680 g", 3.10),
                  ("Sauerkraut, 3 kg", 8.75), ("Tapenade, 190 g", 5.60)],
    "Oils & vinegar": [("Olive Oil Extra, 5 l", 48.00), ("Rapeseed Oil, 5 l", 21.40), ("Aceto Balsamico, 500 ml", 13.90),
                       ("Cider Vinegar, 1 l", 3.95)],
    "Bakery": [("Rye Crispbread, case", 19.20), ("Stollen, 1 kg", 14.80), ("Almond Biscotti, 2 kg", 22.50),
               ("Oat Cookies, case", 17.30)],
    "Beverages": [("Apple Juice, 12 × 1 l", 18.60), ("Elderflower Cordial, 6 × 500 ml", 27.00),
                  ("Sparkling Water, 24 × 330 ml", 13.20), ("Ginger Beer, 24 × 330 ml", 26.40)],
}


def _customers(chance, region_ids):
    rows = []
    for country, (region, vat, cities) in COUNTRIES.items():
        for number in range(5):
            city, postal_code = cities[number % len(cities)]
            last = chance.choice(LAST_NAMES)
            rows.append((len(rows) + 1001, f"{last} {chance.choice(TRADES)} {FORMS[country]}",
                         f"{chance.choice(FIRST_NAMES)} {chance.choice(LAST_NAMES)}",
                         f"{chance.choice(STREETS)} {chance.randint(1, 148)}", postal_code, city, country,
                         region_ids[region], f"{vat}{chance.randint(10 ** 7, 10 ** 8 - 1)}" if vat else None))
    return rows


def _orders(chance, customers, products):
    # Some customers buy often, and more is sold towards the end of a year.
    weights = [chance.choice([1, 2, 2, 3, 5]) for _ in customers]
    orders, lines = [], []
    day, last = datetime.date(2024, 1, 2), datetime.date(2026, 12, 30)
    while day <= last:
        busy = 1.6 + 0.15 * (day.year - 2024) + (0.9 if day.month >= 10 else 0)
        count = 0 if day.weekday() >= 5 else int(busy + chance.random() * 1.4)
        for _ in range(count):
            order_id = 10001 + len(orders)
            shipped = day + datetime.timedelta(days=chance.randint(1, 9))
            status = "open" if shipped > last else chance.choices(["shipped", "returned"], [60, 1])[0]
            customer = chance.choices(customers, weights)[0]
            orders.append((order_id, customer[0], day.isoformat(),
                           None if status == "open" else shipped.isoformat(), status))
            for number, product in enumerate(chance.sample(products, chance.choice([1, 2, 3, 3, 4, 5, 6])), 1):
                price = round(product[3] * (1 + 0.03 * (day.year - 2024)), 2)
                lines.append((order_id, number, product[0], chance.choice([1, 2, 4, 6, 10, 12, 20, 24]), price,
                              chance.choice([0, 0, 0, 0.05, 0.1])))
        day += datetime.timedelta(days=1)
    return orders, lines


def make(path):
    chance = random.Random(20240102)
    if os.path.exists(path):
        os.remove(path)
    regions = sorted({region for region, _, _ in COUNTRIES.values()})
    region_ids = {name: number for number, name in enumerate(regions, 1)}
    customers = _customers(chance, region_ids)
    products = [(number, name, category, price) for number, (category, name, price) in
                enumerate(((c, n, p) for c, members in PRODUCTS.items() for n, p in members), 101)]
    orders, lines = _orders(chance, customers, products)
    database = sqlite3.connect(path)
    database.executescript(SCHEMA)
    database.executemany("insert into regions values (?, ?)", [(n, name) for name, n in region_ids.items()])
    database.executemany("insert into customers values (?, ?, ?, ?, ?, ?, ?, ?, ?)", customers)
    database.executemany("insert into products values (?, ?, ?, ?)", products)
    database.executemany("insert into orders values (?, ?, ?, ?, ?)", orders)
    database.executemany("insert into order_lines values (?, ?, ?, ?, ?, ?)", lines)
    database.commit()
    database.execute("vacuum")
    database.close()
