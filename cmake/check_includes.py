#!/usr/bin/env python3
"""Fails when an include runs up the floors, or Windows shows outside its files.

The floors are read from the tintline_floor(...) calls of CMakeLists.txt. Run from anywhere:
cmake/check_includes.py; exit code 0 means that every include keeps the rules.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
# Folders no library is made of. They may use everything, themselves and what tests share.
TOP = ("tests", "bench", "fuzz")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
# The system headers of Windows by the beginning of their names, COM and shell included.
WINDOWS = re.compile(
    r"(windows|windef|winbase|winuser|winsock|wing|winnls|winerror|shellapi|shlobj|shlwapi|"
    r"shobj|comm|ole|obj|unknwn|servprov|urlmon|rich|exdisp|mshtm|htmlhelp|uxtheme|io\.h|direct\.h)",
    re.IGNORECASE)


def read_floors():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    calls = re.findall(r"^\s*tintline_floor\(([\w ]+)\)", text, re.MULTILINE)
    floors = {name: set(below) for name, *below in (call.split() for call in calls)}
    return floors | {top: {*floors, top, "tests", "bench"} for top in TOP}


def may_see_windows(path):
    return "win32" in path.parts[:2] or path.stem.endswith("_win32")


def faults_of(path, floors):
    text = (ROOT / path).read_text(encoding="utf-8")
    for match in INCLUDE.finditer(text):
        kind, name = match.groups()
        line = text.count("\n", 0, match.start(2)) + 1
        folder = name.split("/")[0]
        here = path.parts[0]
        if kind == "<":
            if WINDOWS.match(name) and not may_see_windows(path):
                yield line, f"<{name}> belongs into a folder win32/ or a *_win32 file"
        elif not (ROOT / name).is_file():
            yield line, f'"{name}" is not a file from the project root'
        elif folder != here and folder not in floors[here]:
            yield line, f"{here}/ does not stand on {folder}/"


def main():
    floors = read_floors()
    files = [path.relative_to(ROOT) for folder in floors for path in (ROOT / folder).rglob("*")
             if path.suffix in (".h", ".cpp")]
    if not files or "base" not in floors:
        sys.exit("check_includes.py: found no floors or no sources")
    faults = [f"{path}:{line}: {text}" for path in sorted(files)
              for line, text in faults_of(path, floors)]
    print("\n".join(faults) or f"{len(files)} files keep the rules")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
