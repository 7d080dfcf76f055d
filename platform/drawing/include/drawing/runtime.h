// The drawing runtime, whole. This header decides which runtime the project is built on: nothing
// above this folder includes any other header of it, so a build on another runtime replaces this
// folder and its target and touches no other source.
#pragma once

#include "drawing/hostappservices.h"
#include "drawing/odalloc.h"
#include "drawing/odarray.h"
#include "drawing/odcharmapper.h"
#include "drawing/oddbdatabase.h"
#include "drawing/oderror.h"
#include "drawing/odinitialize.h"
#include "drawing/odresult.h"
#include "drawing/odstreambuf.h"
#include "drawing/odstring.h"
#include "drawing/odttfdescriptor.h"
#include "drawing/rxclass.h"
#include "drawing/rxdictionary.h"
#include "drawing/rxdynamiclinker.h"
#include "drawing/rxmodule.h"
#include "drawing/rxmodulefile.h"
#include "drawing/rxobject.h"
#include "drawing/rxobjectimpl.h"
#include "drawing/rxsystemservices.h"
