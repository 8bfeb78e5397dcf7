"""Takes the compiled help apart and looks at every topic, also in a real browser.

    python3 -m tests.help.run --help-file FILE.chm [--screenshots DIR]

Prints each failure and, last, "N passed, N failed".
"""
import argparse
import collections
import html.parser
import json
import os
import posixpath
import re
import subprocess
import sys
import tempfile
import urllib.parse
from pathlib import Path

from tests.support.browser import browse, take_picture
from tests.support.checks import listed_tests, none, run_tests, test

CODE_PAGE = "cp1252"
OPENED_BY_PROGRAM = ["htm/funktions.bersicht.htm", "htm/farbeinstellungen.htm", "topic.txt"]
SHORTEST_TOPIC = 300  # characters that a reader sees
SECONDS = 60  # until a program that hangs is given up
VIEWER_WIDTH = 640  # of the topic pane; wider pages would have to be scrolled sideways

# Captions beside those of the menus.
CAPTIONS = ["Modul", "Makro", "Datei", "Text", "Auswahl", "Clipboard", "Exportieren", ">> Word",
            "Zeilennummern", "Vorschau", "CSS zentral def.", "CSS im Style def.",
            "Modul exportieren", "Alle Module exportieren", "Esc"]
MENUS = Path("app/frmVBACode/commands.cpp")
HANDBOOK = Path("docs/handbuch.md")

# Loads each topic in a frame of the viewer's width and writes down what a reader would miss.
LOOK = """<!DOCTYPE html><meta charset="utf-8"><pre id="found"></pre><script>
const topics = %s, found = {};
async function look(topic) {
  const frame = document.createElement("iframe");
  frame.width = %d, frame.height = 500, frame.src = topic;
  document.body.append(frame);
  await new Promise(loaded => frame.onload = loaded);
  const page = frame.contentDocument, faults = [];
  if (page.compatMode != "CSS1Compat") faults.push("shown in quirks mode");
  if (!page.querySelector("h1")?.textContent) faults.push("no heading");
  if (![...page.styleSheets].some(sheet => sheet.cssRules.length)) faults.push("no style sheet");
  for (const image of page.images)
    if (!image.naturalWidth) faults.push("broken picture " + image.getAttribute("src"));
  const tooWide = page.documentElement.scrollWidth - %d;
  if (tooWide > 0) faults.push(`too wide by ${tooWide}`);
  found[topic] = {faults, text: page.body.innerText};
  frame.remove();
}
(async () => {
  for (const topic of topics) await look(topic);
  document.querySelector("#found").textContent = JSON.stringify(found);
})();
</script>"""


class Page(html.parser.HTMLParser):
    """The text, links, pictures, anchors and sitemap entries of an HTML file."""

    def __init__(self, source):
        super().__init__()
        self.links, self.pictures, self.anchors, self.entries = [], [], set(), []
        self.title, self._words, self._in_title = "", [], False
        self.feed(source)
        self.text = " ".join("".join(self._words).split())

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.anchors |= {attributes[key] for key in ("id", "name") if key in attributes}
        if tag in ("a", "link") and "href" in attributes:
            self.links.append(attributes["href"])
        elif tag == "img":
            self.pictures.append(attributes["src"])
        elif tag == "param":
            if attributes["name"] == "Name":
                self.entries.append([attributes["value"], None])
            elif attributes["name"] == "Local":
                self.entries[-1][1] = attributes["value"]
        self._in_title = tag == "title"

    def handle_endtag(self, tag):
        self._in_title = False
        if tag not in ("a", "b", "span"):
            self._words.append(" ")

    def handle_data(self, data):
        if self._in_title:
            self.title += data
        else:
            self._words.append(data)


class Help:
    """The parts of the help file, in a folder."""

    def __init__(self, help_file, folder):
        self.compiled, self.folder = help_file, folder / "help"
        subprocess.run(["extract_chmLib", str(help_file), str(self.folder)], check=True,
                       stdout=subprocess.DEVNULL, timeout=SECONDS)
        self.files = {path.relative_to(self.folder).as_posix(): path
                      for path in self.folder.rglob("*") if path.is_file()}
        self.topics = sorted(name for name in self.files if name.endswith(".htm"))
        self.pages = {name: Page(self.text(name)) for name in self.topics}
        self.contents = Page(self.text("contents.hhc")).entries
        self.index = Page(self.text("index.hhk")).entries

    def text(self, name):
        return self.files[name].read_bytes().decode(CODE_PAGE)

    def missing(self, name, target):
        """Whether a link in a file of the help leads nowhere."""
        address = urllib.parse.urlsplit(target)
        path = posixpath.normpath(posixpath.join(posixpath.dirname(name), address.path))
        file = path if address.path else name
        if address.scheme or file not in self.files:
            return True
        return bool(address.fragment) and address.fragment not in self.pages[file].anchors


@test
def what_the_program_opens_is_there(book):
    none(name for name in OPENED_BY_PROGRAM if name not in book.files)


@test
def every_section_of_the_handbook_is_a_topic(book):
    headings = re.findall(r"^## (.*)$", HANDBOOK.read_text(encoding="utf-8"), re.M)
    expected = {f'<a id="{Path(name).stem}"></a>{page.title}' for name, page in book.pages.items()}
    assert set(headings) == expected and len(headings) == len(expected), (headings, expected)


@test
def the_contents_name_every_topic_once_and_nothing_else(book):
    named = collections.Counter(target for _, target in book.contents if target)
    assert named == collections.Counter(book.topics), named


@test
def the_contents_call_a_topic_by_its_title(book):
    none((name, book.pages[target].title) for name, target in book.contents
         if target and book.pages[target].title != name)


@test
def the_index_leads_to_topics(book):
    assert len(book.index) >= 30, book.index
    none((name, target) for name, target in book.index if book.missing("index.hhk", target))


@test
def links_and_pictures_lead_somewhere(book):
    assert sum(len(page.links) for page in book.pages.values()) >= 50
    assert sum(len(page.pictures) for page in book.pages.values()) >= 20
    none((name, target) for name, page in book.pages.items()
         for target in page.links + page.pictures if book.missing(name, target))


@test
def every_topic_is_reached_from_the_overview(book):
    reached, waiting = set(), [OPENED_BY_PROGRAM[0]]
    while waiting:
        name = waiting.pop()
        if name in reached:
            continue
        reached.add(name)
        waiting += [posixpath.join(posixpath.dirname(name), link.partition("#")[0])
                    for link in book.pages[name].links if link.partition("#")[0].endswith(".htm")]
    none(set(book.topics) - reached)


def menu_words():
    """What the menus show, as it is read: captions without access keys, and keys."""
    source = MENUS.read_text(encoding="utf-8")
    entries = re.findall(r'\{Command::\w+, L"([^"]+)", L"([^"]*)"\}', source)
    menus = re.findall(r'\{L"([^"]+)", k\w+\}', source)
    assert len(entries) >= 25 and len(menus) >= 5, (entries, menus)
    words = {caption.replace("&", "") for caption in [name for name, _ in entries] + menus}
    return words | {keys for _, keys in entries if keys}


@test
def every_caption_and_key_is_explained(book):
    words = " ".join(page.text for page in book.pages.values())
    none(word for word in menu_words() | set(CAPTIONS)
         if not re.search(rf"(?<!\w){re.escape(word)}(?!\w)", words))


@test
def topics_declare_the_code_page_that_they_have(book):
    none(name for name in book.topics if "charset=windows-1252" not in book.text(name))
    # What UTF-8 looks like when it is read as Windows-1252.
    none((name, found[0]) for name in (*book.topics, "contents.hhc", "index.hhk", "topic.txt")
         for found in [re.search("Ã.|Â.|â€", book.text(name))] if found)


@test
def context_texts_have_a_topic_each(book):
    texts = re.findall(r"^\.topic (\d+)\r\n(\S.*)\r\n", book.text("topic.txt"), re.M)
    numbers = range(101, 101 + len(book.topics))  # in the order of the project's list
    assert [int(number) for number, _ in texts] == list(numbers), texts


@test
def compiled_again_elsewhere_it_is_the_same(book):
    again = book.folder.parent / "elsewhere" / "again.chm"
    again.parent.mkdir()
    subprocess.run(["data/help/build.sh", str(again)], check=True, timeout=SECONDS,
                   env={**os.environ, "TMPDIR": str(again.parent)}, capture_output=True)
    assert again.read_bytes() == book.compiled.read_bytes(), "other bytes"


@test
def a_browser_shows_every_topic(book):
    look = book.folder / "look.html"
    look.write_text(LOOK % (json.dumps(book.topics), VIEWER_WIDTH, VIEWER_WIDTH), encoding="utf-8")
    dump = browse(["--virtual-time-budget=30000", "--dump-dom", look.as_uri()], book.folder.parent)
    found = json.loads(html.unescape(re.search(r'<pre id="found">(.*?)</pre>', dump, re.S)[1]))
    assert sorted(found) == book.topics, found
    none((name, result["faults"]) for name, result in found.items() if result["faults"])
    none((name, result["text"]) for name, result in found.items()
         if len(result["text"]) < SHORTEST_TOPIC or "\ufffd" in result["text"])


def screenshots(book, target):
    for name in book.topics:
        take_picture(book.files[name].as_uri(), (820, 1100), target / f"{Path(name).stem}.png",
                     book.folder.parent)


def main():
    parser = argparse.ArgumentParser(description="Looks at the compiled help.")
    parser.add_argument("--help-file", type=Path, required=True, metavar="FILE.chm")
    parser.add_argument("--screenshots", type=Path, metavar="DIR",
                        help="save pictures of the topics there")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tintline-help-", ignore_cleanup_errors=True) as name:
        book = Help(options.help_file, Path(name))
        if options.screenshots:
            screenshots(book, options.screenshots)
        return run_tests(listed_tests(lambda function: function(book)))


if __name__ == "__main__":
    sys.exit(main())
