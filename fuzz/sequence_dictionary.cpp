// Sequences of calls of the service dictionary and what stands around it, against a model.
//
// A program makes objects with last wills and moves them through the dictionary of services, the
// runtime's registries, dictionaries of its own and the extensions of classes; the wills do so
// again while the objects go. Library and model follow the same program, each in a world of its
// own, and must have the same to tell. At the end nothing may be left.
#include <vector>

#include "bytes.h"
#include "property.h"
#include "sequence_dictionary_library.h"
#include "sequence_dictionary_model.h"

using sequence::Action;
using sequence::DictionaryLibrary;
using sequence::DictionaryModel;
using sequence::kNobody;
using sequence::kSlots;
using sequence::Role;
using sequence::Verb;

namespace {

// Of one program.
constexpr std::size_t kMostObjects = 48;
constexpr int kMostLives = 3;

class Run {
  public:
    explicit Run(Bytes bytes) : program(bytes) {}

    void play() {
        library.beginLife();
        model.beginLife();
        const bool endsLifeFirst = program.coin();
        while (!program.atEnd()) {
            // 'p' makes an object.
            const std::size_t verb = program.letter(static_cast<std::size_t>(Verb::kCount) + 1);
            if (verb == static_cast<std::size_t>(Verb::kCount)) {
                make(program.digit(kSlots));
            } else {
                perform(readOperands(static_cast<Verb>(verb)));
            }
        }
        finish(endsLifeFirst);
    }

  private:
    Action readOperands(Verb verb) {
        Action action;
        action.verb = verb;
        switch (verb) {
            case Verb::kPut:
            case Verb::kKeep:
                action.first = program.digit(sequence::kDoors);
                action.second = program.digit(sequence::keys().size());
                action.third = program.digit(kSlots);
                break;
            case Verb::kTake:
            case Verb::kLook:
            case Verb::kHas:
            case Verb::kCast:
                action.first = program.digit(sequence::kDoors);
                action.second = program.digit(sequence::keys().size());
                break;
            case Verb::kList:
                action.first = program.digit(sequence::kDoors);
                break;
            case Verb::kExtend:
                action.first = program.digit(sequence::kCarriers);
                action.second = program.digit(sequence::kProtocols);
                action.third = program.digit(kSlots);
                break;
            case Verb::kWithdraw:
            case Verb::kExtension:
                action.first = program.digit(sequence::kCarriers);
                action.second = program.digit(sequence::kProtocols);
                break;
            case Verb::kQuery:
                action.second = program.digit(sequence::kProtocols);
                action.third = program.digit(kSlots);
                break;
            case Verb::kDrop:
                action.third = program.digit(kSlots);
                break;
            case Verb::kEndClass:
                action.first = program.digit(sequence::kChain + sequence::kProtocols);
                break;
            default:
                break;
        }
        return action;
    }

    void make(std::size_t slot) {
        Role role;
        // '1' is a dictionary, '2' doesn't answer to queryX.
        const std::size_t kind = program.digit(8);
        role.isDictionary = kind == 1;
        role.answers = kind != 2;
        role.will.resize(program.digit(4));
        for (Action& action : role.will) {
            action = readOperands(static_cast<Verb>(program.letter(sequence::kVerbsOfWills)));
        }
        if (roles.size() == kMostObjects || model.inSlot(slot) != kNobody) {
            return;
        }
        roles.push_back(std::move(role));
        library.make(slot);
        model.make(slot);
    }

    void perform(const Action& action) {
        // Each costs as much as all the rest.
        if (action.verb == Verb::kNewLife && ++lives > kMostLives) {
            return;
        }
        library.perform(action);
        model.perform(action);
        compare();
    }

    void compare() {
        requireSame(library.journal, model.journal);
        library.journal.clear();
        model.journal.clear();
        for (std::size_t slot = 0; slot < kSlots; ++slot) {
            const int held = model.inSlot(slot);
            requireProperty(library.inSlot(slot) == held, "a slot holds what was put into it");
            requireProperty(held < 0 || library.references(held) == model.references(held),
                            "an object in a slot has the references that the model counts");
        }
        for (int number = 0; number < static_cast<int>(roles.size()); ++number) {
            if (!roles[static_cast<std::size_t>(number)].isDictionary) {
                compareObject(number);
            }
        }
    }

    void compareObject(int number) {
        requireProperty(library.isAlive(number) == model.isAlive(number),
                        "an object goes with its last reference");
        requireProperty(
            !model.isAlive(number) || library.references(number) == model.references(number),
            "an object has the references that the model counts");
    }

    void finish(bool endsLifeFirst) {
        if (endsLifeFirst) {
            endLife();
        }
        for (std::size_t slot = 0; slot < kSlots; ++slot) {
            perform({.verb = Verb::kDrop, .third = slot});
        }
        if (!endsLifeFirst) {
            endLife();
        }
        for (int number = 0; number < static_cast<int>(roles.size()); ++number) {
            requireProperty(!model.isAlive(number), "nothing is left");
        }
    }

    void endLife() {
        library.endLife();
        model.endLife();
        compare();
    }

    Bytes program;
    int lives = 1;
    std::vector<Role> roles;
    DictionaryLibrary library{roles};
    DictionaryModel model{roles};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Run(Bytes(data, size)).play();
    return 0;
}
