"""Reads the platform's stub libraries (.tbd files), through llvm-readtapi, which knows all versions
of the format."""

import json
import pathlib
import subprocess

READER = "llvm-readtapi-19"
FRAMEWORKS = "System/Library/Frameworks"


class BadStub(Exception):
    """A stub that cannot be read; the text is one line that names it."""


def read(path):
    """The stub as its JSON form: `main_library`, and `libraries` for those inlined in the file."""
    done = subprocess.run([READER, "--filetype=tbd-v5", path],
                          capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise BadStub(f"{path}: cannot be read: {' '.join(done.stderr.split())}")
    return json.loads(done.stdout)


def name_of(library):
    """The path by which a binary names the library."""
    return library["install_names"][0]["name"]


def groups(library, field, target):
    """The library's groups of symbols of this kind that are for the target, such as "arm64-macos"."""
    whole = [entry["target"] for entry in library["target_info"]]
    return [group for group in library.get(field, []) if target in group.get("targets", whole)]


def names(library, field, item):
    """All names in a list of the library, whatever target each is for."""
    return [name for group in library.get(field, []) for name in group.get(item, [])]


def lost_reexports(stub):
    """The inlined libraries that name the main one as their umbrella, which re-exports its parts,
    although it does not list them."""
    main = stub["main_library"]
    umbrella = pathlib.PurePath(name_of(main)).name
    listed = set(names(main, "reexported_libraries", "names"))
    return [name_of(part) for part in stub.get("libraries", [])
            if name_of(part) not in listed
            and any(group["umbrella"] == umbrella for group in part.get("parent_umbrellas", []))]


def restore_reexports(stub):
    """Adds what `lost_reexports` found; returns whether there was anything to add."""
    lost = lost_reexports(stub)
    if lost:
        stub["main_library"].setdefault("reexported_libraries", []).append({"names": lost})
    return bool(lost)


def umbrellas(sdk):
    """The stubs of the SDK's frameworks that have parts."""
    for path in sorted((pathlib.Path(sdk) / FRAMEWORKS).glob("*.framework/*.tbd")):
        if path.stem == path.parent.stem and b"parent-umbrella" in path.read_bytes():
            yield path
