#!/usr/bin/env python3
"""Proves by another parser that a change of a profile leaves everything else in it as it was:

    tests/profile/round_trip.py REWRITER [--count N] [--seed N] [--keep DIR]

Makes profiles of all kinds: elements present, missing and doubled, foreign ones and mixed content, comments, CDATA,
namespaces, references, scripts and encodings; some are broken. Lets REWRITER change them, and compares what it saved
with what this script's own model of the format makes of the original. Prints a line a fault, with status 1.
"""

import argparse
import random
import re
import subprocess
import sys
import tempfile
from pathlib import Path
from xml.parsers import expat

VIDEO = ["VideoCodec", "VideoBitrate", "VideoSize", "VideoFrameRate", "VideoAspectRatio"]
AUDIO = ["AudioCodec", "AudioBitrate", "AudioSampleRate", "AudioChannels", "AudioVolume"]
BLOCK = [*VIDEO, *AUDIO, "VideoDisableList", "VideoDisable", *(name + "List" for name in VIDEO),
         "AudioDisableList", "AudioDisable", *(name + "List" for name in AUDIO)]
NAMES = ["ProfileName", "ProfileComment", "GroupID", "FormatExt", "IsSysProfile", *BLOCK]

# Names that declarations bear, Python's codecs for them, and a script that the encoding has.
LATIN, CYRILLIC, HAN = "abcXYZ019 ", "абвгдеЖЗИ", "高清视频中文"
ENCODINGS = [(None, "utf-8", None), (None, "utf-8-sig", None), ("UTF-8", "utf-8", None), ("utf-8", "utf-8-sig", None),
             ("UTF-16", "utf-16", None), (None, "utf-16", None), ("UTF-16LE", "utf-16-le", None),
             ("utf-16", "utf-16-be", None), ("ISO-8859-1", "latin-1", "äöüß§"), ("us-ascii", "ascii", ""),
             ("windows-1251", "cp1251", CYRILLIC), ("KOI8-R", "koi8-r", CYRILLIC), ("gb2312", "gb18030", HAN),
             ("GBK", "gbk", HAN), ("Shift_JIS", "cp932", "あいうアイウ日本語"), ("EUC-KR", "cp949", "가나다똠한글")]
SCRIPTS = LATIN + "äöß" + CYRILLIC + HAN + "あア" + "가한" + "שלום" + "مرحبا" + "ไทย" + "é\u0301" + "😀𝔘" + "\u0085\u2028"


class Maker:
    """One profile as text, in an encoding of its own."""

    def __init__(self, seed):
        self.chance = random.Random(seed)
        self.declared, self.codec, letters = self.pick(ENCODINGS)
        self.letters = SCRIPTS if letters is None else LATIN + letters
        self.spaces = self.pick([["\n    "], ["\r\n    ", "\r\n\r\n\t"], [""], ["\n  ", "", " ", "\r\n\t "]])

    def pick(self, choices):
        return self.chance.choice(choices)

    def often(self, share):
        return self.chance.random() < share

    def word(self, extra=""):
        return "".join(self.pick(self.letters + extra) for _ in range(self.chance.randrange(12)))

    def escaped(self, text, always):
        """Every character by itself or by a reference; characters that the encoding lacks always by one."""
        def one(char):
            if self.often(0.05) or char in always:
                return self.pick([{"&": "&amp;", "<": "&lt;", ">": "&gt;", '"': "&quot;", "'": "&apos;"}.get(
                    char, f"&#{ord(char)};"), f"&#x{ord(char):X};"])
            return char
        return "".join(map(one, text))

    def attribute(self, name, value):
        quote = self.pick("\"\"\"'")
        return f" {name}{self.pick(['=', '=', ' = '])}{quote}{self.escaped(value, '&<' + quote)}{quote}"

    def text(self):
        return self.escaped(self.word("&<>'\"\n\t\r]") or "x", "&<>\r")

    def markup(self):
        return self.pick([lambda: f"<!--{self.word('<&')}-->", lambda: f"<![CDATA[{self.word('<&>]')}x]]>",
                          lambda: f"<?note {self.word('<&')}x?>"])()

    def foreign(self, depth=0):
        name = self.pick(["Extra", "a:Extra", "Größe" if "ö" in self.letters else "Note", "b"])
        names = self.chance.sample(["x", "y", "a:x", "xml:lang", "value"], self.chance.randrange(4))
        start = name + "".join(self.attribute(key, self.word("&<>'\"\n\t\r")) for key in names)
        if self.often(0.2):
            start += ' xmlns="urn:other"'
        kinds = [self.text, self.markup, lambda: self.foreign(depth + 1), lambda: self.pick(["\n  ", " "])]
        parts = [self.pick(kinds)() for _ in range(self.chance.randrange(4) if depth < 4 else 0)]
        return f"<{start}>{''.join(parts)}</{name}>" if parts else f"<{start}{self.pick(['/', ' /'])}>"

    def element(self, name):
        """One of the format's own, mostly as it is meant to be."""
        if name.endswith("List"):
            value = ",".join(self.word().replace(",", "") for _ in range(self.chance.randrange(6)))
            value = self.pick(["YES", "NO", "no", "NO,Yes"]) if "Disable" in name else value
        else:
            value = self.word("&<>'\"\n\t")
        index = self.pick(["0", "0", "1", "2", "-1", "7", "-3", "x", " 1x", "99999999999", "", None])
        index = self.pick([index, "0", "1"])
        tag = ("a:" if self.often(0.05) else "") + name
        start = tag + (self.attribute("value", value) if self.often(0.95) else "")
        if name in BLOCK:
            start += self.attribute("index", index) if index is not None else ""
            start += self.pick([self.attribute("a:value", "p"), self.attribute("note", "n")]) if self.often(0.1) else ""
        if self.often(0.05):
            return f"<{start}>{self.pick([self.text, self.markup, self.foreign])()}</{tag}>"
        return f"<{start}{self.pick(['/', '/', ' /'])}>"

    def profile(self):
        children = [self.element(name) for name in NAMES for _ in range(self.pick([0, 1, 1, 1, 1, 1, 1, 2]))]
        children += [self.pick([self.foreign, self.markup])() for _ in range(self.chance.randrange(4))]
        children += [self.text() for _ in range(self.pick([0, 0, 0, 2]))]
        if self.often(0.5):
            self.chance.shuffle(children)
        declaration = f'<?xml version="1.0"{f" encoding={chr(34)}{self.declared}{chr(34)}" if self.declared else ""}'
        declaration += self.pick(["", ' standalone="yes"', " standalone='no'"]) + self.pick(["?>", " ?>"])
        root = self.pick(["Profile", "Profile", "a:Profile"])
        start = f'{root} xmlns:a="urn:a"'
        start += self.pick(["", "", ' xmlns="urn:d&amp;e"', ' xml:space="preserve"', ' x="y"'])
        body = "".join(self.pick(self.spaces) + child for child in children) + self.pick(self.spaces)
        around = [self.pick(["", "\n", "<!-- c -->\r\n"]) for _ in range(2)]
        text = f"{around[0]}<{start}>{body}</{root}>{around[1]}"
        if self.declared or self.often(0.5):
            text = declaration + text
        if self.often(0.05):
            # Behind the declaration, whose encoding is known here anyway, and the namespaces, where parsers differ.
            cut = len(text) - self.chance.randrange(1, len(body) + 9)
            text = text[:cut] + text[cut + self.chance.randrange(1, 9):]
        return text.encode(self.codec, "xmlcharrefreplace")


def parse(data, encoding=None):
    """The document as nested lists: name, attributes, and children, which are texts and lists; None if it is broken."""
    parser = expat.ParserCreate(encoding, "}")
    parser.buffer_text = True
    tree, section = [["", {}]], [False]

    def add(child):
        tree[-1].append(child)

    def start(name, attributes):
        node = [name, attributes]
        add(node)
        tree.append(node)

    def text(data):
        last = tree[-1][-1]
        if section[0]:
            last[1] += data
        elif isinstance(last, str) and len(tree[-1]) > 2:
            tree[-1][-1] += data
        else:
            add(data)

    def cdata():
        # Sections side by side are one.
        if not isinstance(tree[-1][-1], list) or tree[-1][-1][0] != "<cdata>":
            add(["<cdata>", ""])
        section[0] = True

    parser.StartElementHandler = start
    parser.EndElementHandler = lambda name: tree.pop()
    parser.CharacterDataHandler = text
    parser.CommentHandler = lambda data: add(["<comment>", data])
    parser.ProcessingInstructionHandler = lambda target, data: add(["<pi>", target, data])
    parser.StartCdataSectionHandler = cdata
    parser.EndCdataSectionHandler = lambda: section.__setitem__(0, False)
    try:
        parser.Parse(data, True)
    except expat.ExpatError:
        return None
    return tree[0]


def root_of(document):
    return next(child for child in document[2:] if isinstance(child[1], dict))


def find(root, name):
    return next((child for child in root[2:] if isinstance(child, list) and isinstance(child[1], dict)
                 and child[0].rpartition("}")[2] == name), None)


def number(text):
    found = re.match(r"[ \t-\r]*([+-]?\d+)", text)
    return int(found[1]) if found else 0


def entries_of(root, name):
    node = find(root, name)
    attributes = node[1] if node else {}
    entries = [entry for entry in attributes.get("value", "").split(",") if entry]
    index = number(attributes.get("index") or "0")
    return entries, (-1 if not entries or index < 0 else index if index < len(entries) else 0)


def is_disabled(root, stream):
    entries, _ = entries_of(root, stream + "DisableList")
    node = find(root, stream + "Disable")
    index = number((node[1].get("index") if node else "") or "-1")
    if index == -1:
        return True
    index = index if index < len(entries) else 0
    return 0 <= index < len(entries) and entries[index].upper() == "YES"


def change(document):
    """Does to a parsed original what the rewriter does to the file."""
    root = root_of(document)
    wanted = {}
    for stream, names in (("Video", VIDEO), ("Audio", AUDIO)):
        disabled = is_disabled(root, stream)
        wanted[stream + "Disable"] = wanted[stream + "DisableList"] = ("YES" if disabled else "NO", 0)
        for name in names:
            entries, selected = entries_of(root, name + "List")
            if disabled:
                wanted[name] = wanted[name + "List"] = None
            else:
                selected = (selected + 1) % len(entries) if selected >= 0 else -1
                wanted[name] = (entries[selected] if selected >= 0 else "", selected)
                wanted[name + "List"] = (",".join(entries), selected)
    for name in BLOCK:
        node = find(root, name)
        if node is None:
            node = [name, {"value": "", "index": "-1"}]
            root.append(node)
        if wanted[name]:
            node[1].update(value=wanted[name][0], index=str(wanted[name][1]))
        root.append("\n    ")


def without_blanks(document):
    """Texts side by side become one, and what is blank among the root's children counts for nothing."""
    root = root_of(document)
    joined = root[:2]
    for child in root[2:]:
        if isinstance(child, str) and len(joined) > 2 and isinstance(joined[-1], str):
            joined[-1] += child
        else:
            joined.append(child)
    is_kept = root[1].get("http://www.w3.org/XML/1998/namespace}space") == "preserve"
    root[2:] = [child for child in joined[2:] if is_kept or not isinstance(child, str) or child.strip(" \t\r\n")]
    return document


SHOWN = ["ProfileName", "ProfileComment"]


def is_shown(root, name):
    """Whether the menu has to find an element: both are there once, this one is as the format wants it, and no text,
    which stays as it is, shares its line."""
    if any(len([child for child in root[2:] if child[0].rpartition("}")[2] == one]) > 1 for one in SHOWN):
        return False
    place = next((i for i, child in enumerate(root) if i > 1 and child[0].rpartition("}")[2] == name), None)
    if place is None or root[place][0].startswith("urn:a}"):
        return False
    if list(root[place][1]) != ["value"] or len(root[place]) > 2:
        return False
    return not any(isinstance(child, str) for child in root[place - 1:place + 2]) and "preserve" not in root[1].values()


def spelled(value):
    names = {"&": "amp", "<": "lt", ">": "gt", '"': "quot", "\n": "#10", "\r": "#13", "\t": "#9"}
    return "".join(f"&{names[char]};" if char in names else char for char in value)


def faults_of(path, saved, line, codec):
    original = path.read_bytes()
    try:
        document = parse(original.decode(codec).encode("utf-8"), "utf-8")
    except UnicodeDecodeError:
        document = None
    if (document is None) == (line[1] == "1"):
        yield "accepted" if document is None else "refused"
    if document is None or line[1] != "1":
        return
    change(document)
    written = saved.read_bytes()
    result = parse(written)
    if result is None or b"encoding" in written.partition(b"?>")[0] or written.startswith(b"\xef\xbb\xbf"):
        yield "isn't plain UTF-8 that can be read again"
        return
    if without_blanks(document) != without_blanks(result):
        yield "something else has changed"
    root = root_of(result)
    for name, shown in zip(SHOWN, line[2:]):
        if is_shown(root, name) and shown != spelled(find(root, name)[1]["value"]):
            yield f"{name} isn't found by lines"


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("rewriter", type=Path)
    options.add_argument("--count", type=int, default=400)
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--keep", type=Path, help="the folder for the files, which then stay")
    options = options.parse_args()
    with tempfile.TemporaryDirectory() as temporary:
        folder = options.keep or Path(temporary)
        codecs = {}
        for side in ("from", "to"):
            (folder / side).mkdir(parents=True, exist_ok=True)
        for number_of_file in range(options.count):
            maker = Maker(f"{options.seed} {number_of_file}")
            name = f"{number_of_file}.xml"
            codecs[name] = maker.codec
            (folder / "from" / name).write_bytes(maker.profile())
        output = subprocess.run([options.rewriter, folder / "from", folder / "to"], check=True, capture_output=True)
        lines = [line.split("\x01") for line in output.stdout.decode(errors="replace").split("\n")[:-1]]
        faults = [f"{line[0]}: {fault}" for line in lines
                  for fault in faults_of(folder / "from" / line[0], folder / "to" / line[0], line, codecs[line[0]])]
    saved = sum(line[1] == "1" for line in lines)
    print("\n".join([*faults, f"{len(lines)} profiles, {saved} saved, {len(faults)} faults"]))
    return 1 if faults or len(lines) != options.count or saved < options.count // 2 or output.stderr else 0


if __name__ == "__main__":
    sys.exit(main())
