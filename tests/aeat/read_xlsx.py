# Reads a workbook of the tax agency's VAT books with openpyxl, a reader that shares nothing
# with the writer, and prints per sheet its headings, its row count and, per VAT rate, the
# sums of the base, quota and surcharge columns, as JSON. Amounts are read as the format
# writes them: comma decimals, "-" before a negative.
import json
import sys
from decimal import Decimal

import openpyxl

COLUMNS = {
    "EXPEDIDAS": {"base": 21, "rate": 22, "quota": 23, "surcharge": 25, "width": 36},
    "RECIBIDAS": {"base": 26, "rate": 27, "quota": 28, "surcharge": 31, "width": 42},
}


def amount(text):
    if text is None or text == "":
        return Decimal(0)
    if not isinstance(text, str):
        raise ValueError("not a text cell: %r" % (text,))
    if "." in text:
        raise ValueError("a point in %r" % text)
    return Decimal(text.replace(",", "."))


def cents(value):
    return str(value.quantize(Decimal("0.01")))


out = {}
book = openpyxl.load_workbook(sys.argv[1])
for sheet in book.worksheets:
    cols = COLUMNS[sheet.title]
    rows = list(sheet.iter_rows(values_only=True))
    sums = {}
    for row in rows[2:]:
        rate = row[cols["rate"]]
        s = sums.setdefault(rate, [Decimal(0), Decimal(0), Decimal(0), 0])
        s[0] += amount(row[cols["base"]])
        s[1] += amount(row[cols["quota"]])
        s[2] += amount(row[cols["surcharge"]])
        s[3] += 1
    out[sheet.title] = {
        "width": sheet.max_column,
        "headings": [list(r) for r in rows[:2]],
        "rows": len(rows) - 2,
        "first": list(rows[2]) if len(rows) > 2 else [],
        "sums": {k: [cents(v[0]), cents(v[1]), cents(v[2]), v[3]] for k, v in sums.items()},
    }
json.dump(out, sys.stdout, ensure_ascii=False)
