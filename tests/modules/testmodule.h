// Bases of the test modules.
#pragma once

#include <drawing/runtime.h>

#include <string>
#include <vector>

#include "core/voexports.h"
#include "testjournal.h"

inline std::string utf8(const OdString& text) {
    return OdStringToUtf8String(text).str();
}

/// Writes to the journal whether the application is quitting, too.
inline void note(const std::string& line) {
    journal::append(vo_is_appQuiting() ? line + " [quitting]" : line);
}

/// A module that notes its beginning and its end.
class NotingModule : public OdRxModuleBase {
  public:
    void initApp() override { note("init " + utf8(moduleName())); }
    void uninitApp() override { note("end " + utf8(moduleName())); }
};

/// A module that provides services and takes them back at its end.
class ServiceModule : public NotingModule {
  public:
    void uninitApp() override {
        for (const OdChar* key : keys) {
            vo_arbitDict_clearservice(key);
        }
        keys.clear();
        NotingModule::uninitApp();
    }

  protected:
    /// Leaves out a service whose key stands in the setting "without".
    template <class T>
    void provide(const OdChar* key) {
        if (journal::setting("without").find(utf8(key)) == std::string::npos) {
            vo_arbitDict_regservice(key, OdRxObjectImpl<T>::createObject());
            keys.push_back(key);
        }
    }

  private:
    std::vector<const OdChar*> keys;
};
