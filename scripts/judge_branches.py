#!/usr/bin/env python3
"""Judges what llvm-cov shows of branches: each was true and false, or is marked in the source.

    llvm-cov-19 show -show-branches=count ... | scripts/judge_branches.py ROOT FOLDER...

A comment on the line of a branch, or above it,

    // Branch never true: the reason          (or: never false)

says that a branch on that line has only one outcome. Prints the branches that have only one and no
mark, and the marks of which the opposite is true; both end it with status 1. ROOT is the folder of
the sources, FOLDER... are those in it that were judged.
"""

import pathlib
import re
import sys

MARK = re.compile(r"// Branch never (true|false): \S")
ATTEMPT = re.compile(r"// *branch never", re.IGNORECASE)
BRANCH = re.compile(r"Branch \((\d+):(\d+)\): \[True: ([^,]+), False: ([^\]]+)\]")


def marks_in(path):
    """The marks of a source: pairs of a line number and an outcome; and the lines of bad ones."""
    marks, bad, waiting = set(), [], set()
    for number, line in enumerate(path.read_text().splitlines(), 1):
        mark = MARK.search(line)
        if mark:
            waiting.add(mark[1])
        elif ATTEMPT.search(line):
            bad.append(number)
        if not line.lstrip().startswith("//"):
            marks |= {(number, outcome) for outcome in waiting}
            waiting = set()
    return marks, bad


def outcomes_in(text, root):
    """For each place "FILE:LINE:COLUMN" the outcomes that it had, in any instance of a template."""
    outcomes, file = {}, None
    for line in text:
        if line.startswith("/") and line.rstrip().endswith(":"):
            file = pathlib.Path(line.rstrip()[:-1]).relative_to(root).as_posix()
        found = BRANCH.search(line)
        if found:
            place = (file, int(found[1]), int(found[2]))
            had = {name for name, count in (("true", found[3]), ("false", found[4])) if count != "0"}
            outcomes.setdefault(place, set()).update(had)
    return outcomes


def main(root, *folders):
    root = pathlib.Path(root)
    outcomes = outcomes_in(sys.stdin, root)
    marks, faults = set(), []
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".cpp", ".h"):
                continue
            file = path.relative_to(root).as_posix()
            own, bad = marks_in(path)
            marks |= {(file, line, outcome) for line, outcome in own}
            faults += [(file, line, "a mark without an outcome or a reason") for line in bad]
    used = set()
    for (file, line, column), had in outcomes.items():
        for outcome in {"true", "false"} - had:
            if (file, line, outcome) in marks:
                used.add((file, line, outcome))
            else:
                faults.append((file, f"{line}:{column}", f"never {outcome}"))
    for file, line, outcome in marks - used:
        faults.append((file, line, f"is marked as never {outcome}, but every branch was"))
    for file, line, text in sorted(faults, key=lambda fault: (fault[0], str(fault[1]).zfill(9))):
        print(f"{file}:{line}: {text}")
    print(f"{len(outcomes)} branches; {len(used)} with one outcome and a reason, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
