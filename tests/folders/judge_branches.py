#!/usr/bin/env python3
"""judge_branches.py SCRIPT: what scripts/judge_branches.py says of sources and their branches."""

import pathlib
import subprocess
import sys
import tempfile

CASES = [
    # name, lines of a source, (line, column, true, false) of its branches, what is printed, status
    (
        "both outcomes, in one instance of a template or in two",
        ["if (a) b();", "if (c) d();"],
        [(1, 5, 1, 2), (2, 5, 0, "1.2k"), (2, 5, 3, 0)],
        ["2 branches; 0 with one outcome and a reason, 0 faults"],
        0,
    ),
    (
        "one outcome without a mark",
        ["if (a) b();", "if (c) d();"],
        [(1, 5, 0, 2), (2, 5, 7, 0)],
        [
            "f/a.cpp:1:5: never true",
            "f/a.cpp:2:5: never false",
            "2 branches; 0 with one outcome and a reason, 2 faults",
        ],
        1,
    ),
    (
        "one outcome with a mark on the line or above it",
        [
            "// Branch never true: it is",
            "// null.",
            "if (a) b();",
            "if (c) d();  // Branch never false: x",
        ],
        [(3, 5, 0, 2), (4, 5, 7, 0)],
        ["2 branches; 2 with one outcome and a reason, 0 faults"],
        0,
    ),
    (
        "a mark with the other outcome",
        ["// Branch never true: a is null.", "if (a) b();"],
        [(2, 5, 1, 0)],
        [
            "f/a.cpp:2: is marked as never true, but every branch was",
            "f/a.cpp:2:5: never false",
            "1 branches; 0 with one outcome and a reason, 2 faults",
        ],
        1,
    ),
    (
        "a mark that is not needed, and one on a line without branches",
        ["// Branch never true: a is null.", "if (a) b();", "b();  // Branch never false: c"],
        [(2, 5, 1, 1)],
        [
            "f/a.cpp:2: is marked as never true, but every branch was",
            "f/a.cpp:3: is marked as never false, but every branch was",
            "1 branches; 0 with one outcome and a reason, 2 faults",
        ],
        1,
    ),
    (
        "a mark without a reason",
        ["// branch never true", "b();", "// Branch never false:"],
        [],
        [
            "f/a.cpp:1: a mark without an outcome or a reason",
            "f/a.cpp:3: a mark without an outcome or a reason",
            "0 branches; 0 with one outcome and a reason, 2 faults",
        ],
        1,
    ),
]


def judged(script, lines, branches):
    with tempfile.TemporaryDirectory() as root:
        source = pathlib.Path(root, "f", "a.cpp")
        source.parent.mkdir()
        source.write_text("\n".join(lines) + "\n")
        shown = [f"{source}:", "    1|      1|text", "  |  Branch (9:9): [Folded - Ignored]"]
        shown += [f"  |  Branch ({n}:{c}): [True: {t}, False: {f}]" for n, c, t, f in branches]
        done = subprocess.run(
            [script, root, "f"], input="\n".join(shown), capture_output=True, text=True, check=False
        )
        return done.stdout.splitlines() + done.stderr.splitlines(), done.returncode


def main(script):
    failed = False
    for name, lines, branches, printed, status in CASES:
        found = judged(script, lines, branches)
        if found != (printed, status):
            print(f"{name}: expected {(printed, status)}, found {found}")
            failed = True
    return failed


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
