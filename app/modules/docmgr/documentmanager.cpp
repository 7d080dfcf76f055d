#include "documentmanager.h"

#include <app/commandtable.h>
#include <app/inputrunner.h>
#include <app/services.h>
#include <utils/paths.h>

#include "findfile.h"
#include "fontresolution.h"
#include "say.h"

namespace vemoapp {

namespace {

std::string utf8(const OdString& text) {
    return OdStringToUtf8String(text).str();
}

void sayLines(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        say(line);
    }
}

// One line a text style, the first behind the topic's name.
void sayFonts(const DxfDrawing& drawing, OdDbBaseDatabase* database) {
    FontResolution fonts(*vodbSystemServices(), database);
    const char* topic = "  fonts     ";
    for (const std::string& line : fonts.describe(drawing.styles, kShownItems)) {
        say(topic + line);
        topic = "            ";
    }
}

// A template's path comes out of the configuration, with its path variables.
OdString evaluated(const OdString& path) {
    return OdUtf8StringToOdString(
        vosiutEvaluatePath(OdStringToUtf8String(path), vo_sys_config("")));
}

// What a new drawing starts from.
DxfDrawing drawingFromTemplate(const OdString& templatePath) {
    DxfDrawing empty;
    empty.layers.push_back({.name = "0"});
    if (templatePath.isEmpty()) {
        return empty;
    }
    OdString found = findFile(templatePath);
    try {
        if (found.isEmpty()) {
            throw OdError_FileException(eFileNotFound, templatePath);
        }
        return readDxfFile(utf8(found));
    } catch (const OdError& error) {
        say("Can't use the template " + utf8(templatePath) + ": " + utf8(error.description()));
        return empty;
    }
}

}  // namespace

OdRxObjectPtr DocumentIterator::object() {
    if (done()) {
        return nullptr;
    }
    return documents[index];
}

void DocumentManager::pumpInput() {
    if (auto queue = service<InputRunner>(kInputRunnerKey)) {
        queue->runPending();
    }
}

OdSmartPtr<vosi::VosiDocumentIterator> DocumentManager::newDocumentIterator() {
    auto iterator = OdRxObjectImpl<DocumentIterator>::createObject();
    iterator->setDocuments(documents);
    return iterator;
}

void DocumentManager::newDocument(const OdString& templatePath, bool makeCurrent) {
    OdString path = evaluated(templatePath);
    DxfDrawing drawing = drawingFromTemplate(path);
    std::string title = "Drawing" + std::to_string(++newDrawings);
    addDocument(title, OdString(), drawing, makeCurrent);
    say("New drawing " + title + (path.isEmpty() ? "" : ", template " + utf8(path)));
}

void DocumentManager::openDocument(const OdString& path, int /*mode*/, int /*flags*/) {
    try {
        open(path);
    } catch (const OdError& error) {
        say("Can't open " + utf8(path) + ": " + utf8(error.description()));
    }
}

void DocumentManager::open(const OdString& name) {
    OdString found = findFile(name);
    if (found.isEmpty()) {
        throw OdError_FileException(eFileNotFound, name);
    }
    if (activateIfOpen(found)) {
        return;
    }
    DxfDrawing drawing = readDxfFile(utf8(found));
    addDocument(utf8(found), found, drawing, true);
    say("Opened " + utf8(found));
    sayLines(describeDrawing(drawing));
    sayFonts(drawing, active->documentDatabase().get());
}

bool DocumentManager::activateIfOpen(const OdString& path) {
    for (const DocumentPtr& document : documents) {
        if (document->documentFilePath() == path) {
            active = document;
            say("Already open: " + utf8(path));
            return true;
        }
    }
    return false;
}

void DocumentManager::addDocument(const std::string& title, const OdString& path,
                                  const DxfDrawing& drawing, bool makeCurrent) {
    DocumentPtr document = OdRxObjectImpl<Document>::createObject();
    document->assign(title, path, drawing);
    documents.push_back(document);
    if (makeCurrent || !active) {
        active = document;
    }
}

void DocumentManager::startUp() {
    auto table = service<CommandTable>(kCommandTableKey);
    if (!table) {
        return;
    }
    table->add({"OPEN", "path [path...]", "opens drawings", [this](const auto& paths) {
                    for (const std::string& path : paths) {
                        openDocument(OdUtf8StringToOdString(path), 0, 0);
                    }
                }});
    table->add({"NEW", "[template]", "makes a new drawing", [this](const auto& arguments) {
                    std::string path = arguments.empty() ? "" : arguments.front();
                    newDocument(OdUtf8StringToOdString(path), true);
                }});
    table->add({"STATUS", "", "lists the open drawings", [this](const auto&) { showStatus(); }});
}

void DocumentManager::showStatus() const {
    for (const DocumentPtr& document : documents) {
        say((document == active ? "* " : "  ") + document->title() + ", " +
            std::to_string(document->content().entityTotal()) + " entities");
    }
    if (documents.empty()) {
        say("No drawing is open.");
    }
}

void DocumentManager::shutDown() {
    if (auto table = service<CommandTable>(kCommandTableKey)) {
        for (const char* name : {"OPEN", "NEW", "STATUS"}) {
            table->remove(name);
        }
    }
    std::size_t count = documents.size();
    active.release();
    documents.clear();
    say("Closed " + std::to_string(count) + (count == 1 ? " drawing." : " drawings."));
}

}  // namespace vemoapp
