#!/usr/bin/env python3
"""Writes the sample drawings and the template of the reference application.

    make_drawings.py [FOLDER]

floorplan.dxf  AC1015, millimetres: walls, doors, dimensions drawn as lines and texts, and a text style
               of each sort: compiled fonts, one that isn't shipped, one with a big font; TrueType by
               typeface, bold, and by a file's name in another case
bracket.dxf    AC1015, inches, CRLF: a machine part
site.dxf       AC1009 in code page ANSI_936: a building site with polylines and a block
vemoiso.dwt    AC1015, millimetres: what a new drawing starts from, in each language
"""

import math
import pathlib
import sys

BOLD, ITALIC = 0x02000000, 0x01000000


class Drawing:
    """Collects groups; AC1015 drawings get the handles and subclass marks that it asks for."""

    def __init__(self, version, units, metric, code_page):
        self.version, self.units, self.metric = version, units, metric
        self.code_page = code_page
        self.handles = 0x30
        self.layers = [("0", 7, "CONTINUOUS")]
        self.styles = [("STANDARD", "txt", "", None, 0)]
        self.blocks = []
        self.entities = []
        self.target = self.entities

    @property
    def modern(self):
        return self.version >= "AC1012"

    def handle(self):
        self.handles += 1
        return f"{self.handles:X}"

    def layer(self, name, colour, linetype="CONTINUOUS"):
        self.layers.append((name, colour, linetype))

    def style(self, name, font, big_font="", typeface=None, flags=0):
        self.styles.append((name, font, big_font, typeface, flags))

    def entity(self, kind, layer, mark, *groups):
        head = [(0, kind)]
        if self.modern:
            head += [(5, self.handle()), (100, "AcDbEntity"), (8, layer), (100, mark)]
        else:
            head += [(8, layer)]
        self.target += head + list(groups)

    # Entities

    def line(self, layer, x1, y1, x2, y2):
        self.entity("LINE", layer, "AcDbLine", (10, x1), (20, y1), (30, 0.0), (11, x2), (21, y2),
                    (31, 0.0))

    def rectangle(self, layer, x1, y1, x2, y2):
        for a, b in zip([(x1, y1), (x2, y1), (x2, y2), (x1, y2)],
                        [(x2, y1), (x2, y2), (x1, y2), (x1, y1)]):
            self.line(layer, *a, *b)

    def circle(self, layer, x, y, radius):
        self.entity("CIRCLE", layer, "AcDbCircle", (10, x), (20, y), (30, 0.0), (40, radius))

    def arc(self, layer, x, y, radius, start, end):
        groups = [(10, x), (20, y), (30, 0.0), (40, radius)]
        if self.modern:
            groups.append((100, "AcDbArc"))
        self.entity("ARC", layer, "AcDbCircle", *groups, (50, start), (51, end))

    def text(self, layer, x, y, height, text, style="STANDARD", angle=0.0):
        groups = [(10, x), (20, y), (30, 0.0), (40, height), (1, text), (50, angle), (7, style)]
        if self.modern:
            groups.append((100, "AcDbText"))
        self.entity("TEXT", layer, "AcDbText", *groups)

    def polyline(self, layer, points, closed=False):
        if self.modern:
            vertices = [group for x, y in points for group in ((10, x), (20, y))]
            self.entity("LWPOLYLINE", layer, "AcDbPolyline", (90, len(points)),
                        (70, int(closed)), *vertices)
            return
        self.entity("POLYLINE", layer, "", (66, 1), (10, 0.0), (20, 0.0), (30, 0.0),
                    (70, int(closed)))
        for x, y in points:
            self.entity("VERTEX", layer, "", (10, x), (20, y), (30, 0.0))
        self.entity("SEQEND", layer, "")

    def insert(self, layer, block, x, y, scale=1.0, angle=0.0):
        self.entity("INSERT", layer, "AcDbBlockReference", (2, block), (10, x), (20, y), (30, 0.0),
                    (41, scale), (42, scale), (43, scale), (50, angle))

    def dimension(self, layer, x1, y1, x2, y2, offset, height, style):
        """A linear dimension, drawn as what it looks like."""
        length = math.hypot(x2 - x1, y2 - y1)
        across, along = (x2 - x1) / length, (y2 - y1) / length
        ax, ay = x1 - along * offset, y1 + across * offset
        bx, by = x2 - along * offset, y2 + across * offset
        self.line(layer, x1, y1, ax, ay)
        self.line(layer, x2, y2, bx, by)
        self.line(layer, ax, ay, bx, by)
        self.text(layer, (ax + bx) / 2, (ay + by) / 2, height, f"{length:g}", style,
                  math.degrees(math.atan2(along, across)))

    def begin_block(self, name):
        self.blocks.append((name, []))
        self.target = self.blocks[-1][1]

    def end_block(self):
        self.target = self.entities

    # Sections

    def record(self, kind, mark, *groups, handle=None, handle_code=5):
        if not self.modern:
            return [(0, kind), *groups]
        return [(0, kind), (handle_code, handle or self.handle()), (100, "AcDbSymbolTableRecord"),
                (100, mark), *groups]

    def table(self, name, records):
        count = sum(1 for code, _ in records if code == 0)
        head = [(0, "TABLE"), (2, name)]
        if self.modern:
            head += [(5, self.handle()), (100, "AcDbSymbolTable")]
        return head + [(70, count)] + records + [(0, "ENDTAB")]

    def style_record(self, style):
        name, font, big_font, typeface, flags = style
        groups = [(2, name), (70, 0), (40, 0.0), (41, 1.0), (50, 0.0), (71, 0), (42, 2.5),
                  (3, font), (4, big_font)]
        if typeface:
            groups += [(1001, "ACAD"), (1000, typeface), (1071, flags)]
        return self.record("STYLE", "AcDbTextStyleTableRecord", *groups)

    def header(self):
        groups = [(9, "$ACADVER"), (1, self.version), (9, "$DWGCODEPAGE"), (3, self.code_page)]
        if self.modern:
            groups += [(9, "$MEASUREMENT"), (70, int(self.metric)), (9, "$INSUNITS"),
                       (70, self.units), (9, "$HANDSEED"), (5, "FFFF")]
        return groups

    def tables(self):
        continuous = (3, "Solid line"), (72, 65), (73, 0), (40, 0.0)
        linetypes = []
        for name in (("ByBlock", "ByLayer", "CONTINUOUS") if self.modern else ("CONTINUOUS",)):
            linetypes += self.record("LTYPE", "AcDbLinetypeTableRecord", (2, name), (70, 0),
                                     *continuous)
        layers = []
        for name, colour, linetype in self.layers:
            groups = [(2, name), (70, 0), (62, colour), (6, linetype)]
            if self.modern:
                groups.append((390, "F"))
            layers += self.record("LAYER", "AcDbLayerTableRecord", *groups)
        styles = [group for style in self.styles for group in self.style_record(style)]
        groups = self.table("LTYPE", linetypes) + self.table("LAYER", layers)
        groups += self.table("STYLE", styles)
        if self.modern:
            groups = self.table("VPORT", self.viewport()) + groups
            groups += self.table("VIEW", []) + self.table("UCS", [])
            groups += self.table("APPID", self.record(
                "APPID", "AcDbRegAppTableRecord", (2, "ACAD"), (70, 0)))
            groups += self.dimension_styles()
            groups += self.block_records()
        return groups

    def viewport(self):
        return self.record(
            "VPORT", "AcDbViewportTableRecord", (2, "*ACTIVE"), (70, 0), (10, 0.0), (20, 0.0),
            (11, 1.0), (21, 1.0), (12, 0.0), (22, 0.0), (13, 0.0), (23, 0.0), (14, 10.0),
            (24, 10.0), (15, 10.0), (25, 10.0), (16, 0.0), (26, 0.0), (36, 1.0), (17, 0.0),
            (27, 0.0), (37, 0.0), (40, 10000.0), (41, 1.5), (42, 50.0), (43, 0.0), (44, 0.0),
            (50, 0.0), (51, 0.0), (71, 0), (72, 100), (73, 1), (74, 3), (75, 0), (76, 0), (77, 0),
            (78, 0))

    def dimension_styles(self):
        record = self.record("DIMSTYLE", "AcDbDimStyleTableRecord", (2, "STANDARD"), (70, 0),
                             handle_code=105)
        return [(0, "TABLE"), (2, "DIMSTYLE"), (5, self.handle()), (100, "AcDbSymbolTable"),
                (70, 1), (100, "AcDbDimStyleTable"), *record, (0, "ENDTAB")]

    def block_records(self):
        names = [("*Model_Space", "1F"), ("*Paper_Space", "1B")]
        names += [(name, None) for name, _ in self.blocks]
        records = []
        for name, handle in names:
            records += self.record("BLOCK_RECORD", "AcDbBlockTableRecord", (2, name),
                                   handle=handle)
        return self.table("BLOCK_RECORD", records)

    def block(self, name, content):
        begin, end = [(0, "BLOCK")], [(0, "ENDBLK")]
        if self.modern:
            begin += [(5, self.handle()), (100, "AcDbEntity"), (8, "0"), (100, "AcDbBlockBegin")]
            end += [(5, self.handle()), (100, "AcDbEntity"), (8, "0"), (100, "AcDbBlockEnd")]
        else:
            begin.append((8, "0"))
            end.append((8, "0"))
        return begin + [(2, name), (70, 0), (10, 0.0), (20, 0.0), (30, 0.0), (3, name),
                        (1, "")] + content + end

    def groups(self):
        blocks = [("*Model_Space", []), ("*Paper_Space", [])] if self.modern else []
        sections = [("HEADER", self.header())]
        if self.modern:
            sections.append(("CLASSES", []))
        sections += [("TABLES", self.tables()),
                     ("BLOCKS", [group for name, content in blocks + self.blocks
                                 for group in self.block(name, content)]),
                     ("ENTITIES", self.entities)]
        if self.modern:
            sections.append(("OBJECTS", self.objects()))
        groups = []
        for name, content in sections:
            groups += [(0, "SECTION"), (2, name), *content, (0, "ENDSEC")]
        return groups + [(0, "EOF")]

    @staticmethod
    def objects():
        return [(0, "DICTIONARY"), (5, "C"), (330, "0"), (100, "AcDbDictionary"), (281, 1),
                (3, "ACAD_GROUP"), (350, "D"), (3, "ACAD_PLOTSTYLENAME"), (350, "E"),
                (0, "DICTIONARY"), (5, "D"), (330, "C"), (100, "AcDbDictionary"), (281, 1),
                (0, "ACDBDICTIONARYWDFLT"), (5, "E"), (330, "C"), (100, "AcDbDictionary"),
                (281, 1), (3, "Normal"), (350, "F"), (100, "AcDbDictionaryWithDefault"),
                (340, "F"), (0, "ACDBPLACEHOLDER"), (5, "F"), (330, "E")]

    def write(self, path, newline="\n", encoding="ascii"):
        lines = []
        for code, value in self.groups():
            if isinstance(value, float):
                value = f"{value + 0.0:.6g}"
                value += "" if "." in value or "e" in value else ".0"
            lines += [f"{code:>3}", str(value)]
        path.write_bytes((newline.join(lines) + newline).encode(encoding))


def floorplan():
    drawing = Drawing("AC1015", 4, True, "ANSI_1252")
    for name, colour in (("WALLS", 7), ("DOORS", 3), ("WINDOWS", 4), ("TEXT", 2),
                         ("DIMENSIONS", 1), ("FURNITURE", 8)):
        drawing.layer(name, colour)
    drawing.style("NOTES", "romans.shx")
    drawing.style("HAN", "txt.shx", "hztxt.shx")
    drawing.style("CAPTION", "LIBERATIONSERIF-ITALIC.TTF")
    drawing.style("ROOMS", "DejaVuSans.ttf", "", "DejaVu Sans", 34)
    drawing.style("TITLE", "DejaVuSans-Bold.ttf", "", "DejaVu Sans", BOLD | 34)
    drawing.rectangle("WALLS", 0.0, 0.0, 12000.0, 9000.0)
    drawing.rectangle("WALLS", 240.0, 240.0, 11760.0, 8760.0)
    for x in (4800.0, 4900.0):
        drawing.line("WALLS", x, 240.0, x, 3600.0)
        drawing.line("WALLS", x, 4500.0, x, 8760.0)
    for y in (5000.0, 5100.0):
        drawing.line("WALLS", 4900.0, y, 8000.0, y)
        drawing.line("WALLS", 8900.0, y, 11760.0, y)
    doors = ((4900.0, 3600.0, 0.0, 90.0), (8000.0, 5000.0, 270.0, 360.0),
             (1000.0, 240.0, 0.0, 90.0))
    for x, y, start, end in doors:
        drawing.arc("DOORS", x, y, 900.0, start, end)
        angle = math.radians(end)
        drawing.line("DOORS", x, y, round(x + 900.0 * math.cos(angle), 3),
                     round(y + 900.0 * math.sin(angle), 3))
    for x in (6000.0, 9000.0):
        drawing.rectangle("WINDOWS", x, 0.0, x + 1800.0, 240.0)
        drawing.line("WINDOWS", x, 120.0, x + 1800.0, 120.0)
    for x, y, name in ((1200.0, 4500.0, "LIVING ROOM"), (7200.0, 2500.0, "KITCHEN"),
                       (7200.0, 7000.0, "BEDROOM")):
        drawing.text("TEXT", x, y, 300.0, name, "ROOMS")
    drawing.text("TEXT", 1200.0, 4000.0, 200.0, "\\U+5BA2\\U+5385", "HAN")
    drawing.text("TEXT", 0.0, -2400.0, 500.0, "GROUND FLOOR", "TITLE")
    drawing.text("TEXT", 6000.0, -2400.0, 200.0, "Scale 1:100", "CAPTION")
    drawing.text("TEXT", 0.0, -3000.0, 200.0, "ALL SIZES IN MILLIMETRES", "NOTES")
    drawing.dimension("DIMENSIONS", 0.0, 0.0, 12000.0, 0.0, -1200.0, 250.0, "NOTES")
    drawing.dimension("DIMENSIONS", 0.0, 0.0, 0.0, 9000.0, 1200.0, 250.0, "NOTES")
    drawing.dimension("DIMENSIONS", 0.0, 9000.0, 4800.0, 9000.0, 800.0, 250.0, "NOTES")
    drawing.polyline("FURNITURE", [(600.0, 6800.0), (2800.0, 6800.0), (2800.0, 7700.0),
                                   (600.0, 7700.0)], closed=True)
    drawing.circle("FURNITURE", 7800.0, 1500.0, 600.0)
    for angle in range(0, 360, 90):
        drawing.circle("FURNITURE", round(7800.0 + 900.0 * math.cos(math.radians(angle)), 3),
                       round(1500.0 + 900.0 * math.sin(math.radians(angle)), 3), 200.0)
    return drawing


def bracket():
    drawing = Drawing("AC1015", 1, False, "ANSI_1252")
    for name, colour in (("OUTLINE", 7), ("HOLES", 5), ("CENTRE", 1), ("NOTES", 2)):
        drawing.layer(name, colour)
    drawing.style("NOTES", "isocp.shx")
    drawing.line("OUTLINE", 0.5, 0.0, 5.5, 0.0)
    drawing.arc("OUTLINE", 5.5, 0.5, 0.5, 270.0, 0.0)
    drawing.line("OUTLINE", 6.0, 0.5, 6.0, 1.0)
    drawing.arc("OUTLINE", 5.5, 1.0, 0.5, 0.0, 90.0)
    drawing.line("OUTLINE", 5.5, 1.5, 2.0, 1.5)
    drawing.arc("OUTLINE", 2.0, 2.0, 0.5, 180.0, 270.0)
    drawing.line("OUTLINE", 1.5, 2.0, 1.5, 4.0)
    drawing.arc("OUTLINE", 0.75, 4.0, 0.75, 0.0, 180.0)
    drawing.line("OUTLINE", 0.0, 4.0, 0.0, 0.5)
    drawing.arc("OUTLINE", 0.5, 0.5, 0.5, 180.0, 270.0)
    for x, y, radius in ((0.75, 4.0, 0.375), (5.25, 0.75, 0.25), (3.75, 0.75, 0.25),
                         (0.75, 0.75, 0.25)):
        drawing.circle("HOLES", x, y, radius)
        reach = radius + 0.2
        drawing.line("CENTRE", x - reach, y, x + reach, y)
        drawing.line("CENTRE", x, y - reach, x, y + reach)
    drawing.text("NOTES", 2.5, 3.0, 0.2, "BRACKET, STEEL, 0.25 THICK", "NOTES")
    drawing.text("NOTES", 2.5, 2.6, 0.15, "3 HOLES %%c0.50, 1 HOLE %%c0.75", "NOTES")
    return drawing


def site():
    drawing = Drawing("AC1009", None, True, "ANSI_936")
    for name, colour in (("边界", 1), ("道路", 8), ("建筑", 7), ("树木", 3), ("文字", 2)):
        drawing.layer(name, colour)
    drawing.style("HAN", "txt.shx", "hztxt.shx")
    drawing.begin_block("TREE")
    drawing.circle("0", 0.0, 0.0, 1.0)
    for angle in range(0, 360, 60):
        drawing.line("0", 0.0, 0.0, round(math.cos(math.radians(angle)), 6),
                     round(math.sin(math.radians(angle)), 6))
    drawing.end_block()
    drawing.polyline("边界", [(0.0, 0.0), (80.0, 0.0), (85.0, 60.0), (5.0, 65.0)], closed=True)
    drawing.polyline("道路", [(0.0, 30.0), (25.0, 28.0), (50.0, 32.0), (82.0, 31.0)])
    drawing.polyline("道路", [(0.0, 36.0), (25.0, 34.0), (50.0, 38.0), (83.0, 37.0)])
    drawing.polyline("建筑", [(10.0, 8.0), (30.0, 8.0), (30.0, 22.0), (10.0, 22.0)], closed=True)
    drawing.polyline("建筑", [(45.0, 42.0), (70.0, 42.0), (70.0, 55.0), (45.0, 55.0)], closed=True)
    for index in range(12):
        drawing.insert("树木", "TREE", 4.0 + 6.5 * index, 26.0 + 0.3 * index, 1.0 + index % 3 * 0.25,
                       float(index * 15 % 360))
    drawing.text("文字", 14.0, 14.0, 2.0, "一号楼", "HAN")
    drawing.text("文字", 50.0, 48.0, 2.0, "二号楼", "HAN")
    return drawing


def template():
    drawing = Drawing("AC1015", 4, True, "ANSI_1252")
    drawing.layer("DIMENSIONS", 1)
    drawing.layer("NOTES", 2)
    drawing.style("NOTES", "txt.shx")
    return drawing


def chinese_template():
    drawing = Drawing("AC1015", 4, True, "ANSI_936")
    for name, colour in (("轮廓", 7), ("标注", 1), ("文字", 2)):
        drawing.layer(name, colour)
    drawing.style("汉字", "txt.shx", "hztxt.shx")
    return drawing


def main():
    here = pathlib.Path(__file__).parent
    folder = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else here
    floorplan().write(folder / "floorplan.dxf")
    bracket().write(folder / "bracket.dxf", newline="\r\n")
    site().write(folder / "site.dxf", encoding="gbk")
    for language, drawing in (("en-US", template()), ("zh-CN", chinese_template())):
        templates = here.parent / "config/UserDataCache" / language / "Template"
        templates.mkdir(parents=True, exist_ok=True)
        drawing.write(templates / "vemoiso.dwt", encoding="gbk")


if __name__ == "__main__":
    main()
