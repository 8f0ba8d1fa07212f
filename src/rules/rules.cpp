#include "rules/rules.h"

namespace ks {

void ConnectRules(Program& program) {
    ConnectNumericRules(program);
    ConnectTextRules(program);
    ConnectFlagGroups(program);
}

} // namespace ks
