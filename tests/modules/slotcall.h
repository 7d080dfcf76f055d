// Calls by position, as code makes them that was built apart: nothing here knows the class called.
//
// The platform lays a virtual table out in the order of declaration. A virtual destructor takes two
// entries, and in the object model the ten operations of the root stand behind them.
#pragma once

#include <cstring>
#include <utility>

namespace slots {

/// Entry of the n-th operation of OdRxObject, n from 1.
constexpr int ofObject(int n) {
    return n + 1;
}
/// Entry of the n-th operation of an interface right below OdRxObject.
constexpr int ofService(int n) {
    return n + 11;
}
/// Entry of a tree node's operation by its position.
constexpr int ofNode(int position) {
    return position + 1;
}
/// Entry of a coroutine's n-th operation: its interface has no destructor entries.
constexpr int ofCoroutine(int n) {
    return n - 1;
}

/// What stands at an entry of the object's table, as a function that takes the object first.
template <class Operation>
Operation entryOf(const void* object, int entry) {
    void* const* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    return reinterpret_cast<Operation>(table[entry]);
}

template <class Signature>
struct Call;

template <class Result, class... Arguments>
struct Call<Result(Arguments...)> {
    static Result at(const void* object, int entry, Arguments... arguments) {
        return entryOf<Result (*)(const void*, Arguments...)>(object, entry)(
            object, std::forward<Arguments>(arguments)...);
    }
};

/// Calls the operation at an entry of the object's table. `Signature` is the operation's, without
/// the object.
template <class Signature, class... Values>
auto call(const void* object, int entry, Values&&... values) {
    return Call<Signature>::at(object, entry, std::forward<Values>(values)...);
}

}  // namespace slots
