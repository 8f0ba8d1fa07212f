#include "cli/kscfg_run.h"
#include "frame/program.h"
#include "server/links.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace ks;
namespace fs = std::filesystem;

using test::quoted;

// cmake --install puts every file where a Linux desktop looks for it, and the installed programs find theirs.
TEST(Installed, EveryFileStandsInItsPlaceAndTheProgramsFindTheirs) {
    test::TempDir prefix;
    const std::string root = prefix.path().string();
    ASSERT_EQ(
        test::shell("cmake --install " + quoted(KS_BUILD_DIR) + " --prefix " + quoted(root) + " >/dev/null").status, 0);

    std::vector<std::string> expected = {
        "bin/kslaunch",
        "bin/kscfg",
        "share/kslaunch/ks.html",
        "share/applications/kslaunch.desktop",
        "share/mime/packages/kslaunch.xml",
        "share/icons/hicolor/scalable/apps/kslaunch.svg",
        "share/metainfo/org.example.kestrand.kslaunch.metainfo.xml",
        "share/man/man1/kslaunch.1.gz",
        "share/man/man1/kscfg.1.gz",
        "share/bash-completion/completions/kscfg",
        "lib/systemd/system/kslaunch-server@.service",
        "share/doc/kslaunch/copyright",
    };
    const std::string cues[] = {"ks4a", "rail", "bfg", "tab", "button"};
    for (const std::string& cue : cues)
        expected.push_back("share/kslaunch/" + cue + ".wav");
    for (const char* size : {"16", "32", "48", "64", "128", "256"})
        expected.push_back(std::string("share/icons/hicolor/") + size + "x" + size + "/apps/kslaunch.png");
    for (const std::string& file : expected)
        EXPECT_TRUE(fs::is_regular_file(prefix.path() / file)) << file;
    // The sound module lies in the library directory, lib/kslaunch/modules or lib/<architecture>/kslaunch/modules.
    int soundModules = 0;
    for (const auto& entry : fs::recursive_directory_iterator(prefix.path() / "lib"))
        soundModules += entry.path().filename() == "kslaunch-sound.so" &&
                        entry.path().parent_path().parent_path().filename() == "kslaunch";
    EXPECT_EQ(soundModules, 1);

    EXPECT_EQ(test::shell(quoted(root + "/bin/kscfg") + " --version").output, "kscfg 3.11\n");
    EXPECT_EQ(test::shell(quoted(root + "/bin/kslaunch") + " --version").output, "kslaunch 3.11\n");
    const std::string help = test::shell(quoted(root + "/bin/kslaunch") + " --help").output;
    EXPECT_NE(help.find("Help page:   " + root + "/share/kslaunch/ks.html\n"), std::string::npos) << help;

    // The launcher started from the prefix, seen through its platform: the start sound and the help page are
    // those of its installation, with or without a sound device of its own.
    test::FakePlatform platform;
    platform.program = root + "/bin/kslaunch";
    for (const auto& entry : fs::recursive_directory_iterator(prefix.path()))
        if (entry.is_regular_file()) platform.plainFiles.insert(entry.path().string());
    Program program(platform, PathStyle::Linux);
    program.playCue("ks4a.wav");
    openHelp(program);
    EXPECT_EQ(platform.sounds, std::vector<std::string>{root + "/share/kslaunch/ks4a.wav"});
    EXPECT_EQ(platform.links, std::vector<std::string>{root + "/share/kslaunch/ks.html"});

    // The installed cues are sound files as promised: RIFF PCM, short (the start sound 3 s, the others 1.5 s), none
    // at full scale.
    for (const std::string& cue : cues)
        EXPECT_EQ(test::shell(quoted(KS_CHECK_WAV) + " --max-seconds " + (cue == "ks4a" ? "3 " : "1.5 ") +
                              quoted(root + "/share/kslaunch/" + cue + ".wav"))
                      .status,
                  0)
            << cue;
}
