// The runtime's errors and their texts.
#include "drawing/oderror.h"

#include <cstdio>
#include <system_error>

#include "drawing/odarray.h"
#include "drawing/rxclass.h"

namespace {

struct ResultText {
    OdResult code;
    const OdChar* text;
};

constexpr ResultText resultTexts[] = {
    {eOk, L"No error"},
    {eNotImplementedYet, L"Not implemented yet"},
    {eNotApplicable, L"Not applicable"},
    {eInvalidInput, L"Invalid input"},
    {eOutOfMemory, L"Out of memory"},
    {eNoInterface, L"No interface"},
    {eKeyNotFound, L"Key not found"},
    {eInvalidIndex, L"Invalid index"},
    {eInvalidKey, L"Invalid key"},
    {eEndOfFile, L"End of file"},
    {eCantOpenFile, L"Can't open file"},
    {eFileWriteError, L"File write error"},
    {eNoFileName, L"No file name"},
    {eFileAccessErr, L"File access error"},
    {eFileInternalErr, L"Internal file error"},
    {eFileNotFound, L"File not found"},
    {eNotOpenForRead, L"Not open for reading"},
    {eNotOpenForWrite, L"Not open for writing"},
    {eNotThatKindOfClass, L"Not that kind of class"},
    {eNotInitializedYet, L"Not initialized yet"},
    {eLibIntegrityBroken, L"Library integrity broken"},
    {eExtendedError, L"Extended error"},
};

OdString textOf(OdResult code) {
    for (const ResultText& row : resultTexts) {
        if (row.code == code) {
            return row.text;
        }
    }
    return OdString().format(L"Result code: %d", static_cast<int>(code));
}

OdString withParticulars(OdResult code, const OdString& particulars) {
    return particulars.isEmpty() ? textOf(code) : textOf(code) + L": " + particulars;
}

OdString nameOf(const OdRxClass* rxClass) {
    return rxClass ? rxClass->name() : OdString(L"an unknown class");
}

OdString fileAndReason(const OdString& fileName, const OdString& reason) {
    return reason.isEmpty() ? fileName : fileName + L" (" + reason + L")";
}

OdString systemReason(int systemError) {
    return systemError == 0 ? OdString()
                            : OdUtf8StringToOdString(std::system_category().message(systemError));
}

}  // namespace

OdError::OdError(OdResult code) : result(code), message(textOf(code)) {}

OdError::OdError(const OdString& text) : result(eExtendedError), message(text) {}

OdError::OdError(OdResult code, const OdString& particulars)
    : result(code), message(withParticulars(code, particulars)) {}

OdError::~OdError() = default;

OdError_NotThatKindOfClass::OdError_NotThatKindOfClass(const OdRxClass* fromClass,
                                                       const OdRxClass* toClass)
    : OdError(eNotThatKindOfClass, nameOf(fromClass) + L" is no " + nameOf(toClass)),
      from(fromClass),
      to(toClass) {}

OdError_InvalidIndex::OdError_InvalidIndex() : OdError(eInvalidIndex) {}

OdError_InvalidKey::OdError_InvalidKey(const OdString& key)
    : OdError(eInvalidKey, OdString(L"\"") + key + L"\"") {}

OdError_FileException::OdError_FileException(OdResult code, const OdString& fileName,
                                             int systemError)
    : OdError_FileException(code, fileName, systemReason(systemError)) {}

OdError_FileException::OdError_FileException(OdResult code, const OdString& fileName,
                                             const OdString& reason)
    : OdError(code, fileAndReason(fileName, reason)), name(fileName) {}

void odThrowInvalidIndex() {
    throw OdError_InvalidIndex();
}

void odThrowOutOfMemory() {
    throw OdError(eOutOfMemory);
}

void OdAssert(const char* expression, const char* file, int line) {
    std::fprintf(stderr, "Assertion failed: %s (%s:%d)\n", expression ? expression : "",
                 file ? file : "", line);
}
