#!/usr/bin/env python3
"""Makes codepages.bin, the characters of the code pages that the program can read:

    data/make_codepages.py [TARGET]      (default: data/codepages.bin, which is committed)

All numbers are little-endian. The file begins with the number of pages (u32) and for each page
its number and where its table begins (u32 each). A table has an entry for each byte from 0x80
to 0xFF: its character (u16), 0xFFFD where it is none, 0 where it is the first byte of two. When
it is the first of two in any place, a second table follows: for each byte from 0x80 to 0xFF the
first second byte, the number of them (u16 each) and where their characters begin (u32).
Tested by tests/unit/vb/text_test.cpp.
"""
import struct
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
NONE = 0xFFFD

PAGES = {page: f"cp{page}" for page in (437, 850, 852, 855, 857, 858, 860, 861, 862, 863, 865,
                                        866, 869, 874, 932, 949, 950, *range(1250, 1259))}
PAGES |= {936: "gbk", 20866: "koi8_r", 21866: "koi8_u",
          10000: "mac_roman", 10006: "mac_greek", 10007: "mac_cyrillic", 10010: "mac_romanian",
          10029: "mac_latin2", 10079: "mac_iceland", 10081: "mac_turkish", 10082: "mac_croatian"}
PAGES |= {28590 + part: f"iso8859_{part}" for part in (*range(1, 10), 13, 15)}
# What the pages have on Windows and Python's codecs lack.
MORE = {936: {b"\x80": 0x20AC}}


def character(page, code):
    if code in MORE.get(page, {}):
        return MORE[page][code]
    try:
        text = code.decode(PAGES[page])
    except UnicodeDecodeError:
        return NONE
    return ord(text) if len(text) == 1 and ord(text) < 0x10000 else NONE


def row(page, lead):
    """The characters that begin with a byte: their first second byte and they themselves."""
    found = {trail: character(page, bytes([lead, trail])) for trail in range(0x30, 0x100)}
    used = [trail for trail, value in found.items() if value != NONE]
    return (used[0], [found[trail] for trail in range(used[0], used[-1] + 1)]) if used else (0, [])


def table(page, begin):
    """The table of a page as bytes, for a place in the file."""
    single = [character(page, bytes([code])) for code in range(0x80, 0x100)]
    rows = [row(page, code) if single[code - 0x80] == NONE else (0, []) for code in range(0x80, 0x100)]
    first = [0 if characters else value for value, (_, characters) in zip(single, rows)]
    result = struct.pack("<128H", *first)
    if not any(characters for _, characters in rows):
        return result
    at = begin + len(result) + 128 * 8
    heads = cells = b""
    for trail, characters in rows:
        heads += struct.pack("<HHI", trail, len(characters), at + len(cells))
        cells += struct.pack(f"<{len(characters)}H", *characters)
    return result + heads + cells


def main():
    begin = 4 + 8 * len(PAGES)
    heads, tables = struct.pack("<I", len(PAGES)), b""
    for page in sorted(PAGES):
        heads += struct.pack("<II", page, begin + len(tables))
        tables += table(page, begin + len(tables))
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "codepages.bin"
    target.write_bytes(heads + tables)


main()
