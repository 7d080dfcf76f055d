// Tables of the application service object: the own operations of the system services, behind which
// the library's overrides of host operations stand, and those of the host services.
#pragma once

namespace slots {

enum SystemSlot {
    kCreateFile = 1,
    kAccessFile,
    kGetFileCTime,
    kGetFileMTime,
    kGetFileSize,
    kFormatMessage,
    kFormatMsg,
    kSystemCodePage,
    kLoadModuleLib,
    kFindFile,
    kNewUndoController,
    kCollectFilePaths,
    kGetSubstituteFont,
    kTtfFileName,
    kGetPassword,
};

enum HostSlot {
    kHostFindFile = 1,
    kHostNewProgressMeter,
    kHostReleaseProgressMeter,
    kHostDatabaseClass,
    kHostWarning,
    kHostNewUndoController,
    kHostNewUndoStream,
    kHostTtfFileName,
    kHostGetAlternateFontName,
    kHostGetFontMapFileName,
    kHostGetSubstituteFont,
    kHostGetSystemFontFolders,
    kHostCollectFilePaths,
    kHostFileDialog,
    kHostGetTempPath,
    kHostNumThreads,
    kHostInitializeModelerBuilder,
    kHostGetEnv,
    kHostSetEnv,
    kHostWarningOfObject,
    kHostWarningOfError,
    kHostWarningOfErrorInGroup,
    kHostWarningOfObjectInGroup,
    kHostGetPassword,
};

}  // namespace slots
