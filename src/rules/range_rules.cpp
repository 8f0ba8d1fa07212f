#include "rules/range_rules.h"

#include "frame/program.h"
#include "rules/numbers.h"

#include <string>

namespace ks {

std::optional<RangeRule> rangeRuleOf(const FieldRow& row) {
    switch (row.kind) {
    case ValueKind::Switch:
        return RangeRule{1, row.ruleTitle, row.ruleText};
    case ValueKind::HookColour:
        return RangeRule{8, row.ruleTitle, row.ruleText};
    case ValueKind::VooshMode:
        return RangeRule{9, row.ruleTitle, row.ruleText};
    default:
        return std::nullopt;
    }
}

bool rangeAccepts(const RangeRule& rule, std::string_view text) {
    const double value = fieldValue(text);
    return value >= 0 && value <= rule.highest;
}

void checkRange(Program& program, FieldId id, const RangeRule& rule) {
    Field& field = program.field(id);
    if (rangeAccepts(rule, field.text())) return;
    program.platform().messageBox(
        {std::string(rule.text), std::string(rule.title), MessageButtons::Ok, MessageIcon::None, 0});
    // Emptying runs the rule once more; the empty text reads as 0 and passes quietly.
    if (id.form == FormId::Main) field.setText("");
}

} // namespace ks
