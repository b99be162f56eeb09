#!/usr/bin/env python3
"""scripts/layers.py: does every include lie within what its library links?

A library sees its own files and those of the libraries in its LINK closure. A header belongs to the library that
builds the source of its name; one without a source belongs to the library that lists it, else to the logic of its
folder. Logic never includes a widget, links a library of windows or links QtWidgets.
"""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
WIDGETS = {file.name for file in Path("/usr/include").glob("*/qt6/QtWidgets/*")}


def libraries():
    """name -> (folder, listed files, LINK names)"""
    found = {}
    for cmake in sorted(ROOT.glob("src/**/CMakeLists.txt")):
        for kind, name, body in re.findall(r"vesk_(library|program)\(([\w-]+)\s+([^()]*)\)", cmake.read_text()):
            listed, links, into = [], [], None
            for word in body.replace("${PROJECT_SOURCE_DIR}/", "").split():
                if word in ("SOURCES", "LINK"):
                    into = listed if word == "SOURCES" else links
                elif into is not None:
                    into.append(word)
            found[name] = (cmake.parent, listed, links)
    return found


def closure(name, libs):
    seen, waiting = set(), [name]
    while waiting:
        lib = waiting.pop()
        if lib in seen:
            continue
        seen.add(lib)
        waiting += libs[lib][2] if lib in libs else []
    return seen


def owners(libs):
    """file below src -> library"""
    owner = {}
    for name, (folder, listed, _) in libs.items():
        for file in listed:
            path = folder / file
            owner[path] = name
            owner.setdefault(path.with_suffix(".h"), name)
    for header in sorted(ROOT.glob("src/**/*.h")):
        logic = [n for n, (folder, _, _) in libs.items() if folder == header.parent and not n.endswith("_windows")]
        if header not in owner and logic:
            owner[header] = logic[0]
    return owner


def main():
    libs = libraries()
    owner = owners(libs)
    sees = {name: closure(name, libs) for name in libs}
    faults = [] if WIDGETS else ["the headers of QtWidgets are not installed"]
    for name, (folder, _, links) in libs.items():
        windows = name.endswith("_windows") or name == "vesk4"
        if not windows and ("Qt6::Widgets" in sees[name] or any(lib.endswith("_windows") for lib in sees[name])):
            faults.append(f"{folder.relative_to(ROOT)}: {name} is logic and links windows")
    for path in sorted([*ROOT.glob("src/**/*.cpp"), *ROOT.glob("src/**/*.h")]):
        name = owner.get(path)
        if name is None:
            faults.append(f"{path.relative_to(ROOT)}: no library lists it")
            continue
        for number, line in enumerate(path.read_text().splitlines(), 1):
            where = f"{path.relative_to(ROOT)}:{number}"
            inner = re.match(r'#include "([^"]+)"', line)
            if inner:
                other = owner.get(ROOT / "src" / inner[1])
                if other is not None and other not in sees[name]:
                    faults.append(f"{where}: {name} includes {inner[1]} of {other}, which it does not link")
            widget = re.match(r"#include <(?:QtWidgets/)?(\w+)>", line)
            if widget and widget[1] in WIDGETS and "Qt6::Widgets" not in sees[name]:
                faults.append(f"{where}: {name} is logic and includes {widget[1]}")
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
