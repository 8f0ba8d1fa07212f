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
    // Where the selectors and the two directory fields stand: "Drive2 | Dir2 | QDIR | FGD".
    std::string where() {
        return program.Drive2.text() + " | " + program.Dir2.text() + " | " + qdir() + " | " + gameDir();
    }
    bool called(const std::string& call) const {
        return std::find(platform.calls.begin(), platform.calls.end(), call) != platform.calls.end();
    }
    // The messages shown so far, each as "TITLE|TEXT".
    std::vector<std::string> shown() const {
        std::vector<std::string> out;
        for (const MessageBoxRequest& message : platform.messages)
            out.push_back(message.title + "|" + message.text);
        return out;
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
