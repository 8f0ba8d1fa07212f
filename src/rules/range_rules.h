#pragma once

#include "frame/catalogue.h"

#include <optional>
#include <string_view>

namespace ks {

class Program;

// What a ranged field accepts: fieldValue of its text from 0 to `highest`, bounds included, whole or not.
// A value outside brings up a message box with OK and no icon.
struct RangeRule {
    double highest;
    std::string_view title;
    std::string_view text;
};

// The rule of a switch, the hook colour or the voosh mode; nothing for a field without a range.
std::optional<RangeRule> rangeRuleOf(const FieldRow& row);

// True when the text's leading number lies within the rule's range.
bool rangeAccepts(const RangeRule& rule, std::string_view text);

// The change handler of a ranged field: checks its text, and when it lies outside shows the rule's message
// and, on the main form, empties the field (the weapon dialog keeps the text).
void checkRange(Program& program, FieldId field, const RangeRule& rule);

} // namespace ks
