#!/usr/bin/env python3
"""Renders the SVG artwork into the strips, icons and resource script the program embeds.

Usage: render_pictures.py ART_DIR OUT_DIR

The output depends on the artwork alone, so two runs give the same bytes.
"""

from __future__ import annotations

import struct
import subprocess
import sys
import tempfile
import zlib
from pathlib import Path
from typing import NamedTuple

LISTS = ("toolbar", "tree", "keys", "status")
STRIP_SIZES = (16, 20, 24, 32, 48)
ICONS = ("tamarind", "datafile")
ICON_BITMAP_SIZES = (16, 20, 24, 32, 48)
ICON_PNG_SIZES = (64, 128, 256)  # as bitmaps these would take most of the program's size

PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"
PIXEL_BYTES = 4


class Picture(NamedTuple):
    """Straight (not premultiplied) RGBA pixels, rows top-down."""

    width: int
    height: int
    rgba: bytes


def render_svg(svg: Path, size: int) -> bytes:
    """The picture as a PNG file of size x size pixels."""
    command = ["rsvg-convert", "--width", str(size), "--height", str(size), str(svg)]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def png_chunks(png: bytes) -> dict[bytes, bytes]:
    """Chunk contents by type; the pieces of a split chunk are joined."""
    if not png.startswith(PNG_SIGNATURE):
        raise ValueError("not a PNG file")
    chunks: dict[bytes, bytes] = {}
    position = len(PNG_SIGNATURE)
    while position < len(png):
        length, kind = struct.unpack_from(">I4s", png, position)
        body = png[position + 8 : position + 8 + length]
        chunks[kind] = chunks.get(kind, b"") + body
        position += 12 + length  # length, type and checksum surround the body
    return chunks


def paeth(left: int, up: int, corner: int) -> int:
    """The neighbour closest to left + up - corner; ties go left, then up."""
    estimate = left + up - corner
    return min((left, up, corner), key=lambda value: abs(estimate - value))


def unfilter_row(kind: int, row: bytearray, above: bytes) -> None:
    """Turns the differences stored in a row back into pixels, in place."""
    for i in range(len(row)):
        left = row[i - PIXEL_BYTES] if i >= PIXEL_BYTES else 0
        corner = above[i - PIXEL_BYTES] if i >= PIXEL_BYTES else 0
        up = above[i]
        if kind == 1:
            predicted = left
        elif kind == 2:
            predicted = up
        elif kind == 3:
            predicted = (left + up) // 2
        elif kind == 4:
            predicted = paeth(left, up, corner)
        elif kind == 0:
            return
        else:
            raise ValueError(f"unknown PNG filter {kind}")
        row[i] = (row[i] + predicted) & 0xFF


def decode_png(png: bytes) -> Picture:
    chunks = png_chunks(png)
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", chunks[b"IHDR"])
    if (depth, colour, interlace) != (8, 6, 0):
        raise ValueError("expected a plain 8-bit RGBA PNG")
    data = zlib.decompress(chunks[b"IDAT"])
    stride = width * PIXEL_BYTES
    if len(data) != height * (stride + 1):
        raise ValueError("PNG data has the wrong length")
    rows: list[bytes] = []
    above = bytes(stride)
    for start in range(0, len(data), stride + 1):
        row = bytearray(data[start + 1 : start + 1 + stride])
        unfilter_row(data[start], row, above)
        above = bytes(row)
        rows.append(above)
    return Picture(width, height, b"".join(rows))


def join_horizontally(pictures: list[Picture]) -> Picture:
    height = pictures[0].height
    rows: list[bytes] = []
    for y in range(height):
        for picture in pictures:
            stride = picture.width * PIXEL_BYTES
            rows.append(picture.rgba[y * stride : (y + 1) * stride])
    return Picture(sum(picture.width for picture in pictures), height, b"".join(rows))


def premultiplied_planes(picture: Picture) -> bytes:
    """The B, G, R and A planes one after the other.

    Separate planes hold far longer runs than interleaved pixels do.
    """
    red, green, blue, alpha = (picture.rgba[channel::PIXEL_BYTES] for channel in range(4))

    def premultiply(plane: bytes) -> bytes:
        return bytes((value * a + 127) // 255 for value, a in zip(plane, alpha))

    return premultiply(blue) + premultiply(green) + premultiply(red) + alpha


def pack_bits(data: bytes) -> bytes:
    packed = bytearray()
    literal = bytearray()

    def flush_literal() -> None:
        for start in range(0, len(literal), 128):
            piece = literal[start : start + 128]
            packed.append(len(piece) - 1)
            packed.extend(piece)
        literal.clear()

    position = 0
    while position < len(data):
        value = data[position]
        end = position + 1
        while end < len(data) and end - position < 128 and data[end] == value:
            end += 1
        length = end - position
        # A run of two saves nothing, and breaking a literal for it costs a control byte.
        if length >= 3:
            flush_literal()
            packed += bytes((257 - length, value))
        else:
            literal += data[position:end]
        position = end
    flush_literal()
    return bytes(packed)


def write_strip(svgs: list[Path], size: int, target: Path) -> None:
    strip = join_horizontally([decode_png(render_svg(svg, size)) for svg in svgs])
    header = struct.pack("<HH", strip.width, strip.height)
    target.write_bytes(header + pack_bits(premultiplied_planes(strip)))


def write_icon(svg: Path, target: Path) -> None:
    with tempfile.TemporaryDirectory() as folder:
        pngs: dict[int, Path] = {}
        for size in (*ICON_BITMAP_SIZES, *ICON_PNG_SIZES):
            pngs[size] = Path(folder, f"{size}.png")
            pngs[size].write_bytes(render_svg(svg, size))
        bitmaps = [str(pngs[size]) for size in ICON_BITMAP_SIZES]
        raw = [f"--raw={pngs[size]}" for size in ICON_PNG_SIZES]
        subprocess.run(["icotool", "--create", "-o", str(target), *bitmaps, *raw], check=True)


def main(arguments: list[str]) -> int:
    if len(arguments) != 2:
        print("usage: render_pictures.py ART_DIR OUT_DIR", file=sys.stderr)
        return 2
    art, out = Path(arguments[0]), Path(arguments[1])
    out.mkdir(parents=True, exist_ok=True)

    script: list[str] = []
    for name in LISTS:
        svgs = sorted((art / name).glob("*.svg"))
        if not svgs:
            print(f"no pictures in {art / name}", file=sys.stderr)
            return 1
        for size in STRIP_SIZES:
            target = out / f"{name}_{size}.bin"
            write_strip(svgs, size, target)
            script.append(f'{name.upper()}_{size} RCDATA "{target.name}"\n')
    for name in ICONS:
        write_icon(art / "app" / f"{name}.svg", out / f"{name}.ico")
    (out / "pictures.rc").write_text("".join(script), encoding="ascii", newline="\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
