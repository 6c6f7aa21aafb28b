#!/usr/bin/env python3
"""Writes the inputs that the fuzzers start from:  fuzz/make_corpus.py

They are kept in fuzz/corpus. By hand are added: an input that once was a fault; and in mach_o two
of the modules for the tests of the loader, as tests/simulator/loader/modules builds them."""

import json
import pathlib
import struct

CORPUS = pathlib.Path(__file__).parent / "corpus"


def write(target, files):
    folder = CORPUS / target
    folder.mkdir(parents=True, exist_ok=True)
    for name, data in files.items():
        (folder / name).write_bytes(data.encode() if isinstance(data, str) else data)


def scenarios():
    steps = [
        {"call": ["SP Interface", "Startup"]},
        {"at": 10, "axes": [0, 60, 0, 0, 0, 0]},
        {"at": 11, "axes": [-32768, 32767, 0, 0, 500, 0]},
        {"button": [3, 1]},
        {"command": 4},
        {"message": {"type": "3dSR", "client": 1, "command": 3, "value": 0,
                     "axes": [0, 9, 0, 0, 0, 0], "button": 0}},
        {"active": False},
        {"at": 20, "active": True},
        {"windowPending": True},
        {"toolbarPending": True},
        {"refresh": [[100, 250, 800, 600]]},
        {"mouse": [40.5, -20]},
        {"click": "down"},
        {"at": 30, "click": "dragged"},
        {"modifiers": 4294967295},
        {"tool": "eraserTool"},
        {"brush": None},
        {"window": None},
        {"window": {"frame": [0, 0, 640, 502], "content": [0, 0, 640, 480]}},
        {"layout": "com.apple.keylayout.German"},
        {"redrawDelay": 40},
        {"zoomWithScrollWheel": True},
        {"fail": {"procedure": "ActionControl.Get", "error": -1715, "after": 2, "times": 1}},
        {"at": 40, "closeWindow": True},
        {"call": ["PS Photoshop", "Do It"]},
    ]
    whole = {
        "host": {"version": [12, 1], "tool": "paintbrushTool", "brush": 13.5,
                 "zoomWithScrollWheel": None, "screenHeight": 900, "redrawDelay": None,
                 "window": {"frame": [100, 50, 800, 622], "content": [100, 50, 800, 600]}},
        "layout": "com.apple.keylayout.US", "mouse": [500, 350], "modifiers": 0,
        "framework": True, "steps": steps,
    }
    files = {"whole.json": json.dumps(whole, indent=1), "empty.json": "{}",
             "samples.json": json.dumps({"steps": [
                 {"at": at, "axes": [0, at, 0, 0, -at, 0]} for at in range(20)]})}
    for number, step in enumerate(steps):
        files[f"step-{number}.json"] = json.dumps({"steps": [step]})
    return files


def descriptors():
    forms = [
        {"form": "Clss", "class": "Lyr "},
        {"form": "Enmr", "class": "$app", "enumType": "Ordn", "value": "Trgt"},
        {"form": "Idnt", "class": "Lyr ", "value": 7},
        {"form": "indx", "class": "Lyr ", "value": 1},
        {"form": "rele", "class": "Lyr ", "value": -1},
        {"form": "name", "class": "Lyr ", "value": "Grünes Blatt"},
        {"form": "prop", "class": "Prpr", "value": "Tool"},
    ]
    values = [
        {"type": "long", "value": -5},
        {"type": "comp", "value": 9223372036854775807},
        {"type": "doub", "value": 1e-3},
        {"type": "UntF", "unit": "#Pxl", "value": 13.0},
        {"type": "bool", "value": True},
        {"type": "enum", "enumType": "$paintbrushTool", "value": "Trgt"},
        {"type": "type", "value": "Lyr "},
        {"type": "GlbC", "value": 4294967295},
        {"type": "TEXT", "value": "a\u0000b\U0001F600"},
        {"type": "tdta", "value": "AQID"},
        {"type": "alis", "value": "/a/b"},
        {"type": "Pth ", "value": "/a/b"},
        {"type": "bkmk", "value": "AQID"},
        {"type": "obj ", "value": forms},
        {"type": "VlLs", "value": [{"type": "long", "value": 1}, {"type": "bool", "value": False}]},
        {"type": "Objc", "class": "Lyr ", "value": [{"key": "Nm  ", "type": "long", "value": 2}]},
        {"type": "GlbO", "class": "$x", "value": []},
        {"type": "????"},
    ]
    files = {"null.json": "null", "empty.json": "[]"}
    for number, value in enumerate(values):
        files[f"value-{number}.json"] = json.dumps([{"key": "KeyA", **value}])
    return files


BLOCK = 200


def settings():
    key = b"zoomWithScrollWheel"
    name = "MrvPho".encode("utf-32-le")
    record = bytes(11) + b"\1\1\1" + bytes(4) + b"z" + bytes(1) + b"e" + bytes(30)
    return {
        "preference.psp": b"x" * 50 + key + b"\0\0\0\0\1" + b"x" * 20,
        "preference-off.psp": key + bytes(8),
        "preference-at-the-end.psp": b"x" * (BLOCK - len(key)) + key + b"\1",
        "preference-split.psp": b"x" * (BLOCK - 5) + key + b"\0\0\0\0\1",
        "preference-after-a-longer-block.psp": key.rjust(BLOCK, b"x") + b"short",
        "shortcut.psp": b"x" * 30 + name + record,
        "shortcut-at-the-end.psp": b"x" * (BLOCK - len(name)) + name + record[:9],
        "shortcut-with-option.psp": name + bytes(13) + b"\1" + bytes(4) + b"z" + bytes(30),
        "shortcut-other-key.psp": name + bytes(20) + b"v",
        "shortcut-nothing-after.psp": name,
    }


def uleb(number):
    data = b""
    while number > 127:
        data += bytes([number & 127 | 128])
        number >>= 7
    return data + bytes([number])


def tables():
    symbol = b"\x40_symbol\0"
    bind = b"\x11" + symbol + b"\x51\x71" + uleb(0x18)
    trie = b"\0\1_ab\0" + uleb(7) + b"\2\0\x10\1c\0" + uleb(14) + b"\2\0\x20\0"
    universal = struct.pack(">II", 0xCAFEBABE, 2)
    universal += struct.pack(">iiIII", 0x01000007, 3, 0x1000, 16, 12)
    universal += struct.pack(">iiIII", 0x0100000C, 0, 0x4000, 16, 14)
    unwind = struct.pack("<IIIIIII", 1, 28, 1, 32, 0, 32, 2)
    unwind += struct.pack("<I", 0x01000000)
    unwind += struct.pack("<III", 0x100, 56, 56) + struct.pack("<III", 0x200, 0, 56)
    unwind += struct.pack("<IHH", 2, 8, 1) + struct.pack("<II", 0x100, 0x01000000)
    compressed = unwind[:56] + struct.pack("<IHHHH", 3, 12, 1, 16, 0) + struct.pack("<I", 0)
    frame = struct.pack("<II", 20, 0) + b"\1zR\0\1\x78\x10\1\x10" + b"\x0c\7\x08\x90\1\0\0"
    frame += struct.pack("<IIqq", 20, 28, 0x100, 0x20) + bytes(4)
    contents = {
        "rebase": (0, b"\x11\x22\x10\x52\x30\x08\x60\x02\x70\x01\x08\x80\x02\x08\x00"),
        "bind": (1, bind + b"\x62\x10\x80\x08\x90\xA0\x08\xB1\xC0\x02\x08\x00"),
        "bind-weak": (2, b"\x48_strong\0" + bind + b"\x90\x00"),
        "bind-lazy": (3, bind + b"\x90\x00" + bind + b"\x90\x00"),
        "exports": (4, trie),
        "exports-of-all-kinds": (4, b"\0\1_x\0\6\5\x08\2_y\0\0"),
        "unwind": (5, unwind),
        "unwind-compressed": (5, compressed),
        "frame": (6, frame),
        "universal": (7, universal.ljust(0x1000, b"\0") + b"slice".ljust(0x3000, b"\0") + b"x" * 16),
    }
    return {name: bytes([which]) + table for name, (which, table) in contents.items()}


write("scenario", scenarios())
write("descriptor", descriptors())
write("settings_files", settings())
write("mach_tables", tables())
