#!/usr/bin/env python3
"""Looks for user texts that have no finished Chinese translation.

    scripts/check-translations.py [--lupdate PROGRAM] [--work FOLDER] [--prove]

Reads the texts anew from the sources with lupdate, into copies of the translation files. Fails on a
text that has no translation or an unfinished one, on a translation whose text is gone from the
sources, on place marks (%1, &, a trailing ellipsis or colon) that differ between the two, and on
anything that lupdate warns of.

With --prove, spoils one translation in each copy, in one way after the other, and fails when one of
them goes unnoticed.
"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

ROOT = pathlib.Path(__file__).resolve().parent.parent
# Whole folders, so that new files are looked at without being named. A folder or a translation file
# may be missing; the texts of a missing file are all untranslated.
SETS = {
    "resources/translations/TargetSelectArea_zh_CN.ts":
        ["base", "plugin", "processortree", "ipmanage", "search"],
    "host/widgets/translations/HostWidgets_zh_CN.ts": ["host/widgets"],
    "host/workbench/translations/Workbench_zh_CN.ts": ["host/workbench", "sdk/record"],
}
NOTHING = '<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n' \
          '<TS version="2.1" language="zh_CN" sourcelanguage="en">\n</TS>\n'

PLACE = re.compile(r"%(?:L?\d{1,2}|n)")
MNEMONIC = re.compile(r"&(?![&\s])\w")
ENDS = [("...", "…"), (":", "：")]


def messages(path):
    """Every message, by its context, source and comment."""
    found = {}
    for context in xml.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            key = (context.findtext("name"), message.findtext("source"), message.findtext("comment"))
            found[key] = message
    return found


def texts_of(translation):
    forms = translation.findall("numerusform")
    return [form.text or "" for form in forms] if forms else [translation.text or ""]


def ending(text):
    return next((end for end in ENDS if text.endswith(end)), None)


def marks_differ(source, text):
    # A translation may leave out the number: "one row" has none either.
    if set(PLACE.findall(source)) - {"%n"} != set(PLACE.findall(text)) - {"%n"}:
        return "place marks differ"
    if len(MNEMONIC.findall(source.replace("&&", ""))) != len(MNEMONIC.findall(text.replace("&&", ""))):
        return "the mnemonic is on one side only"
    if ending(source) != ending(text):
        return "the ends differ"
    return None


def defect(source, message):
    translation = message.find("translation")
    if translation is None or not all(text.strip() for text in texts_of(translation)):
        return "not translated"
    if translation.get("type"):
        return translation.get("type")
    return next(filter(None, (marks_differ(source, text) for text in texts_of(translation))), None)


def update(lupdate, folders, copy):
    """Has lupdate bring `copy` up to date and returns what it warned of."""
    existing = [folder for folder in folders if (ROOT / folder).is_dir()]
    if not existing:
        return []
    run = subprocess.run([lupdate, "-silent", "-no-obsolete", "-locations", "none", "-I", ".",
                          "-extensions", "h,cpp", *existing, "-ts", str(copy)], cwd=ROOT, text=True,
                         capture_output=True, check=False)
    complaints = run.stderr.splitlines()
    if run.returncode != 0:
        complaints.append(f"{lupdate} failed with {run.returncode}")
    return complaints


def findings(name, folders, given, copy, lupdate):
    """What is wrong with the translations in the text `given`; `copy` is worked on."""
    copy.write_text(given, encoding="utf-8")
    before = messages(copy)
    found = [f"{name}: {complaint}" for complaint in update(lupdate, folders, copy)]
    after = messages(copy)
    lines = [(key, defect(key[1], message)) for key, message in after.items()]
    lines += [(key, "gone from the sources") for key in before if key not in after]
    found += [f"{name}: {key[0]}: \"{key[1]}\": {what}" for key, what in lines if what]
    return found, len(after)


def damages(given):
    """The translations `given` with the first of them spoilt, by the word for it."""

    def with_first(change):
        root = xml.fromstring(given.encode())
        context = root.find("context")
        message = context.find("message")
        change(context, message, message.find("source"), message.find("translation"))
        return xml.tostring(root, encoding="unicode")

    def take_away(context, message, _source, _translation):
        context.remove(message)

    def empty(_context, _message, _source, translation):
        translation.text = ""

    def unfinish(_context, _message, _source, translation):
        translation.set("type", "unfinished")

    def add_place(_context, _message, _source, translation):
        translation.text += "%7"

    def leave_over(_context, _message, source, _translation):
        source.text += " gone"

    return {"taken away": with_first(take_away), "emptied": with_first(empty),
            "unfinished": with_first(unfinish), "given a place mark": with_first(add_place),
            "whose text is gone": with_first(leave_over)}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--lupdate", default="lupdate")
    parser.add_argument("--work", type=pathlib.Path)
    parser.add_argument("--prove", action="store_true")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as temporary:
        work = arguments.work or pathlib.Path(temporary)
        work.mkdir(parents=True, exist_ok=True)
        wrong = []
        checked = 0
        for name, folders in SETS.items():
            path = ROOT / name
            given = path.read_text(encoding="utf-8") if path.exists() else NOTHING
            copy = work / path.name
            if not arguments.prove:
                found, count = findings(name, folders, given, copy, arguments.lupdate)
                wrong += found
                checked += count
            elif path.exists():
                whole, _ = findings(name, folders, given, copy, arguments.lupdate)
                for damage, text in damages(given).items():
                    found, _ = findings(name, folders, text, copy, arguments.lupdate)
                    checked += 1
                    if not set(found) - set(whole):
                        wrong.append(f"{name}: nothing noticed with a translation {damage}")
    print("\n".join(wrong + [f"{checked} looked at, {len(wrong)} findings"]))
    return 1 if wrong or not checked else 0


if __name__ == "__main__":
    sys.exit(main())
