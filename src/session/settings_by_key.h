#pragma once

#include "session/layer.h"

#include "config/setting_keys.h"

#include <string>
#include <string_view>

namespace ks {

class Program;

inline constexpr std::string_view kMustBeANumber = "must be a number";

// What became of a value given to a setting by its key.
enum class AssignOutcome {
    Done,        // the setting holds the value, as its field's handlers left it
    Refused,     // a rule refused the value; `title` and `text` are its message
    NotSettable, // a total, which follows its flags; `text` says what to set instead
};

struct AssignResult {
    AssignOutcome outcome = AssignOutcome::Done;
    std::string title;
    std::string text;
};

// Gives a setting a value as an operator does who types it into the setting's field and then leaves it: the
// field's change handler runs (a range rule shows its message and, on the main form, empties the field), then
// its leave handler (a text of the quoted kinds is put between double quotes). A flag takes 1 or 0, and its
// check box follows and with it the group's total. The IP takes an address after "Use Default" is turned off;
// the empty value turns "Use Default" on again, which takes the address out of the file. A value with a line
// break is refused, since no line of a file could hold it. A refused value stays in the fields as the
// handlers left it; the caller decides whether anything is written. A setting that the server reads as a number
// takes only digits with an optional point: a value that passes the field's rule but is none is refused with
// kMustBeANumber. A value whose double quotes are not closed again is refused, as the server would take the rest
// of its line into it.
AssignResult assignSetting(Program& program, const SettingKey& setting, std::string_view value);

} // namespace ks
