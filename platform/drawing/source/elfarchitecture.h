// Names of the machines that ELF files are for.
#pragma once

#include "drawing/odstring.h"
#include "elffile.h"

/// As `uname -m` has it; "machine N" for one that has no name here.
OdAnsiString architectureOf(const ElfIdentity& identity);
