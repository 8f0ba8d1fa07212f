#include "rules/flag_groups.h"

#include "frame/catalogue.h"
#include "frame/program.h"
#include "rules/field_value.h"

#include <string>

namespace ks {

void UpdateFlagGroup(Program& program, const FlagGroup& group, const FlagMember& member) {
    Form& form = program.Form1;
    const bool on = form.check(member.check).state() == 1;
    form.field(member.item).setText(on ? std::to_string(member.bit) : "0");
    double sum = 0;
    for (const FlagMember& each : group.members)
        sum += FieldValue(form.field(each.item).text());
    form.field(group.total).setText(PlainDecimal(sum));
}

void ConnectFlagGroups(Program& program) {
    for (const FlagGroup& group : flagGroups())
        for (const FlagMember& member : group.members)
            program.Form1.check(member.check).onClick([&program, &group, &member] {
                UpdateFlagGroup(program, group, member);
            });
}

} // namespace ks
