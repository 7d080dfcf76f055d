// Reads the sections of a DXF drawing into a DxfDrawing.
#pragma once

#include <map>

#include "dxfdrawing.h"
#include "dxfrecords.h"
#include "dxftext.h"

namespace vemoapp {

/// One reading of one drawing. The counts that a drawing states about itself are never looked at.
class DxfParser {
  public:
    explicit DxfParser(std::istream& stream) : records(stream) {}

    /// Reads to the end mark; raises OdError (eExtendedError) with the line.
    DxfDrawing parse();

  private:
    using RecordHandler = void (DxfParser::*)(const DxfRecord& record);

    void readSection();
    void readHeader();
    void takeHeaderVariable(const std::string& name);
    void readRecords(RecordHandler handler);
    void skipSection();

    void takeTableRecord(const DxfRecord& record);
    void takeBlockRecord(const DxfRecord& record);
    void takeEntity(const DxfRecord& record);
    void addLayer(const DxfRecord& record);
    void addStyle(const DxfRecord& record);

    DxfLayer& layerNamed(const std::string& rawName, std::uint64_t line);
    std::string nameOf(const DxfRecord& record) const;

    DxfRecordReader records;
    DxfTextDecoder decoder;
    DxfDrawing drawing;
    std::map<std::string, std::size_t> layerIndexes;  // by name in upper case
    std::string currentTable;
    bool inBlock = false;
};

}  // namespace vemoapp
