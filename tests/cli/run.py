"""Drives the command line as a process: usage, files, streams and every failure. What a conversion
gives is in tests/golden.

    python3 -m tests.cli.run --tintline COMMAND... [--only PART-OF-A-NAME]

COMMAND may be several words (a runner and the Windows program). Prints each failure and, last,
"N passed, N failed, N skipped".
"""
import argparse
import json
import os
import re
import resource
import signal
import subprocess
import sys
import time
from pathlib import Path

import tests.cli.project  # its tests run with these
from tests.cli.box import MODULE, MODULE_LINES, SETTINGS, TIMEOUT, in_box
from tests.support.checks import (ENVIRONMENT, equal, holds, holds_not, listed_tests, run_tests, test,
                                  with_full_paths)

CLASSIC = "--mode=classic"
ROOT = Path(__file__).resolve().parent.parent.parent


# --------------------------------------------------------------------------------- usage

@test
def help_and_version(box):
    text = box.run("--help").decode("utf-8")
    holds(text, "-o, --output DATEI", "-n, --line-numbers", "--wrap N", "Rückgabewert: 0")
    assert max(map(len, text.splitlines())) <= 80
    assert all(line == line.rstrip() for line in text.splitlines())
    for option in ("--help", "-h"):
        equal(box.run(option, "--wrong").decode("utf-8"), text)
    equal(box.run("-V"), box.run("--version"))
    assert re.fullmatch(rb"tintline \d+\.\d+\.\d+\n", box.run("--version"))


@test
def the_locale_chooses_the_language(box):
    box.posix_only()  # Wine is always set to German
    without = {name: value for name, value in os.environ.items() if not name.startswith("L")}
    for language, locale in ((b"Aufruf: ", {"LC_ALL": "", "LC_MESSAGES": "de", "LANG": "fr_FR"}),
                             (b"Aufruf: ", {"LANG": "de_CH.UTF-8@x"}), (b"Usage: ", {}),
                             (b"Usage: ", {"LC_ALL": "C", "LANG": "de_DE"})):
        text = box.run("--help", env={**without, **locale})
        holds(text, language)
        assert max(map(len, text.decode("utf-8").splitlines())) <= 80
    told = subprocess.run([*box.command, "no\n\x1b[31m.bas"], env=without, stderr=subprocess.PIPE)
    equal(told.stderr, b"tintline: no\\n\\x1B[31m.bas: file not found\n")


@test
def options_stand_anywhere_and_the_last_of_two_counts(box):
    for name in ("a.bas", "-n", "--help"):
        box.put(name)
    box.run("a.bas", "-nqdout", "--style", "inline", "--", "-n", "--help")
    equal(box.names("out"), ["--help.htm", "-n.htm", "a.htm"])
    equal(box.get("out/-n.htm"), box.run("-n", "--style=inline", "--", "-n"))
    box.run("-o", "-n", "a.bas", "--output=x=y.htm", "-oz.htm")
    equal(box.get("z.htm"), box.run("a.bas"))
    lines = box.run("--format=body", "--format=lines", "--lines=1", "--lines", "3-4,2-2", "a.bas")
    equal(lines, b"".join(box.run("--format=lines", "a.bas").splitlines(True)[1:4]))
    box.run("--indent=100", "--wrap=1000", "--wrap=0", "--jobs=64", "-q", "-o", "z.htm", "a.bas")


@test
def wrong_usage_is_explained_and_writes_nothing(box):
    for name in ("a.bas", "b.bas", "sub/a.cls", "sub/A.BAS", "a.htm"):
        box.put(name)
    box.put("settings.ini", SETTINGS)
    cases = [
        (("-d", "out"), "es ist keine Datei angegeben"),
        (("--wrong=1", "a.bas"), "unbekannte Option --wrong"),
        (("--out", "x", "a.bas"), "unbekannte Option --out; meinten Sie --output?"),
        (("--Qiuet", "a.bas"), "unbekannte Option --Qiuet; meinten Sie --quiet?"),
        (("--format=josn", "a.bas"), "clipboard oder table; meinten Sie json?"),
        (("--format=js", "a.bas"), "clipboard oder table; meinten Sie json?"),
        (("-nx", "a.bas"), 'unbekannte Option -x'),
        (("--quiet=1", "a.bas"), "--quiet: nimmt keinen Wert"),
        (("a.bas", "--output"), "--output: der Wert DATEI fehlt"),
        (("-d", "", "a.bas"), "--output-dir: der Wert ORDNER fehlt"),
        (("--style", "Class"), '--style: "Class" geht nicht, möglich: class oder inline; meinten Sie class?'),
        (("--indent", "101"), "möglich: eine Zahl von 0 bis 100"),
        (("--jobs=65",), "möglich: eine Zahl von 1 bis 64"),
        (("--jobs=0",), "möglich: eine Zahl von 1 bis 64"),
        (("a.bas", ""), "ein leerer Text ist kein Dateiname"),
        *(((f"--wrap={value}", "a.bas"), "--wrap: ") for value in ("", "19", "-1", "0x20", "2.5")),
        *(((f"--lines={value}", "a.bas"), "--lines: ")
          for value in ("0", "2-1", "1-", "-1", "1,,2", "1-2-3", "+1")),
        ((CLASSIC, "a.bas", "b.bas"), "mehrere Dateien brauchen mit --mode classic --output-dir"),
        (("-", "a.bas", "-"), "lässt sich nur einmal lesen"),
        (("--format=table", "a.bas"), "--format table gibt es nur mit --mode classic"),
        (("--pasted", "a.bas"), "--pasted gibt es nur mit --mode classic"),
        ((CLASSIC, "--format=md", "a.bas"), "--format md gibt es nur mit --mode exact"),
        ((CLASSIC, "--theme=dark", "a.bas"), "--theme gibt es nur mit --mode exact"),
        (("-n", "--format=json", "a.bas"), "--line-numbers bewirkt nichts mit --format json, nur mit "
         "--format page, body, lines, rtf oder md"),
        (("--theme=dark", "--style=inline", "a.bas"),
         "bewirkt nichts mit --format page --style inline, nur mit --format page"),
        (("--color=Worte=#123456", "--format=body", "a.bas"),
         "nur mit --format page, body --style inline, lines --style inline oder rtf"),
        (("--export-encoding=utf-8", "a.bas"), "mit --format page, nur mit --export-modules"),
        (("--list", "--lines=1", "a.bas"), "--lines bewirkt nichts mit --list, nur mit --format"),
        (("--list", "--format=rtf", "a.bas"), "--format rtf bewirkt nichts mit --list, nur mit"),
        (("--export-modules=x", "-oy", "a.bas"), "--export-modules schreibt in seinen Ordner"),
        (("-o", "a.htm", "a.bas", "a.htm"), "die Ausgabe a.htm würde a.htm überschreiben"),
        (("-o", "x.htm", "-d", "out", "a.bas"), "--output und --output-dir"),
        (("-d", "out", "a.bas", "-"), "die Standardeingabe (-) hat keinen Namen"),
        (("--encoding=cp1259", "a.bas"), '--encoding: "cp1259" geht nicht'),
        ((CLASSIC, "sub"), "mehrere Dateien brauchen mit --mode classic --output-dir"),
        (("--keywords", "no.ini", "-d", "out", "a.bas"), "no.ini: Datei nicht gefunden"),
        (("--settings", "sub", "-d", "out", "a.bas"), "sub: ist ein Ordner"),
        # nothing that is read is overwritten
        (("-o", "./a.htm", "a.htm"), "die Ausgabe ./a.htm würde a.htm überschreiben"),
        (("-d", ".", "a.htm"), "würde a.htm überschreiben"),
        (("--settings=settings.ini", "-o", "settings.ini", "a.htm"), "würde settings.ini über"),
    ]
    if not box.windows:
        os.symlink("a.htm", box.folder / "link.htm")
        cases += [(("-o", "link.htm", "a.htm"), "die Ausgabe link.htm würde a.htm überschreiben")]
    before = {name: box.get(name) for name in box.names()}
    for arguments, text in cases:
        equal(box.run(*arguments, code=2, err=text), b"")
        equal({name: box.get(name) for name in box.names()}, before)


# ----------------------------------------------------------------- keywords and settings

@test
def keywords_and_settings_come_from_files_that_are_never_written(box):
    box.put("a.bas", b"Dim Hund As Katze\r\n")
    box.put("k.ini", b"[Keywords 1]\r\nHund\r\n[Keywords 2]\r\nKatze\r\n")
    box.put("no1.ini", b"[Keywords 2]\r\nKatze\r\n")
    box.put("no2.ini", b"[Keywords 1]\r\nHund\r\n")
    box.put("s.ini", SETTINGS)
    box.put("damaged.ini", b"[TINTLINE]\r\nColProz=1,2,\r\n")
    plain = box.run(CLASSIC, "a.bas")
    text = box.run(CLASSIC, "--keywords=k.ini", "a.bas")
    holds(text, b"<span class='Code'>Hund", b"<span class='Parms'>Katze", b"Dim ")
    missing = "no1.ini: der Abschnitt [Keywords 1] fehlt oder ist leer"
    holds_not(box.run(CLASSIC, "--keywords=no1.ini", "--format=body", "a.bas",
                      err=missing), b"Code")
    text = box.run(CLASSIC, "--keywords=no2.ini", "--format=body", "a.bas",
                   err="no2.ini: der Abschnitt [Keywords 2]")
    holds(text, b"<span class='Code'>Hund", b"Katze")
    equal(box.run(CLASSIC, "--settings=damaged.ini", "a.bas", err="ColProz hat weniger"), plain)
    text = box.run("--keywords=k.ini", "--settings=s.ini", "--style=inline", "a.bas")
    holds(text, b">Hund</span>", b">Katze</span>")
    for mode in ("--mode=exact", CLASSIC):
        holds(box.run(mode, "--settings=s.ini", "a.bas"), b"#123456")

    command = box.copy_of_program()
    equal(box.run(CLASSIC, "a.bas", command=command), plain)
    for name in ("vb.ini", "TINTLINE.ini"):  # one that cannot be read is no wrong usage
        folder = box.folder / "programm" / name
        folder.mkdir()
        box.run("a.bas", command=command, code=1, err=f"{name}: ist ein Ordner")
        folder.rmdir()
    before = box.names()
    equal(len(before), 7)
    box.put("programm/vb.ini", box.get("k.ini"))
    box.put("programm/TINTLINE.ini", SETTINGS)
    text = box.run(CLASSIC, "--format=clipboard", "a.bas", command=command)
    holds(text, b"<div>\r\n", b"Code'>Hund", b"\r\n</div>")
    holds(box.run(CLASSIC, "--keywords=no2.ini", "a.bas", command=command, err="no2.ini: "),
          b"#123456")
    equal((len(box.names()), box.get("programm/TINTLINE.ini")), (9, SETTINGS))


@test
def the_first_settings_that_are_found_count_whole_and_are_shown(box):
    def colored(color, language=b"de", **run):
        holds(box.run("a.bas", **run), b'lang="' + language + b'"', b":" + color + b"}")

    def setting(name, color, more=b""):
        return box.put(name, b"[TINTLINE]\nColRem=,%b,#FFFFFF,1,2,0,\n%b" % (color, more))

    box.put("a.bas")
    command = box.copy_of_program()
    setting("programm/TINTLINE.ini", b"#111111", b"PreCode=\xc4,\nSprache=en\n")
    colored(b"#111111", b"en", command=command)
    own = {**ENVIRONMENT, "XDG_CONFIG_HOME": str(box.folder / "own")}
    if not box.windows:
        setting("own/tintline/TINTLINE.ini", b"#222222")
        colored(b"#222222", command=command, env=own)
        own = {name: value for name, value in own.items() if name != "XDG_CONFIG_HOME"}
        setting("home/.config/tintline/TINTLINE.ini", b"#333333")
        colored(b"#333333", command=command, env={**own, "HOME": str(box.folder / "home")})
    setting("env.ini", b"#444444")
    own["TINTLINE_SETTINGS"] = "env.ini"
    colored(b"#444444", command=command, env=own)
    setting("option.ini", b"#555555", b"Sprache=en,\n")
    page = box.run("--settings=option.ini", "--color=comments=#666666", "a.bas", env=own)
    holds(page, b':#666666}', b'lang="en"', b"Skip to code", b'"Index"', b">Public<")
    shown = box.run("--print-settings", "--color=KOMMENTARE=#666666", "--lang=en", command=command)
    holds(shown, b"TINTLINE.ini\n", "; genau: eine Vorgabe".encode(), b"; --color\nColRem=,#666666,#FFFFFF,6710886,2,0,\n",
          b"PreCode=\xc4,\n")
    box.put("shown.ini", shown)
    equal(box.run("--settings=shown.ini", "a.bas"), page)
    equal(box.run("--settings=option.ini", "--format=json", "a.bas"), box.run("--format=json", "a.bas"))
    box.run("a.bas", code=2, err="no.ini: Datei nicht", env={**own, "TINTLINE_SETTINGS": "no.ini"})
    for content, told in ((b"[Other]\nColRem=1\n", "keine Einstellung"), (b"", "keine Einstellung"),
                          (b"[TINTLINE]\nSprache=fr\n", 'Sprache: "fr" ist weder de noch en'),
                          (b"[TINTLINE]\nColRem=,red,#FFFFFF,,,0,\n", 'ColRem: "red" ist keine')):
        box.put("s.ini", content)
        box.run("--settings=s.ini", "a.bas", err="s.ini: ")
        box.run("--settings=s.ini", "--print-settings", err=told)


@test
def a_style_sheet_of_the_user_stands_in_the_page_and_stays_there(box):
    box.put("a.bas")
    box.put("a.css", b"main{color:red}/*</STYLE><script>*/ .x:after{content:'</style>'}")
    page = box.run("--css=a.css", "a.bas")
    holds(page, b"}\nmain{color:red}/*<\\/STYLE><script>*/ .x:after{content:'<\\/style>'}\n</style>")
    equal(page.lower().count(b"</style"), 1)
    box.put("large.css", b" " * ((1 << 20) + 1))
    for arguments, told in ((("--css=no.css",), "no.css: Datei nicht gefunden"),
                            (("--css=large.css",), "large.css: größer als 1 MB"),
                            (("--css=a.css", "--style=inline"), "--css bewirkt nichts mit --format"),
                            (("--css=a.css", "-oa.css"), "würde a.css überschreiben"),
                            (("--color=Komentare=#123456",), "meinten Sie Kommentare?"),
                            (("--color=Strings=red",), "--color: "),
                            ((CLASSIC, "--lang=en"), "--lang gibt es nur mit --mode exact")):
        box.run(*arguments, "a.bas", code=2, err=told)


# --------------------------------------------------------------------------- many files

@test
def every_input_gets_its_file(box):
    names = {"a.bas": "a.htm", "b.v2.cls": "b.v2.htm", "ohne": "ohne.htm", "sub/c.FRM": "c.htm",
             "Übung Größe.bas": "Übung Größe.htm", "Ω😀.bas": "Ω😀.htm", "-n.bas": "-n.htm"}
    for number, name in enumerate(names):
        box.put(name, MODULE + f"' {number}\r\n".encode())
    box.run("-d", "new/out", "--", *names)
    for name, target in names.items():
        equal(box.get("new/out/" + target), box.run("./" + name))
    equal(len(box.names()), 2 * len(names))
    if box.windows:  # elsewhere the shell expands patterns
        box.run("-d", "stars", "--", "*.bas")
        equal(len(box.names("stars")), 4)
        return
    bytes_name = b"\xdcbung.bas"
    (box.folder / os.fsdecode(bytes_name)).write_bytes(MODULE)
    box.run("-d", "out", bytes_name)
    assert os.path.exists(os.path.join(os.fsencode(box.folder), b"out", b"\xdcbung.htm"))
    box.run(b"no\xdc.bas", code=1, err="no\ufffd.bas: Datei nicht gefunden")


@test
def folders_are_inputs(box):
    for name in ("in/Z.bas", "in/b/Y.FRM", "in/b/y.frx", "in/a/c/X.dsr", "in/a/c/text.txt",
                 "in/.git/hidden.bas", "in/a/._X.bas", "in/out/old.bas", "other/W.pag"):
        box.put(name)
    (box.folder / "empty").mkdir()
    if not box.windows:
        os.symlink("..", box.folder / "in/b/circle")
        os.symlink("../../other/W.pag", box.folder / "in/b/V.pag")
        os.mkfifo(box.folder / "in/b/pipe.bas")
    pages = ["Z.htm", "a/c/X.htm", "b/Y.htm", "out/old.htm"] + ["b/V.htm"] * (not box.windows)
    box.run("-d", "1", "in", "empty", "./in/Z.bas", "in/../in/Z.bas")
    equal(box.names("1"), sorted(pages))
    box.run("-d", "in/out", "in/", "in/b", "other")
    pages[3] = "old.bas"
    equal(box.names("in/out"), sorted([*pages, "W.htm"]))
    modules = [json.loads(line)["name"] for line in box.run("--format=json", "in/a", "other").splitlines()]
    equal(modules, ["Kasse"] * 2)
    box.run("-d", "2", "empty", "in/b/y.frx", code=1,
            err=["empty: enthält keine Moduldateien", "y.frx: ist keine Moduldatei"])
    if box.windows:
        return
    (box.folder / "in/b").chmod(0)
    box.folder.chmod(0o777)
    command, process = box.copy_of_program(), {}
    if os.geteuid() == 0:  # whom no rights stop
        process = {"user": 65534, "group": 65534, "extra_groups": []}
    box.run("-d", "3", "in", code=1, err="in/b: Zugriff verweigert", command=command, **process)
    equal(box.names("3"), ["Z.htm", "a/c/X.htm", "out/old.htm"])


@test
def names_that_clash_get_their_endings(box):
    names = {"Form.frm": "Form.frm.htm", "FORM.cls": "FORM.cls.htm", "other/Form.frm.bas": "Form.frm.bas.htm",
             "ohne": "ohne.htm", "ohne.bas": "ohne.bas.htm", "Än.bas": "Än.bas.htm",
             "än.ctl": "än.ctl.htm", "ж.bas": "ж.bas.htm", "Ж.cls": "Ж.cls.htm", "Form1.frm": "Form1.htm"}
    fail = ["other/a.BAS", "sub/A.bas"]
    for name in (*names, *fail):
        box.put(name)
    for number, order in enumerate((sorted, lambda names: sorted(names, reverse=True))):
        told = [name + ": out" for name in order(fail)]
        box.run("-d", f"out{number}", *order([*names, *fail, "no.frm"]), code=1,
                err=order(["no.frm: Datei nicht gefunden", *told]))
        equal(box.names(f"out{number}"), sorted(names.values()))


@test
def builds_learn_what_would_happen_and_keep_what_is_the_same(box):
    for name in ("in/a.bas", "in/b/c.cls", "in/b/c.frx"):
        box.put(name)
    box.put("lang.bas", b"x\r\n" * 32768)
    before = box.names()
    told = box.run("--dry-run", "-d", "out", "in", "no.bas", code=1, err="no.bas: Datei nicht")
    equal(told.decode().replace("\\", "/"), "in/a.bas -> out/a.htm\nin/b/c.cls -> out/b/c.htm\n")
    for mode, failures in ((CLASSIC, "lang.bas: mehr als 32767 Zeilen"), ("--mode=exact", ())):
        equal(box.run("--check", mode, "lang.bas", "in", err=failures, code=int(bool(failures))), b"")
    box.run("--check", "-d", "in/a.bas/out", "in/b", code=1,
            err="c.htm kann nicht geschrieben werden: Ordner nicht gefunden")
    equal(box.names(), before)
    box.run("-d", "out", "in")
    page = box.get("out/a.htm")
    os.utime(box.folder / "out/b/c.htm", (0, 0))
    for present in (page, page[:-1], page + b"x", b"x" + page, b""):
        box.put("out/a.htm", present)
        os.utime(box.folder / "out/a.htm", (0, 0))
        box.run("--skip-unchanged", "-d", "out", "in")
        equal(box.get("out/a.htm"), page)
        equal([(box.folder / "out" / name).stat().st_mtime == 0 for name in ("a.htm", "b/c.htm")],
              [present == page, True])
    told = box.run("-v", "--dry-run", "in/a.bas", "in/b/c.frx", err="c.frx: übergangen, ist keine")
    equal(told.decode().split(" -> ")[1], "Standardausgabe\n")


@test
def failures_come_in_order_whatever_the_number_of_jobs(box):
    names = [box.put(f"{i:02}.bas", MODULE * (1 + i % 5)) for i in range(40)]
    box.put("03.bas", b"x\r\n" * 32768)
    box.put("10.bas", b"x\r\n")
    (box.folder / "20.bas").unlink()
    for jobs in ("1", "2", "64"):
        box.run(CLASSIC, "--jobs", jobs, "--lines=2", "-d", "out" + jobs, *names, "*.cls", code=1, err=[
            "03.bas: mehr als 32767 Zeilen",
            "10.bas: --lines reicht über das Ende hinaus, letzte Zeile ist 1",
            "20.bas: Datei nicht gefunden", "*.cls: Datei nicht gefunden"])
        equal(len(box.names("out" + jobs)), 37)
    for name in box.names("out1"):
        equal(len({box.get(f"out{jobs}/{name}") for jobs in (1, 2, 64)}), 1)


@test
def an_interrupted_run_leaves_nothing_half_done(box):
    box.posix_only()
    box.put("lang.bas", MODULE * (20_000 // MODULE_LINES))
    names = [f"{i:03}.bas" for i in range(300)]
    for name in names:
        os.link(box.folder / "lang.bas", box.folder / name)

    def default():  # a background job of a shell ignores it
        signal.signal(signal.SIGINT, signal.SIG_DFL)

    own = "--links=module"  # else all are read before the first page is written
    with subprocess.Popen([*box.command, own, "-d", "out", *names], cwd=box.folder,
                          preexec_fn=default, stderr=subprocess.PIPE, env=ENVIRONMENT) as running:
        while not list(box.folder.glob("out/*.htm")) and running.poll() is None:
            time.sleep(0.001)
        running.send_signal(signal.SIGINT)
        told = running.communicate(timeout=TIMEOUT)[1].decode("utf-8")
    equal((running.returncode, told), (-signal.SIGINT, "tintline: abgebrochen\n"))
    made = box.names("out")
    assert 0 < len(made) < len(names), len(made)
    equal({name[-4:] for name in made}, {".htm"})
    equal({len(box.get("out/" + name)) for name in made}, {len(box.run(own, "000.bas"))})
    with subprocess.Popen([*box.command, "-"], stdin=subprocess.PIPE,
                          stderr=subprocess.PIPE, env=ENVIRONMENT) as waiting:
        time.sleep(0.3)
        waiting.terminate()
        equal(waiting.stderr.read().decode("utf-8"), "tintline: abgebrochen\n")
        equal(waiting.wait(TIMEOUT), -signal.SIGTERM)


@test
def what_a_killed_run_left_is_removed(box):
    box.put("a.bas")
    kept = ["a.htm", "~tintline-4194305-.tmp", "~tintline-x-1.tmp"]
    if not box.windows:  # whose numbers of processes Python does not know
        kept.insert(1, f"~tintline-{os.getpid()}-0.tmp")
    for name in ["~tintline-4194305-7.tmp", *kept]:  # no process has such a number
        box.put("out/" + name)
    box.run("-d", "out", "a.bas")
    equal(box.names("out"), sorted(kept))


@test
def modules_of_a_folder_know_each_other(box):
    """Links from page to page, also when there is no room to keep all modules in memory."""
    box.put("a/Eins #1.bas", b'Attribute VB_Name = "Eins"\r\nPublic Sub Rufen()\r\nEnd Sub\r\n')
    box.put("a/Zwei.bas", b"Sub Start()\r\n  Rufen\r\n  Fern\r\nEnd Sub\r\n")
    box.put("b/Drei.bas", b"Public Sub Fern()\r\nEnd Sub\r\n")
    for name in ("Groß1", "Groß2"):
        box.put(f"a/{name}.bas", b"Sub X()\r\n  Call Rufen: y = 1 + 2\r\nEnd Sub\r\n" * 40_000)
    names = ["a/Zwei.bas", "a/Eins #1.bas", "b/Drei.bas", "a/Groß1.bas", "a/Groß2.bas"]
    link = b'<a href="Eins%20%231.htm#Rufen"'
    for jobs in ("1", "3"):
        box.run("--links=all", "--jobs", jobs, "-d", "out" + jobs, *names)
        page = box.get(f"out{jobs}/Zwei.htm")
        holds(page, link)
        holds_not(page, b"#Fern")
        equal([box.get(f"out{jobs}/{name}.htm").count(link) for name in ("Groß1", "Groß2")],
              [40_000] * 2)
    box.run("--format=lines", "-d", "out", *names[:2])
    holds_not(box.get("out/Zwei.htm"), b"#Rufen")  # lines stand in pages that others make
    text = box.run("--links=all", "--titles=off", *names[:3])
    holds(text, b'href="#Eins.Rufen"', b'href="#Drei.Fern"')
    told = [json.loads(line) for line in box.run("--format=json", "--links=all", "-", *names[1:3],
                                                 stdin=box.get(names[0])).splitlines()]
    equal([(module["name"], module["links"]) for module in told],
          [("stdin", [[2, 3, 5, "Eins", "Rufen"], [3, 3, 4, "Drei", "Fern"]]),
           ("Eins", []), ("Drei", [])])
    box.run("-o", "alle.htm", *names[:2], "no.bas", code=1, err="no.bas: Datei nicht gefunden")
    holds(box.get("alle.htm"), b'id="Zwei.Start"', b'id="Eins.Rufen"')


# ------------------------------------------------------------------------------- sources

@test
def any_bytes_are_converted(box):
    box.put("all.bas", bytes(range(256)) * 100)
    box.put("empty.bas", b"")
    box.put("zeros.bas", b"\0" * 100000)
    box.put("quotes.bas", b"\"'()_" * 20000)
    for mode, told in (("--mode=exact", "all.bas: 500 Zeichen gibt es in Codepage 1252 nicht"),
                       (CLASSIC, ())):
        box.run(mode, "-d", "out", "all.bas", "empty.bas", "zeros.bas", "quotes.bas", err=told)
    holds(box.get("out/empty.htm"), b"<pre>\r\n\r\n</pre>")
    box.put("a.bas", "x = \"Ω?€Ж😀\"".encode("utf-16"))
    told = 'a.bas: 3 Zeichen passen nicht in die Codepage und wurden zu "?"'
    for options in ((), ("--pasted",), ("--encoding=auto",)):
        holds(box.run(CLASSIC, *options, "a.bas", err=told), b"??\x80??")


@test
def sources_are_read_in_an_encoding(box):
    gruß, latin = "' Grüße", b"' Gr\xfc\xdfe"
    cases = [
        # mode, encoding, source, what of it is in the page, what is told
        ("exact", "auto", latin, gruß, ()),
        ("exact", "auto", gruß.encode(), gruß, ()),
        ("exact", "windows-1252", gruß.encode(), "' GrÃ¼ÃŸe", ()),
        ("exact", "windows-1252", gruß.encode("utf-8-sig"), gruß, ()),  # a mark counts more
        ("exact", "cp437", b"' Gr\x81\xe1e", gruß, ()),
        ("exact", "Shift_JIS", "' 漢字".encode("cp932"), "' 漢字", ()),
        ("exact", "utf-8", latin, "' Gr\ufffd\ufffde", "2 Zeichen gibt es in UTF-8 nicht"),
        ("exact", "ascii", b"' \xfc", "' \ufffd", "1 Zeichen gibt es in Codepage 20127 nicht"),
        ("classic", None, gruß.encode(), gruß.encode(), ()),  # the bytes as they are
        ("classic", None, gruß.encode("utf-8-sig"), gruß.encode(), ()),
        ("classic", "auto", gruß.encode(), latin, ()),
        ("classic", "macintosh", gruß.encode("mac-roman"), latin, ()),
        ("classic", "1251", "' Ж?".encode("cp1251"), b"' ??", "1 Zeichen passt nicht in die Codepage"),
    ]
    for mode, encoding, source, text, told in cases:
        options = [f"--mode={mode}", "--format=body"] + [f"--encoding={encoding}"] * bool(encoding)
        page = box.run(*options, "-", stdin=source, err=told)
        holds(page, text.encode() if isinstance(text, str) else text)


@test
def what_is_too_large_is_not_read(box):
    box.put("a.bas", b"")
    os.truncate(box.folder / "a.bas", (256 << 20) + 1)
    told = "größer als 256 MB"
    box.run("a.bas", code=1, err="a.bas: " + told)
    with open(box.folder / "a.bas", "rb") as large:
        box.run("-", stdin=large, code=1, err=told)
    if not box.windows:
        box.run("/dev/zero", code=1, err=told)


@test
def the_longest_source_is_32767_lines(box):
    box.put("a.bas", b"x\r\n" * 32766 + b"' ein Kommentar, lang\r\n")
    equal(box.run(CLASSIC, "--format=lines", "--wrap=30", "a.bas").count(b"\n"), 32767)
    holds(box.run(CLASSIC, "--format=lines", "-n", "a.bas"), b">32767:<")
    box.run(CLASSIC, "--wrap=20", "-o", "out.htm", "a.bas", code=1,
            err="a.bas: mehr als 32767 Zeilen nach dem Umbruch")
    equal(box.names(), ["a.bas"])
    longer = box.get("a.bas") + b"x"
    box.run(CLASSIC, "--pasted", "-", stdin=longer, code=1, err="mehr als 32767 Zeilen")
    box.run("--lines=99999999999999999999", "a.bas", code=1, err="letzte Zeile ist 32767")


@test
def the_standard_input_is_a_source(box):
    box.put("large.bas", MODULE * 3000)
    box.run(CLASSIC, "-o", "out.htm", "-", stdin=MODULE * 3000)
    equal(box.get("out.htm"), box.run(CLASSIC, "large.bas"))
    box.run("--lines=11", "-", stdin=MODULE, code=1, err="Standardeingabe: --lines reicht")
    equal(box.run(stdin=MODULE), box.run("-", stdin=MODULE))
    box.posix_only()
    terminal, stream = os.openpty()
    box.run(code=2, stdin=stream, err="es ist keine Datei angegeben")
    os.close(stream)
    os.close(terminal)
    box.run("-", code=1, err="Standardeingabe: ", preexec_fn=lambda: os.close(0))
    with open("/dev/null", "wb") as write_only:
        box.run("-", code=1, err="Standardeingabe: ", stdin=write_only)


# ------------------------------------------------------------------------------- targets

@test
def targets_are_replaced_whole_or_not_at_all(box):
    box.put("a.bas")
    box.put("out.htm", b"old")
    (box.folder / "folder").mkdir()
    before = box.names()
    cases = [(("-o", "out.htm/x.htm"), "x.htm kann nicht geschrieben werden: Ordner nicht gefunden"),
             (("-o", "folder"), "folder kann nicht geschrieben werden: ist ein Ordner"),
             (("-o", 300 * "x"), "x kann nicht geschrieben werden: "),
             (("-d", "out.htm"), "out.htm: "), (("-d", "out.htm/out"), "out.htm/out: ")]
    for arguments, text in cases:
        equal(box.run(*arguments, "a.bas", code=1, err=text), b"")
    equal((box.names(), box.get("out.htm")), (before, b"old"))
    equal(box.run("-o", "out.htm", "a.bas"), b"")
    equal(box.get("out.htm"), box.run("-o", "-", "a.bas"))
    box.run("-o", "new/folder/x.htm", "a.bas")
    equal(box.get("new/folder/x.htm"), box.get("out.htm"))


@test
def devices_and_full_disks(box):
    box.posix_only()
    box.put("a.bas")
    box.put("large.bas", MODULE * 200)
    box.put("large.htm", b"old")
    page = box.run("a.bas")
    full = "kann nicht geschrieben werden: Datenträger ist voll"
    box.run("/proc/self/mem", code=1, err="/proc/self/mem: ")  # opens, and cannot be read
    box.run("-o", "/dev/full", "a.bas", code=1, err="a.bas: /dev/full " + full)
    box.run("-o", "/dev/null", "a.bas")
    with open(box.folder / "log", "wb") as log:  # what is behind the name is not replaced
        log.write(b"vorn")
        log.flush()
        box.run("-o", "/dev/stdout", "a.bas", stdout=log)
        box.run("-o", f"/dev/fd/{log.fileno()}", "a.bas", pass_fds=[log.fileno()])
        os.write(log.fileno(), b"hinten")
    equal(box.get("log"), b"vorn" + 2 * page + b"hinten")

    def limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))

    before = box.names()
    box.run("-d", ".", "large.bas", "a.bas", code=1, preexec_fn=limit,
            err="large.htm kann nicht geschrieben werden: Datei zu groß")
    equal(box.names(), sorted([*before, "a.htm"]))
    equal((box.get("large.htm"), box.get("a.htm")), (b"old", page))
    for name in ("a.bas", "large.bas"):
        with open("/dev/full", "wb") as device:
            box.run(name, code=1, err=f"{name}: Standardausgabe {full}", stdout=device)
        box.run(name, code=1, err="Standardausgabe kann nicht geschrieben werden",
                preexec_fn=lambda: os.close(1))
        reader, writer = os.pipe()
        os.close(reader)
        box.run(name, code=-signal.SIGPIPE, stdout=writer)
        os.close(writer)
    for option in ("--help", "--version", "--print-settings"):
        with open("/dev/full", "wb") as device:
            box.run(option, code=1, err="Standardausgabe kann nicht", stdout=device)


# ------------------------------------------------------------------------------ messages

@test
def messages_never_land_in_a_result(box):
    """A file that is opened must not get the place of a closed error stream."""
    box.posix_only()
    names = [box.put(f"{i}.bas", MODULE * 50) if i % 2 else f"no{i}.bas" for i in range(200)]
    done = subprocess.run([*box.command, CLASSIC, "--jobs=8", "-d", "out", *names], cwd=box.folder,
                          timeout=TIMEOUT, preexec_fn=lambda: os.close(2))
    equal(done.returncode, 1)
    equal({box.get("out/" + name) for name in box.names("out")}, {box.run(CLASSIC, "1.bas")})


@test
def programs_are_told_in_json(box):
    box.put("a.bas")
    box.put("frau.bas", b"x\r\n' \x81\r\n")
    box.put("a.frx")
    box.put("lang.bas", b"x\n" * 32768)
    cases = [  # arguments, exit code, (file, line, severity, code) of each message
        (("--lines=9", "a.bas", "no.bas"), 1,
         [("a.bas", 5, "error", "no-such-line"), ("no.bas", None, "error", "file-not-found")]),
        (("frau.bas",), 0, [("frau.bas", 2, "warning", "characters-lost")]),
        ((CLASSIC, "lang.bas"), 1, [("lang.bas", 32767, "error", "too-many-lines")]),
        (("-o", "a.bas/x.htm", "-"), 1, [("-", None, "error", "cannot-write")]),
        (("--wrong",), 2, [(None, None, "error", "wrong-usage")]),
        (("-o", "a.bas", "a.bas"), 2, [(None, None, "error", "would-overwrite")]),
        (("--check", "-v", "a.bas", "a.frx"), 0,
         [("a.frx", None, "note", "no-module-file"), (None, None, "note", "summary")]),
    ]
    if not box.windows:  # where no file can have such a name
        cases += [(('a\n"b',), 1, [('a\n"b', None, "error", "file-not-found")])]
    for arguments, code, wanted in cases:
        done = subprocess.run([*box.command, "--errors", "json", *arguments], cwd=box.folder,
                              input=b"", capture_output=True, timeout=TIMEOUT)
        told = [json.loads(line) for line in done.stderr.splitlines()]
        assert all(notice["message"] for notice in told), told
        equal((done.returncode, [(notice.get("file"), notice.get("line"), notice["severity"],
                                  notice["code"]) for notice in told]), (code, wanted))


@test
def success_is_silent_but_for_what_is_asked_for(box):
    names = [box.put(f"{i}.bas") for i in range(12)]
    equal(box.on_terminal("-d", "out", *names), (0, ""))
    code, told = box.on_terminal("-vd", "out", *names)
    equal(code, 0)
    assert re.fullmatch(r"12 Dateien, 60 Zeilen in \d+(,\d+)?s verarbeitet\n", told), told
    equal(box.on_terminal("no.bas"), (1, "tintline: no.bas: Datei nicht gefunden\n"))


# ------------------------------------------------------------------------------ Office files

BOOK = (ROOT / "tests/golden/office/Mappe.xlsm").read_bytes()


@test
def office_files_give_pages_and_an_index(box):
    box.put("in/Mappe.xlsm", BOOK)
    box.put("in/sub/No.docx", b"PK\x05\x06" + bytes(18))  # passed over
    box.run("-d", "out", "in")
    pages = ["Eingabe.htm", "Kunde.htm", "Modul1.htm", "Tabelle1.htm", "index.htm"]
    equal(box.names("out/Mappe.xlsm"), pages)
    holds(box.get("out/Mappe.xlsm/index.htm"), b'<a href="Modul1.htm">Modul1</a></td>', b"<td>7</td>")
    box.run("--mode=classic", "-d", "old", "--all", "in/Mappe.xlsm")
    equal(box.names("old/Mappe.xlsm"), sorted(["DieseArbeitsmappe.htm", *pages]))
    equal(box.run("--list", "-", stdin=BOOK).splitlines()[1:],
          box.run("--list", "in/Mappe.xlsm").splitlines()[1:])
    (box.folder / "bad/Mappe.xlsm/index.htm").mkdir(parents=True)
    box.run("-d", "bad", "in/Mappe.xlsm", code=1, err="index.htm kann nicht")
    box.run("in/sub/No.docx", code=1, err="enthält kein VBA-Projekt")
    box.run("--module=Fehlt", "in/Mappe.xlsm", code=1, err="enthält kein Modul Fehlt")
    box.put("Cut.xlsm", BOOK[:9000])
    box.run("--list", "Cut.xlsm", code=1, err="endet zu früh")
    page = box.run("-d", "en", "--lang=en", "--theme=dark", "in/Mappe.xlsm") + box.get(
        "en/Mappe.xlsm/index.htm")
    holds(page, b'lang="en"', b'content="dark"', b"<th>Kind</th>", b"<td>standard module</td>")


@test
def what_office_files_hold_is_written_as_carefully_as_pages(box):
    box.put("Mappe.xlsm", BOOK)
    for what in ("--list", "--format=source"):
        box.run(what, "-o", "Mappe.xlsm", "Mappe.xlsm", code=2, err="würde Mappe.xlsm überschr")
        equal(box.run("--dry-run", what, "-o", "new/a.txt", "Mappe.xlsm").replace(b"\\", b"/"),
              b"Mappe.xlsm -> new/a.txt\n")
        box.run("--check", what, "-o", "new/a.txt", "Mappe.xlsm")
    holds(box.run("--dry-run", "--export-modules", "x", "Mappe.xlsm").replace(b"\\", b"/"),
          b"Mappe.xlsm -> x/Mappe.xlsm/Modul1.bas\n", b"-> x/Mappe.xlsm/Eingabe.frx\n")
    holds(box.run("--dry-run", "-d", "out", "Mappe.xlsm").replace(b"\\", b"/"),
          b"Mappe.xlsm -> out/Mappe.xlsm/index.htm\n")
    box.run("--check", "--export-modules", "x", "Mappe.xlsm")
    equal(box.names(), ["Mappe.xlsm"])
    for options, name in ((("--export-modules", "x"), "x/Mappe.xlsm/Modul1.bas"),
                          (("--list", "-o", "new/a.txt"), "new/a.txt"),
                          (("-d", "out"), "out/Mappe.xlsm/index.htm")):
        box.run("--skip-unchanged", *options, "Mappe.xlsm")
        os.utime(box.folder / name, (9, 9))
        box.run("--skip-unchanged", *options, "Mappe.xlsm")
        equal((box.folder / name).stat().st_mtime, 9)


@test
def exported_modules_give_the_pages_of_their_office_file(box):
    for folder in ("a", "b"):
        box.put(f"{folder}/Mappe.xlsm", BOOK)
    box.run("--export-modules", "x", "a/Mappe.xlsm", "b/Mappe.xlsm")
    names = ["DieseArbeitsmappe.cls", "Eingabe.frm", "Eingabe.frx", "Kunde.cls", "Modul1.bas",
             "Tabelle1.cls"]
    for folder in ("a", "b"):
        equal(box.names(f"x/{folder}/Mappe.xlsm"), names)
    holds(box.get("x/a/Mappe.xlsm/Modul1.bas"), b'"M\xfcller"\r\n', b"Attribute Gruessen.VB_")
    box.run("-n", "-d", "office", "a/Mappe.xlsm")
    box.run("-n", "--header=drop", "-d", "files", *(f"x/a/Mappe.xlsm/{name}" for name in names
                                                    if name[0] != "D" and name[-1] != "x"))
    for name in box.names("files"):
        equal(box.get(f"files/{name}"), box.get(f"office/Mappe.xlsm/{name}"))
    frx = box.get("x/a/Mappe.xlsm/Eingabe.frx")
    box.put("x/a/Mappe.xlsm/Eingabe.frx", frx + bytes(512))  # the same, written in another way
    box.run("--export-modules", "x", "--export-encoding=utf-8", "a/Mappe.xlsm", "b/Mappe.xlsm")
    equal(box.get("x/a/Mappe.xlsm/Eingabe.frx"), frx + bytes(512))
    holds(box.get("x/a/Mappe.xlsm/Modul1.bas"), '"Müller"'.encode())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tintline", nargs="+", required=True, metavar="COMMAND")
    parser.add_argument("--only", default="", metavar="PART-OF-A-NAME")
    arguments = parser.parse_args()
    command = with_full_paths(arguments.tintline)
    return run_tests(listed_tests(lambda function: in_box(function, command), arguments.only))


if __name__ == "__main__":
    sys.exit(main())
