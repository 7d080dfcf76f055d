// Calls what no library defines.
extern "C" void drawingNowhereDefined();
extern "C" __attribute__((visibility("default"))) void drawingCallsNowhere() {
    drawingNowhereDefined();
}
