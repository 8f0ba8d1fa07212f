#include "frame/startup.h"

#include "frame/program.h"
#include "rules/rules.h"
#include "server/selection.h"

namespace ks {

void ConnectHandlers(Program& program) {
    // The tab change of either tab control plays its cue.
    program.frmMain.tabs().onChange([&program] { program.PlayCue("tab.wav"); });
    program.Form1.tabs().onChange([&program] { program.PlayCue("tab.wav"); });
    ConnectRules(program);
    ConnectServer(program);
}

void LoadMainForm(Program& program) {
    program.frmMain.check("ipCheck").setState(1);
    FindKestrandDirectory(program);
}

} // namespace ks

namespace ks {

void Exit_Animation(Program& program) { program.platform.quit(); }

} // namespace ks
