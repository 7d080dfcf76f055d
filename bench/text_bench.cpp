// Texts between UTF-8 and wide characters, there and back.
#include <benchmark/benchmark.h>
#include <drawing/runtime.h>

#include <codecvt>
#include <locale>
#include <string>

namespace {

constexpr const char* kAscii = "Drawings/Support/floorplan-2021-0715.dwg";
constexpr const char* kChinese =
    "图形文件夹支持路径字体搜索范围标注样式图层名"
    "称打印设备颜色线型坐标系统单位块参数";

void convert(benchmark::State& state, const char* text) {
    const OdAnsiString utf8(text);
    OdString wide;
    OdAnsiString back;
    for ([[maybe_unused]] auto _ : state) {
        wide = OdUtf8StringToOdString(utf8);
        back = OdStringToUtf8String(wide);
        benchmark::DoNotOptimize(back);
    }
    if (back != utf8 || wide.getLength() != 40) {
        state.SkipWithError("the text didn't come back");
    }
}

void convertByCodecvt(benchmark::State& state, const char* text) {
    const std::string utf8(text);
    std::wstring_convert<std::codecvt_utf8<wchar_t>> converter;
    std::wstring wide;
    std::string back;
    for ([[maybe_unused]] auto _ : state) {
        wide = converter.from_bytes(utf8);
        back = converter.to_bytes(wide);
        benchmark::DoNotOptimize(back);
    }
    if (back != utf8 || wide.size() != 40) {
        state.SkipWithError("the text didn't come back");
    }
}

}  // namespace

BENCHMARK_CAPTURE(convert, ascii, kAscii)->Name("utf8ascii/ours");
BENCHMARK_CAPTURE(convertByCodecvt, ascii, kAscii)->Name("utf8ascii/codecvt");
BENCHMARK_CAPTURE(convert, chinese, kChinese)->Name("utf8chinese/ours");
BENCHMARK_CAPTURE(convertByCodecvt, chinese, kChinese)->Name("utf8chinese/codecvt");
