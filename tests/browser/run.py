"""Looks at converted pages in a real browser.

    python3 -m tests.browser.run [--screenshots DIR] --tintline CMD...

Converts the sample module in both styles, with and without line numbers, and
lets check.js follow every link of each page. An index entry and a procedure head
make their name by different rules ("Property" procedures are not listed, names
that hold "Sub" lose it in the anchor); the sample is written so that everything
in its index has an anchor.
"""
import argparse
import collections
import html
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.browser import SECONDS, browse, take_picture
from tests.support.checks import run_tests

HERE = Path(__file__).resolve().parent
SAMPLE = HERE.parent.parent / "data/examples/Musterprojekt.bas"
ENCODING = "cp1252"
PAGES = {
    "class": ["--style", "class"],
    "class-numbers": ["--style", "class", "--line-numbers"],
    "inline": ["--style", "inline"],
    "inline-numbers": ["--style", "inline", "--line-numbers"],
}
SHOWN_PROCEDURE = "RechnungDrucken"


def code_of(line):
    """The line without its string literals and its comment."""
    code = re.sub(r'"[^"]*"', '""', line)
    return re.sub(r"('|\bRem\b).*", "", code)


def expectations(source):
    """What a reader of the sample expects: the procedures, and how often each is called."""
    head = re.compile(r"(?:Public |Private )?(?:Sub|Function) (\w+)\(")
    lines = source.splitlines()
    procedures = [match[1] for match in map(head.match, lines) if match]
    calls = collections.Counter()
    for line in map(code_of, lines):
        if head.match(line):
            continue
        for name in procedures:
            if not re.search(rf"\b{name} =", line):  # an assignment to the function's result
                calls[name] += len(re.findall(rf"\b{name}\b", line))
    first = next(line for line in lines if head.match(line))
    return {"procedures": procedures, "calls": +calls, "head": first, "umlauts": "säumige Kunden"}


def convert(tintline, options, target):
    subprocess.run([*tintline, "--mode=classic", *options, "-o", str(target), str(SAMPLE)], check=True,
                   timeout=SECONDS)


def with_script(page, script):
    """A copy of the page beside it, with the script at the end of its body."""
    copy = page.with_name(f"copy-of-{page.name}")
    copy.write_bytes(page.read_bytes().replace(b"</body>", script.encode("ascii") + b"</body>"))
    return copy


def check_page(page, expected, folder):
    """The findings of check.js in a copy of the page that has the script in its body."""
    checked = with_script(page, f"<script>const expected = {json.dumps(expected)};</script>"
                                "<script src='check.js'></script>")
    dump = browse(["--window-size=1000,700", "--virtual-time-budget=120000", "--dump-dom",
                   checked.as_uri()], folder)
    result = re.search(r'<pre id="befund">(.*?)</pre>', dump, re.DOTALL)
    if not result:
        return [{"name": "the check comes to its end", "ok": False, "detail": dump[-500:]}]
    return json.loads(html.unescape(result[1]))


def tests(folder, expected):
    """(what is tested, function that fails when it is not so) for the converted pages"""
    def holds(finding):
        assert finding["ok"], finding["detail"]

    for style in PAGES:
        for finding in check_page(folder / f"{style}.htm", expected, folder):
            yield f"{style}: {finding['name']}", lambda: holds(finding)


def screenshots(page, target, folder):
    """The top of the page, and the page from a procedure on."""
    # Moved, not scrolled: the browser takes no picture of a page that is scrolled by its address.
    moved = with_script(page, "<script>document.body.style.marginTop = `${20 - document."
                              f"querySelector('a[name={SHOWN_PROCEDURE}]').offsetTop}}px`;</script>")
    for place, shown in (("top", page), ("code", moved)):
        take_picture(shown.as_uri(), (1000, 1300), target / f"{page.stem}-{place}.png", folder)


def main():
    parser = argparse.ArgumentParser(description="Looks at converted pages in a real browser.")
    parser.add_argument("--tintline", nargs="+", required=True, metavar="CMD")
    parser.add_argument("--screenshots", type=Path, metavar="DIR",
                        help="save pictures of the pages there")
    options = parser.parse_args()

    expected = expectations(SAMPLE.read_text(encoding=ENCODING))
    with tempfile.TemporaryDirectory(prefix="tintline-browser-",
                                     ignore_cleanup_errors=True) as name:
        folder = Path(name)
        (folder / "check.js").write_bytes((HERE / "check.js").read_bytes())
        for style, style_options in PAGES.items():
            page = folder / f"{style}.htm"
            convert(options.tintline, style_options, page)
            if options.screenshots:
                screenshots(page, options.screenshots, folder)
        if options.screenshots:
            page = folder / "exact.htm"
            subprocess.run([*options.tintline, "-n", "-o", page, SAMPLE], check=True,
                           timeout=SECONDS)
            take_picture(page.as_uri(), (1000, 1300), options.screenshots / "exact.png", folder)
        return run_tests(tests(folder, expected))


if __name__ == "__main__":
    sys.exit(main())
