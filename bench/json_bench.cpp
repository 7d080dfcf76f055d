// JSON files into value trees and back, beside three DOMs. Each reading opens the file, takes it
// in, builds the tree and lets it go again; each writing makes the text and replaces the file
// safely.
#include <benchmark/benchmark.h>
#include <drawing/runtime.h>
#include <fcntl.h>
#include <mempool/mempool.h>
#include <rapidjson/document.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utils/elementvalue.h>
#include <utils/vojson.h>

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>
#include <memory>
#include <nlohmann/json.hpp>
#include <random>
#include <stdexcept>
#include <string>

#include "support/testfolder.h"

namespace {

VoJsonPtr newObject() {
    return ElementValue::createObject(kElementObject);
}
VoJsonPtr newArray() {
    return ElementValue::createObject(kElementArray);
}
VoJsonPtr text(const std::string& content) {
    VoJsonPtr node = ElementValue::createObject(kElementText);
    node->set_values(OdAnsiString(content));
    return node;
}
VoJsonPtr real(double number) {
    VoJsonPtr node = ElementValue::createObject(kElementReal);
    node->set_valueF(number);
    return node;
}

/// What configurations are made of: named groups of a few members of all kinds.
VoJsonPtr group(int index, std::mt19937& random) {
    const auto below = [&random](unsigned end) { return static_cast<int>(random() % end); };
    const std::string number = std::to_string(index);
    VoJsonPtr object = newObject();
    object->set_propertys("name", OdAnsiString("layer " + number), false);
    object->set_propertys("title", OdAnsiString("图层 " + number), false);
    object->set_propertyB("visible", below(2) == 0, false);
    object->set_propertyI("color", below(1 << 24), false);
    object->set_propertyT("modified", 1'600'000'000 + below(1 << 24), false);
    object->set_propertyF("scale", below(10000) / 100.0, false);
    const VoJsonPtr paths = object->set_propertyJ("fontPaths", newArray());
    paths->append(text("%APPDATAPATH%/Fonts/" + number + '/'));
    paths->append(text("%EXEPATH%/Fonts/"));
    const VoJsonPtr origin = object->set_propertyJ("origin", newObject());
    origin->set_propertyF("x", below(1 << 20) / 1000.0, false);
    origin->set_propertyF("y", -below(1 << 20) / 1000.0, false);
    origin->set_propertyB("locked", below(2) == 0, false);
    return object;
}

VoJsonPtr configuration(int groups) {
    std::mt19937 random(1);
    VoJsonPtr root = newObject();
    root->set_propertyI("version", 258, false);
    for (int index = 0; index < groups; ++index) {
        root->set_propertyJ(OdAnsiString("group" + std::to_string(index)), group(index, random));
    }
    return root;
}

/// Points, each number with all the digits that a calculation leaves.
VoJsonPtr triples(int count) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> coordinate(-1000, 1000);
    VoJsonPtr list = newArray();
    for (int index = 0; index < count; ++index) {
        const VoJsonPtr point = newArray();
        list->append(point);
        for (int axis = 0; axis < 3; ++axis) {
            point->append(real(coordinate(random)));
        }
    }
    return list;
}

VoJsonPtr longTexts(int count) {
    VoJsonPtr object = newObject();
    for (int index = 0; index < count; ++index) {
        const std::string number = std::to_string(index);
        object->set_propertys(OdAnsiString("message " + number),
                              OdAnsiString(number + ": " + std::string(960, 'x') + "\n\"图层\""),
                              false);
    }
    return object;
}

/// The documents, each about 1 MB long, in a folder of their own.
class Files {
    TestFolder folder;

  public:
    std::string saved = write("saved.json", configuration(2450), VoJson::kIndented);
    std::string compact = write("compact.json", configuration(4280), VoJson::kCompact);
    std::string reals = write("reals.json", triples(17700), VoJson::kCompact);
    std::string texts = write("texts.json", longTexts(1000), VoJson::kCompact);

    std::string path(const std::string& name) const { return folder.path(name); }

  private:
    std::string write(const std::string& name, const VoJsonPtr& tree, VoJson::fileFormat format) {
        if (!VoJson(tree).write(path(name), format, nullptr)) {
            throw std::runtime_error("no document");
        }
        return path(name);
    }
};

const Files& files() {
    // The allocator as the application sets it up.
    set_mempool_proc(alloc_thin_object, realloc_thin_object, free_thin_object);
    static const Files made;
    return made;
}

using Document = std::string Files::*;

void checkRead(benchmark::State& state, bool read) {
    if (!read) {
        state.SkipWithError("the document couldn't be read");
    }
}

void readTree(benchmark::State& state, Document document) {
    const OdAnsiString path(files().*document);
    for ([[maybe_unused]] auto _ : state) {
        VoJson json;
        checkRead(state, json.read(path, -1, nullptr));
    }
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path.str()));
}

/// The file's content with a NUL behind it, in a buffer of just its size.
std::unique_ptr<char[]> contentFor(const std::string& path, std::size_t& size) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    ::fstat(file, &status);
    size = static_cast<std::size_t>(status.st_size);
    std::unique_ptr<char[]> content(new char[size + 1]);
    if (::read(file, content.get(), size) != status.st_size) {
        throw std::runtime_error("the document couldn't be read");
    }
    ::close(file);
    content[size] = '\0';
    return content;
}

// As strict as our reader: no recursion, well-formed UTF-8 alone, numbers to the last bit; and as
// it does, texts are decoded in the buffer.
void readRapidJson(benchmark::State& state, Document document) {
    constexpr unsigned flags = rapidjson::kParseIterativeFlag |
                               rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseFullPrecisionFlag | rapidjson::kParseInsituFlag;
    const std::string path = files().*document;
    for ([[maybe_unused]] auto _ : state) {
        std::size_t size = 0;
        const std::unique_ptr<char[]> content = contentFor(path, size);
        rapidjson::Document dom;
        dom.ParseInsitu<flags>(content.get());
        checkRead(state, !dom.HasParseError());
    }
}

void readNlohmann(benchmark::State& state, Document document) {
    const std::string path = files().*document;
    for ([[maybe_unused]] auto _ : state) {
        std::size_t size = 0;
        const std::unique_ptr<char[]> content = contentFor(path, size);
        const auto dom = nlohmann::json::parse(content.get(), content.get() + size, nullptr, false);
        checkRead(state, !dom.is_discarded());
    }
}

QJsonDocument qtDocument(const std::string& path) {
    QFile file(QString::fromStdString(path));
    file.open(QIODevice::ReadOnly);
    return QJsonDocument::fromJson(file.readAll());
}

void readQt(benchmark::State& state, Document document) {
    const std::string path = files().*document;
    for ([[maybe_unused]] auto _ : state) {
        checkRead(state, !qtDocument(path).isNull());
    }
}

void writeTree(benchmark::State& state, Document document) {
    VoJson json;
    checkRead(state, json.read(OdAnsiString(files().*document), -1, nullptr));
    const std::string path = files().path("ours.json");
    for ([[maybe_unused]] auto _ : state) {
        if (!json.write(path, VoJson::kIndented, nullptr)) {
            state.SkipWithError("the document couldn't be written");
        }
    }
}

bool saveWithQt(const QJsonDocument& dom, const std::string& path) {
    QSaveFile file(QString::fromStdString(path));
    file.open(QIODevice::WriteOnly);
    file.write(dom.toJson(QJsonDocument::Indented));
    return file.commit();
}

void writeQt(benchmark::State& state, Document document) {
    const QJsonDocument dom = qtDocument(files().*document);
    const std::string path = files().path("qt.json");
    for ([[maybe_unused]] auto _ : state) {
        if (!saveWithQt(dom, path)) {
            state.SkipWithError("the document couldn't be written");
        }
    }
}

// With the folder flushed to disk too, which our save does and Qt's leaves out.
void writeQtAndFlushFolder(benchmark::State& state, Document document) {
    const QJsonDocument dom = qtDocument(files().*document);
    const std::string path = files().path("qtflushed.json");
    for ([[maybe_unused]] auto _ : state) {
        if (!saveWithQt(dom, path)) {
            state.SkipWithError("the document couldn't be written");
        }
        const int folder = ::open(files().path("").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::fsync(folder);
        ::close(folder);
    }
}

}  // namespace

BENCHMARK_CAPTURE(readTree, saved, &Files::saved)->Name("readsaved/ours");
BENCHMARK_CAPTURE(readRapidJson, saved, &Files::saved)->Name("readsaved/rapidjson");
BENCHMARK_CAPTURE(readNlohmann, saved, &Files::saved)->Name("readsaved/nlohmann");
BENCHMARK_CAPTURE(readQt, saved, &Files::saved)->Name("readsaved/qt");
BENCHMARK_CAPTURE(readTree, compact, &Files::compact)->Name("readcompact/ours");
BENCHMARK_CAPTURE(readRapidJson, compact, &Files::compact)->Name("readcompact/rapidjson");
BENCHMARK_CAPTURE(readNlohmann, compact, &Files::compact)->Name("readcompact/nlohmann");
BENCHMARK_CAPTURE(readQt, compact, &Files::compact)->Name("readcompact/qt");
BENCHMARK_CAPTURE(readTree, reals, &Files::reals)->Name("readreals/ours");
BENCHMARK_CAPTURE(readRapidJson, reals, &Files::reals)->Name("readreals/rapidjson");
BENCHMARK_CAPTURE(readTree, texts, &Files::texts)->Name("readtexts/ours");
BENCHMARK_CAPTURE(readRapidJson, texts, &Files::texts)->Name("readtexts/rapidjson");
BENCHMARK_CAPTURE(writeTree, saved, &Files::saved)->Name("writejson/ours")->UseRealTime();
BENCHMARK_CAPTURE(writeQt, saved, &Files::saved)->Name("writejson/qt")->UseRealTime();
BENCHMARK_CAPTURE(writeQtAndFlushFolder, saved, &Files::saved)
    ->Name("writejson/qtflushed")
    ->UseRealTime();
