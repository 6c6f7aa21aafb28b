#!/usr/bin/env python3
"""signature.py BINARY: the code for each processor carries an ad hoc signature that fits its bytes."""
import hashlib
import pathlib
import struct
import sys

UNIVERSAL_MAGIC = 0xCAFEBABE
CODE_SIGNATURE_COMMAND = 0x1D
SIGNATURE_MAGIC = 0xFADE0CC0
DIRECTORY_MAGIC = 0xFADE0C02
DIRECTORY_SLOT = 0
AD_HOC = 0x2
SHA256 = 2


def slices_of(binary):
    """The files that a universal file holds."""
    magic, count = struct.unpack_from(">II", binary)
    assert magic == UNIVERSAL_MAGIC, hex(magic)
    for row in range(count):
        _, _, offset, size, _ = struct.unpack_from(">IIIII", binary, 8 + 20 * row)
        yield binary[offset:offset + size]


def signature_of(binary):
    """Where the load command says that the signature is."""
    commands, offset = struct.unpack_from("<I", binary, 16)[0], 32
    for _ in range(commands):
        command, size = struct.unpack_from("<II", binary, offset)
        if command == CODE_SIGNATURE_COMMAND:
            start, length = struct.unpack_from("<II", binary, offset + 8)
            return start, binary[start:start + length]
        offset += size
    sys.exit("not signed")


def directory_of(signature):
    """The code directory among the parts of the signature."""
    magic, _, parts = struct.unpack_from(">III", signature)
    assert magic == SIGNATURE_MAGIC, hex(magic)
    slots = dict(struct.unpack_from(">II", signature, 12 + 8 * i) for i in range(parts))
    return signature[slots[DIRECTORY_SLOT]:]


def check(binary):
    """Compares every page of the code with its hash."""
    start, signature = signature_of(binary)
    directory = directory_of(signature)
    fields = struct.unpack_from(">IIIIIIIIIBBBB", directory)
    magic, _, _, flags, hashes, name, _, pages, limit, size, kind, _, page_bits = fields
    assert magic == DIRECTORY_MAGIC, hex(magic)
    assert flags & AD_HOC, hex(flags)
    assert kind == SHA256 and limit == start, (kind, limit, start)
    assert directory[name:directory.index(0, name)] == b"MrvPhotoshop"
    assert pages == -(-limit >> page_bits), pages
    for page in range(pages):
        end = min((page + 1) << page_bits, limit)
        digest = hashlib.sha256(binary[page << page_bits:end]).digest()
        place = hashes + page * size
        assert directory[place:place + size] == digest, f"page {page} differs from its hash"


def main():
    """Checks the code for both processors."""
    slices = list(slices_of(pathlib.Path(sys.argv[1]).read_bytes()))
    assert len(slices) == 2, len(slices)
    for binary in slices:
        check(binary)


if __name__ == "__main__":
    main()
