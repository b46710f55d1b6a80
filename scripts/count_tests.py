#!/usr/bin/env python3
"""Counts test cases in ctest's JUnit file: prints `PASSED FAILED SKIPPED`.

  count_tests.py RESULTS.xml

A test program that ran to its end counts as many cases as it says. One that did not (it crashed or
ran out of time), and a test that is no such program, counts as one. No file counts as one failure:
a run that left no results is not a run without tests.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree

PASSED = re.compile(r"^\[  PASSED  \] (\d+) tests?", re.MULTILINE)
SKIPPED = re.compile(r"^\[  SKIPPED \] (\d+) tests?", re.MULTILINE)
FAILED = re.compile(r"^\[  FAILED  \] .* \(\d+ ms\)$", re.MULTILINE)


def main():
    try:
        cases = ElementTree.parse(sys.argv[1]).getroot().iter("testcase")
        counts = [count(case) for case in cases]
    except (OSError, ElementTree.ParseError) as error:
        print(f"count_tests.py: {error}", file=sys.stderr)
        counts = []
    passed, failed, skipped = (sum(column) for column in zip(*counts)) if counts else (0, 1, 0)
    print(passed, failed, skipped)


def count(case):
    output = case.findtext("system-out") or ""
    passed, skipped = number(PASSED, output), number(SKIPPED, output)
    failed = len(FAILED.findall(output))
    succeeded = case.get("status") == "run"
    if not PASSED.search(output):
        return (1, 0, 0) if succeeded else (0, 1, 0)
    if not succeeded and not failed:
        failed = 1
    return passed, failed, skipped


def number(pattern, output):
    match = pattern.search(output)
    return int(match[1]) if match else 0


if __name__ == "__main__":
    main()
