#!/usr/bin/env python3
"""Writes base/letter_runs.h: upper-casing and the folding of case and accents, as runs, from the Unicode data
of Python. Run it again when a newer Unicode matters: tools/letter_tables.py > base/letter_runs.h"""
import unicodedata

MARKS = range(0x300, 0x370)  # combining accents
# Scripts with case, and the letters that decompose into them; others are compared as they are.
PAGES = [0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x10, 0x1C, 0x1D, 0x1E, 0x1F, 0x21, 0x24, 0x2C, 0x2D, 0xA6, 0xA7, 0xAB, 0xFF]


def single(text, otherwise):
    """The one unit of a mapping; letters that would grow stay what they are."""
    return ord(text) if len(text) == 1 and ord(text) < 0x10000 else otherwise


def upper(code):
    return single(chr(code).upper(), code)


def fold(code):
    if code in MARKS:
        return 0
    if code == 0x3C2:  # the sigma that ends a word
        return 0x3C3
    base = "".join(c for c in unicodedata.normalize("NFD", chr(code)) if ord(c) not in MARKS)
    letter = single(base, code)
    return single(chr(letter).lower(), letter)


def runs(mapping):
    """(first, count, step, target, target step): as many codes a run as one arithmetic rule covers."""
    pairs = [(page << 8 | low, mapping(page << 8 | low)) for page in PAGES for low in range(256)]
    pairs = [pair for pair in pairs if pair[0] != pair[1]]
    at = 0
    while at < len(pairs):
        best = (1, 0, 0)
        for step in (1, 2):
            for target_step in (0, 1, 2):
                end = at
                while end + 1 < len(pairs) and pairs[end + 1] == (pairs[end][0] + step, pairs[end][1] + target_step):
                    end += 1
                best = max(best, (end - at + 1, step, target_step), key=lambda run: run[0])
        yield pairs[at][0], best[0], best[1], pairs[at][1], best[2]
        at += best[0]


def write(name, mapping):
    print(f"inline constexpr LetterRun {name}[] = {{")
    print(",\n".join("{0x%X,%d,%d,0x%X,%d}" % run for run in runs(mapping)))
    print("};")


print("// Written by tools/letter_tables.py from Unicode %s. Not for editing." % unicodedata.unidata_version)
print("""#pragma once

#include <cstdint>

namespace kestrelon::detail {

/// `count` codes from `first`, `step` apart, become those from `target`, `target_step` apart. A target
/// of 0 drops the character.
struct LetterRun {
  uint16_t first, count, step, target, target_step;
};
""")
write("kUpperRuns", upper)
write("kFoldRuns", fold)
print("\n}  // namespace kestrelon::detail")
