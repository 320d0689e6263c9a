#!/usr/bin/env python3
"""Holds the includes of the sources to the layers in cmake/TsaLayers.cmake.

    scripts/check-layers.py [--prove]

Fails, with file and line, on an include of a project header that the table does not allow, on one
whose path does not start at the root of the project, on a source in a folder that has no row although
a folder beside it has one, and on a row that names a folder of a row below it.

With --prove, adds forbidden includes to each layer, one at a time, and fails when one is not reported.
"""

import argparse
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TABLE = "cmake/TsaLayers.cmake"
INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?P<open>["<])(?P<path>[^">]+)[">]', re.MULTILINE)
# Without layers: these include whatever they test, measure or feed; an example is a project of its own.
APART = ("tests/", "benchmarks/", "fuzz/", "examples/")


class Table:
    """The rows of the table; `wrong` holds what is wrong with the table itself."""

    def __init__(self, text):
        self.allowed = {}
        self.wrong = []
        for number, line in enumerate(text.split("\n"), 1):
            row = re.match(r'\s*"(?P<folder>[^"|]+)\|(?P<below>[^"|]*)"', line)
            if row:
                self.add(number, row["folder"].strip(), row["below"].split())

    def add(self, number, folder, below):
        allowed = {folder}
        for name in below:
            home = name if name in self.allowed else name.rpartition("/")[0]
            if home not in self.allowed:
                self.wrong.append(f"{TABLE}:{number}: {folder} names {name}, which no row above has")
            allowed |= self.allowed.get(name, {name})
        if folder in self.allowed:
            self.wrong.append(f"{TABLE}:{number}: {folder} has two rows")
        self.allowed[folder] = allowed

    def allows(self, folder, header):
        allowed = self.allowed[folder]
        return header.rpartition("/")[0] in allowed or header in allowed


def sources():
    names = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.cpp",
                            "*.h", "Interface/ObserverPattern"], cwd=ROOT, text=True,
                           capture_output=True, check=True).stdout.split("\n")
    return [name for name in names if name and (ROOT / name).exists()]


def findings(table, name, text, known):
    """Returns what is wrong with the includes in the text of the source `name`."""
    folder = name.rpartition("/")[0]
    if name.startswith(APART):
        return []
    if folder not in table.allowed:
        return [f"{name}:1: {folder} has no row in {TABLE}"]
    found = []
    for include in INCLUDE.finditer(text):
        path = include["path"]
        place = f"{name}:{text.count(chr(10), 0, include.start()) + 1}"
        if path in known:
            if not table.allows(folder, path):
                found.append(f"{place}: {folder} must not include {path}, see {TABLE}")
        elif include["open"] == '"':
            found.append(f"{place}: {path} is not a header of the project, as seen from its root")
    return found


def proof(table, names, known):
    """Returns the forbidden includes that went unnoticed, and the number of those that were tried."""
    first = {}
    for name in names:
        if name.endswith(".h"):
            first.setdefault(name.rpartition("/")[0], name)
    missed = []
    tried = 0
    for folder in table.allowed:
        if folder not in first:
            continue
        own = first[folder]
        headers = [header for home, header in first.items() if not table.allows(folder, header)]
        for header in [*headers, own.rpartition("/")[2], "../" + own]:
            tried += 1
            if not findings(table, own, f'#pragma once\n\n#include "{header}"\n', known):
                missed.append(f"{own}: nothing reported with an include of {header}")
        tried += 1
        if findings(table, own, f'#include "{own}"\n#include <vector>\n', known):
            missed.append(f"{own}: reported although it includes nothing that it must not")
        tried += 1
        if not findings(table, f"{folder}/new/Room.h", "", known):
            missed.append(f"{folder}/new: nothing reported, although it has no row")
    for text in ('"a | b"\n"b |"', '"a |"\n"a |"'):
        tried += 1
        if not Table(text).wrong:
            missed.append(f"{TABLE}: nothing reported with the rows {text!r}")
    return missed, tried


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--prove", action="store_true")
    arguments = parser.parse_args()
    table = Table((ROOT / TABLE).read_text(encoding="utf-8"))
    names = sources()
    known = set(names)
    if arguments.prove:
        wrong, checked = proof(table, names, known)
    else:
        wrong = list(table.wrong)
        checked = 0
        for name in names:
            wrong += findings(table, name, (ROOT / name).read_text(encoding="utf-8"), known)
            checked += 1
    print("\n".join(wrong + [f"{checked} looked at, {len(wrong)} findings"]))
    return 1 if wrong or not checked or not table.allowed else 0


if __name__ == "__main__":
    sys.exit(main())
