#include "document.h"

#include <core/voexports.h>
#include <utils/paths.h>

namespace vemoapp {

DocumentData::DocumentData() : entries(OdRxDictionary::desc()->create()) {}

Document::Document() : data(OdRxObjectImpl<DocumentData>::createObject()) {
    data->setOwner(this);
}

Document::~Document() {
    data->setOwner(nullptr);
}

OdString Document::documentFolder() {
    return voutGetParentDirW(filePath);
}

void Document::assign(const std::string& title, const OdString& path, const DxfDrawing& content) {
    name = title;
    filePath = path;
    drawing = content;
    bool isNew = path.isEmpty();
    database = vodbSystemServices()->createDatabase(isNew, drawing.metric ? 1 : 0);
    database->setFilename(path);
}

}  // namespace vemoapp
