#!/usr/bin/env python3
"""Makes vb.ini, the control file with the keyword lists, from the built-in lists:

    data/make_vb_ini.py [TARGET]      (default: data/vb.ini, which is committed)

Each list keeps its entries and their order, and gets headings where another group begins.
Tested by tests/package/run.py and tests/unit/engine/engine_test.cpp.
"""
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
LIMIT = 65000  # characters that are read of a section
LINE_WIDTH = 78

HEAD = """\
TINTLINE: Worte, die farbig werden

[Keywords 1] sind reservierte Worte und eingebaute Funktionen, [Keywords 2]
Konstanten und Objektnamen. Die Farben dazu heißen in TINTLINE
"Reservierte Worte" und "Parameter".

Eigene Worte kommen in die Gruppe "Eigene Worte" eines der beiden Abschnitte:
- ein Wort je Zeile, ohne Leerzeichen davor oder dahinter;
- Groß- und Kleinschreibung zählt: "Dim" wird gefunden, "dim" nicht;
- nur Worte aus den Buchstaben A bis Z und "$" werden gesucht;
- steht ein Wort in beiden Abschnitten, gilt der erste.

Leere Zeilen und Zeilen, die mit ";" beginnen, haben keine Wirkung. Von einem
Abschnitt werden höchstens 65000 Zeichen gelesen. Nach einer Änderung TINTLINE
neu starten. Ohne diese Datei gelten die eingebauten Listen, die ihr gleichen.
"""

# A group: its first entry and its heading.
GROUPS = {
    "keywords1.txt": [
        ("Abs", "Anweisungen, Operatoren, Datentypen und Funktionen der Sprache"),
        ("Any", "Köpfe von Moduldateien"),
        ("AlignConstants", "Klassen, Steuerelemente und Aufzählungen von Visual Basic"),
        ("ActiveControl", "Eigenschaften und Methoden: Programm, Drucker, Dateien, Ablage"),
        ("AccessKeyPress", "Eigenschaften, Methoden, Ereignisse von Formularen und Feldern"),
        ("AllowColumnReorder", "Listenansicht, Raster, Kalender, Register, Dialoge"),
        ("ActiveConnection", "Datenbanken"),
        ("ActivateMicrosoftApp", "Methoden von Access, Excel und Word"),
        ("MsoAlignCmd", "Aufzählungen von Office"),
        ("WdAlertLevel", "Aufzählungen von Word"),
        ("XlApplicationInternational", "Aufzählungen von Excel"),
    ],
    "keywords2.txt": [
        ("True", "Wahrheitswerte, Fensternummer"),
        ("SW_HIDE ", "Fensterzustände (wegen des Unterstrichs nie farbig)"),
        ("ActiveCell", "Objekte und Sammlungen von Office und der Entwicklungsumgebung"),
        ("AddToRecentFiles", "Benannte Argumente"),
        ("vbAbort", "Konstanten von Visual Basic"),
        ("msoAnchorBottom", "Konstanten von Office"),
        ("xlAnd", "Konstanten von Excel"),
        ("wdActiveEndAdjustedPageNumber", "Konstanten von Word"),
    ],
}


def heading(text):
    return ["", f"; --- {text} ".ljust(LINE_WIDTH, "-")]


def section(name, file):
    headings = dict(GROUPS[file])
    lines = [f"[{name}]", *heading("Eigene Worte")]
    entries = (HERE / file).read_bytes().decode("cp1252").removesuffix("\r\n").split("\r\n")
    for entry in entries:
        if entry in headings:
            lines += heading(headings.pop(entry))
        lines.append(entry)
    if headings:
        sys.exit(f"{file} has no entry {', '.join(headings)}")
    size = sum(len(line) + 1 for line in lines[1:] if line)
    if size > LIMIT:
        sys.exit(f"[{name}] has {size} characters, at most {LIMIT} are read")
    return [*lines, ""]


def main():
    lines = [f"; {line}".rstrip() for line in HEAD.splitlines()] + [""]
    lines += section("Keywords 1", "keywords1.txt") + section("Keywords 2", "keywords2.txt")
    text = "\r\n".join(lines[:-1]) + "\r\n"
    target = Path(sys.argv[1]) if len(sys.argv) > 1 else HERE / "vb.ini"
    target.write_bytes(text.encode("cp1252"))


main()
