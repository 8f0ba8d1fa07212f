#pragma once

#include "rules/field_value.h"
#include "rules/flag_groups.h"
#include "rules/numeric_rules.h"
#include "rules/text_rules.h"

namespace ks {

class Program;

// Gives the fields and check boxes of the three forms the handlers of their rules: the numeric range
// rules on Change, quoting and the address test on Validate, ipCheck and the flag groups on Click.
void ConnectRules(Program& program);

} // namespace ks
