"""Saves pictures of pages as a browser shows them.

    python3 -m bench.pages DIR PAGE[#PLACE]...

Each is saved in DIR under the page's name, from PLACE on. Tested by ./dev pictures.
"""
import sys
import tempfile
from pathlib import Path

from tests.support.browser import Browser


def main(target, *pages):
    Path(target).mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="tintline-pages-", ignore_cleanup_errors=True) as name:
        with Browser(Path(name)) as browser:
            for page in pages:
                file, _, place = page.partition("#")
                browser.open(Path(file).resolve().as_uri())
                if place:  # not by its address, which would frame it
                    browser.run(f"document.getElementsByName('{place}')[0].scrollIntoView()")
                browser.picture(Path(target) / f"{Path(file).stem}.png", 1000, 1300)


if __name__ == "__main__":
    main(*sys.argv[1:])
