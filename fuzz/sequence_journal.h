// What happened, in order: once as the library had it, once as the model has it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

struct Note {
    std::string_view what;
    int who = 0;
    int detail = 0;
    bool operator==(const Note&) const = default;
};

using Journal = std::vector<Note>;

inline void printJournal(const char* whose, const Journal& journal) {
    std::printf("%s:\n", whose);
    for (const Note& note : journal) {
        std::printf("  %.*s %d %d\n", static_cast<int>(note.what.size()), note.what.data(),
                    note.who, note.detail);
    }
}

/// Ends the run as a find when the two differ.
inline void requireSame(const Journal& library, const Journal& model) {
    if (library != model) {
        std::puts("Violated: the library does what the model does");
        printJournal("the library", library);
        printJournal("the model", model);
        std::fflush(stdout);
        std::abort();
    }
}
