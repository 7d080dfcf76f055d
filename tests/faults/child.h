// Test code in a process of its own: what a fault leaves behind ends with it.
#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

/// Runs the code in a child process and counts its failed expectations, its leaks and a crash as
/// failures here. What it printed is shown then. `what` says which child this was.
template <class Code>
void inChild(const std::string& what, Code&& code) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(std::tmpfile(), &std::fclose);
    ASSERT_TRUE(output);
    std::fflush(nullptr);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ::dup2(::fileno(output.get()), STDOUT_FILENO);
        ::dup2(::fileno(output.get()), STDERR_FILENO);
        code();
        std::exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (status == 0) {
        return;
    }
    std::rewind(output.get());
    std::string printed(1 << 16, '\0');
    printed.resize(std::fread(printed.data(), 1, printed.size(), output.get()));
    ADD_FAILURE() << what
                  << (WIFSIGNALED(status) ? " died of signal " + std::to_string(WTERMSIG(status))
                                          : " failed")
                  << "\n"
                  << printed;
}

/// A value that a child leaves for its parent.
template <class T>
class SharedValue {
  public:
    SharedValue()
        : value(new (::mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                            -1, 0)) T()) {}
    SharedValue(const SharedValue&) = delete;
    SharedValue& operator=(const SharedValue&) = delete;
    ~SharedValue() { ::munmap(value, sizeof(T)); }
    T& operator*() const { return *value; }

  private:
    static_assert(std::is_trivially_destructible_v<T>);
    T* value;
};
