// Files on Windows: names beyond ASCII and beyond 260 characters, a save that fails, what is no regular file.

#include "cli/kscfg_run.h"
#include "config/atomic_file.h"
#include "config/record_reader.h"
#include "frame/windows_paths.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <windows.h>

using namespace ks;
using test::kscfg;

namespace {

const std::string kData = KS_TEST_DATA;

// The names in a directory, by the system's own listing.
std::vector<std::wstring> namesIn(const std::wstring& directory) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((L"\\\\?\\" + directory + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do
        if (std::wstring_view(found.cFileName) != L"." && std::wstring_view(found.cFileName) != L"..")
            names.emplace_back(found.cFileName);
    while (FindNextFileW(search, &found));
    FindClose(search);
    return names;
}

} // namespace

// A configuration deep in folders whose names hold letters beyond ASCII, its path far beyond 260 characters: kscfg
// takes the name from its wide command line, and the file is written, read and written again under that name.
TEST(WindowsFiles, NamesBeyondAsciiAndBeyond260CharactersWorkEndToEnd) {
    test::TempDir dir;
    const std::wstring folder = L"Serveurs d\u2019\u00e9t\u00e9 \u03a9 \u670d\u52a1\u5668 " + std::wstring(40, L'x');
    std::wstring deep = dir.path().wstring();
    for (int level = 0; level < 6; ++level) {
        deep += L"\\" + folder;
        ASSERT_TRUE(CreateDirectoryW((L"\\\\?\\" + deep).c_str(), nullptr)) << GetLastError();
    }
    const std::string config = utf8Text(deep) + "\\Server.cfg";
    ASSERT_GT(deep.size(), 300u);

    EXPECT_EQ(kscfg("new --wait 0 " + test::quoted(config), "/", "2>&1 >/dev/null").status, 0);
    EXPECT_EQ(namesIn(deep), std::vector<std::wstring>{L"Server.cfg"});
    const FileBytes written = readRegularFile(config);
    ASSERT_TRUE(written.ok) << written.reason;
    EXPECT_EQ(written.bytes, test::readBytes(kData + "/default.cfg"));

    const test::Outcome set = kscfg("set --quiet " + test::quoted(config) + " fraglimit=40 hostname=\u00c9t\u00e9");
    EXPECT_EQ(set.status, 0) << set.output;
    EXPECT_EQ(kscfg("get " + test::quoted(config) + " fraglimit").output, "40\n");
    EXPECT_EQ(namesIn(deep), std::vector<std::wstring>{L"Server.cfg"});
}

// A save that cannot write the new file, or cannot move it over the old one because another program holds the old
// one open without letting it be replaced, leaves the old file whole and no temporary file beside it.
TEST(WindowsFiles, ASaveThatFailsKeepsTheOldFileWholeAndLeavesNoTemporary) {
    test::TempDir dir;
    const std::string target = dir.file("server.cfg");
    test::writeBytes(target, "old\r\n");

    SaveHooks full;
    full.write = [](int, const void*, std::size_t) -> long {
        errno = ENOSPC;
        return -1;
    };
    const SaveHooks before = setSaveHooksForTesting(full);
    const OperationResult noSpace = replaceFileAtomically(target, "new\r\n");
    setSaveHooksForTesting(before);
    EXPECT_EQ(noSpace.error, "No space left on device");

    const HANDLE held = CreateFileW(wideText(target).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    const OperationResult inUse = replaceFileAtomically(target, "new\r\n");
    CloseHandle(held);
    EXPECT_FALSE(inUse.ok);
    EXPECT_EQ(inUse.error, "Permission denied");

    EXPECT_EQ(test::readBytes(target), "old\r\n");
    EXPECT_EQ(namesIn(dir.path().wstring()), std::vector<std::wstring>{L"server.cfg"});
    EXPECT_TRUE(replaceFileAtomically(target, "new\r\n").ok);
    EXPECT_EQ(test::readBytes(target), "new\r\n");
}

// Devices, whatever folder their name stands in, and directories are neither read nor replaced, and kscfg names
// them in its one voice.
TEST(WindowsFiles, DevicesAndDirectoriesAreNeitherReadNorReplaced) {
    test::TempDir dir;
    const std::pair<std::string, std::string> refused[] = {
        {"NUL", "it is not a regular file"},        {"CON", "it is not a regular file"},
        {"COM1", "it is not a regular file"},       {dir.file("NUL"), "it is not a regular file"},
        {dir.path().string(), "it is a directory"},
    };
    for (const auto& [path, reason] : refused) {
        const FileBytes read = readRegularFile(path);
        EXPECT_FALSE(read.ok) << path;
        EXPECT_EQ(read.reason, reason) << path;
        EXPECT_EQ(replaceFileAtomically(path, "x").error, reason) << path;
        const test::Outcome get = kscfg("get " + test::quoted(path));
        EXPECT_EQ(get.status, 1) << path;
        EXPECT_EQ(get.output, "kscfg: cannot read " + path + ": " + reason + "\n");
        EXPECT_EQ(kscfg("new " + test::quoted(path)).output, "kscfg: cannot write " + path + ": " + reason + "\n");
    }
    EXPECT_EQ(readRegularFile(dir.file("missing.cfg")).reason, "No such file or directory");
    EXPECT_TRUE(namesIn(dir.path().wstring()).empty());
}
