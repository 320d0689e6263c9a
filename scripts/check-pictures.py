#!/usr/bin/env python3
"""Holds the pictures in docs/images to those that the pages show.

    scripts/check-pictures.py [--prove]

Fails on a picture in docs/images that neither README.md nor a page in docs/ shows, and on a page that
shows a picture which does not exist.

With --prove, adds a picture that no page shows and takes one away, and fails when that is not reported.
"""

import argparse
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SHOWN = re.compile(r'!\[[^\]]*\]\(([^)\s]+)[^)]*\)|<img[^>]*\bsrc="([^"]+)"')


def shown():
    """Returns the pictures that pages show, each with one of those pages."""
    found = {}
    for page in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]:
        for match in SHOWN.finditer(page.read_text(encoding="utf-8")):
            picture = (page.parent / (match[1] or match[2])).resolve()
            found[str(picture.relative_to(ROOT))] = page.name
    return found


def findings(pages, pictures):
    return [f"{picture}: no page shows it" for picture in sorted(pictures - set(pages))] \
        + [f"{page}: there is no {picture}" for picture, page in sorted(pages.items())
           if picture not in pictures]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--prove", action="store_true")
    arguments = parser.parse_args()
    pages = shown()
    pictures = {str(path.relative_to(ROOT)) for path in (ROOT / "docs/images").rglob("*")
                if path.is_file()}
    wrong = findings(pages, pictures)
    if arguments.prove:
        more = findings(pages, pictures | {"docs/images/new.png"})
        fewer = findings(pages, pictures - {min(pages)})
        wrong = [f"nothing reported with a picture {change}"
                 for change, found in (("added", more), ("taken away", fewer))
                 if not set(found) - set(wrong)]
    print(*wrong, f"{len(pages)} pictures shown, {len(wrong)} findings", sep="\n")
    return 1 if wrong or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
