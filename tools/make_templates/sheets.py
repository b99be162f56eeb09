"""The three sheets of a template, written through the office's automation interface."""

import uno
from com.sun.star.table import BorderLine2
from com.sun.star.table.CellHoriJustify import CENTER, LEFT, RIGHT
from com.sun.star.table.CellVertJustify2 import CENTER as MIDDLE

HEADING_FILL = 0xD9E2EC
SUMMARY_FILL = 0xEEF2F6
NO_DAY_FILL = 0xE3E3E3
GRID_COLOUR = 0xB4BEC8
NOTE_COLOUR = 0xFF0000
NOTE_COLUMN = "F"
MONTHS = [10, 11, 12, 1, 2, 3, 4, 5, 6, 7, 8, 9]
DAYS = [31, 30, 31, 31, 29, 31, 30, 31, 30, 31, 31, 30]
BLOCK = 35  # rows of a month on the daily sheet
FIRST_DAY = 5
LAST_SHEET_ROW = 65536


def line(width, colour=GRID_COLOUR):
    border = BorderLine2()
    border.Color, border.OuterLineWidth, border.LineWidth = colour, width, width
    return border


class Sheet:
    """A sheet whose ranges go by their names, as "B4:E4"."""

    def __init__(self, document, name):
        self.document, self.name = document, name
        self.cells = document.Sheets.getByName(name)

    def style(self, where, **properties):
        target = self.cells.getCellRangeByName(where)
        for name, value in properties.items():
            target.setPropertyValue(name, value)

    def number_format(self, where, code):
        formats = self.document.NumberFormats
        locale = uno.createUnoStruct("com.sun.star.lang.Locale")
        locale.Language, locale.Country = "en", "GB"
        key = formats.queryKey(code, locale, False)
        self.style(where, NumberFormat=key if key >= 0 else formats.addNew(code, locale))

    def put(self, cell, content):
        self.cells.getCellRangeByName(cell).Formula = content

    def merge(self, where):
        self.cells.getCellRangeByName(where).merge(True)

    def widths(self, centimetres):
        for column, width in enumerate(centimetres):
            self.cells.Columns.getByIndex(column).Width = round(width * 1000)

    def heights(self, first, last, centimetres):
        for row in range(first - 1, last):
            self.cells.Rows.getByIndex(row).Height = round(centimetres * 1000)

    def frame(self, where, width=18):
        edge = line(width)
        self.style(where, TopBorder=edge, BottomBorder=edge, LeftBorder=edge, RightBorder=edge)

    def heading(self, where):
        self.style(where, CellBackColor=HEADING_FILL, CharWeight=150.0, HoriJustify=CENTER, VertJustify=MIDDLE,
                   IsTextWrapped=True)
        self.frame(where)

    def title_rows(self, first, last):
        rows = self.cells.getCellRangeByName(f"A{first}:A{last}").RangeAddress
        self.cells.setPrintTitleRows(True)
        self.cells.setTitleRows(rows)


def page_style(document, name, page_word, **scaling):
    styles = document.StyleFamilies.getByName("PageStyles")
    style = document.createInstance("com.sun.star.style.PageStyle")
    styles.insertByName("Page_" + name, style)
    style.IsLandscape, style.Width, style.Height = False, 21000, 29700
    style.LeftMargin = style.RightMargin = 1200
    style.TopMargin, style.BottomMargin = 1200, 900
    style.HeaderIsOn, style.FooterIsOn, style.FooterHeight = False, True, 700
    style.CenterHorizontally = True
    style.FirstPageNumber = 0  # goes on from the sheet before
    for key, value in scaling.items():
        setattr(style, key, value)
    content = style.RightPageFooterContent
    text = content.CenterText
    text.String = page_word
    for field, between in (("PageNumber", " / "), ("PageCount", "")):
        cursor = text.createTextCursor()
        cursor.gotoEnd(False)
        text.insertTextContent(cursor, document.createInstance("com.sun.star.text.TextField." + field), False)
        cursor.gotoEnd(False)
        text.insertString(cursor, between, False)
    content.LeftText.String = content.RightText.String = ""
    style.RightPageFooterContent = content
    document.Sheets.getByName(name).PageStyle = "Page_" + name


def plain(sheet):
    sheet.style("A1:IV65536", CharFontName="Arial", CharHeight=9.0)


def hourly_sheet(document, t):
    sheet = Sheet(document, "Saatlik")
    plain(sheet)
    sheet.widths([2.3, 1.6, 2.2, 2.2, 0.6, 2.4, 1.6, 2.2, 2.2])
    sheet.put("A1", t["station"])
    sheet.put("A2", t["water_year"])
    sheet.style("A1:A2", CharWeight=150.0)
    sheet.style("C1:C2", CharWeight=150.0, CharHeight=11.0, HoriJustify=LEFT)
    # Row 4 stays free beside the records: the maximum of a first day with one reading stands there.
    names = [t["time"], t["level"], t["discharge"]]
    for where, group, row, columns, first in (
        ("A3:D3", t["hourly"], 4, "ABCD", t["date"]),
        ("F2:I2", t["records"], 3, "FGHI", t["record"]),
    ):
        sheet.merge(where)
        sheet.put(where[:2], group)
        for column, text in zip(columns, [first, *names]):
            sheet.put(f"{column}{row}", text)
    for where in ("A3:D4", "F2:I3"):
        sheet.heading(where)
    sheet.number_format(f"A5:A{LAST_SHEET_ROW}", "DD/MM/YYYY")
    sheet.style(f"A5:B{LAST_SHEET_ROW}", HoriJustify=CENTER)
    sheet.style(f"C5:D{LAST_SHEET_ROW}", HoriJustify=RIGHT)
    sheet.style(f"F4:F{LAST_SHEET_ROW}", HoriJustify=LEFT)
    sheet.style(f"G4:G{LAST_SHEET_ROW}", HoriJustify=CENTER)
    sheet.style(f"H4:I{LAST_SHEET_ROW}", HoriJustify=RIGHT)
    sheet.title_rows(1, 4)
    page_style(document, "Saatlik", t["page"], ScaleToPagesX=1, ScaleToPagesY=0)


def monthly_rows(sheet, t, first):
    """Maximum, minimum and mean of the month whose first day stands on row `first`."""
    last, row = first + 30, first + 31

    def extreme(function, column, target_row, pick):
        values = f"{column}{first}:{column}{last}"
        found = f"MATCH({function}({values});{values};0)"
        if pick == "day":
            return f'=IF(COUNT({values})=0;"";{found})'
        if pick == column:
            return f'=IF(COUNT({values})=0;"";{function}({values}))'
        there = f"INDEX({pick}{first}:{pick}{last};{found})"
        return f'=IF(COUNT({values})=0;"";IF({there}="";"";{there}))'

    sheet.put(f"B{row}", t["monthly_maximum"])
    sheet.put(f"B{row + 1}", t["monthly_minimum"])
    sheet.put(f"B{row + 2}", t["monthly_mean"])
    for target, pick in (("A", "day"), ("C", "C"), ("D", "D"), ("E", "E")):
        sheet.put(f"{target}{row}", extreme("MAX", "D", row, pick))
    for target, pick in (("A", "day"), ("F", "F"), ("G", "G"), ("H", "H")):
        sheet.put(f"{target}{row + 1}", extreme("MIN", "G", row + 1, pick))
    sheet.put(f"I{row + 2}", f'=IF(COUNT(I{first}:I{last})=0;"";AVERAGE(I{first}:I{last}))')
    sheet.number_format(f"I{row + 2}", "0.0")
    sheet.style(f"A{row}:I{row + 2}", CellBackColor=SUMMARY_FILL, CharWeight=150.0)


def day_numbers(sheet, index, first):
    for day in range(1, DAYS[index] + 1):
        leap_day = MONTHS[index] == 2 and day == 29
        sheet.put(f"A{first + day - 1}", '=IF(DAY(DATE($A$1;3;1)-1)=29;29;"")' if leap_day else str(day))


def month_block(sheet, t, index):
    first = FIRST_DAY + BLOCK * index
    year = "$A$1-1" if MONTHS[index] >= 10 else "$A$1"
    sheet.put(f"A{first - 1}", f'="{t["months"][index]}"&IF($A$1="";"";" "&({year}))')
    sheet.style(f"A{first - 1}:I{first - 1}", CharWeight=150.0, CellBackColor=SUMMARY_FILL)
    day_numbers(sheet, index, first)
    for where in ("A{0}:A{1}", "B{0}:B{1}", "C{0}:C{1}", "F{0}:F{1}"):
        sheet.style(where.format(first, first + 33), HoriJustify=CENTER)
    for where in ("D{0}:E{1}", "G{0}:H{1}", "I{0}:I{1}"):
        sheet.style(where.format(first, first + 33), HoriJustify=RIGHT)
    sheet.frame(f"A{first - 1}:I{first + 33}", 9)
    monthly_rows(sheet, t, first)


def discharge_column(sheet, first):
    """Daily mean discharges and their marks beside a month, their mean below."""
    last = first + 30
    sheet.style(f"J{first}:J{first + 33}", HoriJustify=RIGHT)
    sheet.style(f"K{first}:K{last}", HoriJustify=CENTER)
    sheet.put(f"J{first + 33}", f'=IF(COUNT(J{first}:J{last})=0;"";AVERAGE(J{first}:J{last}))')
    sheet.number_format(f"J{first + 33}", "0.000")
    sheet.style(f"J{first + 31}:K{first + 33}", CellBackColor=SUMMARY_FILL, CharWeight=150.0)
    sheet.frame(f"J{first - 1}:K{first + 33}", 9)


def daily_sheet(document, t, discharges=False):
    sheet = Sheet(document, "Gunluk")
    plain(sheet)
    sheet.widths([1.4, 2.7, 1.7, 2.3, 2.3, 1.7, 2.3, 2.3, 2.3] + ([1.7, 1.4] if discharges else []))
    sheet.style("A1:D1", CharWeight=150.0, CharHeight=11.0, HoriJustify=LEFT)
    sheet.put("B1", t["water_year"])
    for where, text in (("A2:B2", ""), ("C2:E2", t["maximum"]), ("F2:H2", t["minimum"]), ("I2", t["mean"])):
        if ":" in where:
            sheet.merge(where)
        sheet.put(where.split(":")[0], text)
    names = [t["time"], t["level"], t["discharge"]]
    for column, text in zip("ABCDEFGHI", [t["day"], t["date"], *names, *names, t["level"]]):
        sheet.put(f"{column}3", text)
    sheet.heading("A2:I3")
    if discharges:  # the program puts the titles beside the figures
        sheet.heading("J2:K3")
    for index in range(12):
        month_block(sheet, t, index)
        if discharges:
            discharge_column(sheet, FIRST_DAY + BLOCK * index)
    for index in range(2, 12, 2):
        sheet.cells.Rows.getByIndex(FIRST_DAY + BLOCK * index - 2).IsStartOfNewPage = True
    sheet.heights(4, FIRST_DAY + BLOCK * 12 - 2, 0.42)
    sheet.title_rows(1, 3)
    page_style(document, "Gunluk", t["page"], PageScale=75 if discharges else 86)


def summary_row(sheet, index, row):
    first = FIRST_DAY + BLOCK * index
    last = first + 30
    year = "$Gunluk.$A$1" + ("-1" if MONTHS[index] >= 10 else "")

    def source(column):
        return f"$Gunluk.${column}${first}:${column}${last}"

    for level, date, time, column, time_column, function in (
        ("B", "C", "E", "D", "C", "MAX"),
        ("F", "G", "I", "G", "F", "MIN"),
    ):
        found = f"MATCH({level}{row};{source(column)};0)"
        sheet.put(f"{level}{row}", f'=IF(COUNT({source(column)})=0;"";{function}({source(column)}))')
        sheet.put(f"{date}{row}", f'=IF(OR({level}{row}="";$Gunluk.$A$1="");"";DATE({year};{MONTHS[index]};{found}))')
        sheet.put(f"{time}{row}", f'=IF({level}{row}="";"";INDEX({source(time_column)};{found}))')
    means = f"COUNT({source('I')})"
    length = "DAY(DATE($Gunluk.$A$1;3;1)-1)" if MONTHS[index] == 2 else str(DAYS[index])
    sheet.put(f"J{row}", f'=IF({means}=0;"";AVERAGE({source("I")}))')
    sheet.put(f"K{row}", f'=IF($Gunluk.$A$1="";"";{means})')
    sheet.put(f"L{row}", f'=IF($Gunluk.$A$1="";"";{length}-{means})')


def year_row(sheet, t, row, first, last):
    sheet.put(f"A{row}", t["year"])
    for level, columns, function in (("B", "CE", "MAX"), ("F", "GI", "MIN")):
        values = f"{level}{first}:{level}{last}"
        sheet.put(f"{level}{row}", f'=IF(COUNT({values})=0;"";{function}({values}))')
        for column in columns:
            there = f"INDEX({column}{first}:{column}{last};MATCH({level}{row};{values};0))"
            sheet.put(f"{column}{row}", f'=IF({level}{row}="";"";{there})')
    means, days = f"J{first}:J{last}", f"K{first}:K{last}"
    sheet.put(f"J{row}", f'=IF(COUNT({means})=0;"";SUMPRODUCT({means};{days})/SUM({days}))')
    for column in "KL":
        sheet.put(f"{column}{row}", f'=IF($Gunluk.$A$1="";"";SUM({column}{first}:{column}{last}))')
    sheet.style(f"A{row}:M{row}", CharWeight=150.0, CellBackColor=HEADING_FILL)


def year_summary(sheet, t):
    for where, text in (("A4:A5", t["month"]), ("B4:E4", t["maximum"]), ("F4:I4", t["minimum"]), ("J4", t["mean"]),
                        ("K4:K5", t["days_kept"]), ("L4:M5", t["days_missing"])):
        if ":" in where:
            sheet.merge(where)
        sheet.put(where.split(":")[0], text)
    for where, text in (("B5", t["level"]), ("C5", t["date"]), ("E5", t["time"]), ("F5", t["level"]),
                        ("G5", t["date"]), ("I5", t["time"]), ("J5", t["level"])):
        sheet.put(where, text)
    for index in range(12):
        row = 6 + index
        sheet.put(f"A{row}", t["months"][index])
        summary_row(sheet, index, row)
    year_row(sheet, t, 18, 6, 17)
    for row in range(5, 19):
        for where in ("C{0}:D{0}", "G{0}:H{0}") + (("L{0}:M{0}",) if row > 5 else ()):
            sheet.merge(where.format(row))
    sheet.heading("A4:M5")
    sheet.style("A4:M5", CharHeight=8.0)
    sheet.style("A6:M18", VertJustify=MIDDLE)
    sheet.style("B6:M18", HoriJustify=CENTER)
    for column in "CG":
        sheet.number_format(f"{column}6:{column}18", "DD/MM/YYYY")
    sheet.number_format("J6:J18", "0.0")
    sheet.style("A6:A18", CharWeight=150.0)
    sheet.frame("A4:M18", 9)


def daily_means(sheet, t):
    sheet.put("A20", t["daily_means"])
    sheet.style("A20", CharWeight=150.0, CharHeight=10.0)
    sheet.put("A22", t["day"])
    for day in range(1, 32):
        sheet.put(f"A{22 + day}", str(day))
    for index in range(12):
        column = "BCDEFGHIJKLM"[index]
        sheet.put(f"{column}22", t["months"][index])
        for day in range(1, DAYS[index] + 1):
            source = f"$Gunluk.$I${FIRST_DAY + BLOCK * index + day - 1}"
            sheet.put(f"{column}{22 + day}", f'=IF({source}="";"";{source})')
        if DAYS[index] < 31:
            sheet.style(f"{column}{23 + DAYS[index]}:{column}53", CellBackColor=NO_DAY_FILL)
    sheet.heading("A22:M22")
    sheet.style("A23:M53", HoriJustify=CENTER, VertJustify=MIDDLE)
    sheet.style("A23:A53", CharWeight=150.0)
    sheet.style("A22:M22", CharHeight=7.0)
    sheet.frame("A22:M53", 9)


FIRST_DISCHARGE_ROW = 59  # of the months; what stands above is the program's to fill: L55 catchment, A56 the curve


def discharge_row(sheet, t, index, row):
    """What column J of the daily sheet comes to in a month. Column K marks days in part or extrapolated."""
    first = FIRST_DAY + BLOCK * index
    values, marks = (f"$Gunluk.${c}${first}:${c}${first + 30}" for c in "JK")
    year = "$Gunluk.$A$1" + ("-1" if MONTHS[index] >= 10 else "")
    sheet.put(f"A{row}", t["months"][index])
    sheet.put(f"B{row}", f'=IF(COUNT({values})=0;"";AVERAGE({values}))')
    for value, date, function in (("C", "D", "MAX"), ("F", "G", "MIN")):
        sheet.put(f"{value}{row}", f'=IF(COUNT({values})=0;"";{function}({values}))')
        found = f"MATCH({value}{row};{values};0)"
        sheet.put(f"{date}{row}", f'=IF(OR({value}{row}="";$Gunluk.$A$1="");"";DATE({year};{MONTHS[index]};{found}))')
    sheet.put(f"I{row}", f'=IF(COUNT({values})=0;"";SUM({values})*86400/1000000)')
    sheet.put(f"L{row}", f'=IF($Gunluk.$A$1="";"";COUNT({values}))')
    sheet.put(f"M{row}", f'=IF($Gunluk.$A$1="";"";SUMPRODUCT((LEN({marks})>0)*1))')


def discharge_year_row(sheet, t, row, first, last):
    sheet.put(f"A{row}", t["year"])
    sheet.put(f"B{row}", f'=IF(COUNT(B{first}:B{last})=0;"";SUM(I{first}:I{last})*1000000/86400/SUM(L{first}:L{last}))')
    for value, date, function in (("C", "D", "MAX"), ("F", "G", "MIN")):
        values = f"{value}{first}:{value}{last}"
        sheet.put(f"{value}{row}", f'=IF(COUNT({values})=0;"";{function}({values}))')
        there = f"INDEX({date}{first}:{date}{last};MATCH({value}{row};{values};0))"
        sheet.put(f"{date}{row}", f'=IF({value}{row}="";"";{there})')
    sheet.put(f"I{row}", f'=IF(COUNT(I{first}:I{last})=0;"";SUM(I{first}:I{last}))')
    for column in "LM":
        sheet.put(f"{column}{row}", f'=IF($Gunluk.$A$1="";"";SUM({column}{first}:{column}{last}))')
    sheet.style(f"A{row}:M{row}", CharWeight=150.0, CellBackColor=HEADING_FILL)


def discharge_summary(sheet, t):
    first, last = FIRST_DISCHARGE_ROW, FIRST_DISCHARGE_ROW + 11
    sheet.put("A55", t["daily_discharges"])
    sheet.style("A55", CharWeight=150.0, CharHeight=10.0)
    sheet.merge("I55:K55")
    sheet.put("I55", t["catchment"])
    sheet.merge("L55:M55")
    sheet.style("I55:K55", HoriJustify=RIGHT)
    sheet.style("L55:M55", HoriJustify=LEFT, CharWeight=150.0)
    sheet.merge("A56:M56")
    sheet.style("A56", CharHeight=7.0, IsTextWrapped=True, HoriJustify=LEFT, VertJustify=MIDDLE)
    for where, text in (("A57:A58", t["month"]), ("B57:B58", t["mean_discharge"]), ("C57:E57", t["highest_day"]),
                        ("F57:H57", t["lowest_day"]), ("I57:I58", t["volume"]), ("J57:J58", t["runoff"]),
                        ("K57:K58", t["specific"]), ("L57:L58", t["days_kept"]), ("M57:M58", t["days_flagged"])):
        sheet.merge(where)
        sheet.put(where.split(":")[0], text)
    for where, text in (("C58", "m³/s"), ("D58", t["date"]), ("F58", "m³/s"), ("G58", t["date"])):
        sheet.put(where, text)
    for index in range(12):
        discharge_row(sheet, t, index, first + index)
    discharge_year_row(sheet, t, last + 1, first, last)
    for row in range(58, last + 2):
        for where in ("D{0}:E{0}", "G{0}:H{0}"):
            sheet.merge(where.format(row))
        if row > 58:
            sheet.put(f"J{row}", f'=IF(OR(I{row}="";NOT(ISNUMBER($L$55)));"";I{row}/$L$55*1000)')
            sheet.put(f"K{row}", f'=IF(OR(B{row}="";NOT(ISNUMBER($L$55)));"";B{row}*1000/$L$55)')
    sheet.heading("A57:M58")
    sheet.style("A57:M58", CharHeight=7.0)
    sheet.style(f"B{first}:M{last + 1}", HoriJustify=CENTER, VertJustify=MIDDLE)
    sheet.style(f"A{first}:A{last + 1}", CharWeight=150.0)
    for column in "DG":
        sheet.number_format(f"{column}{first}:{column}{last + 1}", "DD/MM/YYYY")
    for column, code in (("B", "0.000"), ("C", "0.000"), ("F", "0.000"), ("I", "0.000"), ("J", "0.0"), ("K", "0.00")):
        sheet.number_format(f"{column}{first}:{column}{last + 1}", code)
    sheet.frame(f"A57:M{last + 1}", 9)
    sheet.heights(56, 56, 0.8)
    sheet.heights(57, 58, 0.6)
    sheet.heights(first, last + 1, 0.52)


def year_sheet(document, t, discharges=False):
    """The cell in row 21, column 4 holds nothing: the program empties it."""
    sheet = Sheet(document, "Aylik")
    plain(sheet)
    sheet.widths([1.9] + [1.5] * 12)
    sheet.put("A1", '=IF($Gunluk.$D$1="";"";$Gunluk.$D$1)')
    period = '"  (01/10/"&($Gunluk.$A$1-1)&" - 30/09/"&$Gunluk.$A$1&")"'
    sheet.put("A2", f'=IF($Gunluk.$A$1="";"";"{t["water_year"]} "&$Gunluk.$A$1&{period})')
    sheet.style("A1", CharWeight=150.0, CharHeight=14.0)
    sheet.style("A2", CharHeight=11.0)
    year_summary(sheet, t)
    # What the program has to say about the readings stands on the daily sheet; the published page repeats it.
    sheet.merge("A19:M19")
    sheet.put("A19", f'=IF($Gunluk.${NOTE_COLUMN}$1="";"";$Gunluk.${NOTE_COLUMN}$1)')
    sheet.style("A19", CharColor=NOTE_COLOUR, CharWeight=150.0, CharHeight=7.0, IsTextWrapped=True,
                HoriJustify=LEFT, VertJustify=MIDDLE)
    daily_means(sheet, t)
    sheet.heights(3, 3, 0.2)
    sheet.heights(4, 4, 0.55)
    sheet.heights(5, 5, 0.9)
    sheet.heights(6, 18, 0.56)
    sheet.heights(19, 19, 0.9)
    sheet.heights(21, 21, 0.15)
    sheet.heights(22, 53, 0.56)
    if discharges:
        discharge_summary(sheet, t)
    page_style(document, "Aylik", t["page"], ScaleToPagesX=1, ScaleToPagesY=1)
