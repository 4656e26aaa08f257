#!/usr/bin/env python3
"""Checks that the sample catalogue is complete: what an index names exists and has the right form.

Prints one line for each fault and exits with status 1 if there is any.
"""

import re
import struct
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from make_profiles import PROFILES, catalogue_files

MARK = b"\xef\xbb\xbf"
GROUP_COUNT = 20
# The number of characters that fit a row in its fonts, whatever the letters are.
LONGEST_GROUP, LONGEST_NAME, LONGEST_COMMENT = 15, 32, 45

IDENTITY = ("GroupID", "GroupName", "ProfileID", "ProfileName", "ProfileComment", "FormatExt", "IsSysProfile")
VIDEO = ("VideoCodec", "VideoBitrate", "VideoSize", "VideoFrameRate", "VideoAspectRatio")
AUDIO = ("AudioCodec", "AudioBitrate", "AudioSampleRate", "AudioChannels", "AudioVolume")
ORDER = (*IDENTITY, *VIDEO, *AUDIO, "VideoDisableList", "VideoDisable", *(name + "List" for name in VIDEO),
         "AudioDisableList", "AudioDisable", *(name + "List" for name in AUDIO))

faults = []


def fault(path, text):
    faults.append(f"{Path(path).relative_to(PROFILES.parent)}: {text}")


def read_index(path):
    """The keys of an index in file order, or nothing after a fault of its form."""
    data = path.read_bytes() if path.is_file() else b""
    if not data.startswith(MARK + b"[Order]\r\n"):
        fault(path, "missing, or not UTF-8 with a mark and the section Order")
        return []
    text = data[len(MARK):].decode("utf-8")
    if text.count("\n") != text.count("\r\n") or not text.endswith("\r\n"):
        fault(path, "line ends are not CR LF")
    keys = [tuple(line.split("=", 1)) for line in text.split("\r\n")[1:-1] if "=" in line]
    if len(dict(keys)) != len(keys):
        fault(path, "a key stands twice")
    count = sum(1 for key, _ in keys if key.isdigit())
    if dict(keys).get("Num") != str(count) or not all(str(i) in dict(keys) for i in range(count)):
        fault(path, "Num and the numbered keys disagree")
    return keys


def check_picture(path, width, height):
    data = path.read_bytes() if path.is_file() else b""
    if data[:8] != b"\x89PNG\r\n\x1a\n" or data[12:16] != b"IHDR":
        fault(path, "missing, or no PNG file")
    elif struct.unpack(">II", data[16:24]) != (width, height):
        fault(path, f"is not {width} by {height}")
    elif len(data) > 16384:
        fault(path, "is larger than 16 KiB")


def check_line_form(path, text):
    """The names are shown as they are in the file, so each must be on a line of its own and need no escapes."""
    for element, longest in (("ProfileName", LONGEST_NAME), ("ProfileComment", LONGEST_COMMENT)):
        values = re.findall(rf'^ *<{element} value="([^"]*)"/>\r$', text, re.MULTILINE)
        if len(values) != 1 or not values[0].strip():
            fault(path, f"{element} is not on one line of its own")
        elif re.search("[&<>]", values[0]) or len(values[0]) > longest:
            fault(path, f"{element} is too long or needs an escape")


def check_parameter(path, root, name, disabled):
    current, choices = root.find(name), root.find(name + "List")
    entries = [entry for entry in choices.get("value").split(",") if entry]
    index = int(choices.get("index"))
    if current.get("index") != choices.get("index"):
        fault(path, f"{name} and its list disagree about the index")
    elif disabled:
        if entries or index != -1 or current.get("value"):
            fault(path, f"{name} has choices in a stream that is off")
    elif not 0 <= index < len(entries) or entries[index] != current.get("value"):
        fault(path, f"{name} is not the entry of its list at its index")
    elif len(set(entries)) != len(entries):
        fault(path, f"{name}List holds an entry twice")


def check_profile(path, group):
    data = path.read_bytes() if path.is_file() else b""
    text = data.decode("utf-8", "replace")
    try:
        root = ElementTree.fromstring(data)
    except ElementTree.ParseError as error:
        fault(path, f"missing or not XML: {error}")
        return
    if text.count("\n") != text.count("\r\n") or not text.startswith('<?xml version="1.0" ?>\r\n'):
        fault(path, "no declaration, or line ends that are not CR LF")
    if root.tag != "Profile" or tuple(child.tag for child in root) != ORDER:
        fault(path, "the elements are not those of a profile in their order")
        return
    if not all(list(child.attrib) == ["value", "index"][:len(child.attrib)] for child in root):
        fault(path, "an element's attributes are not value and index in this order")
    if root.find("GroupName").get("value") != group or root.find("IsSysProfile").get("value") != "YES":
        fault(path, "the identity is not that of this group")
    check_line_form(path, text)
    flags = {}
    for stream, names in (("Video", VIDEO), ("Audio", AUDIO)):
        flags[stream] = root.find(stream + "Disable").get("value")
        if flags[stream] not in ("YES", "NO") or root.find(stream + "DisableList").get("value") != flags[stream]:
            fault(path, f"{stream}Disable and its list are not YES or NO alike")
        for name in names:
            check_parameter(path, root, name, flags[stream] == "YES")
    if all(flag == "YES" for flag in flags.values()):
        fault(path, "both streams are off")


def check_group(folder, seen):
    """One group's index with its files; `seen` collects the file names of all groups."""
    keys = read_index(folder / "order.ini")
    files = [value for key, value in keys if key.isdigit()]
    for name in files:
        icon = dict(keys).get(name, "")
        check_profile(folder / name, folder.name)
        check_picture(folder / icon, 35, 35)
        if name.lower() in seen or icon.lower() in seen:
            fault(folder / name, "the name of the file or of its icon is taken by another profile")
        seen.update((name.lower(), icon.lower()))
    expected = {*files, *dict(keys).values(), "order.ini", "large_Default.png"}
    for path in folder.iterdir() if folder.is_dir() else ():
        if path.name not in expected:
            fault(path, "is not named by the index")


def main():
    names = [value for key, value in read_index(PROFILES / "order.ini") if key.isdigit()]
    groups = [name.rstrip("*") for name in names]
    if len(set(groups)) != GROUP_COUNT or not {"Recent", "UserDefine"} <= set(groups):
        fault(PROFILES / "order.ini", f"does not list {GROUP_COUNT} groups with Recent and UserDefine among them")
    seen = set()
    for group in groups:
        if len(group) > LONGEST_GROUP:
            fault(PROFILES / group, "the name is too long for its button")
        check_picture(PROFILES / "Picture" / f"{group}.png", 16, 16)
        check_group(PROFILES / group, seen)
    check_picture(PROFILES / "UserDefine" / "large_Default.png", 35, 35)
    for strip in ("sub_scroll_up.png", "sub_scroll_down.png"):
        check_picture(PROFILES / "Picture" / strip, 4 * 352, 16)
    for name, text in catalogue_files().items():
        path = PROFILES / name
        if not path.is_file() or path.read_bytes() != text.encode("utf-8"):
            fault(path, "is not what make_profiles.py writes")
    for line in faults:
        print(line)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
