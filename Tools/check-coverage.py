#!/usr/bin/env python3
"""check-coverage.py INFO LIST: prints coverage per file and checks it.

INFO is what llvm-cov exports in lcov's form; a line counts once for all instantiations of a
template. LIST names the lines that no test reaches:

    Source/Folder/File.cpp: why no test can
      the text of a line

Each listed line must exist and be unseen, and each unseen line must be listed. A line that has only
closing brackets counts with the line before it.
"""
import os
import re
import sys

# Folders, and the least percentage of lines and of branches.
GOALS = [("Source", ["Source"], 99.0, 95.0), ("SourceAndInclude", ["Source", "Include"], 98.5, 93.0)]


class File:
    def __init__(self):
        self.seen, self.unseen, self.branches, self.branches_taken = 0, [], 0, 0


def read_coverage(path):
    files = {}
    for line in open(path, encoding="utf-8"):
        kind, _, value = line.strip().partition(":")
        if kind == "SF":
            file = files.setdefault(os.path.relpath(value), File())
        elif kind == "DA":
            number, count = map(int, value.split(",")[:2])
            if count == 0:
                file.unseen.append(number)
            else:
                file.seen += 1
        elif kind == "BRF":
            file.branches += int(value)
        elif kind == "BRH":
            file.branches_taken += int(value)
    return {path: file for path, file in files.items() if path.split("/")[0] in ("Source", "Include")}


def read_listed(path):
    listed = []
    for line in open(path, encoding="utf-8"):
        if not line.strip() or line.startswith("#"):
            continue
        if line.startswith(" "):
            listed.append((file, line.strip()))
        else:
            file = line.split(":")[0]
    return listed


def share(part, whole):
    return 100.0 if whole == 0 else 100.0 * part / whole


def totals(files):
    seen = sum(file.seen for file in files)
    lines = seen + sum(len(file.unseen) for file in files)
    branches = sum(file.branches for file in files)
    taken = sum(file.branches_taken for file in files)
    return seen, lines, taken, branches


def row(name, files):
    seen, lines, taken, branches = totals(files)
    print(f"{name:48} {lines - seen:5} of {lines:5} {share(seen, lines):7.2f} %"
          f" {branches - taken:5} of {branches:5} {share(taken, branches):7.2f} %")


def check(name, problems):
    for problem in problems:
        print(problem)
    print(f"[{'  FAILED  ' if problems else '       OK '}] Coverage.{name} (0 ms)")
    return not problems


def main():
    files = read_coverage(sys.argv[1])
    print(f"{'':48} {'lines unseen':>22} {'branches untaken':>25}")
    for name in sorted(files):
        row(name, [files[name]])

    good = True
    for name, folders, least_lines, least_branches in GOALS:
        chosen = [file for path, file in files.items() if path.split("/")[0] in folders]
        row(name, chosen)
        seen, lines, taken, branches = totals(chosen)
        good &= check(name, [f"less than {least} % of {what}" for what, least, reached in [
            ("lines", least_lines, share(seen, lines)),
            ("branches", least_branches, share(taken, branches))] if reached < least])

    unseen = {}
    for path, file in files.items():
        source = open(path, encoding="utf-8").read().split("\n")
        for number in file.unseen:
            text = source[number - 1].strip()
            if not re.fullmatch(r"[\])};,\s]*", text):
                unseen.setdefault((path, text), number)
    listed = read_listed(sys.argv[2])
    good &= check("UnseenLinesAreListed", [f"{path}:{number}: not listed: {text}"
                  for (path, text), number in sorted(unseen.items()) if (path, text) not in listed])
    good &= check("ListedLinesAreUnseen", [f"{path}: not unseen: {text}"
                  for path, text in listed if (path, text) not in unseen])
    return 0 if good else 1


sys.exit(main())
