#!/usr/bin/env python3
"""Writes the sample SHX fonts of the reference application, or checks those that are there.

    make_fonts.py [FOLDER]          writes txt.shx and hztxt.shx
    make_fonts.py --check [FOLDER]  reads them back and compares each stroke

txt.shx    a unifont: digits, Latin letters (small ones as capitals), punctuation, the degree,
           plus-minus and diameter signs
hztxt.shx  a big font: ten Chinese characters by their codes in GBK

Both begin with a line of text that ends in the byte 0x1A; numbers are little-endian. A unifont goes on
with the number of its records and the records, each a code, a size and as many bytes; a big font with
the size and number of its index entries, the ranges of first bytes, and the index: a code, a size and
the place of the bytes in the file. Record 0 tells the font's name and how high it is. A shape's bytes
are its name, closed by a zero, and its drawing codes: 0 end, 1 pen down, 2 pen up, 8 a move by x and
y, 9 moves until one of (0, 0).
"""

import pathlib
import struct
import sys

UNIFONT = b"Drafting86 unifont 1.0\r\n\x1a"
BIGFONT = b"Drafting86 bigfont 1.0\r\n\x1a"
HAN = (8, 10)   # the height and the advance of a character
LATIN = (6, 6)

# Strokes of points, a point as its two coordinates.
GLYPHS = {
    " ": "", "!": "2622 2120", '"': "1516 3536", "#": "1016 3036 0242 0444", "%": "0046 0506 4041",
    "'": "2526", "(": "36242230", ")": "16242210", "*": "0145 0541 0343", "+": "0343 2125",
    ",": "2110", "-": "0343", ".": "2021", "/": "0046", ":": "2122 2425", ";": "2110 2425",
    "<": "450341", "=": "0242 0444", ">": "054301", "?": "05163645442322 2120", "_": "0040",
    "[": "36161030", "\\": "0640", "]": "16363010",
    "0": "100105163645413010 0145", "1": "142620 1030", "2": "05163645440040",
    "3": "0516364544334241301001 1333", "4": "30360242", "5": "460604344341301001",
    "6": "4536160501103041423303", "7": "064610", "8": "13040516364544331302011030414233",
    "9": "0110304145361605041343",
    "A": "002640 1232", "B": "00063645443303 3342413000", "C": "4536160501103041",
    "D": "00062644422000", "E": "40000646 0333", "F": "000646 0333", "G": "45361605011030414323",
    "H": "0006 4046 0343", "I": "1030 2026 1636", "J": "0110203136", "K": "0006 460340",
    "L": "060040", "M": "0006234640", "N": "00064046", "O": "100105163645413010",
    "P": "00063645443303", "Q": "100105163645413010 2240", "R": "00063645443303 2340",
    "S": "453616050413334241301001", "T": "2026 0646", "U": "060110304146", "V": "062046",
    "W": "0610243046", "X": "0046 0640", "Y": "062346 2320", "Z": "06460040",
    "\u00b0": "1424261614", "\u00b1": "0444 2226 0040", "\u2205": "100105163645413010 0046",
}
CHARACTERS = {
    "一": "0484", "二": "1676 0181", "三": "1777 2464 0181", "十": "0484 4840", "口": "1117777111",
    "日": "2028686020 2464", "中": "1216767212 4840", "工": "1777 4741 0181",
    "土": "1575 4841 0181", "王": "1777 1474 4741 0181",
}


def strokes_of(text):
    return [[(int(x), int(y)) for x, y in zip(word[::2], word[1::2])] for word in text.split()]


def steps(points):
    return [(b[0] - a[0], b[1] - a[1]) for a, b in zip(points, points[1:])]


def shape(name, strokes, advance):
    """A shape's bytes; it ends where the next character begins."""
    data = name.encode("ascii") + b"\0"
    at = (0, 0)
    for stroke in strokes:
        data += bytes([2, 8]) + struct.pack("bb", *steps([at, stroke[0]])[0]) + bytes([1, 9])
        for step in steps(stroke):
            data += struct.pack("bb", *step)
        data += bytes(2)
        at = stroke[-1]
    return data + bytes([2, 8]) + struct.pack("bb", *steps([at, (advance, 0)])[0]) + bytes(1)


def unifont_shapes():
    glyphs = dict(GLYPHS)
    glyphs.update({letter.lower(): glyphs[letter] for letter in glyphs if letter.isascii()})
    return {ord(letter): strokes_of(text) for letter, text in sorted(glyphs.items())}


def bigfont_shapes():
    codes = {int.from_bytes(letter.encode("gbk"), "big"): strokes_of(text)
             for letter, text in CHARACTERS.items()}
    return dict(sorted(codes.items()))


def unifont():
    # Above the line, below it, horizontal only, Unicode, may be embedded, the end.
    records = [(0, b"TXT\0" + bytes([LATIN[0], 2, 0, 0, 0, 0]))]
    records += [(code, shape("", strokes, LATIN[1])) for code, strokes in unifont_shapes().items()]
    data = UNIFONT + struct.pack("<H", len(records))
    for code, record in records:
        data += struct.pack("<HH", code, len(record)) + record
    return data


def bigfont():
    records = [(0, b"HZTXT\0" + bytes([HAN[0], 0, 0, 0]))]
    records += [(code, shape("", strokes, HAN[1])) for code, strokes in bigfont_shapes().items()]
    ranges = [(0x81, 0xFE)]
    head = BIGFONT + struct.pack("<HHH", 8, len(records), len(ranges))
    head += b"".join(struct.pack("<HH", *ends) for ends in ranges)
    place = len(head) + 8 * len(records)
    index = body = b""
    for code, record in records:
        index += struct.pack("<HHI", code, len(record), place + len(body))
        body += record
    return head + index + body


def read_unifont(data):
    assert data.startswith(UNIFONT), "no unifont"
    at = len(UNIFONT)
    (count,) = struct.unpack_from("<H", data, at)
    at += 2
    records = {}
    for _ in range(count):
        code, size = struct.unpack_from("<HH", data, at)
        records[code] = data[at + 4:at + 4 + size]
        at += 4 + size
    assert at == len(data), "the records don't fill the file"
    return records


def read_bigfont(data):
    assert data.startswith(BIGFONT), "no big font"
    at = len(BIGFONT)
    size, count, ranges = struct.unpack_from("<HHH", data, at)
    at += 6 + 4 * ranges
    records = {}
    for entry in range(count):
        code, length, place = struct.unpack_from("<HHI", data, at + size * entry)
        assert place + length <= len(data), "a shape lies outside the file"
        records[code] = data[place:place + length]
    return records


def drawn(record):
    """The strokes of a shape's bytes, and where it ends."""
    at, position, strokes, down = record.index(0) + 1, (0, 0), [], False
    while record[at] != 0:
        code, at = record[at], at + 1
        if code in (1, 2):
            down = code == 1
            strokes += [[position]] if down else []
            continue
        assert code in (8, 9), f"drawing code {code}"
        while True:
            step = struct.unpack_from("bb", record, at)
            at += 2
            if code == 9 and step == (0, 0):
                break
            position = (position[0] + step[0], position[1] + step[1])
            if down:
                strokes[-1].append(position)
            if code == 8:
                break
    assert at == len(record) - 1, "bytes behind the end"
    return strokes, position


def check(records, shapes, advance, name):
    assert set(records) == {0, *shapes}, f"{name}: other characters than expected"
    for code, strokes in shapes.items():
        assert drawn(records[code]) == (strokes, (advance, 0)), f"{name}: {code:#x}"
    print(f"{name}: {len(shapes)} characters")


def main():
    arguments = sys.argv[1:]
    checking = arguments[:1] == ["--check"]
    default = pathlib.Path(__file__).parent.parent / "config/Fonts"
    folder = pathlib.Path(arguments[-1]) if len(arguments) > checking else default
    if checking:
        check(read_unifont((folder / "txt.shx").read_bytes()), unifont_shapes(), LATIN[1],
              "txt.shx")
        check(read_bigfont((folder / "hztxt.shx").read_bytes()), bigfont_shapes(), HAN[1],
              "hztxt.shx")
        return
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "txt.shx").write_bytes(unifont())
    (folder / "hztxt.shx").write_bytes(bigfont())


if __name__ == "__main__":
    main()
