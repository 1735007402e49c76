# Prints a workbook read with openpyxl, a reader that shares nothing with the writer.
#
# By default as JSON: per sheet its name, the cell the panes are frozen at, and its rows as
# lists of typed cells: null, ["s", text], ["n", number] or ["d", "YYYY-MM-DD"].
# With --text, per sheet a line "sheet NAME frozen CELL", then a line a row, its cells
# tab-separated without the empty ones at the end: a text as it is, a number as "=1234.50",
# a date as "@2026-03-01".
# A number is written with two decimals when it has a fraction, as a whole number otherwise.
import datetime
import json
import sys

import openpyxl


def cell(value):
    if value is None:
        return None
    if isinstance(value, datetime.datetime):
        return ["d", value.date().isoformat()]
    if isinstance(value, datetime.date):
        return ["d", value.isoformat()]
    if isinstance(value, bool):
        raise ValueError("a boolean cell: %r" % (value,))
    if isinstance(value, (int, float)):
        if float(value).is_integer():
            return ["n", str(int(value))]
        return ["n", "%.2f" % value]
    return ["s", str(value)]


def text(typed):
    if typed is None:
        return ""
    kind, value = typed
    return {"s": "", "n": "=", "d": "@"}[kind] + value


text_mode = "--text" in sys.argv[1:]
path = [a for a in sys.argv[1:] if a != "--text"][0]
sheets = []
book = openpyxl.load_workbook(path)
for sheet in book.worksheets:
    rows = [[cell(v) for v in row] for row in sheet.iter_rows(values_only=True)]
    sheets.append({"name": sheet.title, "frozen": sheet.freeze_panes, "rows": rows})

if not text_mode:
    json.dump(sheets, sys.stdout, ensure_ascii=False)
    sys.exit(0)
out = []
for sheet in sheets:
    out.append("sheet %s frozen %s" % (sheet["name"], sheet["frozen"]))
    for row in sheet["rows"]:
        cells = [text(c) for c in row]
        while cells and cells[-1] == "":
            cells.pop()
        out.append("\t".join(cells))
sys.stdout.write("\n".join(out) + "\n")
