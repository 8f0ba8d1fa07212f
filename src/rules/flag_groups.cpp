#include "rules/flag_groups.h"

#include "frame/catalogue.h"
#include "frame/program.h"
#include "rules/numbers.h"

#include <string>

namespace ks {

void updateFlagGroup(Program& program, std::size_t group, std::size_t member) {
    const FlagGroup& row = flagGroups()[group];
    const bool on = program.check(flagCheckAt(group, member)).state() == 1;
    program.field(flagItemAt(group, member)).setText(on ? std::to_string(row.members[member].bit) : "0");
    double sum = 0;
    for (std::size_t each = 0; each < row.members.size(); ++each)
        sum += fieldValue(program.field(flagItemAt(group, each)).text());
    program.field(flagTotalAt(group)).setText(plainDecimal(sum));
}

} // namespace ks
