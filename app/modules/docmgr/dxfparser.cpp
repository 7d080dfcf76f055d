#include "dxfparser.h"

#include <utility>

#include <drawing/runtime.h>

#include "text.h"

namespace vemoapp {

namespace {

// More names than this is no drawing that anybody made; it bounds the memory that a file can take.
constexpr std::size_t kMaxNames = 100000;

void checkRoom(std::size_t count, std::uint64_t line) {
    if (count >= kMaxNames) {
        throwDrawingError(line, "more than " + std::to_string(kMaxNames) + " names");
    }
}

// Records that belong to the entity before them.
bool isPartOfEntity(const std::string& type) {
    return type == "VERTEX" || type == "SEQEND" || type == "ATTRIB";
}

// Blocks that the program made: a layout, a dimension's picture.
bool isOwnBlock(const std::string& name) {
    std::string upper = upperCase(name);
    return upper.starts_with('*') || upper == "$MODEL_SPACE" || upper == "$PAPER_SPACE";
}

}  // namespace

DxfDrawing DxfParser::parse() {
    for (records.advance(); !records.at(0, "EOF"); readSection()) {
    }
    return std::move(drawing);
}

void DxfParser::readSection() {
    if (!records.at(0, "SECTION")) {
        throwDrawingError(records.current().line, "a section or the EOF mark is expected");
    }
    records.advance();
    if (records.current().code != 2) {
        throwDrawingError(records.current().line, "the section's name is expected");
    }
    std::string name(trimmed(records.current().value));
    records.advance();
    if (name == "HEADER") {
        readHeader();
    } else if (name == "TABLES") {
        readRecords(&DxfParser::takeTableRecord);
    } else if (name == "BLOCKS") {
        readRecords(&DxfParser::takeBlockRecord);
    } else if (name == "ENTITIES") {
        readRecords(&DxfParser::takeEntity);
    } else {
        skipSection();
    }
}

void DxfParser::skipSection() {
    while (!records.at(0, "ENDSEC")) {
        if (records.at(0, "SECTION") || records.at(0, "EOF")) {
            throwDrawingError(records.current().line, "the section before has no ENDSEC");
        }
        records.advance();
    }
    records.advance();
}

void DxfParser::readHeader() {
    std::string variable;
    for (; records.current().code != 0; records.advance()) {
        if (records.current().code == 9) {
            variable = trimmed(records.current().value);
        } else {
            takeHeaderVariable(variable);
        }
    }
    decoder.setEncoding(drawing.codePage, drawing.version);
    skipSection();
}

void DxfParser::takeHeaderVariable(const std::string& name) {
    std::string value = decoder.decode(std::string(trimmed(records.current().value)));
    if (name == "$ACADVER") {
        drawing.version = value;
    } else if (name == "$DWGCODEPAGE") {
        drawing.codePage = value;
    } else if (name == "$INSUNITS") {
        drawing.units = static_cast<int>(records.integer());
    } else if (name == "$MEASUREMENT") {
        drawing.metric = records.integer() != 0;
    }
}

void DxfParser::readRecords(RecordHandler handler) {
    while (records.current().code != 0) {
        records.advance();
    }
    while (!records.at(0, "ENDSEC")) {
        if (records.at(0, "SECTION") || records.at(0, "EOF")) {
            throwDrawingError(records.current().line, "the section before has no ENDSEC");
        }
        (this->*handler)(records.readRecord());
    }
    records.advance();
}

void DxfParser::takeTableRecord(const DxfRecord& record) {
    if (record.type == "TABLE") {
        currentTable = nameOf(record);
    } else if (record.type == "ENDTAB") {
        currentTable.clear();
    } else if (record.type == "LAYER" && currentTable == "LAYER") {
        addLayer(record);
    } else if (record.type == "STYLE" && currentTable == "STYLE") {
        addStyle(record);
    }
}

void DxfParser::addLayer(const DxfRecord& record) {
    DxfLayer& layer = layerNamed(nameOf(record), record.line);
    layer.colour = record.colour.value_or(layer.colour);
    layer.flags = record.flags.value_or(0);
}

void DxfParser::addStyle(const DxfRecord& record) {
    checkRoom(drawing.styles.size(), record.line);
    DxfTextStyle style;
    style.namesShapeFile = (record.flags.value_or(0) & 1) != 0;
    if (!style.namesShapeFile) {
        style.name = decoder.decode(nameOf(record));
    }
    style.fontFile = decoder.decode(record.font.value_or(""));
    style.bigFontFile = decoder.decode(record.bigFont.value_or(""));
    style.typeface = decoder.decode(record.typeface.value_or(""));
    style.faceFlags = static_cast<std::uint32_t>(record.face.value_or(0));
    drawing.styles.push_back(std::move(style));
}

void DxfParser::takeBlockRecord(const DxfRecord& record) {
    if (record.type == "BLOCK") {
        if (inBlock) {
            throwDrawingError(record.line, "a block inside a block");
        }
        inBlock = true;
        std::string name = decoder.decode(nameOf(record));
        checkRoom(drawing.blocks.size(), record.line);
        if (!isOwnBlock(name)) {
            drawing.blocks.push_back(name);
        }
    } else if (record.type == "ENDBLK") {
        inBlock = false;
    }
}

void DxfParser::takeEntity(const DxfRecord& record) {
    if (isPartOfEntity(record.type)) {
        return;
    }
    checkRoom(drawing.entityCounts.size(), record.line);
    ++drawing.entityCounts[decoder.decode(record.type)];
    ++layerNamed(record.layer.value_or("0"), record.line).entities;
}

DxfLayer& DxfParser::layerNamed(const std::string& rawName, std::uint64_t line) {
    std::string name = decoder.decode(rawName);
    auto [place, isNew] = layerIndexes.try_emplace(upperCase(name), drawing.layers.size());
    if (isNew) {
        checkRoom(drawing.layers.size(), line);
        drawing.layers.push_back({.name = name});
    }
    return drawing.layers[place->second];
}

std::string DxfParser::nameOf(const DxfRecord& record) const {
    if (!record.name || record.name->empty()) {
        throwDrawingError(record.line, record.type + " has no name");
    }
    return *record.name;
}

}  // namespace vemoapp
