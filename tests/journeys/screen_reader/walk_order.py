"""walk_order.py FOLDER: enters a whole order in the program of this folder. Every control is found by the name that a
screen reader tells."""

import os
import sqlite3
import subprocess
import sys

from reader import PATIENCE, Atspi, Reader, Role, State, children, has, waited_for

SERIES = "חלון ציר כנף אחת"
HEADERS = ["גובה פתח", "רוחב פתח", "שם סדרה", "סוג חלון", "מס' "]
CELLS = ["100.25", "120.50", SERIES, "אור", "1"]


def same(seen, expected):
    assert seen == expected, f"{seen!r} instead of {expected!r}"


def cells_of(grid):
    """Returns the headers of a grid and the texts of its rows, as its table tells them."""
    columns = range(Atspi.Table.get_n_columns(grid))
    headers = [Atspi.Table.get_column_description(grid, column) for column in columns]
    cell = Atspi.Table.get_accessible_at
    rows = range(Atspi.Table.get_n_rows(grid))
    return headers, [[cell(grid, row, column).get_name() for column in columns] for row in rows]


def open_order(reader):
    toolbar = reader.find(Role.TOOL_BAR, "פקודות")
    buttons = [each.get_name() for each in children(toolbar) if has(each, State.VISIBLE)]
    same(buttons, ["הזמנות", "סדרות", "סוג וצבע", "יציאה"])
    waited_for(lambda: has(toolbar.get_parent(), State.ACTIVE), "the main window in front")
    reader.key("F10")
    reader.wait_focused("הזמנות")
    reader.key("Return")


def choose_series(reader):
    reader.press("בחר סדרה")
    grid = reader.find(Role.TABLE, "סדרות")
    headers, rows = cells_of(grid)
    same(headers, ["מס. כנף", "מס. נתיב", "שם סדרה"])
    row = [each[2] for each in rows].index(SERIES)
    cell = Atspi.Table.get_accessible_at(grid, row, 2)
    reader.focus(cell)
    assert has(cell, State.SELECTED)
    reader.press("בחר")
    reader.wait_gone(Role.TABLE, "סדרות")


def type_measures(reader):
    """Types the measures by keys. Tab tells the name of each box."""
    reader.focus(reader.find(Role.TEXT, "רוחב, שלם"))
    reader.key("1", "2", "0", "Tab")
    reader.wait_focused("רוחב, מאיות")
    reader.key("5", "0", "Tab")
    reader.wait_focused("גובה, שלם")
    reader.key("1", "0", "0", "Tab")
    reader.wait_focused("גובה, מאיות")
    reader.key("2", "5", "Tab")
    reader.wait_focused("הוסף להזמנה")
    same(reader.text(reader.find(Role.TEXT, "רוחב, שלם")), "120")
    same(reader.text(reader.find(Role.TEXT, "גובה, מאיות")), "25")


def name_parts(reader):
    """Writes into the lists of kinds and colours. Each keeps its name with the text."""
    for part in ("משקוף", "כנף", "זכוכית", "רשת"):
        for column in ("סוג", "צבע"):
            name = f"{part}, {column}"
            combo = reader.find(Role.COMBO_BOX, name)
            box = next(each for each in children(combo) if each.get_role() == Role.TEXT)
            same(box.get_name(), name)
            reader.write(box, f"{column} {part}"[:15])
            same(reader.find(Role.COMBO_BOX, name).get_name(), name)


def read_lines(reader):
    grid = reader.find(Role.TABLE, "שורות בהזמנה")
    waited_for(lambda: Atspi.Table.get_n_rows(grid) == 1, "one line in the order")
    headers, rows = cells_of(grid)
    same(headers, HEADERS)
    same(rows, [CELLS])
    # The hidden columns are not among the children either.
    same([each.get_name() for each in children(grid)], HEADERS + CELLS)
    reader.focused.clear()
    reader.act(grid, "SetFocus")
    waited_for(lambda: reader.focused[:1] == ["שורות בהזמנה"], "the focus on the grid")
    waited_for(lambda: reader.focused[-1] in CELLS, "the focus on a cell", lambda: reader.focused)


def close_order(reader):
    reader.press("סגור הזמנה")
    reader.press("כן")
    reader.find(Role.COMBO_BOX, "מסמך: דוח הזמנה")
    same(reader.text(reader.find(Role.TEXT, "מספר דף")), "1")
    reader.find(Role.PUSH_BUTTON, "הדפס")


def walk(reader):
    open_order(reader)
    reader.write(reader.find(Role.TEXT, "עבור לקוח :"), "ישראל ישראלי")
    choose_series(reader)
    type_measures(reader)
    name_parts(reader)
    reader.press("הוסף להזמנה")
    read_lines(reader)
    close_order(reader)


def check_store(folder):
    with sqlite3.connect(os.path.join(folder, "Aluminium.mdb")) as store:
        same(store.execute("SELECT Open_Close, CustomerName FROM Orders").fetchall(), [(-1, "ישראל ישראלי")])
        same(
            store.execute("SELECT NUM, Name, MyWidth, MYHeight, Mashof_Kind, Reshet_Color FROM Cuts").fetchall(),
            [(1, SERIES, 120.5, 100.25, "סוג משקוף", "צבע רשת")],
        )


def main():
    folder = sys.argv[1]
    environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
    with subprocess.Popen([os.path.join(folder, "Zomrel")], cwd="/", env=environment) as process:
        try:
            walk(Reader(process))
            assert process.poll() is None
        finally:
            process.kill()
            process.wait(PATIENCE)
    check_store(folder)


main()
