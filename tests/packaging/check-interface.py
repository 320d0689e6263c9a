#!/usr/bin/env python3
"""Holds what the installed libraries export to what the installed headers declare.

    check-interface.py PREFIX

Fails on a class with members outside its header, or on a function without a body there, that no library
of the package has; on a symbol that a shared library exports and no header declares; and on an include of
a header that is not installed.
"""

import pathlib
import re
import subprocess
import sys

LIBRARIES = ("libHostCommon.so", "libHostWidgets.so", "libTargetSelectArea.so", "libHandlerBase.a",
             "libTargetSelectAreaHandlerBase.a", "libTargetSelectAreaHandlerRelay.a",
             "libtargetselect-record.a")
# What comes with a class: GNU's names for it.
PREFIX = re.compile(r"^(?:vtable for|VTT for|typeinfo for|typeinfo name for|guard variable for|"
                    r"(?:non-)?virtual thunk to) ")
LINKER = {"__bss_start", "_edata", "_end"}
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n\\]|\\.|\\\n)*", re.MULTILINE)
CLASS = re.compile(r"\b(?:class|struct)\s+(?:[A-Z]+_EXPORT\s+)?(?P<name>\w+)(?:\s+final)?\s*(?::[^{;]*)?\{")
INLINE = re.compile(r"\b(?:constexpr|inline|template|using|typedef|friend|static_assert|Q_\w+)\b")
MACRO = re.compile(r"^\s*(?:Q_OBJECT|Q_GADGET|(?:public|protected|private|signals)(?:\s+slots)?\s*:)")


def without(text, opening, closing):
    """Returns `text` without what stands between the outermost brackets of a kind."""
    kept = []
    depth = 0
    for letter in text:
        depth -= letter == closing and depth > 0
        if depth == 0:
            kept.append(letter)
        depth += letter == opening
    return "".join(kept)


def body(text, start):
    """Returns what stands behind the brace at `start`, up to its end."""
    depth = 0
    for offset in range(start, len(text)):
        depth += {"{": 1, "}": -1}.get(text[offset], 0)
        if depth == 0:
            return text[start + 1:offset]
    return text[start + 1:]


def bodiless(text):
    """Returns the functions among the declarations in `text` that have their body elsewhere."""
    found = []
    flat = without(without(text, "<", ">"), "{", "}")
    for declaration in re.findall(r"([^;{}]*)(?=;)", flat):
        while MACRO.match(declaration):
            declaration = MACRO.sub("", declaration, count=1)
        name = re.search(r"([~\w]+|operator\W+)\s*\(", declaration)
        if name and not INLINE.search(declaration) and not re.search(r"=\s*(?:0|default|delete)\s*$", declaration):
            found.append(name[1].strip())
    return found


def declared(text):
    """Returns the classes of a header with their functions that have no body there, and its functions."""
    plain = DIRECTIVE.sub("", COMMENT.sub("", text))
    classes = {}
    rest = plain
    for match in CLASS.finditer(plain):
        inside = body(plain, match.end() - 1)
        members = bodiless(CLASS.sub("{", inside))
        if re.search(r"\bQ_(?:OBJECT|GADGET)\b", inside):
            members.append("staticMetaObject")
        classes[match["name"]] = members
        rest = rest.replace(inside, "")
    functions = []
    for space in re.finditer(r"\bnamespace\s+(\w+)\s*\{", rest):
        inside = body(rest, space.end() - 1)
        functions += [f"{space[1]}::{name}" for name in bodiless(inside)]
        rest = rest.replace(inside, "")
    return classes, functions + bodiless(rest)


def symbols(library):
    """Returns the demangled names that a library defines for others."""
    options = [] if library.suffix == ".a" else ["--dynamic"]
    output = subprocess.run(["nm", *options, "--defined-only", "--extern-only", "--demangle",
                             "--format=posix", str(library)], text=True, capture_output=True,
                            check=True).stdout
    lines = (re.match(r"(.*) [A-Za-z] [0-9a-f]+ ?[0-9a-f]*$", line) for line in output.split("\n"))
    return [line[1] for line in lines if line]


def named(symbol):
    """Returns the function, or the class with a member, that a symbol is about."""
    return re.sub(r"\(.*|\[abi:.*", "", PREFIX.sub("", symbol))


def main():
    prefix = pathlib.Path(sys.argv[1])
    interface = next(prefix.rglob("Interface/TargetSelectArea.h")).parent
    headers = [path for folder in (interface, interface.parent / "host") for path in folder.rglob("*")
               if path.is_file()]
    wrong = []
    classes = {}
    functions = {}
    for header in headers:
        text = header.read_text(encoding="utf-8")
        name = header.relative_to(interface.parent)
        for include in re.findall(r'#include "([^"]+)"', text):
            if not (interface.parent / include).exists():
                wrong.append(f"{name} includes {include}, which is not installed")
        own, free = declared(text)
        classes.update({each: (name, members) for each, members in own.items()})
        functions.update({each: name for each in free})

    libraries = [path for path in prefix.rglob("lib*") if path.name in LIBRARIES]
    exported = set()
    for library in libraries:
        names = {named(symbol) for symbol in symbols(library)}
        exported |= names
        if library.suffix == ".a":
            continue
        for symbol in sorted(names - LINKER):
            if symbol not in functions and symbol.partition("::")[0] not in classes:
                wrong.append(f"{library.name} exports {symbol}, which no header declares")
    for each, (name, members) in sorted(classes.items()):
        wrong += [f"{name}: {each}::{member} is not exported" for member in members
                  if f"{each}::{member}" not in exported]
    wrong += [f"{name}: {each} is not exported" for each, name in sorted(functions.items())
              if each not in exported]
    print(*wrong, f"{len(headers)} headers, {len(classes)} classes, {len(functions)} functions, "
          f"{len(libraries)} libraries, {len(wrong)} findings", sep="\n")
    return 1 if wrong or len(libraries) < 4 or not classes or not functions else 0


if __name__ == "__main__":
    sys.exit(main())
