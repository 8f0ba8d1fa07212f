#include "config/record_reader.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

using namespace ks;

namespace {
std::vector<std::string> recordsOf(const std::string& bytes) {
    test::TempDir dir;
    test::writeBytes(dir.file("in.cfg"), bytes);
    RecordReader reader;
    EXPECT_TRUE(reader.open(dir.file("in.cfg")));
    std::vector<std::string> records(1);
    while (!reader.atEnd() && reader.read(records.back()))
        records.emplace_back();
    EXPECT_FALSE(reader.failed());
    records.pop_back();
    return records;
}
} // namespace

TEST(RecordReader, CutsRecordsAtCommasAndEveryKindOfLineEnd) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
        {"", {}},
        {"a\r\nb\nc\rd", {"a", "b", "c", "d"}},
        {"a\r\n\r\nb\n\nc\r\rd\r\n", {"a", "", "b", "", "c", "", "d"}},
        {"set a 1,set b 2\r\na,\r\n", {"set a 1", "set b 2", "a", ""}},
        {"   set a\r\n\tset b  \r\n   \r\n", {"set a", "\tset b  ", ""}},
        {"set n \"a,b\"\r\n", {"set n \"a", "b\""}},
        {"\"a, b\" dropped, kept\r\n\"open\r\n  \"x\"", {"a, b", "kept", "open", "x"}},
    };
    for (const auto& [bytes, records] : cases)
        EXPECT_EQ(recordsOf(bytes), records) << bytes;

    std::string everyByte;
    for (int b = 1; b < 256; ++b)
        if (b != ',' && b != '"' && b != '\r' && b != '\n' && b != ' ') everyByte += static_cast<char>(b);
    everyByte += '\0';
    EXPECT_EQ(recordsOf(everyByte + "\n" + everyByte), (std::vector<std::string>{everyByte, everyByte}));
}

TEST(RecordReader, LongRecordsAndLineEndsAcrossBufferBordersReadWhole) {
    const std::string big(200000, 'x');
    EXPECT_EQ(recordsOf(big + "\r\n" + big), (std::vector<std::string>{big, big}));
    for (std::size_t pad = 65533; pad < 65538; ++pad) {
        const std::string head(pad, 'y');
        EXPECT_EQ(recordsOf(head + "\r\nz"), (std::vector<std::string>{head, "z"})) << pad;
        EXPECT_EQ(recordsOf("\"" + head + "\"tail\r\nz"), (std::vector<std::string>{head, "z"})) << pad;
    }
}
