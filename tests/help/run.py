"""Takes the compiled help apart and looks at every topic in a real browser.

    python3 -m tests.help.run --help-file FILE.chm

Prints each failure and, last, "N passed, N failed".
"""
import argparse
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.browser import Browser
from tests.support.checks import equal, listed_tests, none, run_tests, test

FIRST = "htm/funktions.bersicht.htm"  # what the program opens
# Captions beside those of the menus.
CAPTIONS = {"Modul", "Makro", "Datei", "Text", "Auswahl", "Clipboard", "Exportieren", ">> Word",
            "Zeilennummern", "Vorschau", "CSS zentral def.", "CSS im Style def.", "Esc",
            "Modul exportieren", "Alle Module exportieren"}
# What a reader would miss in a topic, and where its links lead.
LOOK = """({
  text: document.body.innerText, ids: [...document.querySelectorAll('[id]')].map(e => e.id),
  links: [...document.querySelectorAll('a[href]')].map(a => a.getAttribute('href')),
  faults: [...document.images].filter(image => !image.naturalWidth).map(image => image.src).concat(
    document.compatMode == 'CSS1Compat' && document.querySelector('h1') ? [] : ['no heading'],
    document.styleSheets[0]?.href ? [] : ['no style'],
    document.documentElement.scrollWidth > 640 ? ['too wide'] : [])
})"""


class Help:
    """The parts of the help file, in a folder, and what a browser found in its topics."""

    def __init__(self, help_file, folder):
        self.compiled, self.folder = help_file, folder / "help"
        subprocess.run(["extract_chmLib", str(help_file), str(self.folder)], check=True,
                       stdout=subprocess.DEVNULL, timeout=60)
        self.found = {}
        with Browser(folder) as browser:
            browser.call("Emulation.setDeviceMetricsOverride", width=640, height=500,
                         deviceScaleFactor=1, mobile=False)
            for path in sorted(self.folder.glob("htm/*.htm")):
                browser.open(path.as_uri())
                self.found[f"htm/{path.name}"] = browser.run(LOOK)

    def locals(self, name):
        """The files that contents or index lead to, each once for an entry."""
        text = (self.folder / name).read_bytes().decode("cp1252")
        return re.findall(r'name="Local" value="([^"#]+)', text, re.I)


@test
def every_topic_is_whole_and_its_links_and_pictures_are_there(book):
    for name, page in book.found.items():
        none((name, fault) for fault in page["faults"])
        assert len(page["text"]) >= 300 and not re.search("\ufffd|Ã.|Â.|â€", page["text"]), page
        for link in page["links"]:
            file, _, anchor = link.partition("#")
            target = book.found[f"htm/{file}" if file else name]
            assert not anchor or anchor in target["ids"], (name, link)


@test
def every_section_of_the_handbook_is_a_topic_that_contents_and_overview_lead_to(book):
    anchors = re.findall(r'^## <a id="([^"]+)">', Path("docs/handbuch.md").read_text("utf-8"), re.M)
    topics = sorted(book.found)
    equal(sorted(f"htm/{name}.htm" for name in anchors), topics)
    equal(sorted(book.locals("contents.hhc")), topics)
    equal({name for name in book.locals("index.hhk") if name not in topics}, set())
    assert len(book.locals("index.hhk")) >= 30
    reached, waiting = set(), [FIRST]
    while waiting:
        name = waiting.pop()
        if name not in reached:
            reached.add(name)
            links = (link.partition("#")[0] for link in book.found[name]["links"])
            waiting += [f"htm/{link}" for link in links if link]
    equal(sorted(reached), topics)
    numbers = re.findall(rb"^\.topic (\d+)\r\n\S", (book.folder / "topic.txt").read_bytes(), re.M)
    equal([int(number) for number in numbers], list(range(101, 101 + len(topics))))


@test
def every_caption_and_key_is_explained(book):
    source = Path("app/frmVBACode/commands.cpp").read_text(encoding="utf-8")
    entries = re.findall(r'\{Command::\w+, L"([^"]+)", L"([^"]*)"\}', source)
    assert len(entries) >= 25, entries
    words = CAPTIONS | {word.replace("&", "") for entry in entries for word in entry if word}
    text = " ".join(" ".join(page["text"] for page in book.found.values()).split())
    none(word for word in words if not re.search(rf"(?<!\w){re.escape(word)}(?!\w)", text))


@test
def compiled_again_elsewhere_it_is_the_same(book):
    again = book.folder.parent / "elsewhere" / "again.chm"
    again.parent.mkdir()
    subprocess.run(["data/help/build.sh", str(again)], check=True, timeout=60,
                   env={**os.environ, "TMPDIR": str(again.parent)}, capture_output=True)
    assert again.read_bytes() == book.compiled.read_bytes(), "other bytes"


def main():
    parser = argparse.ArgumentParser(description="Looks at the compiled help.")
    parser.add_argument("--help-file", type=Path, required=True, metavar="FILE.chm")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tintline-help-", ignore_cleanup_errors=True) as name:
        book = Help(options.help_file, Path(name))
        return run_tests(listed_tests(lambda function: function(book)))


if __name__ == "__main__":
    sys.exit(main())
