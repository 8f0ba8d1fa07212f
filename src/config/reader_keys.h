#pragma once

#include "config/layer.h"

#include "frame/catalogue.h"

#include <string_view>

namespace ks {

// The reader knows the keys that the writer puts in a file: a "set KEY VALUE" line gives the field of KEY in
// its second word, a "// set KEY VALUE" line in its third. The host name and the start map are known by
// their first word instead. Five settings are read back under keys other than the ones they are written
// with, so a reload does not bring them back; the flag totals are not read at all, since opening a file only
// turns boxes on.

// What a key does with the value behind it.
enum class ReadAction {
    Text,           // sets the text of a field
    GameDirectory,  // sets FGD, then moves the directory selector to QDIR and FGD joined
    QuakeDirectory, // moves the drive selector to QDIR's drive, then sets QDIR
    Address,        // turns "Use Default" off, then sets IP
    Flag,           // a value above 0, or one that is no number, turns the check box on
};

struct ReadKey {
    std::string_view key;
    ReadAction action;
    FieldId field; // the field that takes the value
    CheckId check; // for a flag member: its check box
};

// The first words of a record that name their setting themselves.
inline constexpr std::string_view kHostnameWord = "hostname";
inline constexpr std::string_view kStartMapWord = "map";
// The word in second place that hands a record on to the third.
inline constexpr std::string_view kSetWord = "set";

// The settings that a file written by the launcher names under one key and the reader knows under another.
struct KeyReadOtherwise {
    FieldId field;
    std::string_view readKey;
};
inline constexpr KeyReadOtherwise kKeysReadOtherwise[] = {
    {mainField("FAD1"), "allow_downloads"},
    {mainField("FAD2"), "allow_downloads_maps"},
    {mainField("FAD5"), "allow_downloads_sounds"},
    {mainField("FMS3"), "master"},
    {mainField("ABT"), "bot_talk"},
};

// The key in second or third place of a record, or null when the reader does not know it.
const ReadKey* findSecondWordKey(std::string_view word);
const ReadKey* findThirdWordKey(std::string_view word);

} // namespace ks
