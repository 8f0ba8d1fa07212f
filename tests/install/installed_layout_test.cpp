#include "cli/kscfg_run.h"
#include "frame/program.h"
#include "server/links.h"
#include "support/fake_platform.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

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
        "lib/sysusers.d/kscfg.conf",
        "share/doc/kslaunch/copyright",
        "share/doc/kscfg/copyright",
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
    // The manual page and the help page carry the version and kscfg's options and usage lines as the build made them.
    const std::string manual = test::shell("gzip -dc " + quoted(root + "/share/man/man1/kscfg.1.gz")).output;
    EXPECT_NE(manual.find("\"KSLaunch 3.11\""), std::string::npos);
    EXPECT_NE(manual.find(".SS \"kscfg stop\"\n.TP\n\\fB\\-\\-timeout\\fR\\ \\fISECONDS\\fR\nSend SIGKILL"),
              std::string::npos);
    const std::string helpPage = test::readBytes(root + "/share/kslaunch/ks.html");
    EXPECT_NE(helpPage.find("<title>Kestrand Launcher 3.11 "), std::string::npos);
    EXPECT_NE(helpPage.find("\nkscfg stop CFG [--timeout SECONDS]\n      send SIGTERM"), std::string::npos);
    // The unit starts the kscfg of its installation.
    EXPECT_NE(test::readBytes(root + "/lib/systemd/system/kslaunch-server@.service")
                  .find("\nExecStart=" + root + "/bin/kscfg launch ${KS_CONFIG} --foreground\n"),
              std::string::npos);
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

// The part of the installation that a server without a desktop takes: kscfg with its manual page, completion,
// unit and system user, and nothing of the launcher's.
TEST(Installed, TheComponentKscfgHoldsTheCommandAndItsServerFilesAlone) {
    test::TempDir prefix;
    ASSERT_EQ(test::shell("cmake --install " + quoted(KS_BUILD_DIR) + " --component kscfg --prefix " +
                          quoted(prefix.path().string()) + " >/dev/null")
                  .status,
              0);
    std::set<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(prefix.path()))
        if (!entry.is_directory()) files.insert(fs::relative(entry.path(), prefix.path()).string());
    const std::set<std::string> expected = {"bin/kscfg",
                                            "share/man/man1/kscfg.1.gz",
                                            "share/bash-completion/completions/kscfg",
                                            "lib/systemd/system/kslaunch-server@.service",
                                            "lib/sysusers.d/kscfg.conf",
                                            "share/doc/kscfg/copyright",
                                            "share/doc/kscfg/changelog.gz"};
    EXPECT_EQ(files, expected);
}

// cpack makes both packages in one run, where lintian is at hand: kscfg needs the C and C++ runtimes alone,
// kslaunch needs kscfg of its own version, and lintian finds no error and no warning in either.
TEST(Installed, TwoDebianPackagesFromOneRunThatLintianPasses) {
    if (test::shell("command -v lintian && command -v dpkg-shlibdeps").status != 0) GTEST_SKIP() << "no lintian";
    test::TempDir out;
    const std::string dir = quoted(out.path().string());
    const test::Outcome packed = test::shell(
        "cpack -G DEB --config " + quoted(std::string(KS_BUILD_DIR) + "/CPackConfig.cmake") + " -B " + dir + " 2>&1");
    ASSERT_EQ(packed.status, 0) << packed.output;
    const std::string kscfg =
        out.file("kscfg_3.11_" + test::shell("dpkg --print-architecture | tr -d '\\n'").output + ".deb");
    const std::string kslaunch = std::regex_replace(kscfg, std::regex("kscfg_3"), "kslaunch_3");
    const std::string runtimes =
        test::shell("dpkg-deb -f " + quoted(kscfg) + " Depends | tr ',' '\\n' | sed 's/ *(.*//; s/^ *//' | sort")
            .output;
    EXPECT_EQ(runtimes, "libc6\nlibgcc-s1\nlibstdc++6\n");
    EXPECT_NE(test::shell("dpkg-deb -f " + quoted(kslaunch) + " Depends").output.find("kscfg (= 3.11)"),
              std::string::npos);
    const test::Outcome lint = test::shell("lintian --no-tag-display-limit " + quoted(kscfg) + " " + quoted(kslaunch) +
                                           " 2>&1 | grep -E '^[EW]: '");
    EXPECT_EQ(lint.output, "");
}
