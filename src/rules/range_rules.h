#pragma once

#include "rules/layer.h"

#include "frame/catalogue.h"

#include <string_view>

namespace ks {

class Program;

// True when the text's leading number lies within the range, bounds included.
bool rangeAccepts(const Range& range, std::string_view text);

// The change handler of a ranged field: checks its text, and when it lies outside shows the range's message with
// OK and no icon and, on the main form, empties the field (the weapon dialog keeps the text).
void checkRange(Program& program, FieldId field, const Range& range);

} // namespace ks
