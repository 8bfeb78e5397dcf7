#!/usr/bin/python3
"""Makes the help's topics of the handbook:

    data/help/make_topics.py docs/handbuch.md FOLDER

Each section "## <a id="name"></a>Title" becomes FOLDER/name.htm (UTF-8). A link "#anchor" of the
handbook becomes one to the topic that has the anchor, a picture of data/help/pictures one of
"../pictures". Needs the Debian package python3-markdown. Tested by tests/help/run.py.
"""
import html
import re
import sys
from pathlib import Path

import markdown

PICTURES = "../data/help/pictures/"
UNBROKEN = 32  # characters of a table cell that are kept on one line, but for the last column
SECTION = re.compile(r'^## <a id="([^"]+)"></a>(.+)$', re.M)
PAGE = """<!DOCTYPE html>
<html lang="de">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=utf-8">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="hilfe.css">
</head>
<body>
{body}
</body>
</html>
"""


def sections(handbook):
    """Name -> (title, text) of each topic; what stands before the first one is not for the help."""
    _, *parts = SECTION.split(handbook)
    return {name: (title, text) for name, title, text in zip(parts[::3], parts[1::3], parts[2::3])}


def homes(topics):
    """Anchor -> the link that leads there from any topic."""
    found = {}
    for name, (_, text) in topics.items():
        for anchor in [name, *re.findall(r'<a id="([^"]+)">', text)]:
            if anchor in found:
                sys.exit(f"anchor {anchor} stands twice in the handbook")
            found[anchor] = f"{name}.htm" if anchor == name else f"{name}.htm#{anchor}"
    return found


def redirected(body, targets):
    """The page with links and pictures as the help has them."""
    def link(match):
        target = match[1]
        if target.startswith("#") and target[1:] in targets:
            return f'href="{targets[target[1:]]}"'
        sys.exit(f"link to {target}: the handbook has no such anchor")

    def picture(match):
        if match[1].startswith(PICTURES):
            return f'src="../pictures/{match[1].removeprefix(PICTURES)}"'
        sys.exit(f"picture {match[1]}: not in {PICTURES}")

    return re.sub(r'src="([^"]*)"', picture, re.sub(r'href="([^"]*)"', link, body))


def laid_out(row):
    """A table row whose icons get a narrow column and whose short cells are not broken."""
    def cell(match):
        content = match[1]
        lines = re.sub(r"<(?!br)[^>]+>", "", content).split("<br>")
        if re.fullmatch(r"<img [^>]+>", content):
            return f'<td class="icon">{content}</td>'
        if max(len(html.unescape(line)) for line in lines) <= UNBROKEN:
            return f'<td class="short">{content}</td>'
        return match[0]

    cells, last = row[0].rsplit("<td>", 1)
    return re.sub(r"<td>(.*?)</td>", cell, cells) + "<td>" + last


def page(title, text, targets):
    # One heading higher: a topic is a page of its own.
    text = f"# {title}\n" + re.sub(r"^###", "##", text, flags=re.M)
    body = markdown.markdown(text, extensions=["tables", "fenced_code", "sane_lists"],
                             output_format="html")
    body = re.sub(r"<tr>\s*<td>.*?</tr>", laid_out, redirected(body, targets), flags=re.S)
    body = body.replace("<p>Siehe auch:", '<p class="see">Siehe auch:')
    return PAGE.format(title=html.escape(title), body=body)


def main():
    handbook, folder = map(Path, sys.argv[1:])
    topics = sections(handbook.read_text(encoding="utf-8"))
    targets = homes(topics)
    for name, (title, text) in topics.items():
        (folder / f"{name}.htm").write_text(page(title, text, targets), encoding="utf-8")


if __name__ == "__main__":
    main()
