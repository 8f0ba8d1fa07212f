#pragma once

#include "rules/layer.h"

#include <cstddef>

namespace ks {

class Program;

// The update after a real change of a member's check box, by click or by code, shown or not: the member's
// item field gets its bit value (state exactly 1) or "0", then the group's total becomes the sum of
// fieldValue of all its item fields, in plain decimal. The sum is arithmetic, not a bitwise OR, and does
// not start from the old total, so a number typed into an item field enters at the next update of its group.
void updateFlagGroup(Program& program, std::size_t group, std::size_t member);

} // namespace ks
