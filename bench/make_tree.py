#!/usr/bin/env python3
"""Makes a tree of profiles to measure with:  bench/make_tree.py DIR --groups 18 --profiles 2800 --seed 1

The profiles are spread evenly over the groups, each with texts and an icon of its own. The groups `Recent`, at the
start, and `UserDefine`, at the end, are empty. The same arguments give the same tree. DIR must not contain a tree yet.

With --icons the profiles and groups share one icon that takes its reader as long as possible: `endless` has data after
its rows; `large` has more pixels than an icon may have; `blocks` has its data in tens of thousands of blocks; `deep` is
the slowest one that is shown, 64 Ki pixels of noise with 16 bits per channel, interlaced.
"""

import argparse
import random
import shutil
import struct
import sys
import zlib
from pathlib import Path

EOL = "\r\n"
STRIPS = Path(__file__).resolve().parent.parent / "data/Profiles/Picture"
WORDS = "High quality video for every player phone tablet screen small large fast clear file disc web archive".split()


def png(width, height, data, depth=8, kind=6, interlace=0):
    """A PNG file with these compressed data."""

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    head = struct.pack(">IIBBBBB", width, height, depth, kind, 0, 0, interlace)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", data) + chunk(b"IEND", b"")


def icon(chance, side):
    """A disc with a gradient and some grain, on nothing."""
    colour = [chance.randrange(64, 256) for _ in range(3)]
    middle = (side - 1) / 2

    def pixel(x, y):
        if (x - middle) ** 2 + (y - middle) ** 2 > middle**2:
            return 0, 0, 0, 0
        grain = chance.randrange(8)
        return *(min(255, part * (side + y) // (2 * side) + grain) for part in colour), 255

    rows = b"".join(b"\0" + b"".join(bytes(pixel(x, y)) for x in range(side)) for y in range(side))
    return png(side, side, zlib.compress(rows))


def hostile_icon(kind, chance):
    rows = 35 * (b"\0" + 4 * 35 * b"\x80")
    if kind == "endless":
        return png(35, 35, zlib.compress(rows + bytes(280_000_000)))
    if kind == "large":
        return png(8192, 2048, zlib.compress(2048 * bytes(1025)), 1, 0)
    if kind == "blocks":
        # Four blocks of fixed codes without a byte take five bytes.
        empty = sum(2 << 10 * i for i in range(4)).to_bytes(5, "little")
        return png(35, 35, b"\x78\x01" + 200_000 * empty + zlib.compress(rows)[2:])
    # What the seven passes have of 8 by 8192 pixels.
    sizes = ((1, 1024), (1, 1024), (2, 1024), (2, 2048), (4, 2048), (4, 4096), (8, 4096))
    rows = b"".join(b"\4" + chance.randbytes(8 * width) for width, height in sizes for _ in range(height))
    return png(8, 8192, zlib.compress(rows), 16, 6, 1)


def profile(chance, name):
    lines = ['<?xml version="1.0" ?>', "<Profile>", f'    <ProfileName value="{name}"/>',
             f'    <ProfileComment value="{" ".join(chance.sample(WORDS, 6))}"/>']
    lines += [f'    <Option{i:02} value="{chance.randrange(10000)}" index="{i}"/>' for i in range(30)]
    return EOL.join(lines + ["</Profile>", ""])


def write_index(folder, entries):
    """Entries are lines without their numbers: a name, or a name and its icon."""
    lines = ["[Order]", f"Num={len(entries)}"]
    for number, (name, png_name) in enumerate(entries):
        lines.append(f"{number}={name}")
        lines += [f"{name}={png_name}"] if png_name else []
    (folder / "order.ini").write_bytes(("\ufeff" + EOL.join(lines) + EOL).encode())


def write_group(profiles, group, count, chance, shared_icon):
    folder = profiles / group
    folder.mkdir()
    entries = []
    for number in range(count):
        name = f"{group.lower().replace(' ', '-')}-{number:04}"
        (folder / f"{name}.xml").write_bytes(profile(chance, f"{group} profile {number}").encode())
        (folder / f"{name}.png").write_bytes(shared_icon or icon(chance, 35))
        entries.append((f"{name}.xml", f"{name}.png"))
    write_index(folder, entries)
    (profiles / "Picture" / f"{group}.png").write_bytes(shared_icon or icon(chance, 16))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("dir", type=Path)
    parser.add_argument("--groups", type=int, default=18, help="filled groups")
    parser.add_argument("--profiles", type=int, default=2800, help="in all groups together")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--icons", choices=("endless", "large", "blocks", "deep"))
    options = parser.parse_args()
    if options.groups < 1 or options.profiles < 0:
        parser.error("a tree has at least one group and no fewer than 0 profiles")
    profiles = options.dir / "Profiles"
    if profiles.exists():
        sys.exit(f"{profiles} is there already")
    (profiles / "Picture").mkdir(parents=True)
    for strip in STRIPS.glob("sub_scroll_*.png"):
        shutil.copy(strip, profiles / "Picture")
    filled = [f"Group {number + 1:02}" for number in range(options.groups)]
    chance = random.Random(options.seed)
    shared_icon = hostile_icon(options.icons, chance) if options.icons else None
    for number, group in enumerate(filled):
        share = options.profiles * (number + 1) // options.groups - options.profiles * number // options.groups
        write_group(profiles, group, share, chance, shared_icon)
    for group in ("Recent", "UserDefine"):
        write_group(profiles, group, 0, chance, shared_icon)
    write_index(profiles, [(group, None) for group in ["Recent", *filled, "UserDefine"]])


if __name__ == "__main__":
    main()
