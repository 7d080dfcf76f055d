// Code pages by number.
#pragma once

#include "drawing/odresult.h"
#include "drawing/odstring.h"

class DRAWING_EXPORT OdCharMapper {
  public:
    /// Reads a code page map: a UTF-8 text of lines "WINDOWS-NUMBER RUNTIME-NUMBER", empty lines
    /// and lines that begin with "#" aside. Its rows go before the built-in ones. Gives eOk,
    /// eCantOpenFile, or eInvalidInput for a line of another form; then nothing is changed.
    static OdResult initialize(const OdString& fileName);

    /// The runtime's code page for a Windows code page number, kUndefined when it is unknown.
    static OdCodePageId ansiCpToAcadCp(int windowsCodePage);
};
