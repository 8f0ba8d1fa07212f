#include "config/config_check.h"
#include "config/record_reader.h"
#include "support/launcher_test.h"

#include <filesystem>

using namespace ks;

namespace {

// Each finding of the check of `bytes` by `reader` as "LINE KIND KEY".
std::vector<std::string> summary(test::Launcher& reader, const std::string& bytes) {
    test::Launcher reloaded;
    std::vector<std::string> out;
    for (const Finding& finding : checkConfig(reader.program, reloaded.program, bytes))
        out.push_back(std::to_string(finding.line) + " " + std::string(findingKindName(finding.kind)) + " " +
                      finding.key);
    return out;
}

} // namespace

TEST(ConfigCheck, CountsLinesAsTheReaderDoesAndReadsEachRecordOfALine) {
    test::Launcher l;
    const std::string bytes = std::string(test::kMarker) + "\r\n"                      // 1
                                                           "set gravity 1\r"           // 2
                                                           "set fraglimit 4,5\n"       // 3
                                                           "\r\n"                      // 4
                                                           "quit, set timelimit 5\r\n" // 5
                                                           "set maxclients 8 // eight\n"
                                                           "set port";
    EXPECT_EQ(summary(l, bytes), (std::vector<std::string>{"2 unknown-key gravity", "3 cut fraglimit",
                                                           "5 unknown-key quit", "7 not-number port"}));
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
