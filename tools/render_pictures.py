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
from io import BytesIO
from pathlib import Path

from PIL import Image

LISTS = ("toolbar", "tree", "keys", "status")
STRIP_SIZES = (16, 20, 24, 32, 48)
ICONS = ("tamarind", "datafile")
ICON_BITMAP_SIZES = (16, 20, 24)
ICON_PNG_SIZES = (32, 48, 256)  # as bitmaps these would take most of the program's size


def render_svg(svg: Path, size: int) -> bytes:
    """The picture as a PNG file of size x size pixels."""
    command = ["rsvg-convert", "--width", str(size), "--height", str(size), str(svg)]
    return subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout


def render_strip(svgs: list[Path], size: int) -> Image.Image:
    """The pictures side by side."""
    strip = Image.new("RGBA", (size * len(svgs), size))
    for index, svg in enumerate(svgs):
        with Image.open(BytesIO(render_svg(svg, size))) as picture:
            strip.paste(picture, (size * index, 0))
    return strip


def planes(picture: Image.Image) -> bytes:
    """The planes of blue, green, red and alpha one after the other.

    Separate planes hold far longer runs than interleaved pixels do. The colors are not multiplied by the alpha,
    which image lists want and which keeps a shape's color the same up to its smooth edge.
    """
    red, green, blue, alpha = picture.split()
    return b"".join(plane.tobytes() for plane in (blue, green, red, alpha))


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
    strip = render_strip(svgs, size)
    target.write_bytes(struct.pack("<HH", *strip.size) + pack_bits(planes(strip)))


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
