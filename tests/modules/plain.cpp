// A module that is there and does nothing; built under several names.
#include "testmodule.h"

ODRX_DEFINE_DYNAMIC_MODULE(NotingModule)
