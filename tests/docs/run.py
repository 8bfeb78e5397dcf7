"""Does what README.md and the handbook tell a reader to do, and follows their links.

    python3 -m tests.docs.run --tintline PROGRAM

Every line of their code blocks that calls "tintline" is run as it stands, in a folder that has
modules under the names in it. Prints each failure and, last, "N passed, N failed".
"""
import argparse
import html
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.checks import equal, none, run_tests

ROOT = Path(__file__).resolve().parent.parent.parent
HANDBOOK = ROOT / "docs/handbuch.md"
EXAMPLES = ROOT / "data/examples"


def output_of(*command, **process):
    done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, timeout=60,
                          capture_output=True, check=False, **process)
    assert done.returncode == 0, (done.returncode, done.stderr.decode("utf-8", "replace"))
    return done.stdout.decode("utf-8", "replace")


def run_command(line, program, scratch):
    folder = Path(tempfile.mkdtemp(dir=scratch))
    words = shlex.split(line, comments=True)
    for example in EXAMPLES.iterdir():
        shutil.copy(example, folder)
        for word in words:
            if word.endswith(example.suffix) and "*" not in word:
                shutil.copy(example, folder / word)
            elif word.endswith(".ini"):
                shutil.copy(ROOT / "data/vb.ini", folder / word)
    before = set(folder.rglob("*"))
    said = output_of("bash", "-c", line, cwd=folder,
                     env={**os.environ, "PATH": f"{program.parent}:{os.environ['PATH']}"})
    made = [path for path in set(folder.rglob("*")) - before if path.is_file()]
    assert said.strip() or made and all(path.stat().st_size for path in made), "nothing written"


def links_lead_somewhere(document):
    """Those to other sites are not visited."""
    text = document.read_text(encoding="utf-8")
    anchors = re.findall(r'<a id="([^"]+)">', text)
    assert len(anchors) == len(set(anchors)), anchors
    for target in re.findall(r"\]\(([^)\s]+)\)", re.sub(r"```.*?```|`[^`\n]*`", "", text,
                                                         flags=re.S)):
        path, _, anchor = html.unescape(target).partition("#")
        file = document.parent / path
        assert target.startswith("http") or file.exists(), target
        assert not anchor or path or anchor in anchors, target


def commands_and_options_are_told(program):
    known = set(re.findall(r"^\./dev ([a-z]+)", output_of(ROOT / "dev"), re.M))
    for document in [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")]:
        none(set(re.findall(r"\./dev ([a-z]+)", document.read_text(encoding="utf-8"))) - known)
    told = HANDBOOK.read_text(encoding="utf-8")
    options = set(re.findall(r"^ +(?:-\w, )?(--[a-z-]+)", output_of(program, "--help"), re.M))
    assert len(options) >= 10, options
    none(options - set(re.findall(r"--[a-z-]+", told)))


def default_colours_are_told(program):
    page = output_of(program, "--mode=classic", EXAMPLES / "Kunde.cls")
    css = dict(re.findall(r"^\.(\w+) \{(.*?)\}", page, re.M | re.S))
    told = re.findall(r'^\|[\w ]+\| (#\w+) \| (#\w+) \| <span class="(\w+)">',
                      HANDBOOK.read_text(encoding="utf-8"), re.M)
    names = {"sub": "Sub", "res": "Code", "par": "Parms", "rem": "Rem", "str": "Marks"}
    equal({name for *_, name in told}, set(names))
    for *colours, name in told:
        equal((name, re.findall(r"color: (#\w+);", css[names[name]])), (name, colours))


def tests(program, scratch):
    """(what is tested, function that fails when it is not so)"""
    yield "commands and options", lambda: commands_and_options_are_told(program)
    yield "default colours", lambda: default_colours_are_told(program)
    for document in [*sorted(ROOT.glob("*.md")), *sorted(ROOT.glob("docs/*.md"))]:
        yield f"links of {document.name}", lambda: links_lead_somewhere(document)
    for guide in (ROOT / "README.md", HANDBOOK):
        lines = re.findall(r"^ *((?:.*\| *)?tintline .*)$", "\n".join(
            re.findall(r"^```.*?^```$|^    .*?$", guide.read_text(encoding="utf-8"), re.M | re.S)),
            re.M)
        assert lines, f"{guide.name} shows no command"
        for line in lines:
            yield f"{guide.name}: {line}", lambda: run_command(line, program, scratch)


def main():
    parser = argparse.ArgumentParser(description="Does what the guides tell a reader to do.")
    parser.add_argument("--tintline", required=True, type=Path, metavar="PROGRAM")
    program = parser.parse_args().tintline.resolve()
    with tempfile.TemporaryDirectory(prefix="tintline-docs-") as scratch:
        return run_tests(tests(program, scratch))


if __name__ == "__main__":
    sys.exit(main())
