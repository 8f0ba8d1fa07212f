#include "config/record_reader.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace ks;

namespace {

std::vector<std::string> recordsOf(const std::string& bytes) {
    test::TempDir dir;
    const std::string path = dir.file("in.cfg");
    test::writeBytes(path, bytes);
    RecordReader reader;
    EXPECT_TRUE(reader.open(path));
    std::vector<std::string> records;
    std::string record;
    while (!reader.atEnd()) {
        EXPECT_TRUE(reader.read(record));
        records.push_back(record);
    }
    EXPECT_FALSE(reader.failed());
    return records;
}

struct RecordCase {
    const char* name;
    std::string bytes;
    std::vector<std::string> records;
};

} // namespace

TEST(RecordReader, CutsRecordsAsTheLauncherReadsThem) {
    const std::vector<RecordCase> cases = {
        {"empty file gives no record", "", {}},
        {"CR LF, LF and CR end lines alike", "a\r\nb\nc\rd", {"a", "b", "c", "d"}},
        {"an empty line is an empty record", "a\r\n\r\nb\n\nc\r\rd\r\n", {"a", "", "b", "", "c", "", "d"}},
        {"a comma ends a record", "set a 1,set b 2\r\n", {"set a 1", "set b 2"}},
        {"a comma at the line end leaves an empty record", "a,\r\nb", {"a", "", "b"}},
        {"only blanks are skipped in front", "   set a\r\n\tset b\r\n", {"set a", "\tset b"}},
        {"blanks behind the last character stay", "set a 1  \r\n", {"set a 1  "}},
        {"a line of blanks is an empty record", "   \r\nx", {"", "x"}},
        {"quotes inside a record stay", "set n \"a,b\"\r\n", {"set n \"a", "b\""}},
        {"a leading quote runs to the next quote", "\"a, b\" dropped, kept\r\nnext", {"a, b", "kept", "next"}},
        {"a leading quote stops at the line end", "\"open\r\nnext", {"open", "next"}},
        {"a quoted record ends the file", "\"x\"", {"x"}},
        {"blanks in front of a quote are skipped", "  \"x y\"  ,z", {"x y", "z"}},
    };
    for (const RecordCase& c : cases) EXPECT_EQ(recordsOf(c.bytes), c.records) << c.name;
}

TEST(RecordReader, EveryOtherByteArrivesUnchanged) {
    std::string line;
    for (int b = 0; b < 256; ++b)
        if (b != ',' && b != '"' && b != '\r' && b != '\n' && b != ' ') line += static_cast<char>(b);
    EXPECT_EQ(recordsOf(line + "\r\n" + line), (std::vector<std::string>{line, line}));
}

TEST(RecordReader, LongRecordsAndLineEndsAcrossBufferBordersReadWhole) {
    // Records far longer than any buffer, and a CR LF split at every possible place.
    const std::string big(200000, 'x');
    EXPECT_EQ(recordsOf(big + "\r\n" + big + "\r\n"), (std::vector<std::string>{big, big}));
    for (std::size_t pad = 65530; pad < 65540; ++pad) {
        const std::string head(pad, 'y');
        EXPECT_EQ(recordsOf(head + "\r\nz"), (std::vector<std::string>{head, "z"})) << pad;
        EXPECT_EQ(recordsOf("\"" + head + "\"tail\r\nz"), (std::vector<std::string>{head, "z"})) << pad;
    }
}

TEST(RecordReader, AMissingFileOrADirectoryCannotBeRead) {
    test::TempDir dir;
    RecordReader reader;
    EXPECT_FALSE(reader.open(dir.file("missing.cfg")));
    if (reader.open(dir.path().string())) {
        std::string record;
        EXPECT_TRUE(reader.atEnd());
        EXPECT_TRUE(reader.failed());
    }
}
