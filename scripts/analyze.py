#!/usr/bin/env python3
"""Runs clang-tidy or clazy over every source of ours that a build compiles.

    scripts/analyze.py {clang-tidy,clazy} [--build build/lint] [PATH...]

Prints each finding once and fails when there is any. With PATHs, looks only at sources below them.
A source whose preprocessed text, configuration and tool are those of a run that found nothing is
passed over.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ["Interface", "base", "plugin", "processortree", "search", "ipmanage", "sdk",
           "host", "tests", "benchmarks"]
# What is not the product: clang-tidy makes fewer checks there.
APART = ("tests/", "benchmarks/", "host/workbench/", "sdk/validate/")
# Where clazy is not run: what it looks for costs a user something, and a test has none.
WITHOUT_CLAZY = ("tests/",)
FINDING = re.compile(r"^(?P<file>/[^:]+):\d+:\d+: (?:error|warning): .*\[[^\]]+\]$")
# Warning flags of GCC's that Clang has no counterpart for.
CLANG_FLAG = "-Wno-unknown-warning-option"


def is_apart(source):
    return str(source.relative_to(ROOT)).startswith(APART)


def clazy_checks(source):
    text = (ROOT / "scripts" / "clazy-checks.txt").read_text()
    text = re.sub(r"#.*", "", text)
    everywhere, _, apart = text.partition("[apart]")
    if is_apart(source):
        everywhere += apart
    return ",".join(everywhere.split())


def tool_command(tool, commands, source):
    if tool == "clang-tidy":
        ours = f"--header-filter=^{ROOT}/({'|'.join(FOLDERS)})/"
        fewer = [f"--config-file={ROOT}/tests/.clang-tidy"] if is_apart(source) else []
        return ["clang-tidy", "-p", str(commands), "--quiet", ours, *fewer, str(source)]
    return ["clazy-standalone", "-p", str(commands), f"--checks={clazy_checks(source)}",
            f"--extra-arg={CLANG_FLAG}", str(source)]


def configuration(tool):
    """What the findings depend on beside the source."""
    program, *files = {
        "clang-tidy": ("clang-tidy", ".clang-tidy", "tests/.clang-tidy"),
        "clazy": ("clazy-standalone", "scripts/clazy-checks.txt"),
    }[tool]
    version = subprocess.run([program, "--version"], capture_output=True, check=True).stdout
    texts = [(ROOT / file).read_bytes() for file in files]
    return b"".join([version, *texts, pathlib.Path(__file__).read_bytes()])


def plain_command(command):
    """Returns a compile command without the compiler cache and without precompiled headers: a tool
    cannot read those of another compiler, and a source has to include what it uses."""
    parts = shlex.split(command)
    del parts[:next(at for at, part in enumerate(parts) if re.search(r"(\+\+|clang|gcc)[^/=]*$", part))]
    while "-include" in parts:
        at = parts.index("-include")
        del parts[at:at + 2]
    return shlex.join(part for part in parts if part != "-Winvalid-pch")


def fingerprint(entry, config):
    command = shlex.split(entry["command"])
    if "-o" in command:
        at = command.index("-o")
        del command[at:at + 2]
    text = subprocess.run(command + ["-E"], cwd=entry["directory"], capture_output=True,
                          check=True).stdout
    return hashlib.sha256(config + entry["command"].encode() + text).hexdigest()


def analyze(tool, commands, entry, config, clean):
    """The findings in one source, and what the tool said when it failed without any."""
    source = pathlib.Path(entry["file"])
    mark = clean / fingerprint(entry, config)
    if mark.exists():
        return {}, ""
    run = subprocess.run(tool_command(tool, commands, source), cwd=ROOT, text=True,
                         capture_output=True, check=False)
    findings = {}
    current = None
    for line in (run.stdout + run.stderr).splitlines():
        if FINDING.match(line):
            current = findings.setdefault(line, [])
        elif re.match(r"^\d+ (warnings?|errors?).* generated|^Suppressed|^Error while", line):
            current = None
        elif current is not None:
            current.append(line)
    if not findings and run.returncode == 0:
        mark.touch()
    failed = run.returncode != 0 and not findings
    return findings, f"{source}: {tool} ends with {run.returncode}:\n{run.stdout}{run.stderr}" if failed else ""


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("tool", choices=["clang-tidy", "clazy"])
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "lint")
    parser.add_argument("paths", nargs="*", type=pathlib.Path)
    options = parser.parse_args()

    build = options.build.resolve()
    below = [path.resolve() for path in options.paths] or [ROOT]
    entries = {}
    every = json.loads((build / "compile_commands.json").read_text())
    for entry in every:
        entry["command"] = plain_command(entry["command"])
        source = pathlib.Path(entry["file"])
        if options.tool == "clazy" and str(source).startswith(
                tuple(f"{ROOT}/{folder}" for folder in WITHOUT_CLAZY)):
            continue
        if build not in source.parents and any(p == source or p in source.parents for p in below):
            entries.setdefault(source, entry)
    if not entries:
        sys.exit(f"{options.tool}: nothing to look at")

    clean = build / "lint" / options.tool
    clean.mkdir(parents=True, exist_ok=True)
    commands = build / "lint" / f"{options.tool}-commands"
    commands.mkdir(exist_ok=True)
    (commands / "compile_commands.json").write_text(json.dumps(every))
    config = configuration(options.tool)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lambda entry: analyze(options.tool, commands, entry, config, clean),
                                entries.values()))
    findings = {}
    for found, failure in results:
        findings.update(found)
        if failure:
            findings.setdefault(failure.strip(), [])
    for finding, lines in sorted(findings.items()):
        print(finding.replace(f"{ROOT}/", ""), *lines, sep="\n")
    print(f"{options.tool}: {len(findings)} findings in {len(entries)} sources")
    if findings:
        sys.exit(1)


if __name__ == "__main__":
    main()
