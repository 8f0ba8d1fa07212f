#include "cli/kscfg_run.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace ks;
using test::kscfg;
using test::Outcome;
using test::quoted;

// `get` without a key gives every setting in the order of a written file, the IP first even while it has no
// line: the golden default file, line by line.
TEST(KscfgGet, WithoutAKeyGivesEverySettingInTheOrderOfTheFile) {
    const std::string golden = test::readBytes(std::string(KS_TEST_DATA) + "/default.cfg");
    std::string expected = "IP \n";
    std::istringstream lines(golden);
    for (std::string line; std::getline(lines, line);) {
        line.pop_back(); // the CR
        if (line.ends_with(" // Added by KS Launcher - Do NOT modify this section")) line.resize(line.rfind(" //"));
        for (const std::string opening : {"// set ", "set "})
            if (line.starts_with(opening)) line.erase(0, opening.size());
        if (!line.empty() && !line.starts_with("//")) expected += line + "\n";
    }
    const Outcome outcome = kscfg("get " + quoted(std::string(KS_TEST_DATA) + "/default.cfg"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, expected);
    EXPECT_EQ(std::count(expected.begin(), expected.end(), '\n'), 208);

    const Outcome keys = kscfg("keys"), settable = kscfg("keys --settable");
    EXPECT_EQ(std::count(keys.output.begin(), keys.output.end(), '\n'), 208);
    EXPECT_EQ(std::count(settable.output.begin(), settable.output.end(), '\n'), 200);
    EXPECT_EQ(settable.output.find("\ndmflags\n"), std::string::npos);
    EXPECT_NE(keys.output.find("\ndmflags\n"), std::string::npos);
}
