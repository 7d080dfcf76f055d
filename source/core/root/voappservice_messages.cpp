// Texts of result and message codes.
#include "voappservice.h"

OdString VoAppService::formatMessage(unsigned int errorCode, va_list* argList) {
    return ExSystemServices::formatMessage(errorCode, argList);
}
