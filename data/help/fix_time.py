#!/usr/bin/env python3
"""Puts a number of the contents where a compiled help file has the time of its making:

    data/help/fix_time.py FILE.chm

Equal contents then give equal bytes, and a viewer still sees that a file is another one.
Tested by tests/help/run.py.
"""
import re
import struct
import sys
import zlib
from pathlib import Path

HEADER_TIME = 16  # behind the mark "ITSF", version, size and a constant, four bytes each
SYSTEM_TIME = re.compile(rb"\x0a\0\x04\0(....)\x09\0..HHA Version", re.S)


def main():
    path = Path(sys.argv[1])
    content = bytearray(path.read_bytes())
    found = list(SYSTEM_TIME.finditer(content))
    if not content.startswith(b"ITSF") or len(found) != 1:
        sys.exit(f"{path}: not laid out as chmcmd does it")
    for offset in (HEADER_TIME, found[0].start(1)):
        content[offset:offset + 4] = bytes(4)
    number = struct.pack("<I", zlib.crc32(content))
    for offset in (HEADER_TIME, found[0].start(1)):
        content[offset:offset + 4] = number
    path.write_bytes(content)


main()
