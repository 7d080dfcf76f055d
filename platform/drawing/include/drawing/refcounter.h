// The count of references in what is shared.
#pragma once

#include <sys/single_threaded.h>

#include <atomic>

/// Starts at 1; atomic from the moment on at which the process has a second thread.
class OdRefCounter {
  public:
    void increment() {
        if (__libc_single_threaded) {
            count.store(value() + 1, std::memory_order_relaxed);
        } else {
            count.fetch_add(1, std::memory_order_relaxed);
        }
    }
    /// True for the last one.
    bool decrement() {
        if (__libc_single_threaded) {
            count.store(value() - 1, std::memory_order_relaxed);
            return value() == 0;
        }
        return count.fetch_sub(1, std::memory_order_acq_rel) == 1;
    }
    int value() const { return count.load(std::memory_order_relaxed); }
    /// Whether nobody else holds what is counted. What others did before they let go of it is over.
    bool isOne() const { return count.load(std::memory_order_acquire) == 1; }

  private:
    std::atomic<int> count{1};
};
