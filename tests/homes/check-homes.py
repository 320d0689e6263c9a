#!/usr/bin/env python3
"""Holds the suite to leave the user's own folders alone.

    check-homes.py BUILD_FOLDER FILE_DIALOG_TEST

Fails when a test that is no lint runs without a home of its own, when two share one, and when a test
that uses Qt's file dialog fails for a user who has used one, or changes anything in that user's home.
"""

import json
import os
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
RUNNER = str(ROOT / "scripts" / "with-own-home.sh")
HISTORY = """[FileDialog]
history=file:///usr/share, file:///nowhere/gone, file:///usr
lastVisited=file:///usr/share
qtVersion=5.15.8
shortcuts=file:, file:///usr
sidebarWidth=115
viewMode=List
"""


def registered(build):
    shown = subprocess.run(["ctest", "--test-dir", build, "--show-only=json-v1"], text=True,
                           capture_output=True, check=True).stdout
    for test in json.loads(shown)["tests"]:
        properties = {one["name"]: one["value"] for one in test.get("properties", [])}
        if "lint" not in properties.get("LABELS", []):
            yield test["name"], test.get("command", [])


def without_home(tests):
    """Returns what is wrong with the commands of the tests."""
    found = []
    owners = {}
    for name, command in tests:
        if command[:1] != [RUNNER]:
            found.append(f"{name} runs without {RUNNER}")
        elif owners.setdefault(command[1], name) != name:
            found.append(f"{name} and {owners[command[1]]} share the home {command[1]}")
    return found


def contents(folder):
    return {path.relative_to(folder): path.read_bytes() if path.is_file() else None
            for path in sorted(folder.rglob("*"))}


def as_user(program, work):
    """Returns what went wrong when `program` ran for a user with a home of their own."""
    home = work / "user"
    (home / ".config").mkdir(parents=True)
    (home / ".config" / "QtProject.conf").write_text(HISTORY, encoding="utf-8")
    before = contents(home)
    environment = {name: value for name, value in os.environ.items() if not name.startswith("XDG_")}
    run = subprocess.run([RUNNER, work / "own", program], env={**environment, "HOME": str(home)},
                         text=True, capture_output=True, check=False)
    found = []
    if run.returncode != 0:
        found.append(f"{program} fails for a user with a history of file dialogs:\n{run.stdout}")
    if contents(home) != before:
        found.append(f"{program} changes the files of the user")
    if not list((work / "own" / "config").rglob("QtProject.conf")):
        found.append(f"{program} leaves no settings of a file dialog, so that this proves nothing")
    return found


def main():
    build, program = sys.argv[1:]
    tests = list(registered(build))
    found = without_home(tests)
    with tempfile.TemporaryDirectory() as work:
        found += as_user(program, pathlib.Path(work))
    print(*found, f"{len(tests)} tests, {len(found)} findings", sep="\n")
    return 1 if found or not tests else 0


if __name__ == "__main__":
    sys.exit(main())
