#!/usr/bin/env python3
"""Compares the family names that the library reads from font files with fontconfig's.

    compare_fonts.py VEMO-INSPECT FOLDER...

For every name that the library has, fontconfig must have the same name in the same language, or one
of the rules below must say why it can't; docs/fonts.md explains them. The files' name tables are read
here a third time, independently of both. Ends with 1 when a disagreement has no rule, and when there
was nothing to compare. VEMO_TEST_EMULATOR holds the words to be put in front of a program that is for
another machine.
"""
import collections
import json
import locale
import os
import pathlib
import struct
import subprocess
import sys

# Language codes of the Macintosh platform, as far as fonts use them, and 0 of the Unicode platform.
MACINTOSH = {0: "en", 1: "fr", 2: "de", 3: "it", 4: "nl", 5: "sv", 6: "es", 7: "da", 8: "pt", 9: "no",
             10: "he", 11: "ja", 12: "ar", 13: "fi", 14: "el", 19: "zh-tw", 22: "th", 23: "ko", 30: "fo",
             32: "ru", 33: "zh-cn"}

Record = collections.namedtuple("Record", "platform encoding language text")


def tag_of(language):
    """The language of a record as fontconfig writes it."""
    if language < 0x400:
        return MACINTOSH.get(language, "")
    tag = locale.windows_locale.get(language, "").replace("_", "-").lower()
    return tag if tag.startswith("zh") else tag.split("-")[0]


def face_offsets(data):
    if data[:4] != b"ttcf":
        return [0]
    count = struct.unpack_from(">I", data, 8)[0]
    return list(struct.unpack_from(f">{count}I", data, 12))


def families(data, face):
    """The records with a family name (nameID 1) in the file's order."""
    for table in range(struct.unpack_from(">H", data, face + 4)[0]):
        tag, _, offset, _ = struct.unpack_from(">4sIII", data, face + 12 + 16 * table)
        if tag != b"name":
            continue
        _, count, storage = struct.unpack_from(">3H", data, offset)
        for index in range(count):
            platform, encoding, language, name, length, start = struct.unpack_from(
                ">6H", data, offset + 6 + 12 * index)
            if name == 1:
                begin = offset + storage + start
                yield Record(platform, encoding, language, data[begin:begin + length])


def is_dropped(record):
    return record.encoding == 10 or not record.text or (record.encoding != 1 and record.text[0] == 0)


def rule_for(record, language, name, theirs):
    """Why fontconfig can't have the name; None when it should."""
    if record is None:
        return None
    if record.encoding != 1 and any(byte > 0x7F for byte in record.text):
        return "8-bit text is read as UTF-8, whatever its encoding"
    if record.encoding != 1 and record.platform in (0, 3):
        return "wide text under another encoding than 1 is read as 8-bit text"
    if record.encoding == 1 and record.platform == 1:
        return "encoding 1 means UTF-16, on the Macintosh too"
    if any(0xD8 <= byte <= 0xDF for byte in record.text[::2]) and record.encoding == 1:
        return "surrogates aren't combined"
    if any(plain(name) == plain(other) for _, other in theirs):
        return "fontconfig lists a name once, under the first language that has it"
    if not tag_of(language):
        return "fontconfig leaves out a language that it doesn't know"
    return None


def plain(name):
    return "".join(name.split()).lower()


def read_ours(program, files):
    emulator = os.environ.get("VEMO_TEST_EMULATOR", "").split()
    output = subprocess.run([*emulator, program, "fonts", "--json", *files], capture_output=True,
                            check=True).stdout
    return {(font["path"], index): {int(language): name for language, name in face["names"].items()}
            for font in json.loads(output) for index, face in enumerate(font["faces"])}


def read_theirs(files):
    form = "=%{file}\t%{index}\n%{[]family,familylang{%{familylang}\t%{family}\n}}"
    output = subprocess.run(["fc-scan", "--format", form, *files], capture_output=True, text=True,
                            check=True).stdout
    faces, current = collections.defaultdict(list), None
    for line in output.splitlines():
        if line.startswith("="):
            file, index = line[1:].split("\t")
            # A variable font is listed once more for each named instance, in the upper half.
            current = (file, int(index)) if int(index) < 0x10000 else None
        elif current:
            faces[current].append(tuple(line.split("\t", 1)))
    return faces


def main(program, folders):
    files = sorted(str(file) for folder in folders for file in pathlib.Path(folder).rglob("*")
                   if file.suffix.lower() in (".ttf", ".ttc") and file.is_file())
    if not files:
        print("There are no font files below", *folders)
        return 1
    ours, theirs = read_ours(program, files), read_theirs(files)
    agreed, ruled, unexplained = 0, collections.defaultdict(list), []
    for file in files:
        data = pathlib.Path(file).read_bytes()
        for face, offset in enumerate(face_offsets(data)):
            records = {}
            for record in families(data, offset):
                if not is_dropped(record):
                    records.setdefault(record.language, record)
            names = ours.get((file, face), {})
            known = theirs[file, face]
            for language, name in names.items():
                if (tag_of(language), name) in known:
                    agreed += 1
                elif rule := rule_for(records.get(language), language, name, known):
                    ruled[rule].append((file, language, name))
                else:
                    unexplained.append((file, face, language, name, known))
            for language in set(records) - set(names):
                unexplained.append((file, face, language, "(not read)", known))
    print(f"{len(files)} files, {len(ours)} faces, {agreed} names agree with fontconfig's")
    for rule, cases in sorted(ruled.items()):
        print(f"{len(cases)} names: {rule}")
        for file, language, name in cases[:3]:
            print(f"    {pathlib.Path(file).name}, language {language}: {name}")
    for case in unexplained:
        print("NOT EXPLAINED:", *case)
    return 0 if agreed and not unexplained else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
