"""Prints the sheets of a workbook as JSON."""

import json
import sys

import openpyxl

sheets = []
for sheet in openpyxl.load_workbook(sys.argv[1]).worksheets:
    sheets.append(
        {
            "name": sheet.title,
            "rightToLeft": bool(sheet.sheet_view.rightToLeft),
            "rows": [[cell.value for cell in row] for row in sheet.iter_rows()],
            "formulas": sum(cell.data_type == "f" for row in sheet.iter_rows() for cell in row),
        }
    )
json.dump(sheets, sys.stdout)
