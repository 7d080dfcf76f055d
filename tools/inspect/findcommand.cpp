// vemo-inspect find
#include <filesystem>
#include <iostream>

#include <core/voexports.h>

#include "bootrun.h"
#include "jsontext.h"
#include "subcommands.h"

namespace inspect {

namespace {

namespace fs = std::filesystem;
using Host = OdDbBaseHostAppServices;

/// What is asked for: a file by name, or a face by description.
struct Question {
    std::string name;
    std::string typeface;
    bool bold = false;
    bool italic = false;
    int hint = 0;
    std::string drawing;
};

struct Answer {
    std::string found;
    std::vector<TriedPlace> tried;
};

Question readQuestion(const Arguments& arguments) {
    Question question;
    question.typeface = arguments.value("--typeface").value_or("");
    question.bold = arguments.has("--bold");
    question.italic = arguments.has("--italic");
    question.drawing = arguments.value("--drawing").value_or("");
    const std::size_t wanted = question.typeface.empty() ? 1 : 0;
    if (arguments.operands().size() != wanted) {
        throw UsageError("find needs one NAME, or a typeface instead.");
    }
    question.name = wanted == 1 ? arguments.operands().front() : "";
    if (wanted == 1 && (question.bold || question.italic)) {
        throw UsageError("--bold and --italic belong to --typeface.");
    }
    const auto hint = readNumber(arguments.value("--hint").value_or("0"), 255);
    if (!hint) {
        throw UsageError("--hint takes a number.");
    }
    question.hint = static_cast<int>(*hint);
    return question;
}

std::string ask(const Question& question) {
    ExHostAppServices& host = *vodbSystemServices();
    if (!question.typeface.empty()) {
        OdTtfDescriptor face;
        face.typeface = OdUtf8StringToOdString(OdAnsiString(question.typeface));
        face.setBold(question.bold);
        face.setItalic(question.italic);
        OdString file;
        return host.ttfFileNameByDescriptor(face, file) ? OdStringToUtf8String(file).str() : "";
    }
    OdDbDatabasePtr database;
    if (!question.drawing.empty()) {
        database = host.createDatabase();
        database->setFilename(
            OdUtf8StringToOdString(OdAnsiString(fs::absolute(question.drawing).string())));
    }
    const OdString found =
        host.findFile(OdUtf8StringToOdString(OdAnsiString(question.name)), database.get(),
                      static_cast<Host::FindFileHint>(question.hint));
    return OdStringToUtf8String(found).str();
}

void printJson(const Answer& answer) {
    JsonArray tried;
    for (const TriedPlace& place : answer.tried) {
        tried.add(JsonObject()
                      .add("place", jsonText(place.place))
                      .add("found", place.found.empty() ? "null" : jsonText(place.found))
                      .add("why", jsonText(place.why))
                      .json());
    }
    std::cout << JsonObject()
                     .add("found", answer.found.empty() ? "null" : jsonText(answer.found))
                     .add("tried", tried.json())
                     .json()
              << '\n';
}

void printText(const Answer& answer) {
    std::cout << (answer.found.empty() ? "not found" : answer.found) << "\n\nTried, in order:\n";
    for (const TriedPlace& place : answer.tried) {
        std::cout << "  " << place.place << ": " << place.why << '\n';
    }
}

}  // namespace

int inspectFind(const std::vector<std::string>& words) {
    OptionTable options = bootOptions();
    options.flags.insert({"--bold", "--italic"});
    options.values.insert({"--hint", "--drawing", "--typeface"});
    const Arguments arguments(words, options);
    const Question question = readQuestion(arguments);
    Answer answer;
    const RunRecord run =
        bootAndExit(bootFolders(arguments), arguments.behindDashes(), [&](RunRecorder& recorder) {
            recorder.tried = &answer.tried;
            answer.found = ask(question);
            recorder.tried = nullptr;
        });
    if (!run.result) {
        throw Failure(run.error);
    }
    if (arguments.has("--json")) {
        printJson(answer);
    } else {
        printText(answer);
    }
    std::cout.flush();
    if (!run.error.empty()) {
        throw Failure(run.error);
    }
    return 0;
}

}  // namespace inspect
