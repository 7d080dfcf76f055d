// The service's life, and its place in the application.
#include "voapfontsservice.h"

#include "rootlog.h"
#include "rootservices.h"
#include "vosiconfigreactor.h"

namespace vosi {

VoApFontsService::VoApFontsService() {
    const auto reactor = OdRxObjectImpl<VosiConfigReactor>::createObject();
    reactor->fontService = this;
    const VosiApRxEventPtr dispatcher = eventDispatcher();
    if (dispatcher.isNull()) {
        rootlog::write(rootlog::kError, __LINE__, rootlog::kFontsService, "VoApFontsService",
                       "vsiApRxEvent为空");
        return;
    }
    dispatcher->addReactor(reactor.get());
}

void VoApFontsService::publishFonts(const VoJsonPtr& root) {
    if (root) {
        root->set_propertyJ("Fonts", VoJsonPtr(this));
    }
}

void VoApFontsService::withdrawFonts(const VoJsonPtr& root) {
    if (root) {
        root->removeProperty("Fonts");
    }
}

}  // namespace vosi
