#!/usr/bin/env python3
"""Checks that includes point in one direction, and that only the folder that wraps a library includes its headers.

Prints one line for each fault and exits with status 1 if there is any.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

PLATFORM = ["core", "resource", "draw", "display", "window", "widgets", "dialog"]
BELOW_DIALOG = {f"platform/{name}" for name in PLATFORM[:-1]}

# What each folder of src/ may include, besides itself.
MAY_INCLUDE = {
    "platform/core": set(),
    "platform/resource": {"platform/core"},
    "platform/draw": {"platform/core", "platform/resource"},
    "platform/display": {"platform/core", "platform/draw"},
    "platform/display/memory": {"platform/core", "platform/draw", "platform/display"},
    "platform/display/x11": {"platform/core", "platform/draw", "platform/display"},
    "platform/window": {f"platform/{name}" for name in PLATFORM[:4]},
    "platform/widgets": {f"platform/{name}" for name in PLATFORM[:5]},
    "platform/dialog": BELOW_DIALOG,
    "platform/debug": BELOW_DIALOG,
}
LAYER = set(MAY_INCLUDE) - {"platform/debug"} - {"platform/display/memory", "platform/display/x11"}
MAY_INCLUDE |= {
    "storage": {"platform/core"},
    "profile": {"platform/core", "storage"},
    # Embedded dialog templates are made of the dialogs' own types.
    "resources": {"platform/core", "platform/resource", "platform/dialog"},
    "AplCommon": LAYER | {"storage"},
    "controls": LAYER | {"storage", "resources"},
    "dialogs": LAYER | {"storage", "resources", "AplCommon", "controls"},
    "editor": LAYER | {"storage", "profile", "resources", "AplCommon", "controls", "dialogs"},
    "menu": LAYER | {"storage", "profile", "resources", "AplCommon", "controls", "dialogs", "editor"},
}

# The only file that knows every kind of display.
FACTORY = "src/platform/display/DisplayFactory.cpp"

# Foreign headers and the files that may include them.
WRAPPED = [
    (r"(X11|xcb|xkbcommon)/", r"src/platform/display/x11/"),
    (r"(cairo|pango|fontconfig|freetype2?|fribidi|harfbuzz)\b|(png|pngconf|zlib|ft2build|hb.*)\.h$", r"src/platform/draw/"),
    (r"libxml/", r"src/storage/Xml"),
]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
SOURCES = {".h", ".cpp", ".c"}


def folder_of(include):
    """The folder of MAY_INCLUDE that a file of src/ belongs to, or None for a file outside src/."""
    parent = pathlib.PurePosixPath(include).parent
    while str(parent) != ".":
        if str(parent) in MAY_INCLUDE:
            return str(parent)
        parent = parent.parent
    return None


def is_installed(file):
    """Whether this header of the layer is installed for hosts."""
    return (
        file.suffix == ".h"
        and file.as_posix().startswith("src/platform/")
        and "Internal" not in file.name
        and not file.as_posix().startswith("src/platform/display/x11/")
    )


def faults_of_foreign_include(file, include):
    for header, wrapper in WRAPPED:
        if not re.match(header, include):
            continue
        if not re.match(wrapper, file.as_posix()):
            yield f"<{include}> may be included by {wrapper} only"
        elif is_installed(file):
            yield f"<{include}> in a header that hosts see"


def faults_of_own_include(file, include):
    if not (ROOT / "src" / include).is_file() and not (ROOT / "include" / include).is_file():
        yield f'"{include}" is not a path from src/ or include/'
        return
    if is_installed(file) and not is_installed(pathlib.PurePosixPath("src") / include):
        yield f'"{include}" is not installed, but this header is'
    source, target = folder_of(file.relative_to("src")), folder_of(include)
    if source is None:
        yield "is in a folder that has no rule in scripts/check_layers.py"
    elif target is None:
        # The public headers, which the product implements and the layer doesn't know.
        if source.startswith("platform/"):
            yield f'"{include}" points up, out of the layer'
    elif target != source and target not in MAY_INCLUDE[source]:
        if file.as_posix() != FACTORY or not target.startswith("platform/display/"):
            yield f'"{include}": {source} may not include {target}'


def faults_of(file):
    text = (ROOT / file).read_text(encoding="utf-8")
    for bracket, include in INCLUDE.findall(text):
        if bracket == "<" and not (ROOT / "include" / include).is_file():
            yield from faults_of_foreign_include(file, include)
        elif file.parts[0] == "src":
            yield from faults_of_own_include(file, include)


def main():
    files = sorted(
        path.relative_to(ROOT)
        for top in ("src", "include", "examples")
        for path in (ROOT / top).rglob("*")
        if path.suffix in SOURCES
    )
    faults = [f"{file.as_posix()}: {fault}" for file in files for fault in faults_of(file)]
    print("\n".join(faults) or f"{len(files)} files, every include points down.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
