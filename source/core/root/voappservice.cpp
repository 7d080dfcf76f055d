#include "voappservice.h"

VoAppService* g_appService = nullptr;

VoAppService::~VoAppService() = default;

VoAppService& appService() {
    if (!g_appService) {
        throw OdError(eNotInitializedYet, L"The application isn't up");
    }
    return *g_appService;
}
