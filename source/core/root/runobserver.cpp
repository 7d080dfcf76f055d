#include "runobserver.h"

#include <algorithm>
#include <exception>

namespace run {

namespace {

std::vector<Observer*> list;

template <class Tell>
void tellAll(Tell&& tell) {
    for (Observer* observer : list) {
        tell(*observer);
    }
}

}  // namespace

void addObserver(Observer& observer) {
    list.push_back(&observer);
}

void removeObserver(Observer& observer) {
    std::erase(list, &observer);
}

bool isObserved() {
    return !list.empty();
}

const std::vector<Observer*>& observers() {
    return list;
}

Span::Span(SpanKind kind, const char* name) {
    if (isObserved()) {
        begin(kind, name);
    }
}

Span::Span(SpanKind kind, const OdString& name) {
    if (isObserved()) {
        begin(kind, OdStringToUtf8String(name));
    }
}

void Span::begin(SpanKind kind, const OdAnsiString& name) {
    isOpen = true;
    exceptionsBefore = std::uncaught_exceptions();
    tellAll([&](Observer& observer) { observer.spanBegan(kind, name); });
}

Span::~Span() {
    if (isOpen) {
        const bool raised = std::uncaught_exceptions() > exceptionsBefore;
        tellAll([raised](Observer& observer) { observer.spanEnded(raised); });
    }
}

OdRxModulePtr moduleAnswered(const OdString& asked, OdRxModulePtr module) {
    tellAll([&](Observer& observer) { observer.moduleAnswered(asked, module.get()); });
    return module;
}

void settingsTaken(const VoJsonPtr& settings, bool fromUserFile) {
    if (!isObserved() || !settings) {
        return;
    }
    for (int index = 0; index < settings->propertyCount(); ++index) {
        OdAnsiString key;
        settings->propertyAt(index, key);
        tellAll([&](Observer& observer) { observer.settingTaken(key, fromUserFile); });
    }
}

void settingTaken(const char* key, bool fromUserFile) {
    if (isObserved()) {
        const OdAnsiString text(key);
        tellAll([&](Observer& observer) { observer.settingTaken(text, fromUserFile); });
    }
}

OdString placeTried(const char* place, OdString found) {
    return isObserved() ? placeTried(OdAnsiString(place), std::move(found)) : found;
}

OdString placeTried(const OdAnsiString& place, OdString found) {
    tellAll([&](Observer& observer) { observer.placeTried(place, found); });
    return found;
}

OdString searched(SearchKind kind, const OdString& wanted, int detail, OdString answer) {
    tellAll([&](Observer& observer) { observer.searched(kind, wanted, detail, answer); });
    return answer;
}

}  // namespace run
