// The kernel library's exported functions as this module declares them for itself.
#pragma once

#include <drawing/runtime.h>

#include "slotnode.h"

OdRxObjectPtr vo_arbitDict_getservice(const OdString& key);
void vo_arbitDict_regservice(const OdString& key, OdRxObjectPtr service);
void vo_arbitDict_clearservice(const OdString& key);
slots::NodePtr vo_sys_config(const OdAnsiString& key);
slots::NodePtr vo_runtime_config(const OdAnsiString& key);
slots::NodePtr vo_user_config(const OdAnsiString& key, int createType);
ExHostAppServices* vodbSystemServices();
