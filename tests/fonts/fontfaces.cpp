// Prints what the library reads out of font files: the files named on standard input, one line a
// name, "file TAB face TAB language TAB name", and one with the typeface under the language "-".
#include <cstdio>
#include <iostream>
#include <string>

#include "voapfontsread.h"

namespace {

class System : public ExSystemServices {};

void print(const std::string& file, std::size_t face, const std::string& language,
           const OdString& name) {
    std::cout << file << '\t' << face << '\t' << language << '\t'
              << OdStringToUtf8String(name).str() << '\n';
}

void printFaces(const std::string& file) {
    std::vector<vosi::TtfFaceRecord> faces;
    vosi::readTtfDescriptors(OdUtf8StringToOdString(file), faces);
    for (std::size_t face = 0; face < faces.size(); ++face) {
        print(file, face, "-", faces[face].typeface);
        for (const auto& [language, name] : faces[face].localNames) {
            print(file, face, std::to_string(language), name);
        }
    }
}

}  // namespace

int main() {
    OdStaticRxObject<System> system;
    odInitialize(&system);
    for (std::string file; std::getline(std::cin, file);) {
        printFaces(file);
    }
    odUninitialize();
    return 0;
}
