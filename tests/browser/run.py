"""Looks at classic pages in a real browser.

    python3 -m tests.browser.run --tintline CMD...

Converts the sample module in both styles, with and without line numbers, and
lets check.js follow every link of each page. An index entry and a procedure head
make their name by different rules ("Property" procedures are not listed, names
that hold "Sub" lose it in the anchor); the sample is written so that everything
in its index has an anchor.
"""
import argparse
import html
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.browser import SECONDS, browse
from tests.support.checks import run_tests

CHECK = Path(__file__).resolve().parent / "check.js"
SAMPLE = CHECK.parent.parent.parent / "data/examples/Musterprojekt.bas"
PAGES = {"class": ["--style", "class"], "inline-numbers": ["--style", "inline", "--line-numbers"]}


# The procedures of the sample in their order, and how often each is called.
CALLS = {"PostenEinlesen": 2, "BruttoBetrag": 2, "RabattSatz": 1, "OffeneSumme": 3, "TageOffen": 1,
         "MahnStufe": 1, "RechnungDrucken": 1, "AlleMahnungen": 1, "BetragText": 2,
         "BriefSpeichern": 1, "ProtokollSchreiben": 3, "TabelleGeprüft": 2, "Demo": 0}
EXPECTED = {"procedures": list(CALLS), "calls": {name: n for name, n in CALLS.items() if n},
            "head": "Public Sub PostenEinlesen()", "umlauts": "säumige Kunden"}


def findings(page, folder):
    """The findings of check.js in the page, which gets the script into its body."""
    script = f"<script>const expected = {json.dumps(EXPECTED)};</script>" \
             f"<script src='{CHECK.as_uri()}'></script></body>"
    page.write_bytes(page.read_bytes().replace(b"</body>", script.encode("ascii")))
    dump = browse(["--window-size=1000,700", "--virtual-time-budget=120000", "--dump-dom",
                   page.as_uri()], folder)
    result = re.search(r'<pre id="befund">(.*?)</pre>', dump, re.DOTALL)
    assert result, f"the check does not come to its end: {dump[-500:]}"
    return json.loads(html.unescape(result[1]))


def main():
    parser = argparse.ArgumentParser(description="Looks at classic pages in a real browser.")
    parser.add_argument("--tintline", nargs="+", required=True, metavar="CMD")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tintline-browser-",
                                     ignore_cleanup_errors=True) as name:
        def check(style):
            page = Path(name) / f"{style}.htm"
            subprocess.run([*options.tintline, "--mode=classic", *PAGES[style], "-o", page, SAMPLE],
                           check=True, timeout=SECONDS)
            found = findings(page, Path(name))
            wrong = [finding for finding in found if not finding["ok"]]
            assert found and not wrong, wrong

        return run_tests((style, lambda style=style: check(style)) for style in PAGES)


if __name__ == "__main__":
    sys.exit(main())
