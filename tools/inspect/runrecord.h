// What was seen of one life of the library.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace inspect {

struct Step {
    std::string name;
    double milliseconds = 0;
    bool raised = false;
    std::vector<std::string> did;
    std::vector<Step> steps;
};

struct ModuleRecord {
    std::string asked;  // as the list or the caller named it
    bool loaded = false;
    std::string file;  // of the module, empty when there is none
    std::string reason;
    double milliseconds = 0;
    std::vector<std::string> left;  // keys of the services that it left registered at its end
};

struct ServiceRecord {
    std::string key;
    std::string type;  // C++ class, demangled
    std::string file;  // the shared object or program that holds the class
};

struct LogRecord {
    int level;
    std::string unit;
    int line;
    std::string function;
    std::string text;
};

struct TriedPlace {
    std::string place;
    std::string found;
    std::string why;  // it was passed over, or "found"
};

struct RunRecord {
    std::optional<int> result;  // of vemo_root, unless it raised
    std::string error;          // what vemo_root or vemo_exit raised
    std::string systemPath;
    std::string userPath;
    // JSON text, as it stood when vemo_root returned.
    std::string tree = "null";
    std::string userTree = "null";
    std::map<std::string, std::string> origin;
    std::vector<ServiceRecord> services;
    std::vector<ModuleRecord> modules;
    std::vector<LogRecord> log;
    std::vector<Step> steps;
    std::string userFile;  // its text after the end
};

}  // namespace inspect
