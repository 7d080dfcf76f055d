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
    double began = 0;  // milliseconds after the beginning of the run
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
    double began = 0;  // milliseconds after the beginning of the run
    double milliseconds = 0;
    std::vector<std::string> left;  // keys of the services that it left registered at its end
    // While it was loaded.
    std::vector<std::string> did = {};
    std::vector<Step> steps = {};
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

struct ListedPath {
    std::string path;
    bool isThere;
};

/// A list of Runtime/paths.
struct PathList {
    std::string key;
    std::vector<ListedPath> paths;
};

struct Setting {
    std::string key;
    std::string json;
};

struct FontFamily {
    std::string name;
    std::string chineseName;
    int styles;  // besides the regular one: 1 bold, 2 italic, 4 bold italic
};

/// What the node "Fonts" lists.
struct FontLists {
    std::vector<FontFamily> families;
    std::vector<std::string> mainShx;
    std::vector<std::string> bigShx;
};

/// A font that was asked for.
struct FontSearch {
    std::string wanted;
    std::string as;  // what it was looked for as, in words
    bool isForSubstitute;
    std::string answer;  // a file, or the substitute's name; empty when there is none
    int times = 1;
    int timesForFace = 0;  // of these, directly behind a face that wasn't found
    // Of a face that wasn't found: the TrueType files that were looked for directly behind it.
    std::vector<std::string> filesNext = {};
};

struct RunRecord {
    std::vector<std::string> commandLine;
    std::optional<int> result;  // of vemo_root, unless it raised
    std::string error;          // what vemo_root or vemo_exit raised
    std::string systemPath;
    std::string userPath;
    // JSON text, as it stood when vemo_root returned.
    std::string tree = "null";
    std::string userTree = "null";
    std::string core = "null";
    std::vector<Setting> user;  // members of the User branch
    std::map<std::string, std::string> origin;
    std::vector<PathList> paths;
    FontLists fonts;
    double startedAfter = 0;  // milliseconds until vemo_root returned or raised

    std::vector<ServiceRecord> services;
    std::vector<ModuleRecord> modules;
    std::vector<LogRecord> log;
    std::vector<Step> steps;
    std::vector<FontSearch> fontSearches;
    std::string userFile;  // its text after the end
};

}  // namespace inspect
