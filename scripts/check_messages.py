#!/usr/bin/env python3
"""Compares the messages that the window sends to its editing component with those that pane/ knows.

    check_messages.py

Each SCI_ or k_sci_ name in shell/ and desktop/ must stand in a row of pane/messages.cpp, or of
pane/commands.cpp when it is a command without parameters. Numbers in place of names are refused.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
NAME = re.compile(r"\b(?:SCI_[A-Z0-9_]+|k_sci_\w+)\b")
ROW = re.compile(r"\{(SCI_[A-Z0-9_]+|k_sci_\w+),\s*[\w\[]")
NUMBER = re.compile(r"\bsci(?:_text)?\([^,;]+,\s*\d+")
COMMENT = re.compile(r"//.*")


def messages_sent():
    """Yields (place, name) of each message that the window names, and (place, None) of a number."""
    for folder in ("shell", "desktop"):
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix not in (".cpp", ".h", ".def"):
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                place = f"{path.relative_to(ROOT)}:{number}"
                code = COMMENT.sub("", line)
                yield from ((place, name) for name in NAME.findall(code))
                if NUMBER.search(code):
                    yield place, None


def messages_known():
    tables = ("pane/messages.cpp", "pane/commands.cpp")
    return {name for path in tables
            for name in ROW.findall(COMMENT.sub("", (ROOT / path).read_text(encoding="utf-8")))}


def main():
    known = messages_known()
    sent = list(messages_sent())
    faults = [f"{place}: {name or 'a number'} is not in a table of pane/"
              for place, name in sent if name not in known]
    if not known or not sent:
        faults.append("no messages were found")
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
