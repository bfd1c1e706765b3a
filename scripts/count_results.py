#!/usr/bin/env python3
"""Prints how many tests passed and how many failed, out of a result file of ctest or GoogleTest."""

import sys
import xml.etree.ElementTree as ElementTree

passed = failed = 0
for case in ElementTree.parse(sys.argv[1]).iter("testcase"):
    if case.find("failure") is not None or case.find("error") is not None:
        failed += 1
    elif case.find("skipped") is None and case.get("status") in ("run", None):
        passed += 1
print(passed, failed)
