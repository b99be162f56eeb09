"""Reads a finished level table with python3-xlrd, a reader unrelated to the office that wrote it, and prints the
figures of its daily sheet as CSV; with --hourly those of the hourly sheet. Colours, borders, the macro's work and the
stored result of every formula are checked on the way, and what is wrong goes to standard error with exit code 1.

    /usr/bin/python3 tools/check_table.py [--hourly] "Tablo-12345(2011).xls"
"""

import datetime
import sys

import xlrd

from formula_cells import check_formulas

RED, LIGHT_BLUE = (255, 0, 0), (0x33, 0x66, 0xFF)
MEDIUM_LINE = 2
FIRST_ROW = 5
MONTHS, BLOCK, DAYS = 12, 35, 31
FIRST_MAXIMUM_COLUMN, FIRST_MINIMUM_COLUMN = 2, 6


def text(value):
    return f"{value:.15g}" if isinstance(value, float) else value


def font_colour(book, sheet, row, column):
    font = book.font_list[book.xf_list[sheet.cell_xf_index(row - 1, column - 1)].font_index]
    return book.colour_map.get(font.colour_index)


def line_below(book, sheet, row, column):
    return book.xf_list[sheet.cell_xf_index(row - 1, column - 1)].border.bottom_line_style


def check_record(book, sheet, row, complaints):
    kind = sheet.cell_value(row - 1, 5)
    wanted = {"Maksimum": RED, "Minimum": LIGHT_BLUE}.get(kind)
    if wanted and any(font_colour(book, sheet, row, column) != wanted for column in range(6, 10)):
        complaints.append(f"row {row}: the colour of {kind} is {font_colour(book, sheet, row, 6)}")
    if kind and kind != "Maksimum":
        if any(line_below(book, sheet, row, column) != MEDIUM_LINE for column in range(1, 10)):
            complaints.append(f"row {row}: no medium line below")


def hourly_rows(book, complaints):
    sheet = book.sheet_by_name("Saatlik")
    for row in range(FIRST_ROW, sheet.nrows + 1):
        if not any(sheet.row_values(row - 1)):
            continue
        if sheet.cell_type(row - 1, 0) != xlrd.XL_CELL_DATE:
            complaints.append(f"row {row}: no date")
            continue
        check_record(book, sheet, row, complaints)
        day = xlrd.xldate_as_datetime(sheet.cell_value(row - 1, 0), book.datemode)
        cells = [sheet.cell_value(row - 1, column) for column in range(1, sheet.ncols)]
        yield [day.strftime("%d/%m/%Y"), *map(text, cells)]


def daily_rows(book, complaints):
    sheet = book.sheet_by_name("Gunluk")
    year = int(sheet.cell_value(0, 0))
    for month in range(MONTHS):
        first = datetime.date(year - (month < 3), (month + 9) % 12 + 1, 1)
        for day in range(DAYS):
            cells = [sheet.cell(FIRST_ROW - 1 + month * BLOCK + day, column) for column in range(1, 9)]
            if any(cell.ctype == xlrd.XL_CELL_TEXT and not cell.value for cell in cells):
                complaints.append(f"{first} + {day} days: a cell holds an empty text")
            if any(cell.value != "" for cell in cells):
                date = first + datetime.timedelta(days=day)
                yield [date.strftime("%d/%m/%Y"), *(text(cell.value) for cell in cells[1:])]


def main():
    hourly = "--hourly" in sys.argv
    book = xlrd.open_workbook(sys.argv[-1], formatting_info=True)
    complaints = []
    for row in (hourly_rows if hourly else daily_rows)(book, complaints):
        print(",".join(row))
    if book.sheet_by_name("Aylik").cell_value(20, 3) != "":
        complaints.append("Aylik (21,4) is not empty")
    check_formulas(book, sys.argv[-1], complaints)
    for complaint in complaints:
        print(complaint, file=sys.stderr)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
