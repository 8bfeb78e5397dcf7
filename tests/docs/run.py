"""Does what README.md, the handbook and the manual pages tell a reader to do, and follows links.

    python3 -m tests.docs.run --tintline PROGRAM

Every line of their code blocks that calls "tintline" is run as it stands, in a folder that has
modules under the names in it, and every settings file in them is read. Prints each failure and, last, "N passed, N failed".
"""
import argparse
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.checks import ENVIRONMENT, none, run_tests

ROOT = Path(__file__).resolve().parent.parent.parent
HANDBOOK = ROOT / "docs/handbuch.md"
DOCUMENTS = [*sorted(ROOT.glob("*.md")), *sorted(ROOT.glob("docs/*.md"))]


def output_of(*command, **process):
    done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, timeout=60,
                          capture_output=True, check=False, **process)
    assert done.returncode == 0, (done.returncode, done.stderr.decode("utf-8", "replace"))
    return done.stdout.decode("utf-8", "replace")


def run_command(line, program, scratch):
    folder = Path(tempfile.mkdtemp(dir=scratch))
    words = shlex.split(re.sub(r"\s#.*", "", line))
    for example in (ROOT / "data/examples").iterdir():
        shutil.copy(example, folder)
        for name in ("Projekt", "Project"):
            (folder / name).mkdir(exist_ok=True)
            shutil.copy(example, folder / name)
        for word in words:
            if word.endswith(example.suffix) and "*" not in word:
                shutil.copy(example, folder / word)
            elif word.endswith((".xlsm", ".docm")):
                shutil.copy(ROOT / "tests/golden/office/Mappe.xlsm", folder / word)
            elif word.endswith(".ini"):
                shutil.copy(ROOT / "data/vb.ini", folder / word)
    before = set(folder.rglob("*"))
    said = output_of("bash", "-c", line, cwd=folder,
                     env={**ENVIRONMENT, "PATH": f"{program.parent}:{os.environ['PATH']}"})
    made = [path for path in set(folder.rglob("*")) - before if path.is_file()]
    assert said.strip() or made and all(path.stat().st_size for path in made), "nothing written"


def code_blocks(text):
    """What a guide shows as code, or the examples of a manual page, one below the other."""
    if not text.startswith(".\\\""):
        return "\n".join(re.findall(r"^```.*?^```$|^    .*?$", text, re.M | re.S))
    files_and_examples = text[text.index(".I /usr/share/doc"):].replace("\\-", "-")
    return re.sub(r"^\.B (?=tintline .)", "", files_and_examples, flags=re.M)


def read_settings(settings, program, scratch):
    """A settings file in a guide is one of which there is nothing to complain."""
    file = Path(scratch) / "shown.ini"
    file.write_text(settings, encoding="utf-8", newline="\r\n")
    done = subprocess.run([program, "--settings", file, "--print-settings"], capture_output=True,
                          check=True, env=ENVIRONMENT)
    assert not done.stderr, done.stderr
    said = done.stdout.decode().splitlines()
    none(line for line in settings.splitlines() if line not in said)


def show_changes_in_git(program, folder):
    """The two lines of the handbook let git show what changed in the code of a workbook."""
    lines = re.search(r"^    (\S+ diff=\S+) .*\n    (git config .*?)  ", HANDBOOK.read_text("utf-8"),
                      re.M)
    folder.mkdir()
    (folder / ".gitattributes").write_text(lines[1] + "\n")
    (folder / "Mappe.xlsm").write_bytes(b"")
    shutil.copy(ROOT / "tests/golden/office/Mappe.xlsm", folder / "neu.xlsm")
    environment = {**ENVIRONMENT, "PATH": f"{program.parent}:{os.environ['PATH']}",
                   "GIT_CONFIG_GLOBAL": "/dev/null"}
    said = output_of("bash", "-ec", f"git init -q; {lines[2]}; cp neu.xlsm Mappe.xlsm; git add .; "
                     "rm Mappe.xlsm; git diff", cwd=folder, env=environment)
    assert "\n-Public Sub Gruessen()" in said, said


def links_lead_somewhere(document):
    """Those to other sites are not visited."""
    text = document.read_text(encoding="utf-8")
    anchors = re.findall(r'<a id="([^"]+)">', text)
    shown = re.sub(r"```.*?```|`[^`\n]*`", "", text, flags=re.S)
    for target in re.findall(r"\]\(([^)\s]+)\)", shown):
        path, _, anchor = target.partition("#")
        assert target.startswith("http") or (document.parent / path).exists(), target
        assert not anchor or path or anchor in anchors, target


def commands_and_options_are_told(program):
    known = set(re.findall(r"^\./dev ([a-z]+)", output_of(ROOT / "dev"), re.M))
    for document in DOCUMENTS:
        none(set(re.findall(r"\./dev ([a-z]+)", document.read_text(encoding="utf-8"))) - known)
    options = set(re.findall(r"^ +(?:-\w, )?(--[a-z-]+)", output_of(program, "--help"), re.M))
    assert len(options) >= 10, options
    none(options - set(re.findall(r"--[a-z-]+", HANDBOOK.read_text(encoding="utf-8"))))


def completions_know_every_option(program):
    options = set(re.findall(r"^ +(?:-\w, )?--([a-z-]+)", output_of(program, "--help"), re.M))
    for name, begin in (("tintline.bash", "--"), ("_tintline", "--"), ("tintline.fish", " -l ")):
        text = re.sub("#.*", "", (ROOT / "package" / name).read_text("utf-8"))
        known = set(re.findall(begin + "([a-z-]{2,})", text))
        assert known == options, (name, known ^ options)


def tests(program, scratch):
    """(what is tested, function that fails when it is not so)"""
    yield "commands and options", lambda: commands_and_options_are_told(program)
    yield "completions", lambda: completions_know_every_option(program)
    for document in DOCUMENTS:
        yield f"links of {document.name}", lambda: links_lead_somewhere(document)
    for guide in (ROOT / "README.md", HANDBOOK, *sorted(ROOT.glob("package/man/*"))):
        blocks = code_blocks(guide.read_text("utf-8"))
        lines = re.findall(r"^[ \t]*((?:.*\| *)?tintline .*)$", blocks, re.M)
        assert lines, f"{guide.name} shows no command"
        for line in lines:
            yield f"{guide.name}: {line}", lambda: run_command(line, program, scratch)
        for settings in re.findall(r"^\[TINTLINE\]\n(?:.+=.*\n)+", blocks, re.M):
            yield f"{guide.name}: settings", lambda: read_settings(settings, program, scratch)
    yield "git", lambda: show_changes_in_git(program, Path(scratch) / "git")


def main():
    parser = argparse.ArgumentParser(description="Does what the guides tell a reader to do.")
    parser.add_argument("--tintline", required=True, type=Path, metavar="PROGRAM")
    program = parser.parse_args().tintline.resolve()
    with tempfile.TemporaryDirectory(prefix="tintline-docs-") as scratch:
        return run_tests(tests(program, scratch))


if __name__ == "__main__":
    sys.exit(main())
