#include "objectorigin.h"

#include <cxxabi.h>
#include <dlfcn.h>

#include <cstdlib>
#include <memory>
#include <typeinfo>

namespace inspect {

std::string classOf(const OdRxObject& object) {
    const char* mangled = typeid(object).name();
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> name(
        abi::__cxa_demangle(mangled, nullptr, nullptr, &status), std::free);
    return status == 0 ? name.get() : mangled;
}

std::string fileOf(const OdRxObject& object) {
    // The table of virtual operations lies in the file that made the class.
    const void* table = *reinterpret_cast<const void* const*>(&object);
    Dl_info info{};
    return dladdr(table, &info) != 0 && info.dli_fname ? info.dli_fname : "";
}

}  // namespace inspect
