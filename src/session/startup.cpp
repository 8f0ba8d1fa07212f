#include "session/startup.h"

#include "frame/program.h"
#include "rules/flag_groups.h"
#include "rules/range_rules.h"
#include "rules/text_rules.h"
#include "server/selection.h"

namespace ks {

namespace {

void connectFieldRules(Program& program, std::span<const FieldRow> rows, FieldId (*idAt)(std::size_t)) {
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const FieldId id = idAt(row);
        Field& field = program.field(id);
        if (const Range range = rows[row].range; range.any())
            field.onChange([&program, id, range] { checkRange(program, id, range); });
        const ValueKind kind = rows[row].kind;
        if (kind == ValueKind::QuotedText || kind == ValueKind::QuotedModel)
            field.onValidate([&program, id, kind] { quoteField(program, id, kind); });
    }
}

} // namespace

void connectHandlers(Program& program) {
    // The tab change of either tab control plays its cue.
    program.mainTabs().onChange([&program] { program.playCue(kTabSound); });
    program.flagTabs().onChange([&program] { program.playCue(kTabSound); });

    connectFieldRules(program, mainFields(), mainFieldAt);
    connectFieldRules(program, weaponFields(), weaponFieldAt);
    program.field(id::IP).onValidate([&program] { testAddressField(program); });
    program.check(id::ipCheck).onClick([&program] { useDefaultAddressClicked(program); });
    for (std::size_t group = 0; group < flagGroups().size(); ++group)
        for (std::size_t member = 0; member < flagGroups()[group].members.size(); ++member)
            program.check(flagCheckAt(group, member)).onClick([&program, group, member] {
                updateFlagGroup(program, group, member);
            });

    program.directorySelector().onChoice([&program] { splitChosenDirectory(program); });
    for (const FieldId id : {id::FGD, id::QDIR, id::FFile})
        program.field(id).onChange([&program, id] { whitenWhenSet(program, id); });
}

void loadMainForm(Program& program) {
    program.check(id::ipCheck).setState(1);
    findKestrandDirectory(program);
}

} // namespace ks
