// Result codes of the drawing runtime. The numbers are fixed: they stand in logs and in the tables
// of texts that applications keep. Only the codes that this runtime or its callers use are named.
#pragma once

enum OdResult : int {
    eOk = 0,
    eNotImplementedYet = 3,
    eNotApplicable = 4,
    eInvalidInput = 5,
    eOutOfMemory = 9,
    eNoInterface = 10,
    eKeyNotFound = 26,
    eInvalidIndex = 28,
    eInvalidKey = 38,
    eEndOfFile = 46,
    eCantOpenFile = 48,
    eFileWriteError = 50,
    eNoFileName = 51,
    eFileAccessErr = 53,
    eFileInternalErr = 55,
    eFileNotFound = 57,
    eNotOpenForRead = 61,
    eNotOpenForWrite = 62,
    eNotThatKindOfClass = 63,
    eNotInitializedYet = 255,
    eLibIntegrityBroken = 295,
    eExtendedError = 313
};
