#!/usr/bin/env python3
"""Writes the seeds of the fuzz targets that read files into fuzz/corpus.

Inputs that once failed stand beside the seeds, named "found_...", and stay.
"""

import pathlib
import struct

CORPUS = pathlib.Path(__file__).parent / "corpus"
FONTS = pathlib.Path(__file__).parent.parent / "app" / "config" / "Fonts"


def write(target, seeds):
    folder = CORPUS / target
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in seeds.items():
        (folder / name).write_bytes(content if isinstance(content, bytes) else content.encode())


# ---- TrueType and OpenType ----

ENGLISH, GERMAN, CHINESE = 0x409, 0x407, 0x804


def utf16(text):
    return text.encode("utf-16-be")


def name_table(names):
    """Of (encoding, language, name, text)."""
    records, texts = b"", b""
    for encoding, language, name, text in names:
        records += struct.pack(">6H", 3, encoding, language, name, len(text), len(texts))
        texts += text
    return struct.pack(">3H", 0, len(names), 6 + len(records)) + records + texts


def face(names, start=0, version=b"\0\1\0\0", tag=b"name", before=()):
    size = 12 + 16 * (len(before) + 1)
    tables = version + struct.pack(">H6x", len(before) + 1)
    for other in before:
        tables += other + struct.pack(">3I", 0, start + size, 0)
    table = name_table(names)
    return tables + tag + struct.pack(">3I", 0, start + size, len(table)) + table


def collection(faces, version=0x10000):
    head = b"ttcf" + struct.pack(">2I", version, len(faces))
    start, places, body = 12 + 4 * len(faces), b"", b""
    for names in faces:
        places += struct.pack(">I", start + len(body))
        body += face(names, start + len(body))
    return head + places + body


def shared_text(records, length):
    record = struct.pack(">6H", 1, 0, ENGLISH, 1, length, 0)
    table = struct.pack(">3H", 0, records, 6 + 12 * records) + record * records + b"A" * length
    return face([])[:24] + struct.pack(">I", len(table)) + table


def named_often(times):
    place = 12 + 4 * times
    return (b"ttcf" + struct.pack(">2I", 0x10000, times) + struct.pack(">I", place) * times
            + face(ARROW, place))


ARROW = [(1, ENGLISH, 1, utf16("Arrow")), (1, ENGLISH, 2, utf16("Regular"))]
BOLD = [(1, ENGLISH, 2, utf16("Bold")), (1, ENGLISH, 1, utf16("Arrow"))]
ITALIC = [(0, GERMAN, 2, b"Bold I"), (0, GERMAN, 1, b"Pf\xc3\xb6hl")]
WIDE = [(1, CHINESE, 1, utf16("\u7bad\u5934")), (1, CHINESE, 2, utf16("\u659c"))]


def fonts():
    surrogates = utf16("A") + b"\xd8\x3d\xde\x05" + utf16("AB") + b"\xdf\xff"
    return {
        "plain": face(ARROW),
        "otto": face(ARROW, version=b"OTTO"),
        "true": face(ARROW, version=b"true"),
        "tables": face(ARROW, before=(b"OS/2", b"glyf"), tag=b"NAME"),
        "narrow": face(ITALIC),
        "wide_alone": face(WIDE),
        "languages": face(ARROW + ITALIC + WIDE),
        "first_stays": face(ARROW + [(0, ENGLISH, 1, b"Dart"), (1, GERMAN, 1, b"x")]),
        "surrogates": face([(1, ENGLISH, 1, surrogates)]),
        "skipped": face([(10, ENGLISH, 1, utf16("Arrow"))] + BOLD),
        "other_names": face([(1, ENGLISH, 4, utf16("Arrow Bold"))] + BOLD),
        "no_names": face([]),
        "no_table": face(ARROW, tag=b"head"),
        "no_tag": face(ARROW, tag=b"\0ame"),
        "no_font": face(ARROW, version=b"typ1"),
        "cut": face(ARROW)[:-3],
        "collection": collection([ARROW, BOLD, ITALIC, WIDE]),
        "collection_2": collection([ARROW, []], 0x20000),
        "collection_3": collection([ARROW], 0x30000),
        "collection_cut": collection([ARROW, BOLD])[:-30],
        "shared_text": shared_text(40, 3000),
        "face_named_often": named_often(1000),
    }


# ---- SHX ----

def shx(text):
    return text.encode() + b"\r\n\x1a" + bytes(8)


def shx_headers():
    seeds = {file.stem: file.read_bytes()[:64] for file in FONTS.glob("*.shx")}
    seeds.update({
        "unifont": shx("Drafting86 unifont 1.0"),
        "bigfont": shx("Drafting86 bigfont 1.0"),
        "shapes": shx("Drafting86 shapes 1.1"),
        "version_10": shx("Drafting86 shapes 1.0"),
        "version_11": shx("Drafting86 fontfile 1.1"),
        "unknown": shx("Drafting86 drawing 2.0 and more"),
        "mark_at_23": b"1.1".rjust(22, b"-") + b"\x1a" + b"1.0",
        "no_mark": b"bigfont".rjust(41, b"-") + b"-" * 20,
        "cut": b"Drafting86 unifont 1.0",
    })
    return seeds


# ---- JSON ----

def json_texts():
    return {
        "kinds": '{"a": [1, -2.5e3, "x", true, false, null], "b": {}, "c": []}',
        "numbers": "[-9223372036854775808, 18446744073709551615, 18446744073709551616, -0, 0.1,"
                   " 1e308, 4.9e-324, 1e-400, 1.7976931348623157e308]",
        "too_big": "[1e309]",
        "texts": '["\\u00e9\\ud83d\\ude00\\u0000\\/\\"\\\\", "\u5b57\u4f53 \U0001f600", ""]',
        "half_pair": '"\\ud800"',
        "equal_keys": '{"a": 1, "b": {"x": 1}, "a": [2], "": 0}',
        "many_keys": "{" + ", ".join('"k%d": %d' % (i % 14, i) for i in range(20)) + "}",
        "mark": b"\xef\xbb\xbf {} ",
        "deepest": "[" * 1000 + "]" * 1000,
        "too_deep": "[" * 1001 + "]" * 1001,
        "deep_objects": '{"k":' * 60 + "0" + "}" * 60,
        "blanks": '\t{\r\n "a" :\n[ ]\n}\n',
        "ill_formed": b'"\xe4\xb8"',
        "nul": b"[\0]",
        "cut": '{"a": [1, ',
        "value": "true",
        "config": '{"Core": {"Library": ["a", "b"], "Debug": {"grade": 4}}, "User": {"version": 257}}',
    }


# ---- paths ----

def path_lines():
    return {
        "variables": "a/%EXEPATH%/b%LANGUAGE%\n/x/\n*.txt\nSUB/a.TXT\n/exe\n/data\n/doc\n/temp\n/fonts\nen",
        "unknown": "100%/%EXEPATH%%NOTHING%%\n\n*\n.\n/a%LANGUAGE%",
        "no_texts": "%TEMPPATH%/%LANGUAGE%",
        "separators": "\\a//b\\c.d.e\nc/\n?.b.*\nback\\slash.txt",
        "dates": "/a/.b\nJul 15 2021 04:22:04\n**a**\nsub/../A.TXT",
        "padded_date": "\nJan  1 1970 00:00:09\nA.TXT\nloop/linked/deep/A.txt",
        "characters": b"\xff/\xe4\xb8\n\n\xc3\xa4HRE.*\n\xc3\xa4hre.DXF",
        "ill_formed": b"\n\nx?y\nX\xffY",
        "folders": "/a\n/b\n\nSub/",
    }


# ---- configurations ----

def configurations():
    def pair(system, user):
        return system.encode() + b"\0" + user.encode()

    def versions(system, user):
        return pair('{"User": {"version": %d, "both": 7, "": 0, "new": ["x"]}}' % system,
                    '{"version": %d, "both": "own", "own": {"a": 1}}' % user)

    return {
        "first_run": '{"Core": {"Debug": {"grade": 5}}, "User": {"version": 257, "a": [1]}}',
        "equal": versions(0x101, 0x101),
        "system_minor": versions(0x102, 0x101),
        "user_minor": versions(0x101, 0x102),
        "user_major": versions(0x101, 0x201),
        "both_differ": versions(0x102, 0x201),
        "system_major": versions(0x201, 0x101),
        "below_zero": versions(-1, 0),
        "largest": versions(0x7FFFFFFF, 0x7FFFFFFE),
        "no_integer": pair('{"User": {"version": "2", "a": 1}}', '{"version": 257.0, "b": 2}'),
        "no_versions": pair('{"User": {"a": 1}}', '{"b": 2}'),
        "no_branch": pair('{"Core": {"AppInfo": {"codepage": 1252}}}', '{"a": 1}'),
        "other_branch": pair('{"User": [1]}', '{"a": 1}'),
        "runtime": pair('{"Runtime": {"ExeRootPath": "/x", "own": {"a": 1}}, "User": {}}', "{}"),
        "broken_user": pair('{"User": {"version": 1}}', '{"a": '),
        "no_object": pair('{"User": {"version": 258}}', "[1]"),
        "deep": pair('{"User": {"version": 2, "a": %s}}' % ("[" * 900 + "]" * 900), "{}"),
    }


# ---- drawings ----

def lines(words):
    """Words become lines; "@" stands for a blank."""
    return words.replace(" ", "\n").replace("@", " ") + "\n"


def section(name, words):
    return "0 SECTION 2 " + name + (" " + words if words else "") + " 0 ENDSEC "


def drawings():
    header = section("HEADER", "9 $ACADVER 1 AC1015 9 $INSUNITS 70 4 9 $MEASUREMENT 70 0 "
                               "9 $DWGCODEPAGE 3 ANSI_936")
    layers = section("TABLES", "0 TABLE 2 LAYER 70 2 0 LAYER 2 0 70 0 62 7 "
                               "0 LAYER 2 WALLS 62 -3 70 4 0 ENDTAB")
    styles = section("TABLES", "0 TABLE 2 STYLE 70 3 0 STYLE 2 Standard 70 0 3 txt 4 hztxt.shx "
                               "0 STYLE 2 Arrow 3 arrow.ttf 1001 ACAD 1000 Arrow 1071 50331648 "
                               "0 STYLE 2 x 70 1 3 ltypeshp.shx 0 ENDTAB")
    blocks = section("BLOCKS", "0 BLOCK 2 TREE 0 CIRCLE 8 0 0 ENDBLK 0 BLOCK 2 *D1 0 ENDBLK")
    entities = section("ENTITIES", "0 LINE 8 WALLS 0 POLYLINE 8 Ghost 0 VERTEX 0 SEQEND "
                                   "0 INSERT 2 TREE 8 walls")
    end = "0 EOF"

    def layer_of(code_page, name, version="AC1009"):
        text = lines(section("HEADER", "9 $ACADVER 1 " + version + " 9 $DWGCODEPAGE 3 " + code_page)
                     + section("ENTITIES", "0 LINE 8 NAME") + end)
        return text.encode().replace(b"NAME", name)

    return {
        "all": lines(header + layers + styles + blocks + entities + end),
        "header": lines(header + end),
        "layers": lines(layers + end),
        "styles": lines(styles + end),
        "entities": lines(entities + end),
        "blocks": lines(blocks + end),
        "end": lines(end),
        "windows": lines(layers + end).replace("\n", "\r\n"),
        "blanks": " 0\nSECTION\n  2\nENTITIES\n  0 \n LINE\n  8\n0\n  0\nENDSEC\n  0\nEOF",
        "unknown": lines("999 remark " + section("CLASSES", "0 CLASS 1 X")
                         + section("OBJECTS", "0 DICTIONARY 5 C") + end),
        "gbk": layer_of("ANSI_936", b"\xc7\xbd\xcc\xe5"),
        "big5_cut": layer_of("BIG5", b"\xc0\xf0\xa4"),
        "dos": layer_of("dos850", b"\x81\xff"),
        "no_code_page": layer_of("UTF-16//X", b"\x81\xff"),
        "utf8": b"\xef\xbb\xbf" + layer_of("ANSI_1252", "W\u00e4nde".encode(), "AC1021"),
        "escapes": lines(section("ENTITIES", "0 LINE 8 \\U+D83D\\U+5899 0 LINE 8 \\U+00 "
                                             "0 LINE 8 \\U+\\U+4E00") + end),
        "no_end_of_section": lines("0 SECTION 2 ENTITIES 0 LINE 0 SECTION"),
        "no_value": "0\nSECTION\n2",
        "binary": b"DXF\0binary\r\n\x1a\0",
        "no_name": lines(section("TABLES", "0 TABLE 2 LAYER 0 LAYER 70 4") + end),
        "nested_block": lines("0 SECTION 2 BLOCKS 0 BLOCK 2 A 0 BLOCK 2 B 0 ENDSEC " + end),
        "no_integer": lines(section("HEADER", "9 $INSUNITS 70 four") + end),
    }


write("font_reader", fonts())
write("shx_header", shx_headers())
write("json_tree", json_texts())
write("path_evaluate", path_lines())
write("config_merge", configurations())
write("dxf", drawings())
