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

from tests.support.checks import run_tests

ROOT = Path(__file__).resolve().parent.parent.parent
GUIDES = [ROOT / "README.md", ROOT / "docs/handbuch.md"]
DOCUMENTS = [*sorted(ROOT.glob("*.md")), *sorted((ROOT / "docs").glob("*.md"))]
EXAMPLES = ROOT / "data/examples"
SECONDS = 60  # until a program that hangs is given up


def blocks(document):
    """The lines of a document's code blocks, fenced or indented."""
    fenced = False
    for line in document.read_text(encoding="utf-8").splitlines():
        if line.startswith("```"):
            fenced = not fenced
        elif fenced or line.startswith("    "):
            yield line.strip()


def prose(document):
    """A document without its code."""
    text = re.sub(r"^```.*?^```$|^    .*?$", "", document.read_text(encoding="utf-8"),
                  flags=re.M | re.S)
    return re.sub(r"`[^`\n]*`", "", text)


def slug(heading):
    """The anchor that a forge gives a heading."""
    words = re.sub(r"<[^>]*>|[^\w\- ]", "", heading.strip().lower())
    return words.replace(" ", "-")


def anchors(document):
    text = prose(document)
    return (re.findall(r'<a id="([^"]+)">', text),
            {slug(heading) for heading in re.findall(r"^#+ (.*)$", text, re.M)})


def missing(document, target):
    """Whether a link or picture of a document leads nowhere. Other sites are not visited."""
    if re.match(r"https?:", target):
        return False
    path, _, fragment = target.partition("#")
    file = document.parent / path if path else document
    if not file.exists():
        return True
    own, of_headings = anchors(file) if fragment else ([], [])
    return bool(fragment) and fragment not in own and fragment not in of_headings


def fill(folder, command):
    """Puts files under all names that the command has into its folder; their names."""
    for example in EXAMPLES.iterdir():
        shutil.copy(example, folder)
    for word in command:
        if word.endswith(".ini"):
            shutil.copy(ROOT / "data/vb.ini", folder / word)
        kinds = [example for example in EXAMPLES.iterdir() if word.endswith(example.suffix)]
        if kinds and "*" not in word:
            shutil.copy(kinds[0], folder / word)
    return {file.name for file in folder.iterdir()}


def value(words, *options):
    """What follows one of the options."""
    found = [after for word, after in zip(words, words[1:]) if word in options]
    return found[0] if found else None


def run_command(line, program, folder):
    words = shlex.split(line, comments=True)
    sources = fill(folder, words)
    path = f"{Path(program).parent}:{os.environ['PATH']}"
    done = subprocess.run(["bash", "-c", line], cwd=folder, env={**os.environ, "PATH": path},
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=SECONDS)
    assert done.returncode == 0, (done.returncode, done.stderr.decode("utf-8", "replace"))
    file, into = value(words, "-o", "--output"), value(words, "-d", "--output-dir")
    if into:
        kinds = {Path(word).suffix for word in words if Path(word).suffix}
        made = {path.stem for path in (folder / into).glob("*.htm") if path.stat().st_size}
        expected = {Path(name).stem for name in sources if Path(name).suffix in kinds}
        assert made == expected and made, (made, expected)
    else:
        made = (folder / file).read_bytes() if file else done.stdout
        assert made.strip(), "nothing was written"


def every_command_is_there(known):
    used = {name for document in DOCUMENTS
            for name in re.findall(r"\./dev ([a-z]+)", document.read_text(encoding="utf-8"))}
    assert len(used) >= 5 and used <= known, used - known


def every_option_is_explained(program):
    text = subprocess.run([program, "--help"], check=True, capture_output=True, timeout=SECONDS)
    options = set(re.findall(r"^ +(?:-\w, )?(--[a-z-]+)", text.stdout.decode("utf-8"), re.M))
    told = set(re.findall(r"--[a-z-]+", GUIDES[1].read_text(encoding="utf-8")))
    assert len(options) >= 10 and options <= told, options - told


def default_colours_are_those_of_the_program(program):
    page = subprocess.run([program, "--mode=classic", EXAMPLES / "Kunde.cls"], check=True, capture_output=True,
                          timeout=SECONDS).stdout.decode("cp1252")
    css = dict(re.findall(r"^\.(\w+) \{(.*?)\}", page, re.M | re.S))
    told = re.findall(r'^\| [\w ]+ \| (#\w+) \| (#\w+) \| <span class="(\w+)">',
                      GUIDES[1].read_text(encoding="utf-8"), re.M)
    classes = {"sub": "Sub", "res": "Code", "par": "Parms", "rem": "Rem", "str": "Marks"}
    assert {row[2] for row in told} == set(classes), told
    for *colours, name in told:
        assert re.findall(r"color: (#\w+);", css[classes[name]]) == colours, (name, colours, css)


def links_lead_somewhere(document):
    text = prose(document)
    targets = [html.unescape(target) for target in re.findall(r"\]\(([^)\s]+)\)", text)]
    lost = [target for target in targets if missing(document, target)]
    assert not lost, lost
    own, _ = anchors(document)
    assert len(own) == len(set(own)), [name for name in own if own.count(name) > 1]


def tests(program, scratch):
    """(what is tested, function that fails when it is not so)"""
    usage = subprocess.run([ROOT / "dev"], check=True, capture_output=True, timeout=SECONDS)
    known = set(re.findall(r"^\./dev ([a-z]+)", usage.stdout.decode("utf-8"), re.M))
    yield "the commands of ./dev", lambda: every_command_is_there(known)
    yield "the options of tintline in the handbook", lambda: every_option_is_explained(program)
    yield "the default colours in the handbook", lambda: default_colours_are_those_of_the_program(
        program)
    for document in DOCUMENTS:
        yield f"links of {document.name}", lambda: links_lead_somewhere(document)
    for guide in GUIDES:
        lines = [line for line in blocks(guide) if re.search(r"(^| )tintline ", line)]
        assert lines, f"{guide.name} shows no command"
        for line in lines:
            folder = Path(tempfile.mkdtemp(dir=scratch))
            yield f"{guide.name}: {line}", lambda: run_command(line, program, folder)


def main():
    parser = argparse.ArgumentParser(description="Does what the guides tell a reader to do.")
    parser.add_argument("--tintline", required=True, type=Path, metavar="PROGRAM")
    program = parser.parse_args().tintline.resolve()
    with tempfile.TemporaryDirectory(prefix="tintline-docs-") as scratch:
        return run_tests(tests(program, scratch))


if __name__ == "__main__":
    sys.exit(main())
