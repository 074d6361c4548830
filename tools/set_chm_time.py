#!/usr/bin/env python3
"""Sets the two time stamps of a compiled help file, so that the same pages make the same bytes.

    set_chm_time.py FILE SECONDS

SECONDS count from 1970. The help compiler writes the time of the compilation instead: into the file's header, and
into the file #SYSTEM inside it.
"""

import struct
import sys
from pathlib import Path

HEADER_STAMP = 0x10
DIRECTORY_OFFSET = 0x48  # where the header tells the directory's place
CONTENT_OFFSET = 0x58
LISTING_HEADER = 20  # bytes of a chunk of the directory in front of its entries
SYSTEM_STAMP_CODE = 10


class BadFile(Exception):
    """The file is not what the help compiler writes."""


def read_number(data, at):
    """A number of the directory: seven bits a byte, the highest bit set in all but the last."""
    value = 0
    while True:
        value = value << 7 | data[at] & 0x7F
        at += 1
        if data[at - 1] < 0x80:
            return value, at


def listing_entries(chunk):
    """The files of one chunk: name, section, place in the section, length."""
    free, = struct.unpack_from("<I", chunk, 4)
    at = LISTING_HEADER
    while at < len(chunk) - free:
        length, at = read_number(chunk, at)
        name = chunk[at:at + length].decode()
        section, at = read_number(chunk, at + length)
        offset, at = read_number(chunk, at)
        size, at = read_number(chunk, at)
        yield name, section, offset, size


def find_file(data, wanted):
    """Place and length of a file that is stored as it is."""
    directory, = struct.unpack_from("<Q", data, DIRECTORY_OFFSET)
    content, = struct.unpack_from("<Q", data, CONTENT_OFFSET)
    if data[directory:directory + 4] != b"ITSP":
        raise BadFile("there is no directory")
    header, = struct.unpack_from("<I", data, directory + 0x08)
    chunk_size, = struct.unpack_from("<I", data, directory + 0x10)
    chunk_count, = struct.unpack_from("<I", data, directory + 0x2C)
    for number in range(chunk_count):
        start = directory + header + number * chunk_size
        chunk = bytes(data[start:start + chunk_size])
        if chunk[:4] != b"PMGL":
            continue
        for name, section, offset, size in listing_entries(chunk):
            if name == wanted:
                if section != 0:
                    raise BadFile(f"{wanted} is compressed")
                return content + offset, size
    raise BadFile(f"{wanted} is missing")


def set_time(data, seconds):
    """Sets both stamps in the bytes of a compiled help file."""
    if data[:4] != b"ITSF":
        raise BadFile("this is no compiled help")
    struct.pack_into(">I", data, HEADER_STAMP, seconds)
    start, size = find_file(data, "/#SYSTEM")
    at = start + 4
    while at < start + size:
        code, length = struct.unpack_from("<HH", data, at)
        if code == SYSTEM_STAMP_CODE:
            if length != 4:
                raise BadFile("#SYSTEM has a time stamp of another length")
            struct.pack_into("<I", data, at + 4, seconds)
            return
        at += 4 + length
    raise BadFile("#SYSTEM has no time stamp")


def main():
    if len(sys.argv) != 3:
        print("usage: set_chm_time.py FILE SECONDS", file=sys.stderr)
        return 2
    path = Path(sys.argv[1])
    data = bytearray(path.read_bytes())
    try:
        set_time(data, int(sys.argv[2]) & 0xFFFFFFFF)
    except (BadFile, struct.error, IndexError) as error:
        print(f"{path}: {error}", file=sys.stderr)
        return 1
    path.write_bytes(data)
    return 0


if __name__ == "__main__":
    sys.exit(main())
