// The library's exported functions as one part of the process sees them.
#pragma once

#include <vector>

#include "core/vemo_root.h"
#include "core/voexports.h"

inline std::vector<void*> exportedFunctions() {
    return {
        reinterpret_cast<void*>(&vemo_root),
        reinterpret_cast<void*>(&vemo_exit),
        reinterpret_cast<void*>(&vo_arbitDict_regservice),
        reinterpret_cast<void*>(&vo_arbitDict_clearservice),
        reinterpret_cast<void*>(&vo_arbitDict_getservice),
        reinterpret_cast<void*>(&vo_sys_config),
        reinterpret_cast<void*>(&vo_runtime_config),
        reinterpret_cast<void*>(&vo_user_config),
        reinterpret_cast<void*>(&vo_save_user_config),
        reinterpret_cast<void*>(&vo_notify_user_config_changed),
        reinterpret_cast<void*>(&vo_build_timestamp),
        reinterpret_cast<void*>(&vo_is_appQuiting),
        reinterpret_cast<void*>(&voLoad_extModule),
        reinterpret_cast<void*>(&voUnload_extModule),
        reinterpret_cast<void*>(&vodbSystemServices),
    };
}
