// What the runtime raises. OdError carries a result code and a text; its kinds carry what the code
// alone doesn't say.
#pragma once

#include <string>

#include "drawing/export.h"
#include "drawing/odresult.h"
#include "drawing/odstring.h"

class OdRxClass;

class DRAWING_EXPORT OdError {
  public:
    explicit OdError(OdResult code);
    /// A text of the caller's own; the code is eExtendedError.
    explicit OdError(const OdString& message);
    OdError(OdResult code, const OdString& message);
    virtual ~OdError();

    OdError(const OdError&) = default;
    OdError& operator=(const OdError&) = default;

    OdResult code() const { return result; }
    /// One line for people: the kind's text, followed by its particulars.
    virtual OdString description() const { return message; }

  private:
    OdResult result;
    OdString message;
};

/// A cast to a class that the object doesn't answer to (eNotThatKindOfClass).
class DRAWING_EXPORT OdError_NotThatKindOfClass : public OdError {
  public:
    /// Either class may be null, when it isn't known.
    OdError_NotThatKindOfClass(const OdRxClass* from, const OdRxClass* to);

    const OdRxClass* fromClass() const { return from; }
    const OdRxClass* toClass() const { return to; }

  private:
    const OdRxClass* from;
    const OdRxClass* to;
};

/// An index outside an array or a string (eInvalidIndex).
class DRAWING_EXPORT OdError_InvalidIndex : public OdError {
  public:
    OdError_InvalidIndex();
};

/// A key that a dictionary can't take (eInvalidKey).
class DRAWING_EXPORT OdError_InvalidKey : public OdError {
  public:
    explicit OdError_InvalidKey(const OdString& key);
};

/// A failure of a file; names the file and, where there is one, the operating system's reason.
class DRAWING_EXPORT OdError_FileException : public OdError {
  public:
    OdError_FileException(OdResult code, const OdString& fileName, int systemError = 0);
    /// The reason in the words of whoever failed.
    OdError_FileException(OdResult code, const OdString& fileName, const OdString& reason);

    const OdString& fileName() const { return name; }

  private:
    OdString name;
};

/// Reports a failed assertion on standard error and returns. Any thread.
DRAWING_EXPORT void OdAssert(const char* expression, const char* file, int line);
