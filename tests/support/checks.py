"""What the Python test programs have in common: the list of tests, checks, and the count."""
import os
import pathlib
import subprocess
import traceback

TESTS = []

# In which programs are tried: nobody's own settings, and the language that has the longer way.
# (The shell in front of Wine would complain of an LC_ALL that it does not know.)
ENVIRONMENT = {**os.environ, "LC_ALL": "", "LC_MESSAGES": "de_DE.UTF-8",
               "XDG_CONFIG_HOME": "/nonexistent", "TINTLINE_SETTINGS": "", "TINTLINE_KEYWORDS": ""}


class Skip(Exception):
    """Raised by a test that is not for the program at hand."""


def test(function):
    TESTS.append(function)
    return function


def equal(actual, expected):
    assert actual == expected, f"got {actual!r}\nexpected {expected!r}"


def holds(text, *parts):
    for part in parts:
        assert part in text, f"{part!r} is missing in {text!r}"


def holds_not(text, *parts):
    for part in parts:
        assert part not in text, f"{part!r} stands in {text!r}"


def none(findings):
    findings = list(findings)
    assert not findings, findings


def with_full_paths(command):
    """A command for tests that run in folders of their own: what names a file here still does."""
    return [str(pathlib.Path(word).resolve()) if pathlib.Path(word).exists() else word
            for word in command]


def run_program(command, **process):
    """As subprocess.run. Under Wine a busy machine at times ends a program at its start, with
    exit code 1 and without a word; ours always says why: then it is started once more."""
    done = subprocess.run(command, **process)
    if done.returncode == 1 and not done.stdout and not done.stderr:
        done = subprocess.run(command, **process)
    return done


def run_tests(tests):
    """Calls the functions of (name, function) pairs, prints each failure and, last, the count.
    The exit code: 1 when a test failed or there was none."""
    count = {"passed": 0, "failed": 0, "skipped": 0}
    for name, function in tests:
        try:
            function()
            count["passed"] += 1
        except Skip as reason:
            count["skipped"] += 1
            print(f"skipped {name}: {reason}")
        except Exception:  # of any kind: the other tests still run
            count["failed"] += 1
            print(f"FAILED {name}\n{traceback.format_exc(limit=-2)}")
    print(", ".join(f"{number} {what}" for what, number in count.items()))
    return 1 if count["failed"] or not count["passed"] else 0


def listed_tests(call, only=""):
    """The tests of the list with that part in their names; `call(function)` runs one."""
    for function in TESTS:
        if only in function.__name__:
            yield function.__name__, lambda: call(function)
