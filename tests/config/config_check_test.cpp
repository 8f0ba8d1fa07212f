#include "config/config_check.h"
#include "config/record_reader.h"
#include "config/writer.h"
#include "support/launcher_test.h"

#include <filesystem>

using namespace ks;

namespace {

// Each finding as "LINE KIND KEY".
std::vector<std::string> summary(const std::vector<Finding>& findings) {
    std::vector<std::string> out;
    for (const Finding& finding : findings)
        out.push_back(std::to_string(finding.line) + " " + std::string(findingKindName(finding.kind)) + " " +
                      finding.key);
    return out;
}

} // namespace

TEST(ConfigCheck, ALauncherFileNamesOnlyWhatAReloadLoses) {
    // Values that come back, and values that a reload over a freshly started launcher does not bring back. A fresh
    // file's clean report is KscfgCheck's.
    test::Launcher writer;
    writer.main("FHOSTN").setText("\"My Server\"");
    writer.main("FFGL1").setText("40");
    writer.check("Check57").setState(1);
    writer.main("FAD5").setText("0");
    writer.main("ABT").setText("0");
    writer.main("FMS3").setText("master.example.org 192.0.2.99");
    writer.check("Check51").setState(0);
    writer.check("Check66").setState(0);
    test::Launcher reader;
    EXPECT_EQ(
        summary(checkConfig(reader.program, renderConfig(writer.program))),
        (std::vector<std::string>{"9 reload-lost setmaster", "18 reload-lost allow_download_sounds",
                                  "74 reload-lost bot_chat", "116 flag-only-on df_instant_items",
                                  "132 not-read dmflags", "154 flag-only-on b_kick", "159 not-read sv_botdetection"}));
    // The read leaves the fields as the Open command leaves them.
    EXPECT_EQ(reader.flags("DMFLAGT").text(), "1104");
    EXPECT_EQ(reader.main("FHOSTN").text(), "\"My Server\"");
}

TEST(ConfigCheck, CountsLinesAsTheReaderDoesAndReadsEachRecordOfALine) {
    test::Launcher l;
    const std::string bytes = std::string(test::kMarker) + "\r\n"                      // 1
                                                           "set gravity 1\r"           // 2
                                                           "set fraglimit 4,5\n"       // 3
                                                           "\r\n"                      // 4
                                                           "quit, set timelimit 5\r\n" // 5
                                                           "set maxclients 8 // eight\n"
                                                           "set port";
    EXPECT_EQ(summary(checkConfig(l.program, bytes)),
              (std::vector<std::string>{"2 unknown-key gravity", "3 cut fraglimit", "5 unknown-key quit"}));
    EXPECT_EQ(l.main("FFGL1").text(), "4");
    EXPECT_EQ(l.main("FTT1").text(), "5");
    EXPECT_EQ(l.main("FMC").text(), "8");
    EXPECT_EQ(l.main("FPORT").text(), "");
}

// The checker cuts each line into records itself, to know the line of each; they must be the records that the
// record reader gives for the whole file.
TEST(ConfigCheck, TheRecordsOfTheLinesAreThoseOfTheRecordReader) {
    const std::filesystem::path data = KS_TEST_DATA;
    std::vector<std::filesystem::path> files{data / "check/crafted.cfg", data / "default.cfg"};
    for (const auto& entry : std::filesystem::directory_iterator(data / "convert/in"))
        files.push_back(entry.path());
    for (const auto& file : files) {
        std::vector<std::string> read;
        RecordReader reader;
        ASSERT_TRUE(reader.open(file.string()));
        for (std::string record; !reader.atEnd() && reader.read(record);)
            read.push_back(record);
        const std::string bytes = test::readBytes(file.string());
        std::vector<std::string> cut;
        for (const std::string_view line : fileLines(bytes))
            for (const std::string_view record : lineRecords(line))
                cut.emplace_back(record);
        EXPECT_EQ(cut, read) << file;
    }
}
