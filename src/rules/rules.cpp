#include "rules/rules.h"

namespace ks {

void ConnectRules(Program& program) {
    ConnectNumericRules(program);
}

} // namespace ks
