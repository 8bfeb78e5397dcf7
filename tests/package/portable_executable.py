"""What a Windows program says about itself: what it imports, how it is loaded, its resources."""
import re
import struct
import subprocess

SECONDS = 60
OBJDUMP = "x86_64-w64-mingw32-objdump"
ICON_GROUP, VERSION, MANIFEST = 14, 16, 24
FIXED_VERSION_MARK = struct.pack("<I", 0xFEEF04BD)

# Parts of every Windows 10 and 11 of 64 bits, Server Core aside.
SYSTEM_DLLS = {
    "comctl32.dll": "tree, tool bar, status bar",
    "comdlg32.dll": "dialogs for opening and saving",
    "gdi32.dll": "drawing",
    "kernel32.dll": "files, memory, processes",
    "msvcrt.dll": "the C runtime that mingw-w64 builds on; Windows uses it itself",
    "ole32.dll": "COM",
    "oleaut32.dll": "automation of Office",
    "shell32.dll": "opening files, choosing folders",
    "shlwapi.dll": "paths",
    "user32.dll": "windows",
}


def headers(program):
    done = subprocess.run([OBJDUMP, "-p", str(program)], check=True, timeout=SECONDS,
                          capture_output=True)
    return done.stdout.decode("utf-8", "replace")


def imported_dlls(program):
    return {name.lower() for name in re.findall(r"DLL Name: (\S+)", headers(program))}


def hardening_faults(program):
    text = headers(program)
    faults = [flag for flag in ("HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT")
              if not re.search(rf"^\s+{flag}$", text, re.M)]
    if "relocations stripped" in text:
        faults.append("relocations stripped")
    # Without relocations a program cannot be loaded at another address, whatever it says.
    table = re.search(r"^Entry 5 [0-9a-f]+ ([0-9a-f]+) Base Relocation", text, re.M)
    if not table or int(table[1], 16) < 100:
        faults.append("no relocations")
    if not re.search(r"^\s*reloc\s+\d+ offset", text, re.M):
        faults.append("no relocation entry")
    return faults


class Resources:
    """The resources of a program by the numbers of their types."""

    def __init__(self, program):
        self._content = program.read_bytes()
        self.types = {}
        self._find_section()
        for kind, offset in self._entries(0):
            for _, names in self._entries(offset):
                for _, leaf in self._entries(names):
                    address, size = struct.unpack_from("<II", self._section, leaf)
                    start = address - self._address
                    self.types.setdefault(kind, []).append(self._section[start:start + size])

    def _find_section(self):
        header = struct.unpack_from("<I", self._content, 0x3C)[0]
        count, optional = struct.unpack_from("<H12xH", self._content, header + 6)
        for number in range(count):
            name, size, address, length, offset = struct.unpack_from(
                "<8sIIII", self._content, header + 24 + optional + 40 * number)
            if name.rstrip(b"\0") == b".rsrc":
                self._address = address
                self._section = self._content[offset:offset + length]
                return
        raise AssertionError("no resources")

    def _entries(self, offset):
        named, numbered = struct.unpack_from("<HH", self._section, offset + 12)
        for number in range(named + numbered):
            name, target = struct.unpack_from("<II", self._section, offset + 16 + 8 * number)
            yield name, target & 0x7FFFFFFF  # the top bit marks folders

    def file_version(self):
        found = self.types[VERSION][0]
        high, low = struct.unpack_from("<II", found, found.index(FIXED_VERSION_MARK) + 8)
        return high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF

    def version_texts(self):
        text = self.types[VERSION][0].decode("utf-16-le", "replace")
        return dict(re.findall(r"([A-Z][A-Za-z]{6,})\0+([^\0]+)\0", text))

    def icon_sizes(self):
        group = self.types[ICON_GROUP][0]
        count = struct.unpack_from("<H", group, 4)[0]
        return {group[6 + 14 * number] or 256 for number in range(count)}

    def manifest(self):
        return self.types[MANIFEST][0].decode("utf-8")
