#!/usr/bin/python3
"""Compares the schemas with the reader: both must give the same verdict on every document.

    schemas.py MRVSIM SCHEMAS CASES SCENARIOS

The documents are those of the bad input (CASES), the project's SCENARIOS, and variations of small
scenarios and descriptors that together have every field: each value is removed, replaced by others
and given a neighbour that is not known. The reader is `mrvsim validate`.
"""

import json
import math
import pathlib
import re
import subprocess
import sys
import tempfile

import jsonschema

# What no schema can say, by the reader's message.
BEYOND_SCHEMAS = re.compile(
    r"must not be less than \d+, that of the step before"
    r"|: /\d+(/value/\d+)*/key: occurs twice"
    r"|/host/actions/\d+: "
)

SETUP = {
    "host": {"version": [12, 1], "tool": "eraserTool", "brush": 13.5, "zoomWithScrollWheel": None,
             "window": {"frame": [100, 50, 800, 622], "content": [100, 50, 800, 600]},
             "screenHeight": 900, "redrawDelay": 25, "actions": []},
    "layout": "com.apple.keylayout.US", "mouse": [500, 350], "modifiers": 0, "framework": True,
    "steps": [],
}

STEPS = [
    {"at": 0, "call": ["SP Interface", "Startup"]},
    {"at": 7, "axes": [1, 2, 3, 4, 5, 6]},
    {"button": [3, -1]},
    {"command": 4},
    {"message": {"type": "3dSR", "client": 1, "command": 3, "value": 0,
                 "axes": [0, 0, 0, 0, 0, 0], "button": 0}},
    {"active": False}, {"windowPending": True}, {"toolbarPending": False},
    {"refresh": [[1, 2, 3, -4]]}, {"mouse": [1.5, 2]}, {"click": "moved"}, {"modifiers": 1},
    {"tool": "pencilTool"}, {"brush": None}, {"window": None}, {"window": {}},
    {"closeWindow": True}, {"layout": "x"},
    {"redrawDelay": 2.5}, {"redrawDelay": None}, {"zoomWithScrollWheel": True},
    {"fail": {"procedure": "Basic.AcquireSuite", "error": -1, "after": 0, "times": 1}},
]

ITEMS = [
    {"key": "Wdth", "type": "long", "value": -2147483648},
    {"key": "$some name", "type": "comp", "value": 9223372036854775807},
    {"key": 7, "type": "doub", "value": 1.5},
    {"key": "aaaa", "type": "UntF", "unit": "#Pxl", "value": 13},
    {"key": "bbbb", "type": "bool", "value": True},
    {"key": "cccc", "type": "enum", "enumType": "Ordn", "value": "$target"},
    {"key": "dddd", "type": "type", "value": "Lyr "},
    {"key": "eeee", "type": "GlbC", "value": 4294967295},
    {"key": "ffff", "type": "Objc", "class": "Pnt ",
     "value": [{"key": "Hrzn", "type": "long", "value": 1}]},
    {"key": "gggg", "type": "VlLs", "value": [{"type": "TEXT", "value": "a"}, {"type": "none"}]},
    {"key": "hhhh", "type": "obj ", "value": [
        {"form": "Clss", "class": "Lyr "},
        {"form": "Enmr", "class": "Dcmn", "enumType": "Ordn", "value": "Trgt"},
        {"form": "Idnt", "class": "Dcmn", "value": 1},
        {"form": "rele", "class": "Dcmn", "value": -1},
        {"form": "prop", "class": "Prpr", "key": "Tool"},
        {"form": "name", "class": "Dcmn", "value": "b"}]},
    {"key": "iiii", "type": "Pth ", "value": "/a"},
    {"key": "jjjj", "type": "tdta", "value": "AAEC/w=="},
    {"key": "kkkk", "type": "what"},
]

OTHER_VALUES = [None, True, -1, 0, 3, 0.5, 65536, 2**31, -2**31 - 1, 2**32, 2**63, 1e300, "", "abcd",
                "abcd\n", "$", "$x", "\u00e9abc", "down", "QQ==", "VlLs", [], [0, 0], [None], {}]


class NotJson(ValueError):
    """The text is not the JSON that the format allows."""


def unique(pairs):
    names = [name for name, _ in pairs]
    if len(set(names)) < len(names):
        raise NotJson("a key stands twice")
    return dict(pairs)


def finite(text):
    number = float(text)
    if math.isinf(number):
        raise NotJson("a number beyond the doubles")
    return number


def whole(text):
    finite(text)
    return int(text)


def refuse(name):
    raise NotJson(name)


def parse(data):
    document = json.loads(data.decode("utf-8"), object_pairs_hook=unique, parse_float=finite,
                          parse_int=whole, parse_constant=refuse)
    json.dumps(document, ensure_ascii=False).encode("utf-8")  # fails for half of a surrogate pair
    return document


def variations(value):
    """The document with one change each."""
    for other in OTHER_VALUES:
        yield other
    if isinstance(value, dict):
        yield {**value, "unknown": 1}
        for name in value:
            yield {key: item for key, item in value.items() if key != name}
            for change in variations(value[name]):
                yield {**value, name: change}
    if isinstance(value, list):
        yield value + value[:1]
        yield value[1:]
        for i, item in enumerate(value):
            for change in variations(item):
                yield value[:i] + [change] + value[i + 1:]


def documents(cases, scenarios):
    for file in sorted(cases.glob("*.json")):
        for case in json.loads(file.read_text()):
            for kind in ("scenario", "descriptor"):
                if kind in case:
                    yield f"{file.stem}-{case['name']}", content(case[kind])
    for file in sorted(scenarios.glob("*.json")):
        yield file.stem, file.read_bytes()
    small = [SETUP, *({"steps": [step]} for step in STEPS), *([item] for item in ITEMS)]
    for i, document in enumerate(small):
        yield f"small-{i}", json.dumps(document).encode()
        for j, change in enumerate(variations(document)):
            yield f"small-{i}-{j}", json.dumps(change).encode()


def content(parts):
    if isinstance(parts, str):
        return parts.encode("utf-8", "surrogatepass")
    return b"".join(part.encode() if isinstance(part, str) else bytes([part]) for part in parts)


def begins_descriptor(data):
    return data.lstrip(b" \t\r\n")[:1] in (b"[", b"n")


def readers_verdicts(mrvsim, files):
    """What is wrong with each file, by its name; empty if nothing is."""
    faults = {}
    for begin in range(0, len(files), 500):
        some = [str(file) for file in files[begin:begin + 500]]
        done = subprocess.run([mrvsim, "validate", *some], capture_output=True, check=False)
        for line in done.stdout.decode().splitlines():
            faults[line.removesuffix(": ok")] = ""
        for line in done.stderr.decode().splitlines():
            if not line.startswith("mrvsim: note: "):
                faults[line.removeprefix("mrvsim: ").split(":")[0]] = line
    return faults


def schemas_verdict(validator, data):
    """Whether the document is good; None if it is nested deeper than the validator can follow."""
    try:
        return validator.is_valid(parse(data))
    except RecursionError:
        return None
    except (NotJson, ValueError):
        return False


def names(mrvsim, what):
    return subprocess.run([mrvsim, "list", what], capture_output=True, check=True,
                          text=True).stdout.split()


def missing_names(mrvsim, schema):
    """What editors would not offer although the reader knows it, or the other way round."""
    parts = schema["definitions"]
    steps = parts["step"]["properties"]
    offered = {
        "steps": set(steps) - {"at"},
        "procedures": set(steps["fail"]["properties"]["procedure"]["enum"]),
        "tools": set(parts["tool"]["anyOf"][0]["enum"]),
        "layouts": set(parts["layout"]["anyOf"][0]["enum"]),
    }
    return {what: offered[what] ^ set(names(mrvsim, what)) for what in offered}


def main():
    mrvsim, schemas, cases, scenarios = sys.argv[1], *map(pathlib.Path, sys.argv[2:])
    validators = {}
    for kind in ("scenario", "descriptor"):
        schema = json.loads((schemas / f"{kind}.schema.json").read_text())
        jsonschema.Draft7Validator.check_schema(schema)
        validators[kind] = jsonschema.Draft7Validator(schema)
    for what, differing in missing_names(mrvsim, validators["scenario"].schema).items():
        if differing:
            print(f"{what} that only the reader or only the schema has: {sorted(differing)}")
            return 1
    with tempfile.TemporaryDirectory() as folder:
        all_documents = {}
        for name, data in documents(cases, scenarios):
            file = pathlib.Path(folder, name + ".json")
            file.write_bytes(data)
            all_documents[str(file)] = data
        faults = readers_verdicts(mrvsim, list(all_documents))
        different = 0
        for file, data in all_documents.items():
            fault = faults[file]
            # The reader takes a list or null as a descriptor, and anything else as a scenario.
            kind = "descriptor" if begins_descriptor(data) else "scenario"
            verdict = schemas_verdict(validators[kind], data)
            if verdict is None or verdict == (fault == ""):
                continue
            if fault and BEYOND_SCHEMAS.search(fault):
                continue
            different += 1
            print(f"{data[:2000]!r}\n  the reader: {fault or 'good'}\n  the schema: the opposite")
    print(f"{len(all_documents)} documents, {different} with different verdicts")
    return 1 if different or len(all_documents) < 1000 else 0


if __name__ == "__main__":
    sys.exit(main())
