#!/usr/bin/env python3
"""Looks through our C++ for what no compiler finds.

Fails on a test that waits a fixed time or asserts nothing, on a test program that runs without the
trap for warnings, and on a warning that is muted or a comment that puts work off.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

BARE_WAIT = re.compile(r"\b(qWait|qSleep|sleep_for|sleep_until|usleep|msleep|sleep)\s*\(")
PUT_OFF = re.compile(r"\b(TODO|FIXME|XXX|HACK)\b")
MUTED = re.compile(r"\bNOLINT|clazy:exclude|diagnostic\s+ignored|QT_WARNING_DISABLE")

# tests/support/WarningTrap.h has what takes their place.
UNTRAPPED = re.compile(r"\bQTEST_(GUILESS_|APPLESS_)?MAIN\s*\(|\bQTest::qExec\s*\(")

ASSERTION = re.compile(r"\bQ(TRY_)?(COMPARE|VERIFY)\w*\s*\(|\bQFAIL\s*\(|\bqFail\s*\(|\bQBENCHMARK")
# .clang-format puts the head of a function and its closing brace at the beginning of a line.
FUNCTION = re.compile(r"^(?:[\w:<>,&*~ ]+[ &*])?(?P<name>[\w:]+)\([^;{}]*\)[^;{}]*\n\{\n(?P<body>.*?)^\}",
                      re.MULTILINE | re.DOTALL)
SLOTS = re.compile(r"private slots:\n(.*?)(?:^\S|^\};)", re.MULTILINE | re.DOTALL)
FIXTURE = {"initTestCase", "cleanupTestCase", "init", "cleanup"}


def sources():
    names = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.cpp",
                            "*.h", "Interface/ObserverPattern"], cwd=ROOT, text=True,
                           capture_output=True, check=True).stdout.split("\n")
    return [name for name in names if name and (ROOT / name).exists()]


def silent_tests(text):
    """Test functions that neither assert nor call a function of the same file that does."""
    bodies = {}
    for match in FUNCTION.finditer(text):
        name = match["name"].rpartition(":")[2]
        bodies[name] = bodies.get(name, "") + match["body"]
    asserting = {name for name, body in bodies.items() if ASSERTION.search(body)}
    while True:
        known = "|".join(sorted(asserting)) or "(?!)"
        call = re.compile(rf"\b({known})\s*\(")
        more = {name for name, body in bodies.items() if call.search(body)} - asserting
        if not more:
            break
        asserting |= more
    slots = set()
    for block in SLOTS.findall(text):
        slots |= set(re.findall(r"void (\w+)\(\)", block))
    tests = {name for name in slots - FIXTURE if not name.endswith("_data")}
    return sorted(name for name in tests if name in bodies and name not in asserting)


def main():
    findings = []
    checked = 0
    for name in sources():
        text = (ROOT / name).read_text(encoding="utf-8")
        checked += 1
        for number, line in enumerate(text.split("\n"), 1):
            if PUT_OFF.search(line):
                findings.append(f"{name}:{number}: work put off: {line.strip()}")
            if MUTED.search(line):
                findings.append(f"{name}:{number}: a warning muted: {line.strip()}")
            if name.startswith(("tests/", "benchmarks/")) and BARE_WAIT.search(line):
                findings.append(f"{name}:{number}: waits a fixed time, wait for what should happen:"
                                f" {line.strip()}")
            if name.startswith("tests/") and UNTRAPPED.search(line):
                findings.append(f"{name}:{number}: unexpected warnings would pass, use"
                                f" TSA_TEST_MAIN or runTests: {line.strip()}")
        if pathlib.Path(name).name.startswith("tst_"):
            findings += [f"{name}: {test} asserts nothing" for test in silent_tests(text)]
    print(*findings, f"{checked} sources, {len(findings)} findings", sep="\n")
    sys.exit(1 if findings or not checked else 0)


if __name__ == "__main__":
    main()
