"""Whole projects, documented by the command line: which modules they are made of, which pages and
data are written, and what is told. Run by tests/cli/run.py. What pages say is tested by
tests/unit/site, how they look by tests/browser/run.py."""
import csv
import io
import json
import pathlib

from tests.support.checks import equal, holds, test

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = ["aufrufe.htm", "index.htm", "kennzahlen.htm", "namen.htm", "unbenutzt.htm"]
FORM = b"VERSION 5.00\r\nBegin VB.Form Maske\r\nEnd\r\nPrivate Sub Form_Load()\r\n  Rechne\r\nEnd Sub\r\n"


def modules(box, below="out"):
    """The pages of modules; all others are there, too."""
    names = box.names(below)
    equal([name for name in names if "/" not in name], PAGES)
    return [name.removeprefix("module/") for name in names if "/" in name]


@test
def a_project_file_says_which_modules_there_are(box):
    box.posix_only()  # elsewhere case never counts
    box.put("app/Rechnung.vbp", "Type=Exe\r\nName=\"Größe\"\r\nModule=A; ..\\SHARED\\a.BAS\r\n"
            "Form=sub\\Maske.frm\r\nModule=X; Weg.bas\r\nModule=Y; \\\\server\\share\\y.bas\r\n"
            "Module=Z; ..\\geheim\r\nModule=A; ..\\Shared\\A.bas\r\n".encode("cp1252"))
    box.put("Shared/A.bas", b"Public Sub Rechne()\r\nEnd Sub\r\n")
    box.put("app/sub/Maske.frm", FORM)
    box.put("geheim", b"x")
    box.put("app/daneben.bas")
    told = ["app/Weg.bas: Datei nicht gefunden", "//server/share/y.bas: ", "app/../geheim: "]
    box.run("--project", "app/Rechnung.vbp", "-d", "out", code=1, err=told)
    equal(modules(box), ["_/Shared/A.htm", "sub/Maske.htm"])
    holds(box.get("out/module/sub/Maske.htm"), b'href="../_/Shared/A.htm#Rechne"')
    holds(box.get("out/index.htm").decode("utf-8"), "<h1>Größe</h1>", "Weg.bas: Datei nicht gefunden")
    box.run("--project", "--lang", "en", "app/Rechnung.vbp", "-d", "out", code=1, err=told)
    holds(box.get("out/index.htm"), b"Weg.bas: file not found")
    box.run("--project", ".", "-d", "all", code=1, err=told)  # what it does not list is another one
    equal(modules(box, "all"), ["Shared/A.htm", "app/daneben.htm", "app/sub/Maske.htm"])
    holds(box.get("all/index.htm").decode("utf-8"), "<h2>Größe</h2>", "<h2>app</h2>")


@test
def only_what_changed_is_written_and_nothing_deleted(box):
    for name in ("a/M.bas", "a/M.cls", "b/m.bas", "index.bas"):
        box.put(f"src/{name}", f"Sub {name[0]}()\r\n  x = 1\r\nEnd Sub\r\n".encode())
    box.run("--project", "src", "-d", "out")
    pages = ["a/M.bas.htm", "a/M.cls.htm", "b/m.htm", "index.htm"]
    equal(modules(box), pages)

    def times():
        return {name: (box.folder / "out" / name).stat().st_mtime_ns for name in box.names("out")}

    before = times()
    box.run("--project", "src", "-d", "out")
    equal(times(), before)
    box.put("src/b/m.bas", b"Sub b()\r\n  x = 2\r\nEnd Sub\r\n")
    (box.folder / "src/index.bas").unlink()
    box.run("--project", "src", "-d", "out", err=["index.htm: gehört zu keinem Modul mehr"])
    equal(modules(box), pages)
    changed = {name for name, time in times().items() if time != before[name]}
    assert "module/b/m.htm" in changed and "module/a/M.bas.htm" not in changed, changed


@test
def each_link_of_a_large_site_lands(box):
    for number in range(300):
        calls = "".join(f"  P{(number * 7 + i) % 300}\r\n" for i in range(5))
        box.put(f"src/{number % 3}/M{number}.bas",
                f"Public Sub P{number}()\r\n{calls}End Sub\r\nPrivate a{number}\r\n".encode())
    box.run("--project", "src", "-d", "out")
    equal(len(modules(box)), 300)
    box.run("--check-links", "out")
    (box.folder / "out/module/0/M3.htm").write_bytes(b"<a id=P3><a href=../../index.htm#no>")
    lines = box.run("--check-links", "out", code=1, stderr=-2).decode("utf-8").splitlines()
    holds("\n".join(lines).replace("\\", "/"), "out/module/0/M3.htm: Zeile 1: ../../index.htm#no führt in eine Datei ohne",
          "out/namen.htm:", "#a3 führt")
    (box.folder / "out/module/0/M3.htm").unlink()
    holds(box.run("--check-links", "out", code=1, stderr=-2).decode("utf-8"),
          "module/0/M3.htm führt zu keiner Datei")
    box.run("--check-links", "src", code=1, err=["src: enthält keine HTML-Seiten"])


@test
def each_project_of_an_office_file_is_one(box):
    box.put("src/Mappe.xlsm", (ROOT / "tests/golden/office/Mappe.xlsm").read_bytes())
    box.put("src/daneben.bas", b"Sub Allein()\r\nEnd Sub\r\n")
    box.run("--project", "src", "-d", "out")
    pages = [f"Mappe.xlsm/{name}.htm" for name in ("Eingabe", "Kunde", "Modul1", "Tabelle1")]
    equal(modules(box), [*pages, "daneben.htm"])
    holds(box.get("out/index.htm"), b"<h2>Mappe.xlsm</h2>", b"<h2>src</h2>")
    box.run("--check-links", "out")


@test
def data_of_a_project(box):
    box.put("src/=A.bas", "' \"Größe\", mehr\r\nSub [=cmd|x]()\r\nB.T\r\nEnd Sub".encode("cp1252"))
    box.put("src/B.bas", b"Sub T()\r\nEnd Sub")
    data = json.loads(box.run("--project", "src", "--format", "json"))
    equal([module["name"] for module in data["modules"]], ["=A", "B"])
    equal([name["name"] for name in data["names"]], ["=cmd|x", "T"])
    equal(data["references"], [{"module": 0, "line": 3, "procedure": 0, "name": 1}])
    equal(data["procedures"][0]["description"], "\"Größe\", mehr")
    box.run("--project", "src", "--format", "json", "-d", "out")
    equal(json.loads(box.get("out/projekt.json")), data)
    box.run("--project", "src", "--format", "csv", "-d", "out")
    rows = list(csv.DictReader(io.StringIO(box.get("out/prozeduren.csv").decode("utf-8"))))
    equal([(row["module"], row["name"], row["description"]) for row in rows],
          [("'=A", "'=cmd|x", "\"Größe\", mehr"), ("B", "T", "")])


@test
def what_would_be_written_is_told_and_not_done(box):
    box.put("a.bas")
    told = box.run("--project", "--dry-run", "-d", "out", "a.bas").decode("utf-8")
    equal(sorted(told.replace("\\", "/").splitlines()),
          sorted(f"a.bas -> out/{page}" for page in ("module/a.htm", *PAGES)))
    equal(box.run("--project", "--dry-run", "--format", "json", "a.bas"),
          b"a.bas -> Standardausgabe\n")
    box.run("--project", "--check", "-d", "out", "a.bas", "b.bas", code=1, err=["b.bas: "])
    equal(box.names(), ["a.bas"])


@test
def what_does_not_go_with_projects(box):
    box.put("a.bas")
    for arguments, told in ((["--project", "a.bas"], "--project braucht --output-dir"),
                            (["--format", "csv", "a.bas"], "gibt es nur mit --project"),
                            (["--project", "--format", "rtf", "-d", "o", "a.bas"], "geht nicht mit"),
                            (["--project", "--lines", "1", "-d", "o", "a.bas"], "--lines geht nicht"),
                            (["--project", "--list", "-d", "o", "a.bas"], "--list geht nicht"),
                            (["--check-links", "-d", "o", "."], "geht nicht mit --check-links"),
                            (["--project", "--format", "json", "-o", "a.bas", "a.bas"],
                             "würde a.bas überschreiben"),
                            (["--project", "--mode", "classic", "-d", "o", "a.bas"], "--mode exact")):
        box.run(*arguments, code=2, err=[told])
    equal(box.names(), ["a.bas"])
