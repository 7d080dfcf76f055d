// Sequences of calls of the fiber service and the coroutine manager against a model.
#include "sequence_fibers_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    sequence::FiberRun(Bytes(data, size)).play();
    return 0;
}
