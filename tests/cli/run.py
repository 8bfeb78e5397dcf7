"""Drives the command line as a process: options, formats, files, streams and every failure.

    python3 -m tests.cli.run --tintline COMMAND... [--only PART-OF-A-NAME]

COMMAND may be several words (a runner and the Windows program). Prints each failure and, last,
"N passed, N failed, N skipped".
"""
import argparse
import os
import re
import signal
import subprocess
import sys
import time

from tests.cli.box import MODULE, MODULE_LINES, SETTINGS, TIMEOUT, in_box
from tests.support.checks import (Skip, equal, holds, holds_not, listed_tests, run_tests, test,
                                  with_full_paths)


# ------------------------------------------------------------------ help and wrong usage

@test
def help_names_every_option(box):
    text = box.run("--help").decode("utf-8")
    for option in ("-o, --output DATEI", "-d, --output-dir ORDNER", "--format FORM",
                   "--style ART", "-n, --line-numbers", "--lines A-B[,C-D...]", "--indent N",
                   "--wrap N", "--pasted", "--keywords DATEI", "--settings DATEI", "--jobs N",
                   "-q, --quiet", "--help", "--version", "Rückgabewert: 0"):
        holds(text, option)
    assert max(map(len, text.splitlines())) <= 80


@test
def version_is_shown(box):
    equal(bool(re.fullmatch(rb"tintline \d+\.\d+\.\d+\n", box.run("--version"))), True)


@test
def wrong_usage_is_explained_and_writes_nothing(box):
    box.put("a.bas")
    box.put("b.bas")
    box.put("sub/a.cls")
    before = box.names()
    cases = [
        ((), "es ist keine Datei angegeben"),
        (("--wrong", "a.bas"), "unbekannte Option --wrong"),
        (("-x", "a.bas"), 'unbekannte Option "-x"'),
        (("a.bas", "--output"), "--output: der Wert DATEI fehlt"),
        (("--format", "pdf", "a.bas"), "möglich: page, body, lines, preview, clipboard oder"),
        (("--style=css", "a.bas"), "möglich: class oder inline"),
        (("--lines", "3-1", "a.bas"), '--lines: "3-1" geht nicht'),
        (("--lines", "0-1", "a.bas"), '--lines: "0-1" geht nicht'),
        (("--indent", "-1", "a.bas"), "eine Zahl von 0 bis 100"),
        (("--wrap", "19", "a.bas"), "eine Zahl von 20 bis 1000 oder 0"),
        (("--wrap=80x", "a.bas"), "eine Zahl von 20 bis 1000 oder 0"),
        (("--jobs", "100", "a.bas"), "eine Zahl von 1 bis 64"),
        (("--quiet=ja", "a.bas"), "--quiet: nimmt keinen Wert"),
        (("a.bas", ""), "ein leerer Text ist kein Dateiname"),
        (("a.bas", "b.bas"), "mehrere Dateien brauchen --output-dir"),
        (("-o", "x.htm", "a.bas", "b.bas"), "mehrere Dateien brauchen --output-dir"),
        (("-", "-"), "mehrere Dateien brauchen --output-dir"),
        (("-o", "x.htm", "-d", "out", "a.bas"), "--output und --output-dir"),
        (("-d", "out", "a.bas", "-"), "die Standardeingabe (-) hat keinen Namen"),
        (("-d", "out", "a.bas", "sub/a.cls"), "a.bas und sub/a.cls ergäben beide out"),
        (("-d", "out", "a.bas", "a.bas"), "a.bas und a.bas ergäben beide out"),
        (("--keywords", "no.ini", "-d", "out", "a.bas"), "no.ini: Datei nicht gefunden"),
        (("--settings", "no.ini", "-d", "out", "a.bas"), "no.ini: Datei nicht gefunden"),
        (("--settings", "sub", "-d", "out", "a.bas"), "sub: ist ein Ordner"),
    ]
    for arguments, text in cases:
        equal(box.run(*arguments, code=2, err=text), b"")
        equal(box.names(), before)


@test
def output_names_that_differ_in_case_only(box):
    box.put("a.bas")
    box.put("sub/A.BAS")
    box.run("-d", "out", "a.bas", os.path.join("sub", "A.BAS"), code=2,
            err="wo Groß- und Kleinschreibung nicht zählt")
    equal(box.names(), ["a.bas", os.path.join("sub", "A.BAS")])


@test
def nothing_that_is_read_is_overwritten(box):
    box.put("a.htm")
    box.put("settings.ini", SETTINGS)
    cases = [(("-o", "a.htm", "a.htm"), "die Ausgabe a.htm würde a.htm überschreiben"),
             (("-o", "./a.htm", "a.htm"), "würde a.htm überschreiben"),
             (("-d", ".", "a.htm"), "würde a.htm überschreiben"),
             (("--settings=settings.ini", "-o", "settings.ini", "a.htm"),
              "würde settings.ini überschreiben")]
    if not box.windows:
        os.symlink("a.htm", box.folder / "link.htm")
        cases += [(("-o", "link.htm", "a.htm"), "die Ausgabe link.htm würde a.htm überschreiben")]
    for arguments, text in cases:
        box.run(*arguments, code=2, err=text)
    equal((box.get("a.htm"), box.get("settings.ini")), (MODULE, SETTINGS))


# ------------------------------------------------------------------------------- results

@test
def formats_hold_what_they_say(box):
    box.put("a.bas")
    result = {name: box.run("--format", name, "a.bas") for name in
              ("page", "body", "lines", "preview", "clipboard", "table")}
    equal(box.run("a.bas"), result["page"])
    body, lines = result["body"], result["lines"].split(b"\n")
    holds(body, b"class='Code'", b"Gr\xf6\xdfe: &lt;")
    for name in ("page", "preview"):
        holds(result[name], b"<pre>\r\n" + body + b"\r\n</pre>\r\n")
        assert result[name].startswith(b"<!DOCTYPE"), result[name]
        assert result[name].rstrip().lower().endswith(b"</html>"), result[name]
    index = result["page"].split(b"<pre>")[0]
    holds(index, b"#Zeigen", b"#Start")
    holds_not(result["preview"].split(b"<pre>")[0], b"#Zeigen")
    equal(lines.pop(), b"")
    for line in lines:
        holds(body, line)
    equal(result["clipboard"], b"\r\n" + b"\r\n".join(lines))
    equal(result["table"].count(b"<tr><td>"), MODULE_LINES)
    for name in result:
        holds_not(result[name], b"\r\r\n")


@test
def inline_style_and_line_numbers(box):
    box.put("a.bas")
    page = box.run("--style", "inline", "a.bas")
    holds(page, b"style=")
    holds_not(page, b"class='Code'", b"<style")
    numbered = box.run("-n", "--format=lines", "a.bas").split(b"\n")
    holds(numbered[3], b">4:    <")
    holds_not(box.run("--format=lines", "a.bas"), b">4:")


@test
def chosen_lines_are_a_selection(box):
    box.put("a.bas")
    whole = box.run("--format=table", "a.bas")
    rows = re.findall(rb"<tr>.*?</tr>", whole)
    equal(box.run("--format=table", "--lines=9-10,2", "a.bas"), rows[1] + rows[8] + rows[9])
    equal(box.run("--format=table", f"--lines=1-{MODULE_LINES}", "a.bas"), whole)
    equal(box.run("--format=lines", "--lines=2", "a.bas").count(b"\n"), 1)


@test
def indentation_is_made_before(box):
    box.put("a.bas", b"If a Then\r\n     b\r\nEnd If\r\n")
    for presses in (0, 1, 3, 100):
        expected = b" " * (presses or 5) + b"b  "
        equal(box.run("--format=lines", f"--indent={presses}", "a.bas").split(b"\n")[1], expected)


@test
def long_lines_are_broken_behind_the_indentation(box):
    box.put("a.bas", b"If a Then\r\nx = 1 ' ein langes Wort\r\nEnd If\r\n")
    lines = box.run("--format=lines", "--indent=3", "--wrap=21", "a.bas").split(b"\n")
    equal(lines[1:3], [b"<span class='Rem'>   ' ein langes Wort </span>", b"   x = 1  "])
    chosen = box.run("--format=lines", "--indent=3", "--wrap=21", "--lines=3", "a.bas")
    equal(chosen, lines[2] + b"\n")
    equal(box.run("--wrap=0", "a.bas"), box.run("a.bas"))
    equal(box.run("--wrap=1000", "a.bas"), box.run("a.bas"))


@test
def pasted_text_loses_tabs_and_call_links(box):
    box.put("a.bas")
    read, pasted = box.run("--format=body", "a.bas"), box.run("--format=body", "--pasted", "a.bas")
    holds(read, b"\t", b"HREF='#Zeigen'")
    holds_not(pasted, b"\t", b"HREF='#Zeigen'")


@test
def keywords_come_from_a_file(box):
    box.put("a.bas", b"Dim Hund As Katze\r\n")
    box.put("k.ini", b"[Keywords 1]\r\nHund\r\n[Keywords 2]\r\nKatze\r\n")
    text = box.run("--keywords=k.ini", "--format=body", "a.bas")
    holds(text, b"<span class='Code'>Hund", b"<span class='Parms'>Katze", b"Dim ")
    holds_not(text, b"Code'>Dim")
    box.put("no1.ini", b"[Keywords 2]\r\nKatze\r\n")
    missing = "no1.ini: Die Steuerdatei mit den Schlüsselworten wurde nicht gefunden!"
    holds_not(box.run("--keywords=no1.ini", "--format=body", "a.bas", err=missing), b"Code")
    box.put("no2.ini", b"[Keywords 1]\r\nHund\r\n")
    text = box.run("--keywords=no2.ini", "--format=body", "a.bas", err="no2.ini: Nichts gefunden")
    holds(text, b"<span class='Code'>Hund", b"Katze")


@test
def settings_come_from_a_file_that_is_never_written(box):
    box.put("a.bas", b"x\r\n")
    box.put("s.ini", SETTINGS)
    holds(box.run("--settings=s.ini", "a.bas"), b"#123456")
    holds_not(box.run("a.bas"), b"#123456")
    equal(box.run("--settings=s.ini", "--format=clipboard", "a.bas"), b"<div>\r\nx  \r\n</div>")
    box.put("damaged.ini", b"[TINTLINE]\r\nColProz=1,2,\r\n")
    equal(box.run("--settings=damaged.ini", "a.bas"), box.run("a.bas"))
    equal((box.get("s.ini"), box.get("damaged.ini")),
          (SETTINGS, b"[TINTLINE]\r\nColProz=1,2,\r\n"))


@test
def files_beside_the_program_are_the_default(box):
    command = box.copy_of_program()
    box.put("a.bas", b"Dim Hund\r\n")
    holds(box.run("a.bas", command=command), b"Code'>Dim")
    equal(len(box.names()), 2)  # no settings file appears
    box.put("programm/vb.ini", b"[Keywords 1]\r\nHund\r\n[Keywords 2]\r\nKatze\r\n")
    box.put("programm/TINTLINE.ini", SETTINGS)
    text = box.run("a.bas", command=command)
    holds(text, b"Code'>Hund", b"#123456")
    holds_not(text, b"Code'>Dim")
    box.put("k.ini", b"[Keywords 1]\r\nDim\r\n[Keywords 2]\r\nKatze\r\n")
    holds(box.run("--keywords=k.ini", "a.bas", command=command), b"Code'>Dim")


# --------------------------------------------------------------------------- many files

@test
def every_input_gets_its_file(box):
    names = {"a.bas": "a.htm", "b.v2.cls": "b.v2.htm", "ohne": "ohne.htm", "sub/c.FRM": "c.htm",
             "Übung Größe.bas": "Übung Größe.htm", "Ω😀.bas": "Ω😀.htm", "mit leer.bas":
             "mit leer.htm"}
    for number, name in enumerate(names):
        box.put(name, MODULE + f"' {number}\r\n".encode())
    box.run("-d", "new/out", *names)
    for name, target in names.items():
        equal(box.get("new/out/" + target), box.run(name))
    equal(len(box.names()), 2 * len(names))


@test
def number_of_jobs_changes_nothing(box):
    names = [box.put(f"{i:02}.bas", MODULE * (1 + i % 5)) for i in range(40)]
    (box.folder / "20.bas").unlink()
    for jobs in ("1", "2", "64"):
        box.run("--jobs", jobs, "-d", "jobs" + jobs, *names, code=1,
                err="20.bas: Datei nicht gefunden")
    for i in range(40):
        results = {box.get(f"jobs{jobs}/{i:02}.htm") for jobs in (1, 2, 64) if i != 20}
        assert len(results) == (i != 20)


@test
def an_interrupted_run_leaves_nothing_half_done(box):
    box.posix_only()
    box.put("lang.bas", MODULE * (20_000 // MODULE_LINES))
    names = [f"{i:03}.bas" for i in range(300)]
    for name in names:
        os.link(box.folder / "lang.bas", box.folder / name)
    def default():  # a background job of a shell ignores it
        signal.signal(signal.SIGINT, signal.SIG_DFL)
    with subprocess.Popen([*box.command, "-d", "out", *names], cwd=box.folder, preexec_fn=default,
                          stderr=subprocess.PIPE) as running:
        while not list(box.folder.glob("out/*.htm")) and running.poll() is None:
            time.sleep(0.001)
        running.send_signal(signal.SIGINT)
        told = running.communicate(timeout=TIMEOUT)[1].decode("utf-8")
    equal((running.returncode, told), (-signal.SIGINT, "tintline: abgebrochen\n"))
    made = sorted(os.listdir(box.folder / "out"))
    assert 0 < len(made) < len(names), len(made)
    equal({path.suffix for path in box.folder.glob("out/*")}, {".htm"})
    equal({(box.folder / "out" / name).stat().st_size for name in made},
          {len(box.run("lang.bas"))})
    with subprocess.Popen([*box.command, "-"], stdin=subprocess.PIPE,
                          stderr=subprocess.PIPE) as waiting:
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
    equal(sorted(os.listdir(box.folder / "out")), sorted(kept))


@test
def characters_that_do_not_fit_are_counted(box):
    box.put("a.bas", "x = \"Ω?€Ж😀\"".encode("utf-16"))
    told = 'a.bas: 3 Zeichen passen nicht in die Codepage und wurden zu "?"'
    for options in ((), ("--pasted",)):
        holds(box.run(*options, "a.bas", err=told), b"??\x80??")


@test
def failures_come_in_order_and_the_others_go_on(box):
    box.put("a.bas")
    box.put("long.bas", b"x\r\n" * 32768)
    box.put("z.bas")
    (box.folder / "dir.bas").mkdir()
    box.run("--lines=1-10", "-d", "out", "long.bas", "a.bas", "dir.bas", "no.bas", "z.bas", code=1,
            err=["long.bas: mehr als 32767 Zeilen", "dir.bas: ist ein Ordner",
                 "no.bas: Datei nicht gefunden"])
    equal([name for name in box.names() if "out" in name],
          [os.path.join("out", "a.htm"), os.path.join("out", "z.htm")])


@test
def patterns_that_fit_no_file_fail_alone(box):
    box.put("a.bas")
    box.run("-d", "out", "a.bas", "*.cls", "*.frm", code=1,
            err=["*.cls: Datei nicht gefunden", "*.frm: Datei nicht gefunden"])
    equal(len(box.names()), 2)


@test
def an_unreadable_file_beside_the_program_is_no_wrong_call(box):
    box.put("a.bas")
    program = box.copy_of_program()
    for name in ("vb.ini", "TINTLINE.ini"):
        folder = box.folder / "programm" / name
        folder.mkdir()
        box.run("a.bas", command=program, code=1, err=f"{name}: ist ein Ordner")
        folder.rmdir()


@test
def a_name_of_the_standard_output_is_not_replaced(box):
    box.posix_only()
    box.put("a.bas")
    with open(box.folder / "log", "wb") as log:
        log.write(b"vorn")
        log.flush()
        box.run("-o", "/dev/stdout", "a.bas", stdout=log)
        box.run("-o", f"/dev/fd/{log.fileno()}", "a.bas", pass_fds=[log.fileno()])
        os.write(log.fileno(), b"hinten")
    equal(box.get("log"), b"vorn" + 2 * box.run("a.bas") + b"hinten")


@test
def a_line_outside_the_file_fails_that_file(box):
    box.put("a.bas")
    box.put("short.bas", b"x\r\n")
    text = "--lines reicht über das Ende hinaus, letzte Zeile ist 1"
    box.run("--lines=2", "-d", "out", "a.bas", "short.bas", code=1, err="short.bas: " + text)
    equal(len(box.names()), 3)
    equal(box.run("--lines=99999999999999999999", "a.bas", code=1, err=text), b"")


@test
def the_longest_source_is_32767_lines(box):
    box.put("a.bas", b"x\r\n" * 32767)
    equal(box.run("--format=lines", "a.bas").count(b"\n"), 32767)
    box.put("a.bas", b"x\r\n" * 32767 + b"x")
    equal(box.run("--format=lines", "a.bas", code=1, err="a.bas: mehr als 32767 Zeilen"), b"")


@test
def a_source_that_gets_too_long_when_it_is_broken(box):
    box.put("a.bas", b"x\r\n" * 32766 + b"' ein Kommentar, lang\r\n")
    equal(box.run("--format=lines", "--wrap=30", "a.bas").count(b"\n"), 32767)
    text = "a.bas: mehr als 32767 Zeilen nach dem Umbruch"
    box.run("--wrap=20", "-o", "out.htm", "a.bas", code=1, err=text)
    equal(box.names(), ["a.bas"])


@test
def any_bytes_are_converted(box):
    box.put("all.bas", bytes(range(256)) * 100)
    box.put("empty.bas", b"")
    box.put("zeros.bas", b"\0" * 100000)
    box.put("quotes.bas", b"\"'()_" * 20000)
    box.run("-d", "out", "all.bas", "empty.bas", "zeros.bas", "quotes.bas")
    holds(box.get("out/empty.htm"), b"<pre>\r\n\r\n</pre>")


@test
def names_that_look_like_options(box):
    box.put("-n.bas")
    equal(box.run("--", "-n.bas"), box.run("./-n.bas"))


@test
def names_that_are_no_text(box):
    box.posix_only()
    name = b"\xdcbung.bas"
    (box.folder / os.fsdecode(name)).write_bytes(MODULE)
    box.run("-d", "out", name)
    assert os.path.exists(os.path.join(os.fsencode(box.folder), b"out", b"\xdcbung.htm"))
    box.run(b"no\xdc.bas", code=1, err="no\ufffd.bas: Datei nicht gefunden")


@test
def stars_are_expanded_on_windows(box):
    if not box.windows:
        raise Skip("the shell does it")
    for name in ("a.bas", "b.bas", "ö.bas", "c.txt"):
        box.put(name)
    box.run("-d", "out", "*.bas")
    equal([name for name in box.names() if "out" in name], ["out/a.htm", "out/b.htm", "out/ö.htm"])


# ------------------------------------------------------------------------------- targets

@test
def an_older_result_is_replaced(box):
    box.put("a.bas")
    box.put("out.htm", b"old")
    equal(box.run("-o", "out.htm", "a.bas"), b"")
    equal(box.get("out.htm"), box.run("a.bas"))
    equal(box.run("-o", "-", "a.bas"), box.get("out.htm"))


@test
def targets_that_cannot_be(box):
    box.put("a.bas")
    (box.folder / "folder").mkdir()
    box.put("file", b"old")
    before = box.names()
    cases = [(("-o", "no/x.htm"), "no/x.htm kann nicht geschrieben werden: Ordner nicht gefunden"),
             (("-o", "folder"), "folder kann nicht geschrieben werden: ist ein Ordner"),
             (("-d", "file"), "file: "), (("-d", "file/out"), "file/out: ")]
    for arguments, text in cases:
        equal(box.run(*arguments, "a.bas", code=1, err=text), b"")
    equal(box.names(), before)
    equal(box.get("file"), b"old")


@test
def access_is_refused(box):
    box.posix_only()
    box.put("secret.bas")
    os.chmod(box.folder / "secret.bas", 0)
    box.put("a.bas")
    box.put("locked/old.htm", b"old")
    os.chmod(box.folder / "locked", 0o555)
    box.run_as_nobody("secret.bas", code=1, err="secret.bas: Zugriff verweigert")
    for target in ("locked/new.htm", "locked/old.htm"):
        box.run_as_nobody("-o", target, "a.bas", code=1,
                          err=target + " kann nicht geschrieben werden: Zugriff verweigert")
    box.run_as_nobody("-d", "locked/new", "a.bas", code=1, err="locked/new: Zugriff verweigert")
    equal([name for name in box.names() if not name.startswith("programm")],
          ["a.bas", "locked/old.htm", "secret.bas"])
    equal(box.get("locked/old.htm"), b"old")


@test
def the_disk_is_full(box):
    box.posix_only()
    import resource
    box.put("a.bas")
    box.put("large.bas", MODULE * 100)
    box.put("large.htm", b"old")
    full = "kann nicht geschrieben werden: Datenträger ist voll"
    box.run("-o", "/dev/full", "a.bas", code=1, err="a.bas: /dev/full " + full)

    def limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))
    too_large = "large.htm kann nicht geschrieben werden: Datei zu groß"
    box.run("-o", "large.htm", "large.bas", code=1, err=too_large, preexec_fn=limit)
    box.run("-d", ".", "large.bas", "a.bas", code=1, err=too_large, preexec_fn=limit)
    equal(box.names(), ["a.bas", "a.htm", "large.bas", "large.htm"])
    equal((box.get("large.htm"), box.get("a.htm")), (b"old", box.run("a.bas")))


@test
def the_result_can_go_to_a_device(box):
    box.posix_only()
    box.put("a.bas")
    equal(box.run("-o", "/dev/null", "a.bas"), b"")
    equal(box.run("-o", "/dev/stdout", "a.bas"), box.run("a.bas"))


# ------------------------------------------------------------------------------- streams

@test
def the_standard_input_is_a_source(box):
    box.put("a.bas")
    page = box.run("a.bas")
    equal(box.run("-", stdin=MODULE), page)
    box.run("-o", "out.htm", "-", stdin=MODULE)
    equal(box.get("out.htm"), page)
    large = MODULE * 3000
    box.put("large.bas", large)
    equal(box.run("--format=body", "-", stdin=large), box.run("--format=body", "large.bas"))
    box.run("--lines=11", "-", stdin=MODULE, code=1, err="Standardeingabe: --lines reicht")


@test
def an_input_stream_that_cannot_be_read(box):
    box.posix_only()
    box.run("-", code=1, err="Standardeingabe: ", preexec_fn=lambda: os.close(0))
    with open("/dev/null", "wb") as write_only:
        box.run("-", code=1, err="Standardeingabe: ", stdin=write_only)


@test
def an_output_stream_that_cannot_be_written(box):
    box.posix_only()
    box.put("a.bas")
    box.put("large.bas", MODULE * 100)
    full = "Standardausgabe kann nicht geschrieben werden: Datenträger ist voll"
    for name in ("a.bas", "large.bas"):
        with open("/dev/full", "wb") as device:
            box.run(name, code=1, err=f"{name}: {full}", stdout=device)
        box.run(name, code=1, err="Standardausgabe kann nicht geschrieben werden",
                preexec_fn=lambda: os.close(1))
        reader, writer = os.pipe()
        os.close(reader)
        box.run(name, code=-signal.SIGPIPE, stdout=writer)
        os.close(writer)
    for option in ("--help", "--version"):
        with open("/dev/full", "wb") as device:
            box.run(option, code=1, err="Standardausgabe kann nicht", stdout=device)


@test
def messages_never_land_in_a_result(box):
    """A file that is opened must not get the place of a closed error stream."""
    box.posix_only()
    names = [box.put(f"{i}.bas", MODULE * 50) if i % 2 else f"no{i}.bas" for i in range(200)]
    done = subprocess.run([*box.command, "--jobs=8", "-d", "out", *names], cwd=box.folder,
                          timeout=TIMEOUT, preexec_fn=lambda: os.close(2))
    equal(done.returncode, 1)
    page = box.run("1.bas")
    equal({box.get(name) for name in box.names() if name.startswith("out")}, {page})


@test
def a_terminal_gets_a_summary(box):
    names = [box.put(f"{i}.bas") for i in range(12)]
    code, told = box.on_terminal("-d", "out", *names)
    summary = told.split("\r")[-1]
    equal((code, bool(re.fullmatch(r"12 Dateien, 120 Zeilen in \d+(,\d+)?s verarbeitet\n",
                                   summary))), (0, True))
    equal(box.on_terminal("-q", "-d", "out", *names), (0, ""))
    equal(box.on_terminal("-q", "no.bas"), (1, "tintline: no.bas: Datei nicht gefunden\n"))
    code, told = box.on_terminal("0.bas")
    holds(told, "1 Datei, 10 Zeilen in ")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tintline", nargs="+", required=True, metavar="COMMAND")
    parser.add_argument("--only", default="", metavar="PART-OF-A-NAME")
    arguments = parser.parse_args()
    command = with_full_paths(arguments.tintline)
    return run_tests(listed_tests(lambda function: in_box(function, command), arguments.only))


if __name__ == "__main__":
    sys.exit(main())
