#pragma once

#include "config/layout.h"

#include <span>
#include <string_view>

namespace ks {

// The reader's own key words. They match the keys the writer takes from the fields' tags, except for five
// fields whose written key the reader does not know (FAD1, FAD2, FAD5, FMS3 and ABT), so those five keep
// what they held when a written file is read back.

// A key in second place of a record: the third word becomes the text of the field.
struct SecondWordKey {
    std::string_view key;
    FormId form;
    std::string_view field;
};

// What a key in third place (behind "set") does with the fourth word.
enum class ThirdWordAction {
    QuakeDirectory, // moves the drive selector, then sets QDIR
    Text,           // sets the text of a field
    Address,        // turns "Use Default" off, then sets IP
    Flag,           // a value above 0, or one that is no number, turns the check box on
};

struct ThirdWordKey {
    std::string_view key;
    ThirdWordAction action;
    FormId form;
    std::string_view target; // a field, or for a flag its check box on Form1
};

// The key word in second place that hands the record on to the third-word table.
inline constexpr std::string_view kSetKey = "set";

std::span<const SecondWordKey> secondWordKeys();
std::span<const ThirdWordKey> thirdWordKeys();

// The first row whose key equals the word, or null.
const SecondWordKey* findSecondWordKey(std::string_view word);
const ThirdWordKey* findThirdWordKey(std::string_view word);

} // namespace ks
