// Keys of the service dictionary and of the runtime's system registry.
#pragma once

#include <drawing/runtime.h>

namespace vosi {

// Services of this library.
inline constexpr const OdChar* kFiberKey = L"Core/Fiber";
inline constexpr const OdChar* kFiberCoroutineKey = L"Core/FiberCoroutine";
inline constexpr const OdChar* kFindFontsKey = L"Core/FindFonts";

// Services of modules without which start-up doesn't reach its end.
inline constexpr const OdChar* kMainUIKey = L"Vemo/MainUI";
inline constexpr const OdChar* kDocMgrKey = L"Core/DocMgr";
inline constexpr const OdChar* kEditSystemKey = L"Core/EditSystemServer";

// Services of modules that switch a part of the application on by being there.
inline constexpr const OdChar* kAliasMgrKey = L"Core/AliasMgrSvr";
inline constexpr const OdChar* kRemoteDebugSvrKey = L"Core/RemoteDebugSvr";
inline constexpr const OdChar* kRemoteDebugStubKey = L"Core/RemoteDebugStub";
inline constexpr const OdChar* kAutoTestKey = L"Core/AutoTestSvr";
inline constexpr const OdChar* kInputQueueKey = L"Core/InputQueue";
inline constexpr const OdChar* kOpenWizardKey = L"Core/OpenWizard";
inline constexpr const OdChar* kGetPasswordKey = L"Core/GetPasswordServer";

// System registry: the event dispatcher. It is no service of the dictionary, since the
// configuration loaders fire events before the dictionary has any.
inline constexpr const OdChar* kRxEventKey = L"VosiRxEvent";
// And the drawing runtime's dictionary of system variables, which the library takes out at the end.
inline constexpr const OdChar* kSysVarDictKey = ODDB_SYSVARDICT;

}  // namespace vosi
