#!/usr/bin/env python3
"""What stands in the library, by part: size_table.py MAP [LIBRARY] [--into NOTE]

Reads the linker's map and prints a table in Markdown: one row a folder of our sources, and what comes with them from
the tool chain. Sizes are bytes of code and data; tables of relocations and imports, which the linker makes, are rows of
their own. With --into the table takes the place of what follows the heading "## Table" of a note. With --check it prints nothing but what must not be there and fails if anything is: streams, locales, files,
floating text, names of exceptions for a console.
"""
import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("base", "imaging", "services", "grid", "frame", "controls", "chrome", "server")
LOADED = (".text", ".data", ".rdata", ".eh_frame", ".idata", ".tls", ".CRT", ".edata")
WHOLE = {".rsrc": "resources", ".reloc": "relocations"}
HEADING = "## Table\n\n"
CONTRIBUTION = re.compile(r"^ (\.?[^\s*]\S*)?\s+0x[0-9a-f]+\s+(0x[0-9a-f]+) (\S.*)$")
OUTPUT = re.compile(r"^(\.\S+)(?:\s+0x[0-9a-f]+\s+(0x[0-9a-f]+))?")
MEMBER = re.compile(r"([^/]+)\.a\(([^)]+)\)$")
# Members of the standard library that have no business in a control.
UNWANTED = re.compile(r"^(ios|ios-inst|ios_init|iostream|globals_io|locale|locale_init|locale-inst|localename|codecvt|ctype|"
                      r"istream\S*|ostream\S*|s?stream\S*|fstream\S*|fs_\w+|cow-fs_\w+|dir|floating_\w+|regex|format\S*|"
                      r"cp-demangle|vterminate)\.o$")


def contributions(lines):
    """(output section, bytes, origin) of everything that was linked."""
    lines = iter(lines)
    for line in lines:
        if line.startswith("Linker script and memory map"):
            break
    output = ""
    for line in lines:
        if start := OUTPUT.match(line):
            output = start[1]
            if output in WHOLE and start[2]:
                yield output, int(start[2], 16), WHOLE[output]
        elif found := CONTRIBUTION.match(line):
            if output in LOADED:
                yield output, int(found[2], 16), found[3]


def source_folders():
    """Folder of each source by the name of its object; (library, name) where two share it."""
    folders = {}
    for top in FOLDERS:
        for path in sorted((ROOT / top).rglob("*.c*")):
            folder = str(path.parent.relative_to(ROOT)).split("/")
            folders.setdefault(path.name, "/".join(folder[:2]))
    return folders


def part_of(origin, folders):
    if origin in WHOLE.values():
        return origin
    member = MEMBER.search(origin)
    if not member:
        return "server" if "kestrelon2012.dir" in origin else "start of the library"
    archive, name = member[1], member[2]
    if archive == "libkestrelon_ids":
        return "identifiers"
    if archive.startswith("libkestrelon"):
        return folders.get(name.removesuffix(".obj"), "other of ours")
    if re.search(r"\.dll|^d\d|lib\w+s\d+\.o$|lib\w+[ht]\.o$", name):
        return "imports"
    return {"libstdc++": "C++ library", "libgcc": "compiler support", "libgcc_eh": "compiler support",
            "libuuid": "identifiers"}.get(archive, "C run time")


def table(found, library):
    """The lines of the table."""
    rows = collections.defaultdict(collections.Counter)
    folders = source_folders()
    for section, size, origin in found:
        rows[part_of(origin, folders)][{".text": "code", ".eh_frame": "unwinding"}.get(section, "data")] += size
    yield "| Part | code | data | unwinding | KB |"
    yield "|---|--:|--:|--:|--:|"
    for part, sizes in sorted(rows.items(), key=lambda row: -row[1].total()):
        if part in WHOLE.values():
            sizes = collections.Counter(total=sizes.total())
        yield (f"| {part} | " + " | ".join(f"{sizes[kind]:,}" for kind in ("code", "data", "unwinding")) +
               f" | {sizes.total() / 1024:,.1f} |")
    yield f"| **all** | | | | {sum(row.total() for row in rows.values()) / 1024:,.1f} |"
    if library:
        yield f"\nThe file has {library.stat().st_size:,} bytes."


def unwanted(found):
    members = {(match[1], match[2]) for _, _, origin in found if (match := MEMBER.search(origin))}
    return sorted(f"{archive}: {name}" for archive, name in members
                  if archive == "libstdc++" and UNWANTED.match(name))


def main(arguments):
    note = None
    if "--into" in arguments:
        at = arguments.index("--into")
        note = pathlib.Path(arguments[at + 1])
        arguments = arguments[:at] + arguments[at + 2:]
    paths = [pathlib.Path(a) for a in arguments if not a.startswith("--")]
    found = list(contributions(paths[0].read_text(encoding="utf-8", errors="replace").splitlines()))
    if not any(section == ".text" for section, _, _ in found):
        sys.exit(f"{paths[0]}: no map of a linked library")
    if "--check" not in arguments:
        lines = "\n".join(table(found, paths[1] if len(paths) > 1 else None)) + "\n"
        print(lines, end="")
        if note:
            head = note.read_text(encoding="utf-8").split(HEADING)[0]
            note.write_text(head + HEADING + lines, encoding="utf-8")
        return 0
    names = unwanted(found)
    print("\n".join(names))
    return 1 if names else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
