// Faults on purpose: calls into the system and the allocator that fail when a test says so. They
// stand in front of the real functions for everything in the process, because a program's symbols
// come before those of its libraries.
#pragma once

#include <string>

namespace faults {

enum class Call {
    kAllocation,  // operator new and the pool, which answer that there is no memory
    kOpen,        // no file descriptor is left
    kRead,        // an error of the device
    kShortRead,   // one byte of what was asked for
    kWrite,       // an error of the device
    kShortWrite,  // one byte of what was given
    kDiskFull,    // no space, from this write on
    kFlush,       // an error of the device
    kRename,      // an error of the device
    kThread,      // no thread can be started
    kModuleLoad,  // the loader fails, for this file from now on
};

constexpr Call kAllCalls[] = {Call::kAllocation, Call::kOpen,      Call::kRead,
                              Call::kShortRead,  Call::kWrite,     Call::kShortWrite,
                              Call::kDiskFull,   Call::kFlush,     Call::kRename,
                              Call::kThread,     Call::kModuleLoad};

const char* nameOf(Call call);

/// The call of that number, counted from now and from 1, fails; with 0 none does.
void arm(Call call, long number);
/// Ends it, and gives how many such calls there were.
long disarm();

/// Whether the armed call was made and failed, and which file it was about, where that is known.
bool struck();
std::string victim();

/// Opens `to` where `from` is asked for. Both live on.
void redirect(const char* from, const char* to);

}  // namespace faults
