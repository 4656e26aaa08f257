#!/usr/bin/python3
"""Draws the pictures of the sample catalogue and the library's embedded icons. Needs the package python3-cairo."""

import argparse
import sys
from io import BytesIO
from pathlib import Path

import cairo

import glyphs
import pixelfont
from catalogue import GROUPS

ROOT = Path(__file__).resolve().parent
PROFILES = ROOT / "Profiles"
RESOURCE = ROOT.parent / "src" / "resources" / "Icons.cpp"


def colour(text, alpha=1.0):
    return tuple(int(text[i:i + 2], 16) / 255 for i in (0, 2, 4)) + (alpha,)


INK = colour("f6e8d8")
FAINT = 0.6
DARK = colour("2b1007")
ROW, HOVERED_ROW = colour("6f3217"), colour("b3410f")
ACCENTS = {
    "amber": colour("ebb055"),
    "sky": colour("8bbfe8"),
    "lime": colour("aeca68"),
    "violet": colour("c0a9e2"),
    "mint": colour("70c9b2"),
    "rose": colour("ea9d9a"),
}
TILE, BAND = 33, 11
STRIP_WIDTH, STRIP_HEIGHT = 352, 16


def surface(width, height):
    image = cairo.ImageSurface(cairo.FORMAT_ARGB32, width, height)
    return image, cairo.Context(image)


def png(image):
    stream = BytesIO()
    image.write_to_png(stream)
    return stream.getvalue()


def glyph(name, accent, big):
    """A glyph on a picture of its own, in which what it cuts out is transparent."""
    image, context = surface(23, 17) if big else surface(16, 16)
    getattr(glyphs, name)(glyphs.Pen(context, INK, ACCENTS[accent]), big)
    return image


def group_icon(group):
    return png(glyph(group.glyph, group.accent, False))


def tile(accent):
    """A picture with the empty tile of 33 by 33 of a profile, and a pen for what is on it."""
    image, context = surface(35, 35)
    pen = glyphs.Pen(context, INK, ACCENTS[accent])
    pen.box(colour("000000", 0.28), 1, 1, TILE, TILE, 4)
    return image, context, pen


def profile_icon(name, accent, label):
    """A tile with a glyph over a band that bears the label."""
    image, context, pen = tile(accent)
    context.save()
    context.rectangle(1, 1 + TILE - BAND, TILE, BAND)
    context.clip()
    pen.box(ACCENTS[accent], 1, 1, TILE, TILE, 4)
    context.restore()
    context.set_source_surface(glyph(name, accent, True), 6, 3)
    context.paint()
    left = 1 + (TILE - pixelfont.width(label)) // 2
    for x, y in pixelfont.pixels(label):
        pen.box(DARK, left + x, 25 + y, 1, 1)
    return png(image)


def strip(up):
    """The four states of a scroll strip side by side: normal, hover, pressed, disabled."""
    image, context = surface(4 * STRIP_WIDTH, STRIP_HEIGHT)
    pen = glyphs.Pen(context, INK, ACCENTS["amber"])
    states = ((colour("ffffff", 0.07), INK), (HOVERED_ROW, colour("ffffff")), (colour("000000", 0.25), INK),
              (None, colour("f6e8d8", 0.25)))
    for number, (ground, ink) in enumerate(states):
        left = number * STRIP_WIDTH
        if ground:
            pen.box(ground, left, 0, STRIP_WIDTH, STRIP_HEIGHT)
        x, tip, foot = left + STRIP_WIDTH / 2, (5 if up else 11), (10 if up else 6)
        down = 1 if number == 2 else 0
        pen.stroke(ink, 2, (x - 5, foot + down), (x, tip + down), (x + 5, foot + down))
    return png(image)


def add_icon():
    """The icon of the row that adds a profile, which is part of the library rather than of a catalogue."""
    return profile_icon("plus", "amber", "ADD")


def neutral_profile_icon():
    """The icon of a profile that has no file with one: a sheet that stands for any profile."""
    image, context, _ = tile("amber")
    sheet, sheet_context = surface(35, 35)
    pen = glyphs.Pen(sheet_context, INK, ACCENTS["amber"])
    pen.polygon(INK, (10, 7), (20, 7), (25, 12), (25, 28), (10, 28))
    pen.polygon(None, (19, 6), (19, 13), (26, 13))
    pen.polygon(INK, (20, 7), (20, 12), (25, 12))
    pen.polygon(None, (14, 15), (21.5, 19.5), (14, 24))
    context.set_source_surface(sheet)
    context.paint_with_alpha(FAINT)
    return png(image)


def neutral_group_icon():
    """The same for a group: a folder."""
    image, context = surface(16, 16)
    pen = glyphs.Pen(context, INK, ACCENTS["amber"])
    faint = (*INK[:3], FAINT)
    pen.polygon(faint, (1, 2), (6, 2), (8, 4), (15, 4), (15, 6), (1, 6))
    pen.box(faint, 1, 7, 14, 7)
    return png(image)


def embedded_icons():
    """The icons that are part of the library, for they belong to no catalogue, by their resource number."""
    return {1057: add_icon(), 1058: neutral_profile_icon(), 1059: neutral_group_icon()}


RESOURCE_SOURCE = """\
// Written by data/make_icons.py.
#include "resources/Icons.h"

#include <array>
#include <bit>

namespace veldan {{

namespace {{

template <std::size_t kSize>
constexpr auto AsBytes(const std::array<unsigned char, kSize>& numbers) {{
    return std::bit_cast<std::array<std::byte, kSize>>(numbers);
}}

{arrays}
}}  // namespace

{spans}

}}  // namespace veldan
"""

RESOURCE_ARRAY = """\
constexpr auto kBytes{number} = AsBytes(std::to_array<unsigned char>({{
{rows}
}}));
"""


def resource_source(icons):
    arrays = []
    for number, data in icons.items():
        rows = (data[i:i + 19] for i in range(0, len(data), 19))
        lines = ("    " + " ".join(f"0x{byte:02x}," for byte in row) for row in rows)
        arrays.append(RESOURCE_ARRAY.format(number=number, rows="\n".join(lines)))
    spans = (f"constinit const std::span<const std::byte> kPng{number} = kBytes{number};" for number in icons)
    return RESOURCE_SOURCE.format(arrays="\n".join(arrays), spans="\n".join(spans))


def pictures():
    """Every picture of the catalogue, by its path below `Profiles`."""
    files = {f"Picture/{group.name}.png": group_icon(group) for group in GROUPS}
    for group in GROUPS:
        for profile in group.profiles:
            files[f"{group.name}/{profile.file}.png"] = profile_icon(group.glyph, group.accent, profile.label)
    files["UserDefine/large_Default.png"] = profile_icon("person", "amber", "USER")
    files["Picture/sub_scroll_up.png"] = strip(True)
    files["Picture/sub_scroll_down.png"] = strip(False)
    return files


def contact_sheet(icons):
    """The icons four times enlarged, once on the colour of a row and once on that of a row under the pointer."""
    icons = [cairo.ImageSurface.create_from_png(BytesIO(icon)) for icon in icons]
    icons = [icon for icon in icons if icon.get_width() < STRIP_WIDTH]
    columns, cell, zoom = 20, 38, 4
    rows = -(-len(icons) // columns)
    image, context = surface(columns * cell * zoom, 2 * rows * cell * zoom)
    context.scale(zoom, zoom)
    for half, ground in enumerate((ROW, HOVERED_ROW)):
        context.set_source_rgba(*ground)
        context.rectangle(0, half * rows * cell, columns * cell, rows * cell)
        context.fill()
        for number, icon in enumerate(icons):
            x, y = number % columns * cell + 2, (half * rows + number // columns) * cell + 2
            context.set_source_surface(icon, x, y)
            context.get_source().set_filter(cairo.FILTER_NEAREST)
            context.paint()
    return png(image)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--sheet", type=Path, help="only draw all pictures on the menu's colours into this PNG file")
    sheet = parser.parse_args().sheet
    files = pictures()
    if sheet:
        sheet.write_bytes(contact_sheet([*files.values(), *embedded_icons().values()]))
        return 0
    for path in PROFILES.glob("*/*.png"):
        if path.relative_to(PROFILES).as_posix() not in files:
            path.unlink()
    for name, data in files.items():
        path = PROFILES / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
    RESOURCE.write_text(resource_source(embedded_icons()), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
