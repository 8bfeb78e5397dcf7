"""Takes the compiled help apart and looks at every topic in a real browser.

    python3 -m tests.help.run --help-file FILE.chm [--screenshots DIR]

Prints each failure and, last, "N passed, N failed".
"""
import argparse
import html
import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.browser import browse, take_picture
from tests.support.checks import equal, listed_tests, none, run_tests, test

FIRST = "htm/funktions.bersicht.htm"  # what the program opens
# Captions beside those of the menus.
CAPTIONS = {"Modul", "Makro", "Datei", "Text", "Auswahl", "Clipboard", "Exportieren", ">> Word",
            "Zeilennummern", "Vorschau", "CSS zentral def.", "CSS im Style def.", "Esc",
            "Modul exportieren", "Alle Module exportieren"}

# Loads each topic in a frame as wide as the viewer's and writes down what a reader would miss.
LOOK = """<!DOCTYPE html><meta charset="utf-8"><pre id="found"></pre><script>
const topics = %s, found = {};
async function load(topic) {
  const frame = document.createElement("iframe");
  frame.width = 640, frame.height = 500, frame.src = topic;
  document.body.append(frame);
  await new Promise(loaded => frame.onload = loaded);
  return frame;
}
(async () => {
  const frames = {};
  for (const topic of topics) frames[new URL(topic, location)] = await load(topic);
  for (const topic of topics) {
    const page = frames[new URL(topic, location)].contentDocument, faults = [], links = [];
    if (page.compatMode != "CSS1Compat" || !page.querySelector("h1")) faults.push("no heading");
    if (![...page.styleSheets].some(sheet => sheet.cssRules.length)) faults.push("no style");
    for (const image of page.images) if (!image.naturalWidth) faults.push(image.src);
    if (page.documentElement.scrollWidth > 640) faults.push("too wide");
    for (const link of page.querySelectorAll("a[href]")) {
      const [file, anchor] = link.href.split("#"), target = frames[file];
      if (!target || anchor && !target.contentDocument.getElementById(anchor)) faults.push(link.href);
      links.push(decodeURI(file).split("/").pop());
    }
    found[topic] = {faults, links, text: page.body.innerText};
  }
  document.querySelector("#found").textContent = JSON.stringify(found);
})();
</script>"""


class Help:
    """The parts of the help file, in a folder, and what a browser found in its topics."""

    def __init__(self, help_file, folder):
        self.compiled, self.folder = help_file, folder / "help"
        subprocess.run(["extract_chmLib", str(help_file), str(self.folder)], check=True,
                       stdout=subprocess.DEVNULL, timeout=60)
        self.topics = sorted(f"htm/{path.name}" for path in self.folder.glob("htm/*.htm"))
        look = self.folder / "look.html"
        look.write_text(LOOK % json.dumps(self.topics), encoding="utf-8")
        dump = browse(["--virtual-time-budget=30000", "--dump-dom", look.as_uri()], folder)
        self.found = json.loads(html.unescape(
            re.search(r'<pre id="found">(.*?)</pre>', dump, re.S)[1]))

    def text(self, name):
        return (self.folder / name).read_bytes().decode("cp1252")

    def locals(self, name):
        """The files that contents or index lead to, each once for an entry."""
        return [target.partition("#")[0] for target in
                re.findall(r'name="Local" value="([^"]+)"', self.text(name), re.I)]


@test
def every_topic_is_whole_and_its_links_and_pictures_are_there(book):
    none((name, page["faults"]) for name, page in book.found.items() if page["faults"])
    none((name, page["text"]) for name, page in book.found.items()
         if len(page["text"]) < 300 or re.search("\ufffd|Ã.|Â.|â€", page["text"]))
    assert sum(len(page["links"]) for page in book.found.values()) >= 50, book.found


@test
def every_section_of_the_handbook_is_a_topic_that_contents_and_overview_lead_to(book):
    anchors = re.findall(r'^## <a id="([^"]+)">', Path("docs/handbuch.md").read_text("utf-8"), re.M)
    equal(sorted(f"htm/{name}.htm" for name in anchors), book.topics)
    equal(sorted(book.locals("contents.hhc")), book.topics)
    assert len(book.locals("index.hhk")) >= 30
    none(set(book.locals("index.hhk")) - set(book.topics))
    reached, waiting = set(), [FIRST]
    while waiting:
        name = waiting.pop()
        if name not in reached:
            reached.add(name)
            waiting += [f"htm/{link}" for link in book.found[name]["links"]]
    equal(sorted(reached), book.topics)
    numbers = re.findall(r"^\.topic (\d+)\r\n\S", book.text("topic.txt"), re.M)
    equal([int(number) for number in numbers], list(range(101, 101 + len(book.topics))))


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
    parser.add_argument("--screenshots", type=Path, metavar="DIR", help="save pictures there")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tintline-help-", ignore_cleanup_errors=True) as name:
        book = Help(options.help_file, Path(name))
        for topic in book.topics if options.screenshots else []:
            take_picture((book.folder / topic).as_uri(), (820, 1100),
                         options.screenshots / f"{Path(topic).stem}.png", Path(name))
        return run_tests(listed_tests(lambda function: function(book)))


if __name__ == "__main__":
    sys.exit(main())
