// JSON text as a tree, as text, as a tree again.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jsonreader.h"
#include "jsonwriter.h"
#include "property.h"
#include "utf8check.h"
#include "utils/elementvalue.h"

namespace {

int kindOf(const VoJsonPtr& node) {
    return node->valueType() & kElementKindMask;
}

// A zero has its sign.
std::uint64_t bitsOf(const VoJsonPtr& node) {
    return std::bit_cast<std::uint64_t>(node->floatValue());
}

bool sameValue(const VoJsonPtr& a, const VoJsonPtr& b) {
    return a->valueType() == b->valueType() && a->strValue() == b->strValue() &&
           a->longlongValue() == b->longlongValue() && a->ulonglongValue() == b->ulonglongValue() &&
           a->boolValue() == b->boolValue() && bitsOf(a) == bitsOf(b);
}

// Without recursion, since trees are deep.
bool sameTree(const VoJsonPtr& first, const VoJsonPtr& second) {
    std::vector<std::pair<VoJsonPtr, VoJsonPtr>> pending{{first, second}};
    while (!pending.empty()) {
        const auto [a, b] = pending.back();
        pending.pop_back();
        if (a->itemCount() != b->itemCount() || a->propertyCount() != b->propertyCount() ||
            !sameValue(a, b)) {
            return false;
        }
        for (int index = 0; index < a->itemCount(); ++index) {
            pending.emplace_back(a->getItem(index), b->getItem(index));
        }
        for (int index = 0; index < a->propertyCount(); ++index) {
            OdAnsiString key;
            OdAnsiString other;
            pending.emplace_back(a->propertyAt(index, key), b->propertyAt(index, other));
            if (key != other) {
                return false;
            }
        }
    }
    return true;
}

// What a reader may rely on in every node.
void checkNodes(const VoJsonPtr& root) {
    std::vector<VoJsonPtr> pending{root};
    while (!pending.empty()) {
        const VoJsonPtr node = pending.back();
        pending.pop_back();
        requireProperty(kindOf(node) != kElementText || isUtf8(node->strValue().view()),
                        "texts are UTF-8");
        requireProperty(kindOf(node) != kElementReal || std::isfinite(node->floatValue()),
                        "reals are finite");
        for (int index = 0; index < node->itemCount(); ++index) {
            pending.push_back(node->getItem(index));
        }
        for (int index = 0; index < node->propertyCount(); ++index) {
            OdAnsiString key;
            pending.push_back(node->propertyAt(index, key));
            requireProperty(isUtf8(key.view()), "keys are UTF-8");
            requireProperty(node->propertyIndex(key) == index + 1, "a key is found in its place");
            requireProperty(node->getProperty(key) == pending.back(), "a key leads to its node");
        }
    }
}

// The text without the white space between its parts.
std::string withoutBlanks(std::string_view text) {
    std::string result;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (quoted && text[at] == '\\') {
            result += text[at++];
        } else if (text[at] == '"') {
            quoted = !quoted;
        } else if (!quoted && (text[at] == ' ' || text[at] == '\n')) {
            continue;
        }
        result += text[at];
    }
    return result;
}

std::string written(const VoJsonPtr& tree, JsonForm form) {
    std::string text = "unchanged";
    requireProperty(writeJsonText(*tree.get(), form, text), "what was read can be written");
    return text;
}

void checkForm(const VoJsonPtr& tree, JsonForm form) {
    const std::string text = written(tree, form);
    VoJsonPtr again;
    requireProperty(!readJsonText(text, again), "what was written can be read");
    requireProperty(sameTree(tree, again), "the tree comes back");
    requireProperty(written(again, form) == text, "the text comes back");
}

void checkCopies(const VoJsonPtr& tree) {
    const VoJsonPtr copy = tree->clone();
    requireProperty(copy && copy != tree && sameTree(tree, copy), "a copy is the same");

    const VoJsonPtr above = ElementValue::createObject(kElementObject);
    const int added = above->mergeProperty("key", tree);
    requireProperty(added == 1 && sameTree(tree, above->getProperty("key")), "a merge adds a copy");
    requireProperty(
        above->mergeProperty("key", tree) == 0 && sameTree(tree, above->getProperty("key")),
        "a second merge adds nothing");
}

void checkError(std::string_view text, const JsonError& error) {
    const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
    requireProperty(error.line >= 1 && error.line <= lines, "an error has its line");
    requireProperty(error.column >= 1 && static_cast<std::size_t>(error.column) <= text.size() + 1,
                    "an error has its column");
    requireProperty(!error.reason.empty(), "an error has its reason");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const VoJsonPtr before = ElementValue::createObject(kElementText);
    VoJsonPtr tree = before;
    if (const auto error = readJsonText(text, tree)) {
        requireProperty(tree == before, "an error leaves the tree");
        checkError(text, *error);
        return 0;
    }
    requireProperty(tree && tree != before, "success has a tree");
    requireProperty(isUtf8(text), "what is read is UTF-8");
    checkNodes(tree);
    checkForm(tree, JsonForm::kCompact);
    checkForm(tree, JsonForm::kIndented);
    requireProperty(
        withoutBlanks(written(tree, JsonForm::kIndented)) == written(tree, JsonForm::kCompact),
        "the forms differ in white space alone");
    requireProperty(tree->writeJson().view() == written(tree, JsonForm::kCompact),
                    "a node's own text is the compact one");
    checkCopies(tree);
    return 0;
}
