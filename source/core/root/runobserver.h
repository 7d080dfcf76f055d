// What a run of the library does, told to whoever looks: the steps of start-up and shut-down, the
// loading of modules, the places where files were looked for, what was asked for.
//
// Nobody looks unless a program that carries the library's objects adds an observer, or the
// environment asks for a trace; a test for an empty list is then all that a call here costs. Used
// on the interface thread. Observers see what happens and change nothing; they must not raise.
#pragma once

#include <optional>
#include <vector>

#include <drawing/runtime.h>
#include <utils/elementvaluebase.h>

namespace run {

enum class SpanKind { kStep, kModuleLoad, kModuleEnd };

/// What the drawing runtime asks the host's file services for.
enum class SearchKind {
    kFile,       // by name; the detail is the FindFileHint
    kFace,       // by typeface; the detail is the style flags of OdTtfDescriptor
    kSubstitute  // for a missing font; the detail is the OdFontType
};

class Observer {
  public:
    virtual ~Observer() = default;

    /// Something that takes time begins. Spans nest, and end in the reverse of their order.
    virtual void spanBegan(SpanKind /*kind*/, const OdAnsiString& /*name*/) {}
    /// `raised` when an exception ended it.
    virtual void spanEnded(bool /*raised*/) {}
    /// What the innermost span did, in words.
    virtual void noted(const OdAnsiString& /*text*/) {}
    /// The end of a load: the module, null when there is none; within the load's span.
    virtual void moduleAnswered(const OdString& /*asked*/, OdRxModule* /*module*/) {}
    /// A member of the User branch was taken from the user file or from the system file; told again
    /// when that changes.
    virtual void settingTaken(const OdAnsiString& /*key*/, bool /*fromUserFile*/) {}
    /// A file was looked for at a place: a folder, a list or a rule in words. `found` is empty when
    /// it wasn't there.
    virtual void placeTried(const OdAnsiString& /*place*/, const OdString& /*found*/) {}
    /// The end of a search: what was asked for, and the answer, empty when there is none. Searches
    /// that one of the host's services makes for another aren't told.
    virtual void searched(SearchKind /*kind*/, const OdString& /*wanted*/, int /*detail*/,
                          const OdString& /*answer*/) {}
};

/// Observers hear everything in the order in which they were added.
void addObserver(Observer& observer);
void removeObserver(Observer& observer);

bool isObserved();
const std::vector<Observer*>& observers();

/// A span as long as the object.
class Span {
  public:
    Span(SpanKind kind, const char* name);
    Span(SpanKind kind, const OdString& name);
    ~Span();
    Span(const Span&) = delete;
    Span& operator=(const Span&) = delete;

  private:
    void begin(SpanKind kind, const OdAnsiString& name);

    bool isOpen = false;
    int exceptionsBefore = 0;
};

/// The steps of a sequence, one after the other: each call ends the step before it.
class Steps {
  public:
    void operator()(const char* name) {
        current.reset();
        current.emplace(SpanKind::kStep, name);
    }

  private:
    std::optional<Span> current;
};

/// The module, told to the observers on its way.
OdRxModulePtr moduleAnswered(const OdString& asked, OdRxModulePtr module);
/// Whether something was found, told to the observers on its way.
OdString placeTried(const char* place, OdString found);
OdString placeTried(const OdAnsiString& place, OdString found);
/// The answer of a search, told to the observers on its way.
OdString searched(SearchKind kind, const OdString& wanted, int detail, OdString answer);

/// The members of an object of settings, where they come from.
void settingsTaken(const VoJsonPtr& settings, bool fromUserFile);
void settingTaken(const char* key, bool fromUserFile);

/// A note for the innermost span; the text is made only when somebody looks.
template <class MakeText>
void note(MakeText&& makeText) {
    if (isObserved()) {
        const OdAnsiString text = makeText();
        for (Observer* observer : observers()) {
            observer->noted(text);
        }
    }
}

}  // namespace run
