#pragma once

#include "frame/program.h"
#include "frame/startup.h"
#include "support/fake_platform.h"

#include <algorithm>
#include <string>
#include <vector>

namespace ks::test {

// A program with its handlers on the fake platform, before the load step.
struct Launcher {
    explicit Launcher(PathStyle style) : program(platform, style) { ConnectHandlers(program); }
    FakePlatform platform;
    Program program;

    Field& field(const char* name) { return program.frmMain.field(name); }
    std::string qdir() { return field("QDIR").text(); }
    std::string gameDir() { return field("FGD").text(); }
    bool called(const std::string& call) const {
        return std::find(platform.calls.begin(), platform.calls.end(), call) != platform.calls.end();
    }
    // The calls that reach outside the launcher, in order.
    std::vector<std::string> effects() const {
        std::vector<std::string> out;
        for (const std::string& call : platform.calls)
            if (call.starts_with("changeDirectory ") || call.starts_with("startProcess ")) out.push_back(call);
        return out;
    }
};

} // namespace ks::test
