#include "rules/range_rules.h"

#include "frame/program.h"
#include "rules/numbers.h"

#include <string>

namespace ks {

bool rangeAccepts(const Range& range, std::string_view text) {
    const double value = fieldValue(text);
    return value >= range.lowest && value <= range.highest;
}

void checkRange(Program& program, FieldId id, const Range& range) {
    Field& field = program.field(id);
    if (rangeAccepts(range, field.text())) return;
    program.refuseValue({std::string(range.text), std::string(range.title), MessageButtons::Ok, MessageIcon::None, 0});
    // Emptying runs the rule once more; the empty text reads as 0 and passes quietly.
    if (id.form == FormId::Main) field.setText("");
}

} // namespace ks
