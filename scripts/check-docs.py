#!/usr/bin/env python3
"""Holds the pages of the project to the files that they name.

    scripts/check-docs.py [--prove]

Fails, with file and line, on a path in backticks, a relative link or an image that names a file which is
not there, and on a link to a heading that the page does not have. A path is one from the root of the
project, or the end of one; it may stand without its suffix, and with {a,b} or *. A name without a folder
is looked at if it is that of a source or of a test.

With --prove, breaks each path and link of the pages, one at a time, and fails when one is not reported.
"""

import argparse
import fnmatch
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FENCE = re.compile(r"^ *```.*?^ *```", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r'\]\(([^)\s]+)[^)]*\)|<img[^>]*\bsrc="([^"]+)"')
HEADING = re.compile(r"^#+ +(.+)$", re.MULTILINE)
PATH = re.compile(r"[\w.{},*+-]+(/[\w.{},*+-]+)*/?")
SOURCE = re.compile(r".*\.(cpp|h|py|sh|cmake|\*)|(tst|bench|fuzz)_\w+")
# Names of what a build leaves, and of what is installed.
APART = ("build", "usr", "lib", "include", "share", "bin")


class Tree:
    """The files and folders of the project, and the names of its tests."""

    def __init__(self):
        names = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"],
                               cwd=ROOT, text=True, capture_output=True, check=True).stdout.split("\n")
        files = {name for name in names if name and (ROOT / name).exists()}
        folders = {str(parent) for name in files for parent in pathlib.PurePath(name).parents}
        self.paths = files | (folders - {"."})
        self.tops = {path.partition("/")[0] for path in self.paths}
        self.known = set()
        for path in self.paths:
            parts = path.split("/")
            for first in range(len(parts)):
                end = "/".join(parts[first:])
                self.known |= {end, re.sub(r"(?<=[^/])\.\w+$", "", end)}
        self.tests = set()
        for name in files:
            if name.endswith("CMakeLists.txt"):
                text = (ROOT / name).read_text(encoding="utf-8")
                self.tests |= set(re.findall(r"\b(?:tst|bench|fuzz)_\w+", text))

    def pages(self):
        return sorted(path for path in self.paths if path.endswith(".md"))

    def has(self, path):
        if "*" in path:
            return bool(fnmatch.filter(self.known, path))
        return path in self.known or path in self.tests


def alternatives(path):
    """Returns the paths that {a,b} in `path` stands for."""
    braces = re.search(r"\{([^{}]*)\}", path)
    if not braces:
        return [path]
    return [each for choice in braces[1].split(",")
            for each in alternatives(path[:braces.start()] + choice + path[braces.end():])]


def is_path(tree, word):
    """Returns whether `word`, which stands in backticks, has to name a file."""
    if not PATH.fullmatch(word) or word.startswith("."):
        return False
    first, slash, rest = word.partition("/")
    if not slash:
        return bool(SOURCE.fullmatch(word)) and not word.startswith("*")
    if first in APART:
        return False
    return not rest or first in tree.tops or bool(SOURCE.fullmatch(rest.rpartition("/")[2]))


def anchors(text):
    """Returns the anchors of the headings in a page."""
    found = set()
    for heading in HEADING.findall(FENCE.sub("", text)):
        plain = re.sub(r"[^\w\- ]", "", heading.strip().lower())
        found.add(plain.replace(" ", "-"))
    return found


def words(tree, text):
    """Returns what `text` names in backticks, with its place."""
    kept = FENCE.sub(lambda fence: re.sub(r"[^\n]", " ", fence[0]), text)
    for code in CODE.finditer(kept):
        for word in re.finditer(r"\S+", code[1]):
            stripped = word[0].rstrip(":;,")
            if is_path(tree, stripped):
                yield stripped, code.start(1) + word.start()


def links(text):
    """Returns the relative links and images of a page, with their places."""
    kept = FENCE.sub(lambda fence: re.sub(r"[^\n]", " ", fence[0]), text)
    for link in LINK.finditer(kept):
        target = link[1] or link[2]
        if not re.match(r"\w+:", target):
            yield target, link.start(1 if link[1] else 2)


def is_linked(tree, page, text, target):
    path, _, anchor = target.partition("#")
    place = (ROOT / page).parent / path if path else ROOT / page
    try:
        name = str(place.resolve().relative_to(ROOT))
    except ValueError:
        return False
    if name not in tree.paths:
        return False
    if not anchor or not name.endswith(".md"):
        return True
    return anchor in anchors(text if name == page else (ROOT / name).read_text(encoding="utf-8"))


def findings(tree, page, text):
    """Returns what the page `page` with the text `text` names and what is not there."""
    found = []

    def report(offset, what):
        found.append(f"{page}:{text.count(chr(10), 0, offset) + 1}: {what}")

    for word, offset in words(tree, text):
        for path in alternatives(word.rstrip("/")):
            if not tree.has(path):
                report(offset, f"there is no {path}")
    for target, offset in links(text):
        if not is_linked(tree, page, text, target):
            report(offset, f"the link to {target} leads nowhere")
    return found


def broken(name):
    """Returns `name` with another last part, which is still what has to be looked at."""
    return re.sub(r"(?:(?:tst|bench|fuzz)_)?([^/]+/?)$",
                  lambda last: last[0][:last.start(1) - last.start()] + "zz" + last[1], name)


def proof(tree, pages):
    """Returns the broken names that went unnoticed, and the number of those that were tried."""
    missed = []
    tried = 0
    for page, text in pages.items():
        before = len(findings(tree, page, text))
        named = [*words(tree, text), *links(text)]
        for name, offset in named:
            tried += 1
            end = offset + len(name)
            wrong = broken(name)
            changed = text[:offset] + wrong + text[end:]
            if len(findings(tree, page, changed)) <= before:
                missed.append(f"{page}: nothing reported with {wrong} instead of {name}")
    return missed, tried


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--prove", action="store_true")
    arguments = parser.parse_args()
    tree = Tree()
    pages = {page: (ROOT / page).read_text(encoding="utf-8") for page in tree.pages()}
    if arguments.prove:
        wrong, checked = proof(tree, pages)
    else:
        wrong = [each for page, text in pages.items() for each in findings(tree, page, text)]
        checked = sum(len([*words(tree, text), *links(text)]) for text in pages.values())
    print("\n".join(wrong + [f"{checked} names looked at, {len(wrong)} findings"]))
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
