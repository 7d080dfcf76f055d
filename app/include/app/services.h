// How the application's parts find each other.
//
// A key of the library promises the library's class and no more, so that another module may take
// its place. What the application's own parts need beyond that is registered under keys of its own,
// which promise the classes in this folder. Everything here is used on the interface thread.
#pragma once

#include <core/voexports.h>
#include <core/voservicekeys.h>

namespace vemoapp {

inline constexpr const OdChar* kCommandWindowKey = L"App/CommandWindow";
inline constexpr const OdChar* kCommandTableKey = L"App/Commands";
inline constexpr const OdChar* kInputRunnerKey = L"App/InputRunner";
inline constexpr const OdChar* kAliasResolverKey = L"App/Aliases";
inline constexpr const OdChar* kCommandRecorderKey = L"App/Recorder";

/// The service under the key, null when there is none or the application is gone.
template <class Service>
OdSmartPtr<Service> service(const OdChar* key) {
    if (!vodbSystemServices()) {
        return nullptr;
    }
    return OdSmartPtr<Service>(vo_arbitDict_getservice(key));
}

}  // namespace vemoapp
