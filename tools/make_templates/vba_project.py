"""Puts a VBA project beside the Workbook stream of an .xls file ([MS-OVBA], uncompressed cache left out)."""

import pathlib
import struct
import subprocess

CODE_PAGE = "cp1254"
DOCUMENT_CLASSES = {"ThisWorkbook": "0{00020819-0000-0000-C000-000000000046}"}
OBPROJ, CODEPAGE, BOUNDSHEET = 0xD3, 0x42, 0x85
SHEET_CLASS = "0{00020820-0000-0000-C000-000000000046}"


def compress(data):
    """A compressed container ([MS-OVBA] 2.4.1) of literal tokens only; the streams here are shorter than a chunk."""
    tokens = bytearray()
    for start in range(0, len(data), 8):
        tokens += b"\0" + data[start : start + 8]
    if len(tokens) > 4096 or len(data) > 4096:
        raise ValueError("the stream needs more than one chunk")
    header = 0xB000 | (len(tokens) + 2 - 3)
    return b"\x01" + struct.pack("<H", header) + bytes(tokens)


def record(number, payload):
    return struct.pack("<HI", number, len(payload)) + payload


def text_pair(number, unicode_number, text):
    return record(number, text.encode(CODE_PAGE)) + record(unicode_number, text.encode("utf-16-le"))


def module_records(name, document):
    return (
        record(0x19, name.encode(CODE_PAGE))
        + record(0x47, name.encode("utf-16-le"))
        + text_pair(0x1A, 0x32, name)  # stream name
        + text_pair(0x1C, 0x48, "")  # description
        + record(0x31, struct.pack("<I", 0))  # the source starts the stream
        + record(0x1E, struct.pack("<I", 0))  # help context
        + record(0x2C, struct.pack("<H", 0xFFFF))  # cookie
        + record(0x22 if document else 0x21, b"")
        + record(0x2B, b"")
    )


def reference_records(name, library):
    return text_pair(0x16, 0x3E, name) + record(0x0D, struct.pack("<I", len(library)) + library.encode() + bytes(6))


def dir_stream(modules):
    references = reference_records(
        "stdole", "*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#stdole2.tlb#OLE Automation"
    )
    information = (
        record(0x01, struct.pack("<I", 1))  # 32-bit system
        + record(0x02, struct.pack("<I", 0x409))
        + record(0x14, struct.pack("<I", 0x409))
        + record(0x03, struct.pack("<H", 1254))
        + record(0x04, b"VBAProject")
        + text_pair(0x05, 0x40, "")
        + text_pair(0x06, 0x3D, "")
        + record(0x07, struct.pack("<I", 0))
        + record(0x08, struct.pack("<I", 0))
        + struct.pack("<HIIH", 0x09, 4, 1, 1)  # version 1.1; its size field does not count the minor number
        + text_pair(0x0C, 0x3C, "")
    )
    listing = record(0x0F, struct.pack("<H", len(modules))) + record(0x13, struct.pack("<H", 0xFFFF))
    entries = b"".join(module_records(name, document) for name, document, _ in modules)
    return information + references + listing + entries + record(0x10, b"")


def document_source(name):
    lines = [
        f'Attribute VB_Name = "{name}"',
        f'Attribute VB_Base = "{DOCUMENT_CLASSES.get(name, SHEET_CLASS)}"',
        "Attribute VB_GlobalNameSpace = False",
        "Attribute VB_Creatable = False",
        "Attribute VB_PredeclaredId = True",
        "Attribute VB_Exposed = True",
        "",
    ]
    return "\r\n".join(lines)


def project_stream(modules):
    lines = ['ID="{2E6C8F10-5B1D-4B57-9C6A-3A1F6D0B7C11}"']
    lines += [f"{'Document' if doc else 'Module'}={name}{'/&H00000000' if doc else ''}" for name, doc, _ in modules]
    lines += ['Name="VBAProject"', 'HelpContextID="0"', 'VersionCompatible32="393222000"', 'CMG="0000"', 'DPB="0000"']
    lines += ['GC="0000"', "", "[Host Extender Info]", "&H00000001={3832D640-CF90-11CF-8E43-00A0C911005A};VBE;&H00000000"]
    lines += ["", "[Workspace]"] + [f"{name}=0, 0, 0, 0, C" for name, _, _ in modules] + [""]
    return "\r\n".join(lines).encode(CODE_PAGE)


def project_wm_stream(modules):
    names = b"".join(n.encode(CODE_PAGE) + b"\0" + n.encode("utf-16-le") + b"\0\0" for n, _, _ in modules)
    return names + b"\0\0"


def write_project(folder, sheet_code_names, macro_source):
    """Writes the project's streams as files of a folder."""
    modules = [(name, True, document_source(name)) for name in ["ThisWorkbook", *sheet_code_names]]
    macro_name = macro_source.split('"')[1]
    modules.append((macro_name, False, "\r\n".join(macro_source.splitlines()) + "\r\n"))
    vba = folder / "_VBA_PROJECT_CUR" / "VBA"
    vba.mkdir(parents=True)
    (vba.parent / "PROJECT").write_bytes(project_stream(modules))
    (vba.parent / "PROJECTwm").write_bytes(project_wm_stream(modules))
    (vba / "_VBA_PROJECT").write_bytes(bytes.fromhex("CC61FFFF000000"))
    (vba / "dir").write_bytes(compress(dir_stream(modules)))
    for name, _, source in modules:
        (vba / name).write_bytes(compress(source.encode(CODE_PAGE)))


def announce_project(workbook):
    """Adds the record by which a Workbook stream says that a VBA project stands beside it."""
    announcement = struct.pack("<HH", OBPROJ, 0)
    result, at, added = bytearray(), 0, False
    while at < len(workbook):
        number, length = struct.unpack_from("<HH", workbook, at)
        content = bytearray(workbook[at : at + 4 + length])
        if number == BOUNDSHEET:  # its first field is the position of the sheet in the stream
            position = struct.unpack_from("<I", content, 4)[0]
            struct.pack_into("<I", content, 4, position + len(announcement))
        result += content
        if number == CODEPAGE and not added:
            result += announcement
            added = True
        at += 4 + length
    if not added:
        raise ValueError("the Workbook stream names no code page")
    return bytes(result)


def add_project(plain, result, work, sheet_code_names, macro_source):
    """Makes `result` of the workbook `plain` and a VBA project; `work` is an empty folder to work in."""
    streams = subprocess.run(["gsf", "list", plain], check=True, capture_output=True, text=True).stdout
    if " Workbook" not in streams:
        raise ValueError(f"{plain} holds no Workbook stream")
    workbook = subprocess.run(["gsf", "cat", plain, "Workbook"], check=True, capture_output=True).stdout
    (work / "Workbook").write_bytes(announce_project(workbook))
    write_project(work, sheet_code_names, macro_source)
    parts = ["Workbook", "_VBA_PROJECT_CUR"]
    command = ["gsf", "createole", str(pathlib.Path(result).resolve()), *parts]
    subprocess.run(command, check=True, cwd=work, capture_output=True)
