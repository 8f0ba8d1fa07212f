#include "config/record_reader.h"
#include "support/child_process.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

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

// FIFOs, devices and memory limits of POSIX systems; the Windows tests refuse NUL, CON and directories.
#ifndef _WIN32

// Each open runs in a child with an alarm: a FIFO that nobody writes to would hold a blocking open for ever.
TEST(RecordReader, RefusesWhatIsNotARegularFileAtOnce) {
    test::TempDir dir;
    ASSERT_EQ(mkfifo(dir.file("fifo").c_str(), 0644), 0);
    const std::pair<std::string, std::string> cases[] = {{"/dev/zero", "it is not a regular file"},
                                                         {"/dev/urandom", "it is not a regular file"},
                                                         {dir.file("fifo"), "it is not a regular file"},
                                                         {dir.path().string(), "it is a directory"},
                                                         {dir.file("missing.cfg"), "No such file or directory"}};
    for (const auto& [path, reason] : cases) {
        const int code = test::runInChild(
            [&] {
                RecordReader reader;
                return !reader.open(path) && reader.failed() && reader.reason() == reason ? 0 : 1;
            },
            5);
        EXPECT_EQ(code, 0) << path << " is not refused at once as " << reason;
    }
}

#if defined(__SANITIZE_ADDRESS__)
#define KS_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KS_ADDRESS_SANITIZER 1
#endif
#endif

TEST(RecordReader, ARecordTooLargeToHoldEndsTheReadingAsAFailure) {
#ifdef KS_ADDRESS_SANITIZER
    GTEST_SKIP() << "the address sanitizer's allocator ends the program instead of throwing";
#endif
    // 4 GiB of zero bytes without a line end, as a sparse file: one record, far beyond the limit below.
    test::TempDir dir;
    const std::string path = dir.file("huge.cfg");
    const int fd = open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    ASSERT_EQ(ftruncate(fd, off_t{1} << 32), 0);
    close(fd);
    const int code = test::runInChild(
        [&] {
            const rlimit limit{512u << 20, 512u << 20};
            setrlimit(RLIMIT_AS, &limit);
            RecordReader reader;
            std::string record;
            if (!reader.open(path) || reader.read(record)) return 1;
            return reader.failed() && reader.reason() == "out of memory" && record.capacity() < 4096 ? 0 : 2;
        },
        60);
    EXPECT_EQ(code, 0);
}

#endif
