// What the runtime asks of the system it runs on, and the stand-in's answers over POSIX.
#pragma once

#include <cstdarg>
#include <ctime>

#include "drawing/odstreambuf.h"
#include "drawing/rxdynamiclinker.h"

/// The object handed to odInitialize. The order of the operations is fixed; formatMessage stands
/// between getFileSize and formatMsg. Called on the thread that runs the runtime.
class DRAWING_EXPORT OdRxSystemServices : public OdRxObject {
    ODRX_DECLARE_MEMBERS(OdRxSystemServices)

    /// Opens a file. Raises OdError_FileException when it can't: eNoFileName, eFileNotFound,
    /// eCantOpenFile, or eInvalidInput for an access or a disposition that makes no sense.
    virtual OdStreamBufPtr createFile(const OdString& name, std::uint32_t access = kFileRead,
                                      std::uint32_t shareMode = kShareDenyNo,
                                      std::uint32_t disposition = kOpenExisting) = 0;
    /// Whether the file is there and may be used so.
    virtual bool accessFile(const OdString& name, std::uint32_t access) = 0;
    /// Times are seconds since the epoch, -1 for a file that isn't there; so is the size in bytes.
    virtual std::time_t getFileCTime(const OdString& name) = 0;
    virtual std::time_t getFileMTime(const OdString& name) = 0;
    virtual std::int64_t getFileSize(const OdString& name) = 0;

    /// The text of a result or message code. The list may be null and is not consumed.
    virtual OdString formatMessage(unsigned int errorCode, va_list* argList) = 0;
    /// formatMessage with the arguments behind the code.
    virtual OdString formatMsg(unsigned int errorCode, ...);

    virtual OdCodePageId systemCodePage() const = 0;

    /// Opens a shared library by file name: as it stands when it has a folder, otherwise in the
    /// linker's folders and then in the system's places. Null when there is none. One that is there
    /// and can't be loaded gives null too when `silent`, and otherwise raises OdError_FileException
    /// (eCantOpenFile). Either way the linker keeps the reason.
    virtual OdRxModuleLibrary* loadModuleLib(const OdString& fileName, bool silent) = 0;
};

/// The services of the runtime; null while it isn't up.
DRAWING_EXPORT OdRxSystemServices* odrxSystemServices();

/// Files, times and shared libraries of the running system.
class DRAWING_EXPORT RxSystemServicesImpl : public OdRxSystemServices {
  public:
    /// Opens regular files, and to be read devices that have positions. Share modes have no effect.
    OdStreamBufPtr createFile(const OdString& name, std::uint32_t access, std::uint32_t shareMode,
                              std::uint32_t disposition) override;
    bool accessFile(const OdString& name, std::uint32_t access) override;
    std::time_t getFileCTime(const OdString& name) override;
    std::time_t getFileMTime(const OdString& name) override;
    std::int64_t getFileSize(const OdString& name) override;
    /// "Result code: N" for every code.
    OdString formatMessage(unsigned int errorCode, va_list* argList) override;
    OdCodePageId systemCodePage() const override { return codePage; }
    OdRxModuleLibrary* loadModuleLib(const OdString& fileName, bool silent) override;

    void setSystemCodePage(OdCodePageId id) { codePage = id; }

  private:
    OdCodePageId codePage = OdCodePageId::kUtf8;
};

/// The services that applications derive theirs from.
class DRAWING_EXPORT ExSystemServices : public RxSystemServicesImpl {};
