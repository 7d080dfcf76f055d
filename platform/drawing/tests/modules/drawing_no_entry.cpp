// A shared library, but no module.
#include <drawing/export.h>

extern "C" DRAWING_EXPORT int drawingNoEntry();
int drawingNoEntry() {
    return 0;
}
