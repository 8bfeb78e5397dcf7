#!/usr/bin/env python3
"""Whole-process measurements of the command line, as a Markdown table.

    bench/run.py [--build DIR] [--rounds N] [--dir DIR]

Every figure stands beside two runs of the bound program, taken in turns with it:
"escape" reads, escapes "<" and ">" and writes; "same output" writes as many
bytes as the conversion does. Where the programs highlight and source-highlight are
installed, they convert the same modules; directly behind them ours does it several times, as
one run of theirs lasts as long as many of ours. A figure is the median over all rounds, a
ratio the median of the ratios of the rounds. Processor time tells the same on a machine that
has other things to do.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from statistics import median
from zipfile import ZipFile

from table import Bars, Table

ROOT = Path(__file__).resolve().parent.parent
MIB = 1024 * 1024
WALL, PROCESSOR, PEAK = range(3)  # what a run is measured by: seconds, seconds, KiB
SPACE = 4 * 1024 * MIB  # what corpus and results need at most


class Bench:
    def __init__(self, build, work):
        self.build = build
        self.work = work
        self.commands = {}  # name -> the command line that is measured
        self.every = {}  # name -> it is measured in each so manyth round
        self.turns = {}  # name -> so often in a row, the median counts
        self.runs = {}  # name -> what each round measured, None when it was left out

    def tool(self, name):
        return str(self.build / name)

    def folder(self, name):
        path = self.work / name
        path.mkdir(parents=True, exist_ok=True)
        return path

    def add(self, name, command, every=1, turns=1):
        self.commands[name] = [str(part) for part in command]
        self.every[name] = every
        self.turns[name] = turns
        self.runs[name] = []

    def add_conversion(self, name, files, *options):
        """The program and the two bounds over these files, under name, name+escape, name+same."""
        out = self.folder(f"out/{name}")
        self.add(name, [self.tool("tintline"), "-d", out, *options, *files])
        self.add(f"{name}+escape",
                 [self.tool("bound"), "escape", self.folder("bound/escape"), *files])
        self.add(f"{name}+same",
                 [self.tool("bound"), "same", self.folder("bound/same"), out, *files])

    def measure(self, rounds):
        for current in range(rounds + 1):
            for name, command in self.commands.items():
                wanted = current % self.every[name] == 0
                result = self.run(name, command) if wanted else None
                if current > 0:  # the first round warms up and writes what `bound same` looks at
                    self.runs[name].append(result)

    def run(self, name, command):
        runs = [self.run_once(name, command) for _ in range(self.turns[name])]
        return tuple(median(values) for values in zip(*runs))

    def run_once(self, name, command):
        done = subprocess.run([self.tool("measure_posix"), *command], capture_output=True,
                              text=True, check=True)
        wall, processor, peak, code = done.stdout.split()[-4:]
        if code != "0":
            sys.exit(f"{name} ended with {code}: {done.stderr.strip()}")
        return float(wall), float(processor), int(peak)

    def wall(self, name):
        return median(run[WALL] for run in self.runs[name] if run)

    def peak(self, name):
        return max(run[PEAK] for run in self.runs[name] if run) / 1024

    def ratio(self, name, other, clock=WALL):
        pairs = zip(self.runs[name], self.runs[other])
        return median(mine[clock] / theirs[clock] for mine, theirs in pairs if mine and theirs)


def size_of(files):
    return sum(os.path.getsize(file) for file in files)


def lines_of(files):
    return sum(Path(file).read_bytes().count(b"\n") for file in files)


CLASSIC = ["-q", "--mode", "classic"]
EXACT = ["-q", "--mode", "exact", "-n", "--titles", "on", "--links"]
# name of the row, set of modules, options
CONVERSIONS = [
    ("class, no names to link", "modules", [*CLASSIC, "--pasted"]),
    ("class, own names", "modules", CLASSIC),
    ("class, own names, line numbers", "modules", [*CLASSIC, "-n"]),
    ("class, 500 names a module", "names500", CLASSIC),
    ("class, 500 names, large modules", "large500", CLASSIC),
    ("inline, no names to link", "modules", [*CLASSIC, "--style", "inline", "--pasted"]),
    ("inline, own names", "modules", [*CLASSIC, "--style", "inline"]),
    ("inline, 500 names a module", "names500", [*CLASSIC, "--style", "inline"]),
    ("one module of nearly 32,767 lines", "single/longest.bas", CLASSIC),
    ("exact, links in the module", "modules", [*EXACT, "module"]),
    ("exact, links over all modules", "modules", [*EXACT, "all"]),
    ("exact, 500 names a module", "names500", [*EXACT, "module"]),
    ("exact, one module of nearly 32,767 lines", "single/longest.bas", [*EXACT, "module"]),
]
OVER_ALL = "exact, links over all modules"  # keeps all modules in memory
# What is compared with other programs over the same modules, and how often as fast it shall be.
COMPARED = [("class, own names", 25), ("exact, links in the module", 25), (OVER_ALL, None)]
OTHERS = {
    "highlight": ["highlight", "-q", "-S", "vb", "-O", "html", "-d"],
    "source-highlight": ["source-highlight", "-q", "-s", "vbscript", "-f", "html", "--output-dir"],
}
OTHERS_EVERY = {"highlight": 1, "source-highlight": 3}  # rounds: the one takes long
COMPARED_TURNS = 5
PROJECT_EVERY = 3
# Lines of two megabytes and four of each kind of character.
LONG_LINES = {"names": "Wert1", "words": "Wert1 ", "calls": "Ruf Wert1 ", "quotes": '"', "opening": "(",
              "nested calls": "f(", "pairs": "(a)", "indexes": "a(b)", "commas": "a,",
              "less-than": "<", "named arguments": "a:=", "apostrophes": "'", "blanks": " ",
              "colons": "a:", "continued": "Wert1 + " * 25 + "_\r\n", "numbers": "1.", "dots": ".a"}
# What a module can have many of, as the lines in front of and behind those of the next one; in "$"
# stands its number. Behind them come lines that use it.
MANY = {
    "procedures": ("Sub Prozedur$(Wert$)\r\n  Ruf$ Wert$\r\nEnd Sub\r\n", "", ""),
    "variables": ("Dim Wert$ As Long\r\n", "", "Sub Ruf$()\r\n  Wert$ = Wert$ + 1\r\nEnd Sub\r\n"),
    "locals": ("Dim Wert$ As Long\r\n", "", "Wert$ = Wert$ + 1\r\n"),
    "nested blocks": ("If Wert$ > 1 Then\r\n", "End If\r\n", ""),
    "nested objects": ("With Wert$.Teil\r\n", "End With\r\n", ""),
    "comments": ("' Bemerkung $\r\n", "", ""),
    "continued lines": ("Ruf Wert$, _\r\n  Teil$\r\n", "", ""),
}
LOOSE = ("procedures", "variables", "comments")  # not inside of a procedure
MANY_COUNTS = (4000, 8000)  # the classic mode has a limit of 32,767 lines
MANY_FILES = 5  # of the same content, so that a run takes long enough
MODES = {"classic": CLASSIC, "exact": [*EXACT, "module"]}
LIST_BOOKS, INFLATE_BOOKS = "modules of all workbooks", "their projects inflated"
# What starts with a small file: a name of the row, the file, options, times /bin/true with a copy.
STARTS = [("a module of 100 lines, classic", "single/100.bas", MODES["classic"], 2),
          ("a module of 100 lines, exact", "single/100.bas", MODES["exact"], 2.5),
          ("a workbook of 14 KB, exact", "office/start.xlsm", MODES["exact"], 3)]
START_TURNS = 10  # a round: so short that one run says little
PROJECT = ["-q", "--project", "--jobs", "1"]
PROJECT_PAGES = "exact pages of the project"
UNCHANGED = "project, all as it was"
NAMES = [10, 100, 500, 1000]
GROWTH = [1, 2, 4]
JOB_ROUNDS = 60
TWO_CORES = 1.8  # times the work of one busy program that two at once get done on two cores


def plan(bench, corpus):
    def files(place):
        path = corpus / place
        return [path] if path.is_file() else sorted(path.iterdir())

    for name, place, options in CONVERSIONS:
        bench.add_conversion(name, files(place), "--jobs", "1", *options)
    plan_others(bench, files("modules"))
    for mode, options in MODES.items():
        plan_growth(bench, files, mode, options)
    bench.add(PROJECT_PAGES, [bench.tool("tintline"), "--jobs", "1", *EXACT, "all", "-d",
                              bench.folder(f"out/{PROJECT_PAGES}"), corpus / "project/4"],
              PROJECT_EVERY)
    for factor in GROWTH:
        site = bench.folder(f"out/project {factor}")
        command = [bench.tool("tintline"), *PROJECT, "-d", site, corpus / f"project/{factor}"]
        again = ["sh", "-c", 'rm -r "$1"; shift; exec "$@"', "sh", site, *command]
        bench.add(f"project {factor}", again, PROJECT_EVERY)
    bench.add(UNCHANGED, command, PROJECT_EVERY)
    for count in NAMES:
        bench.add(f"names {count}", [bench.tool("tintline"), "--jobs", "1", *CLASSIC, "-d",
                                     bench.folder(f"out/names {count}"), *files(f"names/{count}")])
    plan_office(bench, files("office/books"))
    plan_starts(bench, corpus)
    return files


def plan_others(bench, modules):
    others = {name: command for name, command in OTHERS.items() if shutil.which(name)}
    for other, command in others.items():
        every = OTHERS_EVERY[other]
        bench.add(other, [*command, bench.folder(f"out/{other}"), *modules], every)
        for name, _ in COMPARED:
            bench.add(f"{name} beside {other}", bench.commands[name], every, COMPARED_TURNS)


def plan_office(bench, books):
    bench.add(LIST_BOOKS, [bench.tool("tintline"), "--list", "-o",
                           bench.folder("out/office") / "list.txt", *books])
    bench.add(INFLATE_BOOKS, [bench.tool("inflate_projects"), *books])


def plan_starts(bench, corpus):
    out = bench.folder("out/start")
    for turn in range(START_TURNS):
        for name, file, options, _ in STARTS:
            source = corpus / file
            bench.add(f"{name} {turn}",
                      [bench.tool("tintline"), *options, "-o", out / "page.htm", source])
            bench.add(f"{name}+copy {turn}", ["--copy", source, out / "copy", "/bin/true"])


def many(kind, count):
    front, behind, uses = (
        "".join(text.replace("$", f"{number:05}") for number in range(count)) for text in MANY[kind])
    code = front + behind + uses
    return code if kind in LOOSE else f"Sub Ruf()\r\n{code}End Sub\r\n"


def plan_growth(bench, files, mode, options):
    def add(name, *inputs):
        name = f"{mode} {name}"
        bench.add(name, [bench.tool("tintline"), "--jobs", "1", *options, "-d",
                         bench.folder(f"out/{name}"), *inputs])

    for factor in GROWTH:
        add(f"growth {factor}", *files(f"growth/{factor}"))
    for kind in MANY:
        for count in MANY_COUNTS:
            folder = bench.folder(f"many/{kind} {count}")
            paths = [folder / f"{copy}.bas" for copy in range(MANY_FILES)]
            for path in paths:
                path.write_text(many(kind, count), newline="")
            add(f"many {kind} {count}", *paths)
    for kind, text in LONG_LINES.items():
        for megabytes in (2, 4):
            path = bench.folder("long") / f"{kind} {megabytes}.bas"
            line = text * (megabytes * MIB // len(text))
            path.write_text(f"Sub Ruf()\r\n{line}\r\nEnd Sub\r\n", newline="")
            add(f"long {kind} {megabytes}", path)


def report_conversions(bench, files):
    table = Table("whole process, one job", "MB/s", "lines/s", "time", "peak memory",
                  "× escape", "× same output", "the same in processor time")
    for name, place, _ in CONVERSIONS:
        inputs = files(place)
        wall = bench.wall(name)
        table.row(name, f"{size_of(inputs) / wall / 1e6:.0f}", f"{lines_of(inputs) / wall:,.0f}",
                  f"{wall * 1e3:.1f} ms", f"{bench.peak(name):.1f} MiB",
                  f"{bench.ratio(name, f'{name}+escape'):.2f}",
                  f"{bench.ratio(name, f'{name}+same'):.2f}",
                  f"{bench.ratio(name, f'{name}+same', PROCESSOR):.2f}")


def report_memory(bench, bars, files):
    table = Table("peak memory, one job", "largest input", "its output", "peak", "reach")
    for name, place, _ in CONVERSIONS:
        out = bench.folder(f"out/{name}")
        pairs = [(size_of([file]), size_of([out / (file.stem + ".htm")])) for file in files(place)]
        source, result = max(pairs, key=sum)
        limit = source + result + (3 * size_of(files(place)) if name == OVER_ALL else 0)
        table.row(name, f"{source / MIB:.2f} MiB", f"{result / MIB:.2f} MiB",
                  f"{bench.peak(name):.1f} MiB",
                  bars.at_most(bench.peak(name), limit / MIB + 16, " MiB"))


def report_others(bench, bars):
    table = Table("the same modules, one job", "time", "as fast as", "times",
                  "the same in processor time", "reach")
    for name, wanted in COMPARED:
        for other in filter(shutil.which, OTHERS):
            ours = f"{name} beside {other}"
            times = bench.ratio(other, ours)
            table.row(name, f"{bench.wall(ours) * 1e3:.1f} ms",
                      f"{other}: {bench.wall(other) * 1e3:.0f} ms", f"{times:.1f}",
                      f"{bench.ratio(other, ours, PROCESSOR):.1f}",
                      bars.at_least(times, wanted) if wanted and other == "highlight" else "")
    exact, classic = "exact, links in the module", "class, own names, line numbers"
    for name, other, limit in ((exact, classic, 1), (OVER_ALL, exact, 1.3)):
        times = bench.ratio(name, other)
        table.row(name, f"{bench.wall(name) * 1e3:.1f} ms", f"{other}, of its time",
                  f"{times:.2f}", f"{bench.ratio(name, other, PROCESSOR):.2f}",
                  bars.at_most(times, limit))


def report_growth(bench, bars, files):
    table = Table("growth", "time", "times", "reach")
    for mode in MODES:
        before = None
        for factor in GROWTH:
            name = f"{mode} growth {factor}"
            lines = lines_of(files(f"growth/{factor}"))
            times = bench.ratio(name, before) if before else None
            table.row(f"{mode}, 20 modules of {factor * 100} KB ({lines:,} lines)",
                      f"{bench.wall(name) * 1e3:.1f} ms", f"{times:.2f}" if times else "",
                      bars.at_most(times, 2.1) if times else "")
            before = name
    for count in NAMES:
        name = f"names {count}"
        times = bench.ratio(name, f"names {NAMES[0]}")
        table.row(f"{count} names that do not occur", f"{bench.wall(name) * 1e3:.1f} ms",
                  f"{times:.2f}", bars.at_most(times, 1.5) if count == NAMES[-1] else "")


def report_many(bench, bars):
    few, most = MANY_COUNTS
    table = Table(f"{MANY_FILES} modules with {most:,}, and with {few:,}", "time", "times", "reach")
    for mode in MODES:
        for kind in MANY:
            name = f"{mode} many {kind}"
            times = bench.ratio(f"{name} {most}", f"{name} {few}")
            table.row(f"{mode}, {kind}", f"{bench.wall(f'{name} {most}') * 1e3:.1f} ms",
                      f"{times:.2f}", bars.at_most(times, 2.1))


def report_projects(bench, bars, files):
    """Sites of whole projects, against pages of the same modules."""
    table = Table("a site, one job", "sources", "time", "× exact pages", "× half the sources",
                  "peak memory", "reach")
    for factor in GROWTH:
        name, size = f"project {factor}", size_of(files(f"project/{factor}"))
        pages = bench.ratio(name, PROJECT_PAGES) if factor == GROWTH[-1] else None
        growth = bench.ratio(name, f"project {factor // 2}") if factor > 1 else None
        reach = bars.at_most(bench.peak(name), 4 * size / MIB + 64, " MiB")
        reach += f", {bars.at_most(growth, 2.1)}" if growth else ""
        reach += f", {bars.at_most(pages, 3)}" if pages else ""
        table.row(f"{len(files(f'project/{factor}'))} modules", f"{size / MIB:.1f} MiB",
                  f"{bench.wall(name) * 1e3:.0f} ms", f"{pages:.2f}" if pages else "",
                  f"{growth:.2f}" if growth else "", f"{bench.peak(name):.1f} MiB", reach)
    table.row(UNCHANGED, "", f"{bench.wall(UNCHANGED) * 1e3:.0f} ms",
              f"{bench.ratio(UNCHANGED, PROJECT_PAGES):.2f}", "",
              f"{bench.peak(UNCHANGED):.1f} MiB", "")


def report_long_lines(bench, bars):
    table = Table("a line of 4 MiB, and one of 2 MiB", "time", "times", "reach")
    for mode in MODES:
        for kind in LONG_LINES:
            name = f"{mode} long {kind}"
            times = bench.ratio(f"{name} 4", f"{name} 2")
            table.row(f"{mode}, {kind}", f"{bench.wall(f'{name} 4') * 1e3:.1f} ms", f"{times:.2f}",
                      bars.at_most(times, 2.1))


def largest_part(book):
    with ZipFile(book) as package:
        return max(part.file_size for part in package.infolist())


def report_office(bench, bars, files):
    books = files("office/books")
    table = Table("closed Office files", "files", "time", "beside", "times",
                  "the same in processor time", "peak memory", "reach")
    times = bench.ratio(LIST_BOOKS, INFLATE_BOOKS)
    most = max(map(largest_part, books)) / MIB + 16
    table.row(LIST_BOOKS, f"{len(books)}, {size_of(books) / 1e6:.0f} MB",
              f"{bench.wall(LIST_BOOKS) * 1e3:.0f} ms",
              f"{INFLATE_BOOKS} by zlib alone: {bench.wall(INFLATE_BOOKS) * 1e3:.0f} ms",
              f"{times:.2f}", f"{bench.ratio(LIST_BOOKS, INFLATE_BOOKS, PROCESSOR):.2f}",
              f"{bench.peak(LIST_BOOKS):.1f} MiB",
              f"{bars.at_most(times, 2)}, {bars.at_most(bench.peak(LIST_BOOKS), most, ' MiB')}")


def report_starts(bench, bars):
    table = Table("start and a small file", "time", "beside", "times", "reach")
    turns = range(START_TURNS)
    for name, _, _, limit in STARTS:
        wall, true = (median(bench.wall(f"{run} {turn}") for turn in turns)
                      for run in (name, f"{name}+copy"))
        times = median(bench.ratio(f"{name} {turn}", f"{name}+copy {turn}") for turn in turns)
        table.row(name, f"{wall * 1e3:.2f} ms",
                  f"/bin/true and a copy of the file: {true * 1e3:.2f} ms", f"{times:.2f}",
                  bars.at_most(times, limit))


def busy_programs(bench, count):
    """Seconds until so many programs that only count, started at once, have ended."""
    running = [subprocess.Popen([bench.tool("measure_posix"), bench.tool("spin")],
                                stdout=subprocess.PIPE, text=True) for _ in range(count)]
    return max(float(program.communicate()[0].split()[-4]) for program in running)


def report_jobs(bench, bars, files):
    """Two jobs beside one, told apart by whether the processors were two cores in that moment:
    those of a virtual machine share one at times."""
    def convert(jobs):
        return bench.run_once(f"{jobs} jobs", [
            bench.tool("tintline"), *CLASSIC, "--jobs", str(jobs), "-d", str(bench.folder("out/jobs")),
            *map(str, files("modules"))])[WALL]

    rounds = {True: [], False: []}
    for _ in range(JOB_ROUNDS):
        one = convert(1)
        before, two, after = busy_programs(bench, 2), convert(2), busy_programs(bench, 2)
        cores = 2 * busy_programs(bench, 1) / max(before, after)
        rounds[cores >= TWO_CORES].append((one, two))
    table = Table("of two busy programs each runs", "rounds", "one job", "two jobs", "times", "reach")
    for whole, name in ((True, f"at {TWO_CORES / 2:.0%} of its speed or more: two cores"),
                        (False, "slower: the processors share a core, or others use it")):
        times = median(one / two for one, two in rounds[whole]) if rounds[whole] else 0
        wall = [f"{median(run) * 1e3:.1f} ms" for run in zip(*rounds[whole])] or ["", ""]
        table.row(name, f"{len(rounds[whole])} of {JOB_ROUNDS}", *wall, f"{times:.2f}",
                  bars.at_least(times, 1.7) if whole else "")


def work_folder(chosen, build):
    if chosen:
        chosen.mkdir(parents=True, exist_ok=True)
        return tempfile.mkdtemp(prefix="tintline-bench-", dir=chosen)
    memory = Path("/dev/shm")  # files in memory: no disk in the figures
    roomy = os.access(memory, os.W_OK) and shutil.disk_usage(memory).free > SPACE
    return tempfile.mkdtemp(prefix="tintline-bench-", dir=memory if roomy else build)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=Path, default=ROOT / "build/bench",
                        help="folder of the built programs")
    parser.add_argument("--rounds", type=int, default=9)
    parser.add_argument("--dir", type=Path, help="where corpus and results are put")
    options = parser.parse_args()

    work = Path(work_folder(options.dir, options.build))
    try:
        bench, bars = Bench(options.build.resolve(), work), Bars()
        shape = subprocess.run([bench.tool("make_corpus"), work / "corpus"], capture_output=True,
                               text=True)
        print(f"Corpus:\n\n```\n{shape.stdout}{shape.stderr}```")
        if shape.returncode != 0:
            sys.exit("the corpus has not the shape that it should have")
        modules = sorted((work / "corpus/modules").iterdir())
        subprocess.run([bench.tool("make_office_corpus"), work / "corpus/office", *modules],
                       check=True)
        files = plan(bench, work / "corpus")
        bench.measure(options.rounds)
        print(f"\n{options.rounds} rounds, {os.cpu_count()} processors, files in "
              f"{'memory' if str(work).startswith('/dev/shm') else 'the file system'}.")
        report_conversions(bench, files)
        report_memory(bench, bars, files)
        report_others(bench, bars)
        report_growth(bench, bars, files)
        report_many(bench, bars)
        report_projects(bench, bars, files)
        report_long_lines(bench, bars)
        report_office(bench, bars, files)
        report_starts(bench, bars)
        report_jobs(bench, bars, files)
        print(f"\n{bars.reached} reached, {bars.missed} missed")
    finally:
        shutil.rmtree(work)


if __name__ == "__main__":
    main()
