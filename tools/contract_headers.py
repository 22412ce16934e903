#!/usr/bin/env python3
"""Cuts the header that widl makes of the whole library into one for each interface description.

  contract_headers.py HEADER.h OUT_DIR IN.idl...

A source file that includes only what it needs is not compiled again when another class changes. OUT_DIR gets
NAME.h for each NAME.idl; a file whose text stays the same is not touched.
"""

import re
import sys
from pathlib import Path

PROLOGUE = """// Made by tools/contract_headers.py from {source}; edit that instead.
#pragma once

#include <rpc.h>
#include <rpcndr.h>
#include <windows.h>
#include <ole2.h>
#include <automation.h>
"""
# An enumeration whose names the system has already stands behind "#if 0".
SECTION = re.compile(r"^(?:(?:#if 0\n)?typedef enum (\w+) \{|/\*{70,}\n \* (\w+) (?:interface|dispinterface|coclass)$)", re.M)
DECLARED = re.compile(r"\b(?:enum|interface|dispinterface|coclass)\s+(\w+)\s*[{:]")
FORWARD = re.compile(r"^#ifndef (\w+)_FWD_DEFINED__\n.*?^#endif[^\n]*\n(?=\n)", re.M | re.S)
BODY_END = "#endif /* __Kestrelon2012_LIBRARY_DEFINED__ */"


def without_comments(text):
    return re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)


def sections(header):
    """(name, text) of all enumerations, interfaces and classes in their order."""
    body = header[: header.index(BODY_END)]
    starts = list(SECTION.finditer(body))
    for start, following in zip(starts, starts[1:] + [None]):
        yield start[1] or start[2], body[start.start() : following.start() if following else len(body)]


def words(text):
    return set(re.findall(r"\w+", text))


class Part:
    """What one description declares."""

    def __init__(self, source):
        self.source = source
        self.names = set(DECLARED.findall(without_comments(source.read_text(encoding="utf-8"))))
        self.text = ""

    def needed(self, parts):
        """The other parts whose enumerations or interfaces this one mentions."""
        used = words(self.text)
        return [p for p in parts if p is not self and p.names & used]

    def header(self, forwards, parts):
        includes = "".join(f'#include "contract/{p.source.stem}.h"\n' for p in self.needed(parts))
        own = "".join(forwards[name] + "\n" for name in sorted(self.names & forwards.keys()))
        return (PROLOGUE.format(source=self.source.name) + includes + "\n" + own +
                'extern "C" {\n' + self.text + "}\n")


def write_changed(path, text):
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def main():
    header, out = Path(sys.argv[1]).read_text(encoding="utf-8"), Path(sys.argv[2])
    parts = [Part(Path(path)) for path in sys.argv[3:]]
    owner = {name: part for part in parts for name in part.names}
    for name, text in sections(header):
        if name not in owner:
            sys.exit(f"{name} is in no description given")
        owner[name].text += text
    # The guard of _X is ___X_FWD_DEFINED__: widl puts two underscores before a name.
    forwards = {match[1][2:]: match[0] for match in FORWARD.finditer(header)}
    out.mkdir(parents=True, exist_ok=True)
    for part in parts:
        write_changed(out / f"{part.source.stem}.h", part.header(forwards, parts))


if __name__ == "__main__":
    main()
