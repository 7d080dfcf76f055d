// The system services over POSIX.
#include "drawing/rxsystemservices.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>

#include "filestream.h"
#include "runtimestate.h"

ODRX_DEFINE_MEMBERS(OdRxSystemServices, OdRxObject, nullptr, L"OdRxSystemServices")

namespace {

std::optional<struct stat> statusOf(const OdString& name) {
    struct stat status {};
    if (stat(OdStringToUtf8String(name), &status) != 0) {
        return std::nullopt;
    }
    return status;
}

}  // namespace

OdString OdRxSystemServices::formatMsg(unsigned int errorCode, ...) {
    va_list arguments;
    va_start(arguments, errorCode);
    OdString text;
    try {
        text = formatMessage(errorCode, &arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
    return text;
}

OdStreamBufPtr RxSystemServicesImpl::createFile(const OdString& name, std::uint32_t access,
                                                std::uint32_t /*shareMode*/,
                                                std::uint32_t disposition) {
    return openFileStream(name, access, disposition);
}

bool RxSystemServicesImpl::accessFile(const OdString& name, std::uint32_t access) {
    const auto status = statusOf(name);
    const int mode =
        ((access & kFileRead) != 0 ? R_OK : 0) | ((access & kFileWrite) != 0 ? W_OK : 0);
    return status && !S_ISDIR(status->st_mode) &&
           faccessat(AT_FDCWD, OdStringToUtf8String(name), mode, AT_EACCESS) == 0;
}

std::time_t RxSystemServicesImpl::getFileCTime(const OdString& name) {
    const auto status = statusOf(name);
    return status ? status->st_ctime : -1;
}

std::time_t RxSystemServicesImpl::getFileMTime(const OdString& name) {
    const auto status = statusOf(name);
    return status ? status->st_mtime : -1;
}

std::int64_t RxSystemServicesImpl::getFileSize(const OdString& name) {
    const auto status = statusOf(name);
    return status ? status->st_size : -1;
}

OdString RxSystemServicesImpl::formatMessage(unsigned int errorCode, va_list* /*argList*/) {
    return OdString().format(L"Result code: %u", errorCode);
}

OdRxModuleLibrary* RxSystemServicesImpl::loadModuleLib(const OdString& fileName, bool silent) {
    DynamicLinker& linker = *requireRuntimeState().linker;
    const LibraryOpening opening = linker.open(fileName);
    if (!opening.library) {
        linker.noteFailure(fileName, opening.reason);
        if (opening.found && !silent) {
            throw OdError_FileException(eCantOpenFile, fileName, opening.reason);
        }
    }
    return opening.library;
}
