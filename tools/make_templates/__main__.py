"""Makes the workbook templates resources/Sablon.xls and Sablon_E.xls, and SablonDebi.xls and SablonDebi_E.xls for tables
with discharges.

    /usr/bin/python3 tools/make_templates [folder [file ...]]

Needs the Debian packages libreoffice-calc, python3-uno and libgsf-bin. A private office of its own writes the sheets,
then the VBA project with the macro BosHucreleriSil is put beside them, and the office saves the whole once more, so
that the sheets carry the names by which the project knows them.
"""

import pathlib
import subprocess
import sys
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

import sheets
import texts
import vba_project

HERE = pathlib.Path(__file__).resolve().parent
SHEETS = ["Saatlik", "Gunluk", "Aylik"]
CODE_NAMES = ["Sheet1", "Sheet2", "Sheet3"]
FROZEN = {"Saatlik": (0, 4), "Gunluk": (2, 3), "Aylik": (1, 5)}
START_LIMIT_S = 60


def settings(**values):
    return tuple(PropertyValue(name, 0, value, 0) for name, value in values.items())


class Office:
    """A headless office with a profile of its own."""

    def __init__(self, folder):
        pipe = "make-templates-" + folder.name
        self.process = subprocess.Popen(
            ["soffice", "--headless", "--nologo", "--nodefault", "--norestore",
             f"-env:UserInstallation={(folder / 'profile').as_uri()}", f"--accept=pipe,name={pipe};urp;"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        context = uno.getComponentContext()
        resolver = context.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", context)
        deadline = time.monotonic() + START_LIMIT_S
        while True:
            try:
                remote = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
                break
            except NoConnectException:
                if time.monotonic() > deadline:
                    self.process.kill()
                    raise
                time.sleep(0.1)
        self.desktop = remote.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", remote)

    def open(self, url):
        # Not hidden: the active sheet and the frozen panes of a hidden workbook are not saved.
        return self.desktop.loadComponentFromURL(url, "_blank", 0, settings(Hidden=False, MacroExecutionMode=4))

    def end(self):
        self.desktop.terminate()
        self.process.wait(START_LIMIT_S)


def freeze(document):
    """Heading rows stay in sight; the workbook opens on the daily sheet."""
    view = document.CurrentController
    for name in ["Saatlik", "Aylik", "Gunluk"]:
        view.setActiveSheet(document.Sheets.getByName(name))
        view.freezeAtPosition(*FROZEN[name])


def make_sheets(office, language, path, discharges):
    document = office.open("private:factory/scalc")
    all_sheets = document.Sheets
    for position, name in enumerate(SHEETS):
        all_sheets.insertNewByName(name, position)
    for name in all_sheets.ElementNames:
        if name not in SHEETS:
            all_sheets.removeByName(name)
    document.CharLocale = uno.createUnoStruct("com.sun.star.lang.Locale")
    sheets.hourly_sheet(document, language)
    sheets.daily_sheet(document, language, discharges)
    sheets.year_sheet(document, language, discharges)
    freeze(document)
    document.storeToURL(path.as_uri(), settings(FilterName="MS Excel 97"))
    document.close(True)


def save_again(office, path, result):
    document = office.open(path.as_uri())
    document.storeToURL(result.as_uri(), settings(FilterName="MS Excel 97"))
    document.close(True)


def main():
    target = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else HERE.parent.parent / "resources").resolve()
    wanted = sys.argv[2:]
    macro = (HERE / "BosHucreleriSil.bas").read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        office = Office(folder)
        try:
            for language in (texts.TURKISH, texts.ENGLISH):
                for file, discharges in ((language["file"], False), (language["discharge_file"], True)):
                    if wanted and file not in wanted:
                        continue
                    plain, joined, work = folder / "plain.xls", folder / "joined.xls", folder / file[:-4]
                    work.mkdir()
                    make_sheets(office, language, plain, discharges)
                    vba_project.add_project(plain, joined, work, CODE_NAMES, macro)
                    save_again(office, joined, target / file)
                    print(target / file)
        finally:
            office.end()


if __name__ == "__main__":
    main()
