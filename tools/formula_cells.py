"""What every formula cell of a level table must have stored, worked out from the sheet's plain values, and a comparison
with what a reader of stored values finds there. A formula that shows nothing must have stored an empty text, never 0."""

import datetime
import struct

import xlrd

MONTHS = [10, 11, 12, 1, 2, 3, 4, 5, 6, 7, 8, 9]
LENGTHS = [31, 30, 31, 31, 29, 31, 30, 31, 30, 31, 31, 30]
FIRST_DAY, BLOCK = 5, 35
FORMULA, BOUNDSHEET, BOF, END = 0x06, 0x85, 0x809, 0x0A


def formula_cells(path):
    """The sheet and the name of every cell that holds a formula, from the records of the file."""
    with open(path, "rb") as file:
        stream = xlrd.compdoc.CompDoc(file.read()).get_named_stream("Workbook")
    sheets, at, current, found = {}, 0, None, set()
    while at + 4 <= len(stream):
        number, length = struct.unpack_from("<HH", stream, at)
        if number == BOUNDSHEET:
            position, _, letters, wide = struct.unpack_from("<IHBB", stream, at + 4)
            name = stream[at + 12 : at + 12 + letters * (2 if wide & 1 else 1)]
            sheets[position] = name.decode("utf-16-le" if wide & 1 else "latin-1")
        if number == BOF:
            current = sheets.get(at)
        if number == FORMULA:
            row, column = struct.unpack_from("<HH", stream, at + 4)
            found.add((current, xlrd.cellname(row, column)))
        at += 4 + length
    return found


def serial(year, month, day):
    return float((datetime.date(year, month, day) - datetime.date(1899, 12, 30)).days)


class Expected:
    def __init__(self, book):
        self.cells = {}
        self.daily = book.sheet_by_name("Gunluk")
        self.year = int(self.daily.cell_value(0, 0))
        self.leap = datetime.date(self.year, 3, 1) - datetime.timedelta(days=1)
        months = [self.month(index) for index in range(12)]
        self.year_sheet(months)

    def column(self, letter, first):
        column = "ABCDEFGHI".index(letter)
        return [self.daily.cell_value(row, column) for row in range(first - 1, first + 30)]

    def month(self, index):
        """The extremes and means of a month: (level, day, time) of both, the means."""
        first = FIRST_DAY + BLOCK * index
        put = lambda cell, value: self.cells.__setitem__(("Gunluk", cell), value)
        name = self.daily.cell_value(first - 2, 0).split(" ")[0]
        put(f"A{first - 1}", f"{name} {self.year - (MONTHS[index] >= 10)}")
        if MONTHS[index] == 2:
            put(f"A{first + 28}", 29.0 if self.leap.day == 29 else "")
        extremes = []
        for row, level, others, pick in ((31, "D", "CDE", max), (32, "G", "FGH", min)):
            values = self.column(level, first)
            numbers = [value for value in values if isinstance(value, float)]
            at = values.index(pick(numbers)) if numbers else None
            put(f"A{first + row}", "" if at is None else at + 1.0)
            for letter in others:
                put(f"{letter}{first + row}", "" if at is None else self.column(letter, first)[at])
            time = "" if at is None else self.column(others[0], first)[at]
            extremes.append(("", "", "") if at is None else (pick(numbers), at + 1, time))
        means = [value for value in self.column("I", first) if isinstance(value, float)]
        put(f"I{first + 33}", sum(means) / len(means) if means else "")
        return (*extremes, means)

    def year_sheet(self, months):
        put = lambda cell, value: self.cells.__setitem__(("Aylik", cell), value)
        put("A1", self.daily.cell_value(0, 3))
        put("A2", f"{self.daily.cell_value(0, 1)} {self.year}  (01/10/{self.year - 1} - 30/09/{self.year})")
        put("A19", self.daily.cell_value(0, 5))
        for index, (maximum, minimum, means) in enumerate(months):
            row, month = 6 + index, MONTHS[index]
            for letters, (level, day, time) in (("BCE", maximum), ("FGI", minimum)):
                date = "" if level == "" else serial(self.year - (month >= 10), month, day)
                for letter, value in zip(letters, (level, date, time)):
                    put(f"{letter}{row}", value)
            put(f"J{row}", sum(means) / len(means) if means else "")
            put(f"K{row}", float(len(means)))
            put(f"L{row}", float((self.leap.day if month == 2 else LENGTHS[index]) - len(means)))
            for day in range(LENGTHS[index]):
                put(f"{'BCDEFGHIJKLM'[index]}{23 + day}", self.column("I", FIRST_DAY + BLOCK * index)[day])
        for letters, pick in (("BCE", max), ("FGI", min)):
            levels = [self.cells["Aylik", f"{letters[0]}{row}"] for row in range(6, 18)]
            there = [level for level in levels if level != ""]
            row = 6 + levels.index(pick(there)) if there else 6
            for letter in letters:
                put(f"{letter}18", self.cells["Aylik", f"{letter}{row}"])
        every = [value for _, _, means in months for value in means]
        put("J18", sum(every) / len(every) if every else "")
        put("K18", float(len(every)))
        put("L18", sum(self.cells["Aylik", f"L{row}"] for row in range(6, 18)))


def same(found, wanted):
    if isinstance(found, float) and isinstance(wanted, float):
        return abs(found - wanted) <= 1e-9 * max(1.0, abs(wanted))
    return type(found) is type(wanted) and found == wanted


def check_formulas(book, path, complaints):
    wanted = Expected(book).cells
    there = formula_cells(path)
    for sheet, cell in sorted(there ^ wanted.keys(), key=str):
        complaints.append(f"{sheet} {cell}: {'no' if (sheet, cell) in wanted else 'an unknown'} formula")
    for sheet, cell in sorted(there & wanted.keys()):
        found = book.sheet_by_name(sheet).cell_value(int(cell[1:]) - 1, ord(cell[0]) - ord("A"))
        if not same(found, wanted[sheet, cell]):
            complaints.append(f"{sheet} {cell}: stored {found!r}, expected {wanted[sheet, cell]!r}")
