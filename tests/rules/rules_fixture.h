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
    }
    ks::Field& main(std::string_view name) { return program.frmMain.field(name); }
    ks::Field& flags(std::string_view name) { return program.Form1.field(name); }
    ks::Field& weapons(std::string_view name) { return program.Form2.field(name); }
    ks::CheckBox& check(std::string_view name) { return program.Form1.check(name); }
    std::vector<std::string> titles() const {
        std::vector<std::string> result;
        for (const auto& message : platform.messages)
            result.push_back(message.title);
        return result;
    }
};
