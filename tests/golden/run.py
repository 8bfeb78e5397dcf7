"""Golden cases: the program must give exactly the expected bytes. See README.md here.

    python3 -m tests.golden.run --tintline COMMAND... [--only CASE]
    python3 -m tests.golden.run --promote CASE
"""
import argparse
import pathlib
import shlex
import shutil
import subprocess
import sys

from tests.support.checks import ENVIRONMENT, run_program, run_tests, with_full_paths

HERE = pathlib.Path(__file__).resolve().parent
NEW = HERE.parent.parent / "build" / "golden-new"
TIMEOUT = 60  # seconds for one run


def runs_of(case):
    """(expected file, arguments) of every line of the case's options file."""
    for line in (case / "options").read_text(encoding="utf-8").splitlines():
        if line.strip() and not line.startswith("#"):
            expected, arguments = line.split(":", 1)
            yield case / expected.strip(), shlex.split(arguments)


def first_difference(expected, actual):
    """Where two results part, for a reader."""
    lines = zip(expected.splitlines(True), actual.splitlines(True))
    number = 0
    for number, (old, new) in enumerate(lines, 1):
        if old != new:
            return f"line {number}:\n  expected {old!r}\n  got      {new!r}"
    return f"one ends behind line {number}"


def check(command, expected, arguments):
    """Fails when the run does not give the expected bytes, or says anything but what stands in the
    file that ends in .err, and keeps what it gave."""
    done = run_program(command + arguments, cwd=expected.parent, timeout=TIMEOUT,
                       stdin=subprocess.DEVNULL, capture_output=True, env=ENVIRONMENT)
    assert done.returncode == 0, f"exit code {done.returncode}, {done.stderr!r}"
    told = expected.with_suffix(".err")
    same(told, done.stderr.replace(b"\r\n", b"\n"), told.read_bytes() if told.exists() else b"")
    same(expected, done.stdout, expected.read_bytes() if expected.exists() else None)


def same(expected, actual, wanted):
    if actual == wanted:
        return
    new = NEW / expected.parent.name / expected.name
    new.parent.mkdir(parents=True, exist_ok=True)
    new.write_bytes(actual)
    what = "there is no such file yet" if wanted is None else first_difference(wanted, actual)
    raise AssertionError(f"{what}\n  new bytes: {new.relative_to(HERE.parent.parent)}; "
                         f"right? python3 -m tests.golden.run --promote {expected.parent.name}")


def unused(expected):
    raise AssertionError("no line of options gives this file")


def promote(name):
    """Takes the new bytes of the last run as the expected ones."""
    if not (NEW / name).is_dir():
        sys.exit(f"nothing new for {name}")
    for file in (NEW / name).iterdir():
        shutil.copyfile(file, HERE / name / file.name)
        print(f"tests/golden/{name}/{file.name}")
    shutil.rmtree(NEW / name)


def tests(command, only):
    """(what is tested, function that fails when it is not so)"""
    command = with_full_paths(command)
    for options in sorted(HERE.glob("*/options")):
        case = options.parent
        if only and case.name != only:
            continue
        shutil.rmtree(NEW / case.name, ignore_errors=True)
        expected_files = set(case.glob("expected*")) - set(case.glob("*.err"))
        for expected, arguments in runs_of(case):
            expected_files.discard(expected)
            yield f"{case.name}/{expected.name}", lambda: check(command, expected, arguments)
        for expected in sorted(expected_files):
            yield f"{case.name}/{expected.name}", lambda: unused(expected)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tintline", nargs="+", metavar="COMMAND", help="the program to test")
    parser.add_argument("--only", metavar="CASE")
    parser.add_argument("--promote", metavar="CASE")
    arguments = parser.parse_args()
    if arguments.promote:
        promote(arguments.promote)
    elif arguments.tintline:
        sys.exit(run_tests(tests(arguments.tintline, arguments.only)))
    else:
        parser.error("--tintline or --promote")


main()
