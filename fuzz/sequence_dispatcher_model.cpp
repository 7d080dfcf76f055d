#include "sequence_dispatcher_model.h"

#include <drawing/runtime.h>

#include <algorithm>
#include <utility>

namespace sequence {

// The private copy of a list and the firing site's reference to the dispatcher. The copy goes
// first.
class DispatcherModel::Pass {
  public:
    Pass(DispatcherModel& home, int fired)
        : model(home), dispatcher(fired), copy(home.at(fired).list) {
        ++model.at(dispatcher).references;
        std::for_each(copy.begin(), copy.end(), [this](int reactor) { model.hold(reactor); });
    }
    ~Pass() {
        model.dropBackwards(copy);
        model.dropDispatcher(dispatcher);
    }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    const std::vector<int>& reactors() const { return copy; }

  private:
    DispatcherModel& model;
    int dispatcher;
    std::vector<int> copy;
};

void DispatcherModel::add(int reactor) {
    if (!isInstalled()) {
        return;
    }
    std::vector<int>& list = at(installed).list;
    if (std::find(list.begin(), list.end(), reactor) == list.end()) {
        list.push_back(reactor);
        hold(reactor);
    }
}

void DispatcherModel::remove(int reactor) {
    if (!isInstalled()) {
        return;
    }
    // A later reactor may stand where one that went stood, and is the one that is meant then.
    const void* address = cast.role(reactor).address;
    std::vector<int>& list = at(installed).list;
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](int entry) { return cast.role(entry).address == address; });
    if (found != list.end()) {
        const int removed = *found;
        list.erase(found);
        drop(removed);
    }
}

void DispatcherModel::fire(Event event) {
    if (!isInstalled()) {
        return;
    }
    const Pass pass(*this, installed);
    for (const int reactor : pass.reactors()) {
        if (!cast.role(reactor).script.answers) {
            throw OdError_NotThatKindOfClass(nullptr, nullptr);
        }
        hear(reactor, event);
    }
}

void DispatcherModel::release(int reactor) {
    if (std::exchange(reactors[static_cast<std::size_t>(reactor)].isHeld, false)) {
        drop(reactor);
    }
}

void DispatcherModel::withdraw() {
    if (isInstalled()) {
        dropDispatcher(std::exchange(installed, -1));
    }
}

void DispatcherModel::install() {
    if (!isInstalled()) {
        installed = static_cast<int>(dispatchers.size());
        dispatchers.push_back({.list = {}, .references = 1});
    }
}

void DispatcherModel::drop(int reactor) {
    if (--reactors[static_cast<std::size_t>(reactor)].references == 0) {
        end(reactor);
    }
}

void DispatcherModel::dropBackwards(std::vector<int>& list) {
    while (!list.empty()) {
        const int last = list.back();
        list.pop_back();
        drop(last);
    }
}

void DispatcherModel::dropDispatcher(int dispatcher) {
    if (--at(dispatcher).references == 0) {
        std::vector<int> list = std::exchange(at(dispatcher).list, {});
        dropBackwards(list);
    }
}

}  // namespace sequence
