// Texts of result and message codes, in the application's language.
#include <iterator>

#include "voappservice.h"

namespace {

struct Diagnostic {
    unsigned int code;
    const OdChar* chinese;
    const OdChar* english;
};

constexpr Diagnostic kDiagnostics[] = {
#define DIAGNOSTIC(code, chinese, english) {code, L##chinese, L##english},
#include "messages/diagnostics.def"
#undef DIAGNOSTIC
};

constexpr unsigned int kFirstDiagnostic = kDiagnostics[0].code;
constexpr unsigned int kFirstUnknown = kFirstDiagnostic + std::size(kDiagnostics);

constexpr bool rowsStandAtTheirCodes() {
    for (unsigned int index = 0; index < std::size(kDiagnostics); ++index) {
        if (kDiagnostics[index].code != kFirstDiagnostic + index) {
            return false;
        }
    }
    return true;
}
static_assert(kFirstDiagnostic == 491 && kFirstUnknown == 895 && rowsStandAtTheirCodes());

const OdChar* resultName(unsigned int code) {
    switch (code) {
#define RESULT_NAME(number, name) \
    case number:                  \
        return L## #name;
#include "messages/result_names.def"
#undef RESULT_NAME
        default:
            return nullptr;
    }
}

OdString resultText(unsigned int code) {
    const OdChar* name = resultName(code);
    // A code without a name reads as success, its own number left out.
    return name ? OdString().format(L"%s (code : %d)", name, code) : OdString(L"eOk (code : 0)");
}

OdString diagnosticText(unsigned int code, va_list* argList) {
    const Diagnostic& row = kDiagnostics[code - kFirstDiagnostic];
    const OdChar* text = *row.chinese ? row.chinese : row.english;
    if (!argList) {
        return text;
    }
    return OdString().formatV(text, *argList);
}

}  // namespace

OdString VoAppService::formatMessage(unsigned int errorCode, va_list* argList) {
    if (errorCode < kFirstDiagnostic) {
        return resultText(errorCode);
    }
    if (errorCode < kFirstUnknown) {
        return diagnosticText(errorCode, argList);
    }
    return OdString().format(L"Unknown message (code: %d)", errorCode);
}
