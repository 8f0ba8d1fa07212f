#pragma once

#include "frame/program.h"
#include "frame/startup.h"
#include "support/fake_platform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// A launcher as it stands after its start, with every handler connected.
struct RulesTest : ::testing::Test {
    ks::test::FakePlatform platform;
    ks::Program program{platform, ks::PathStyle::Linux};
    RulesTest() {
        ks::ConnectHandlers(program);
        ks::LoadMainForm(program);
        // Forget the start-up search and its message: the tests look at what came after.
        platform.calls.clear();
        platform.messages.clear();
    }
    ks::Field& main(std::string_view name) { return program.frmMain.field(name); }
    ks::Field& flags(std::string_view name) { return program.Form1.field(name); }
    ks::Field& weapons(std::string_view name) { return program.Form2.field(name); }
    ks::CheckBox& check(std::string_view name) { return program.Form1.check(name); }
    // The messages shown so far, each as "TITLE|TEXT".
    std::vector<std::string> shown() const {
        std::vector<std::string> result;
        for (const auto& message : platform.messages)
            result.push_back(message.title + "|" + message.text);
        return result;
    }
};
