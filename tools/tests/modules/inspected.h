// What the inspected libraries share.
#pragma once

#include <cstdlib>
#include <fstream>

namespace inspected {

/// Leaves a file behind when any code of the library runs.
struct Witness {
    Witness() {
        if (const char* path = std::getenv("INSPECTED_WITNESS")) {
            std::ofstream(path, std::ios::app) << "code ran\n";
        }
    }
};

namespace geometry {

double area(double width);
double volume(double width, const char* unit);

}  // namespace geometry
}  // namespace inspected
