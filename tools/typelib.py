#!/usr/bin/env python3
"""Prepares interface descriptions for widl and finishes the type library that widl makes.

  typelib.py gather OUT.idl IN.idl ROOT   resolves #include lines below ROOT and writes Windows-1252,
                                          the code page in which type libraries hold their texts
  typelib.py finish LIB.tlb               puts blanks and date separators into the names of enumeration
                                          members, as designers show them, and blanks the time stamp, so
                                          that equal sources give equal files

widl cannot spell a name with a blank; the file format can hold one. In the description such a name is
written with underscores (Office_Blue). A name is taken for one when it holds an underscore and a lower
case letter and no other rule of the library puts underscores there (KN_..., LoadImage_From...).
BLANKED names the ones without a lower case letter. The members of ENUM_DATE_FORMAT are the formats themselves: dd/mm/yyyy is written ddSmmSyyyy, with T for a
hyphen and P for a point.
"""

import re
import struct
import sys
from pathlib import Path

INCLUDE = re.compile(r'^\s*#include\s+"([^"]+)"\s*$')
ENUM = re.compile(r"\benum\s+\w+\s*\{([^}]*)\}", re.S)
DATE_FORMAT = re.compile(r"[dmy]+(?:[STP][dmy]+)+")
BLANKED = {"NTSC_PAL", "CCIR_709"}
# Members whose names have underscores for their callers too.
KEPT = {"Scroll_Horizontal", "Scroll_Vertical", "Scroll_Both", "Scroll_None"}
DATE_SEPARATORS = str.maketrans("STP", "/-.")


def gather_text(path: Path, root: Path) -> str:
    lines = []
    for line in path.read_text(encoding="utf-8").splitlines():
        found = INCLUDE.match(line)
        lines.append(gather_text(root / found.group(1), root) if found else line)
    return "\n".join(lines) + "\n"


def gather(out: Path, source: Path, root: Path) -> None:
    out.write_bytes(gather_text(source, root).encode("cp1252"))


def shown_names(root: Path) -> dict:
    """Enumeration members whose name in the type library differs, each with that name."""
    text = gather_text(root / "server/kestrelon2012.idl", root)
    text = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)
    names = {}
    for body in ENUM.findall(text):
        for member in body.split(","):
            name = member.split("=")[0].strip()
            if DATE_FORMAT.fullmatch(name):
                names[name.encode()] = name.translate(DATE_SEPARATORS).encode()
            elif name in BLANKED or (name not in KEPT and "_" in name and re.search("[a-z]", name)):
                names[name.encode()] = name.replace("_", " ").encode()
    return names


def name_hash(name: bytes) -> int:
    """The system's name hash for US English (LHashValOfNameSys); folds case, W to V and Y to U."""
    value = 0x0DEADBEE
    for byte in name.upper().replace(b"W", b"V").replace(b"Y", b"U"):
        value = (value * 37 + byte) & 0xFFFFFFFF
    return value % 65599 & 0xFFFF


def member_names(root: Path) -> set:
    """Every member of every interface, as it is spelt."""
    text = gather_text(root / "server/kestrelon2012.idl", root)
    text = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)
    return set(re.findall(r"\b(?:HRESULT|void)\s+(\w+)\s*\(", text))


NAME_HASH, NAME_TABLE = 6, 7  # places in the segment directory


def segment(data: bytes, index: int) -> tuple:
    flags, type_count = struct.unpack_from("<i", data, 0x14)[0], struct.unpack_from("<i", data, 0x20)[0]
    directory = 0x54 + (4 if flags & 0x100 else 0) + 4 * type_count
    return struct.unpack_from("<ii", data, directory + 16 * index)


def finish(path: Path, root: Path) -> None:
    data = bytearray(path.read_bytes())
    if data[:4] != b"MSFT":
        sys.exit(f"{path}: not a type library")
    hash_at, hash_length = segment(data, NAME_HASH)
    table, length = segment(data, NAME_TABLE)
    if hash_length != 512:
        sys.exit(f"{path}: unexpected name hash table")
    wanted = shown_names(root)
    missing = {name.encode() for name in member_names(root)}
    chains = [-1] * 128
    position = 0
    while position < length:
        at = table + position
        word = struct.unpack_from("<I", data, at + 8)[0]
        size = word & 0xFF
        name = bytes(data[at + 12 : at + 12 + size])
        if word >> 16 != name_hash(name):
            sys.exit(f"{path}: the hash of {name!r} is not as expected; nothing changed")
        missing.discard(name)
        if name in wanted:
            name = wanted.pop(name)
            data[at + 12 : at + 12 + size] = name
        value = name_hash(name)
        struct.pack_into("<iI", data, at + 4, chains[value & 0x7F], (word & 0xFFFF) | value << 16)
        chains[value & 0x7F] = position
        position += 12 + (size + 3 & ~3)
    if wanted:
        sys.exit(f"{path}: names not found: {list(wanted)}")
    if missing:
        # The format keeps one spelling of a name for all letter cases, the first that was met.
        sys.exit(f"{path}: another name in the library differs only by case from {missing}")
    struct.pack_into("<128i", data, hash_at, *chains)
    stamp = re.search(rb"Created by WIDL version [^\0]*? at ([A-Z][a-z]{2} [^\0]{20})", data)
    if stamp:
        data[stamp.start(1) : stamp.end(1)] = b" " * (stamp.end(1) - stamp.start(1))
    path.write_bytes(data)


if __name__ == "__main__":
    if sys.argv[1] == "gather":
        gather(Path(sys.argv[2]), Path(sys.argv[3]), Path(sys.argv[4]))
    else:
        finish(Path(sys.argv[2]), Path(__file__).resolve().parent.parent)
