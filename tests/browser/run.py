#!/usr/bin/env python3
"""Looks at converted pages in a real browser.

    run.py [--screenshots DIR] --tintline CMD...

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
import os
import re
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
SAMPLE = HERE.parent.parent / "data/examples/Musterprojekt.bas"
ENCODING = "cp1252"
PAGES = {
    "class": ["--style", "class"],
    "class-numbers": ["--style", "class", "--line-numbers"],
    "inline": ["--style", "inline"],
    "inline-numbers": ["--style", "inline", "--line-numbers"],
}
CHROMIUM = [
    "chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--hide-scrollbars",
]
SHOWN_PROCEDURE = "RechnungDrucken"
SECONDS = 60  # until a browser that hangs is given up


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


def browse(arguments, profile):
    browser = subprocess.Popen([*CHROMIUM, f"--user-data-dir={profile}", *arguments],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    try:
        output, _ = browser.communicate(timeout=SECONDS)
    except subprocess.TimeoutExpired:
        os.killpg(browser.pid, signal.SIGKILL)  # the browser is many processes
        raise
    if browser.returncode != 0:
        raise subprocess.CalledProcessError(browser.returncode, browser.args)
    return output


def convert(tintline, options, target):
    subprocess.run([*tintline, "--quiet", *options, "-o", str(target), str(SAMPLE)], check=True,
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
                   checked.as_uri()], folder / "profile").decode("utf-8")
    result = re.search(r'<pre id="befund">(.*?)</pre>', dump, re.DOTALL)
    if not result:
        return [{"name": "the check comes to its end", "ok": False, "detail": dump[-500:]}]
    return json.loads(html.unescape(result[1]))


def screenshots(page, target, profile):
    """The top of the page, and the page from a procedure on."""
    target.mkdir(parents=True, exist_ok=True)
    # Moved, not scrolled: the browser takes no picture of a page that is scrolled by its address.
    moved = with_script(page, "<script>document.body.style.marginTop = `${20 - document."
                              f"querySelector('a[name={SHOWN_PROCEDURE}]').offsetTop}}px`;</script>")
    for place, shown in (("top", page), ("code", moved)):
        picture = target.resolve() / f"{page.stem}-{place}.png"
        browse(["--window-size=1000,1300", f"--screenshot={picture}", shown.as_uri()], profile)
        print(f"saved {picture}")


def main():
    parser = argparse.ArgumentParser(description="Looks at converted pages in a real browser.")
    parser.add_argument("--tintline", nargs="+", required=True, metavar="CMD")
    parser.add_argument("--screenshots", type=Path, metavar="DIR",
                        help="save pictures of the pages there")
    options = parser.parse_args()

    expected = expectations(SAMPLE.read_text(encoding=ENCODING))
    passed = failed = 0
    with tempfile.TemporaryDirectory(prefix="tintline-browser-",
                                     ignore_cleanup_errors=True) as name:
        folder = Path(name)
        (folder / "check.js").write_bytes((HERE / "check.js").read_bytes())
        for style, style_options in PAGES.items():
            page = folder / f"{style}.htm"
            convert(options.tintline, style_options, page)
            for finding in check_page(page, expected, folder):
                passed += finding["ok"]
                failed += not finding["ok"]
                if not finding["ok"]:
                    print(f"{style}: FAILED: {finding['name']}: {finding['detail']}")
            if options.screenshots:
                screenshots(page, options.screenshots, folder / "profile")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
