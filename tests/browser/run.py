"""Looks at pages in a real browser, and lets checkers of HTML look at them.

    python3 -m tests.browser.run --tintline CMD... --tools DIR

Converts a hundred varied modules, many of them hostile. The Nu checker and axe (below DIR, see
tests/tools) must find nothing wrong with their pages, light and dark. In the browser, copying the
code must give the source, no script may run and nothing may be loaded. In classic pages of a sample
module check.js follows every link.
"""
import argparse
import json
import random
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.browser import SECONDS, Browser
from tests.support.checks import equal, none, run_tests, with_full_paths

CHECK = Path(__file__).resolve().parent / "check.js"
EXAMPLES = CHECK.parent.parent.parent / "data/examples"
# What check.js looks for: the procedures of the sample, and how often each is called. All of its
# index has anchors, which is not so in every module.
CALLS = {"PostenEinlesen": 2, "BruttoBetrag": 2, "RabattSatz": 1, "OffeneSumme": 3, "TageOffen": 1,
         "MahnStufe": 1, "RechnungDrucken": 1, "AlleMahnungen": 1, "BetragText": 2,
         "BriefSpeichern": 1, "ProtokollSchreiben": 3, "TabelleGeprüft": 2, "Demo": 0}
EXPECTED = {"procedures": list(CALLS), "calls": {name: n for name, n in CALLS.items() if n},
            "head": "Public Sub PostenEinlesen()", "umlauts": "säumige Kunden"}
MODULES = 100
HEADERS = ["", "", "Attribute VB_Name = \"{name}\"\n",
           "VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1\nEND\nAttribute VB_Name = \"{name}\"\n"
           "Attribute VB_Description = \"<b>{name}</b> & \"\"mehr\"\"\"\n"]
NAMES = ["Prüfen", "code", "main", "A", "Titel", "[a b]", "[\"'><script>alert(1)</script>]", "[1]",
         "[%41]", "[&amp;]", "Sehr_" + "lang" * 50, "ßtraße"]
TYPES = ["Long", "String", "Object", "TPosten", "Collection"]
LINES = ["", "", "    x = 1", "\tCall {name}", "    ' </code></pre></main><script>alert(1)</script>",
         "    s = \"<img src=x onerror=alert(1)>\" & \"&lt;\"", "Marke: GoTo Marke", "10 GoTo 10",
         "    Rem --> ]]> <!-- {name}", "#If Win64 Then", "#End If", "    d = #1/2/2000# + &HFF& + .5",
         "    {name} _\n        a:=1, _\n        b:=True", "    s = \"" + "x" * 300 + "\"",
         "    ' fortgesetzt _\n      und weiter", "    z = \"\u202e\u2066\" '\u200f\ufeff", "    [",
         "    ' \x01\x0b\x0c\x19\x1a\x7f\x81\ufffe\U0001ffff", "    Set o = New {type}", "    '\u00a0 "]
DECLARATIONS = ["Option Explicit", "Private Const C{n} As Long = {n} ' {name}", "Dim v{n} As {type}",
                "Public Type T{n}\n    A As Long\n    {name} As T{n}\nEnd Type", "Event E{n}(a As Long)",
                "Enum E_{n}\n    Eins\n    {name} = 2\nEnd Enum", "' nur Kommentar", "",
                "Private Declare Function D{n} Lib \"<kernel>\" (ByVal a As Long) As Long"]
PROCEDURES = ["Public Sub {name}(Optional ByVal a As Long = 1)\n{body}End Sub\n",
              "Private Function {name}() As {type}\n{body}End Function\n",
              "' Kommentar darüber\n' zweite Zeile\nFriend Property Get {name}() As {type}\n{body}"
              "End Property\n", "Sub {name}(): x = 1: End Sub: Sub B(): End Sub\n",
              "Static Sub {name}( _\n    a, _\n    b, _\n    c _\n    )\n{body}End Sub\n",
              "#If VBA7 Then\nSub {name}(a As LongPtr)\n#Else\nSub {name}(a As Long)\n#End If\n{body}"
              "End Sub\n", "Sub {name}()\n{body}"]


def module(chance, number):
    """A random module, as text."""
    def fill(text, **more):
        return text.replace("{name}", chance.choice(NAMES)).replace("{type}", chance.choice(TYPES)) \
            .replace("{n}", str(number)).replace("{body}", more.get("body", ""))

    def body():
        return "".join(fill(chance.choice(LINES)) + "\n" for _ in range(chance.randrange(6)))

    parts = [chance.choice(HEADERS).replace("{name}", f"M{number}")]
    parts += [fill(chance.choice(DECLARATIONS)) + "\n" for _ in range(chance.randrange(6))]
    for _ in range(chance.randrange(4)):
        parts += [chance.choice(["", "\n", "\n\n"]), fill(chance.choice(PROCEDURES), body=body())]
    text = "".join(parts)
    return text if chance.random() < 0.7 else text.rstrip("\n")


def shown(text):
    """The text as a page shows it: what HTML does not allow, by pictures."""
    pictures = {code: 0x2400 + code for code in range(1, 0x20) if code not in (9, 10, 12)}
    pictures |= {code: 0xFFFD for code in [0, *range(0x80, 0xA0), 0xFFFE, 0x1FFFF]} | {0x7F: 0x2421}
    return text.translate(pictures)


def header_size(text):
    """How long the file header is, which is folded: with the Attribute lines behind it."""
    return len(re.match(r"(VERSION(?s:.*?)\nEND\n)?(Attribute .*\n)*", text, re.IGNORECASE)[0])


COPY = """(() => {
  getSelection().selectAllChildren(document.querySelector('main'));
  return getSelection().toString();
})()"""
CODE = """[...document.querySelectorAll('main code')]
  .filter((code) => !code.closest('details')).map((code) => code.textContent).join('')"""
WIDTH = "document.documentElement.scrollWidth - document.documentElement.clientWidth"
WRITE = "document.open(); document.write(%s); document.close()"
AXE = """axe.run({resultTypes: ['violations'], %s}).then((result) => result.violations.map(
  (found) => `${found.id}: ${found.nodes[0].html} ${found.nodes[0].failureSummary}`))"""


class Pages:
    """The modules, and their pages made with some options."""

    def __init__(self, folder, tintline):
        self.folder, self.tintline = folder, tintline
        chance = random.Random(11)
        self.texts = {f"M{number}": module(chance, number) for number in range(MODULES)}
        for path in EXAMPLES.iterdir():
            self.texts[path.stem] = path.read_text("cp1252")
        for name, text in self.texts.items():
            (folder / f"{name}.bas").write_bytes(text.replace("\n", "\r\n").encode("utf-8"))

    def make(self, name, *options):
        """A folder of the pages of all modules."""
        self.convert("-d", str(self.folder / name), *options)
        return self.folder / name

    def convert(self, *options):
        inputs = [str(self.folder / f"{name}.bas") for name in self.texts]
        subprocess.run([*self.tintline, "--quiet", "--mode", "exact", *options, *inputs], check=True,
                       timeout=SECONDS)


def nu_errors(pages, tools):
    """What the Nu checker says is wrong with the pages."""
    jar = tools / "node_modules/vnu-jar/build/dist/vnu.jar"
    # Compiled but simply, which is enough for a short run and leaves larger frames on the stack.
    quick = ["-XX:TieredStopAtLevel=1", "-XX:+UseSerialGC", "-Xss8m"]
    checker = subprocess.run(["java", *quick, "-jar", jar, "--errors-only", "--format", "json",
                              *pages], capture_output=True, timeout=5 * SECONDS, check=False)
    messages = json.loads(checker.stderr)["messages"]
    return [f"{m['url']}:{m['lastLine']}: {m['message']} {m.get('extract')}" for m in messages]


def copied(browser):
    """What the clipboard has after copying the selection."""
    def command(name):
        for kind in ("keyDown", "keyUp"):
            browser.call("Input.dispatchKeyEvent", type=kind, key=name[0], commands=[name])

    command("Copy")
    browser.run("document.body.append(document.createElement('textarea'))")
    browser.run("document.querySelector('textarea').focus()")
    command("Paste")
    return browser.run("document.querySelector('textarea').value")


def tests(pages, browser, tools):
    """(what is tested, function that fails when it is not so)"""
    site = pages.make("site", "--project")
    whole = pages.make("whole", "--header", "show")
    inline = pages.make("inline", "--style", "inline")
    one = pages.folder / "one.htm"
    pages.convert("-o", str(one), "--line-numbers")
    office = pages.make("office", "tests/golden/office/Mappe.xlsm") / "Mappe.xlsm/index.htm"
    axe = (tools / "node_modules/axe-core/axe.min.js").read_text("utf-8")

    def shows(page):
        browser.open(page.as_uri())
        ran = [event for event in browser.events if event["method"] in
               ("Page.javascriptDialogOpening", "Runtime.consoleAPICalled",
                "Runtime.exceptionThrown")]
        loaded = [event["params"]["request"]["url"] for event in browser.events
                  if event["method"] == "Network.requestWillBeSent"]
        none(ran)
        equal(loaded, [page.as_uri()])

    def fits(page):
        shows(page)
        equal(browser.run(WIDTH), 0)

    def copies(page, expected):
        fits(page)
        equal(browser.run(CODE), expected)
        equal(browser.run(COPY), expected)

    def is_right(name):
        text = shown(pages.texts[name])
        copies(whole / f"{name}.htm", text)
        copies(site / f"module/{name}.htm", text[header_size(text):])

    def accessible(page):
        """The page is written into what the browser shows: then axe is compiled only once."""
        if not browser.run("'axe' in window"):
            browser.run(axe + "; 0")
        browser.run(WRITE % json.dumps(page.read_text("utf-8")))
        # In the dark, only colours are others.
        for scheme, rules in (("light", ""), ("dark", "runOnly: ['color-contrast']")):
            browser.call("Emulation.setEmulatedMedia",
                         features=[{"name": "prefers-color-scheme", "value": scheme}])
            none(browser.run(AXE % rules))

    def by_the_clipboard():
        shows(whole / "Musterprojekt.htm")
        browser.run(COPY)
        equal(copied(browser), pages.texts["Musterprojekt"])

    def classic(*options):
        page = pages.folder / "classic.htm"
        subprocess.run([*pages.tintline, "--mode", "classic", *options, "-o", page,
                        EXAMPLES / "Musterprojekt.bas"], check=True, timeout=SECONDS)
        shows(page)
        found = browser.run(f"const expected = {json.dumps(EXPECTED)};" + CHECK.read_text("utf-8"))
        assert len(found) > 100, found
        none(finding for finding in found if not finding["ok"])

    others = [one, office, inline / "M1.htm", *site.glob("*.htm")]
    checked = [*others, *site.glob("module/*.htm"), whole / "M1.htm"]
    yield "classic, with classes", lambda: classic("--style=class")
    yield "classic, without classes", lambda: classic("--style=inline", "--line-numbers")
    yield "the Nu checker finds no error", lambda: none(nu_errors(checked, tools))
    yield "copying by the clipboard", by_the_clipboard
    for page in others:
        yield f"{page.stem} fits", lambda: fits(page)
    for name in pages.texts:
        yield f"{name}: copied", lambda: is_right(name)
    for page in checked:
        yield f"{page.stem}: accessible", lambda: accessible(page)


def main():
    parser = argparse.ArgumentParser(description="Looks at pages in a real browser.")
    parser.add_argument("--tintline", nargs="+", required=True, metavar="CMD")
    parser.add_argument("--tools", type=Path, required=True, metavar="DIR",
                        help="where the checkers are installed")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tintline-pages-", ignore_cleanup_errors=True) as name:
        folder = Path(name)
        pages = Pages(folder, with_full_paths(options.tintline))
        with Browser(folder) as browser:
            browser.call("Network.enable")
            browser.call("Emulation.setDeviceMetricsOverride", width=360, height=640,
                         deviceScaleFactor=1, mobile=False)
            return run_tests(tests(pages, browser, options.tools))


if __name__ == "__main__":
    sys.exit(main())
