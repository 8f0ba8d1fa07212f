#include "config/atomic_file.h"
#include "support/child_process.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>

using namespace ks;
namespace fs = std::filesystem;

namespace {

// Puts hooks in place for one test and takes them away again.
class ScopedHooks {
public:
    explicit ScopedHooks(SaveHooks hooks) : previous_(setSaveHooksForTesting(std::move(hooks))) {}
    ~ScopedHooks() { setSaveHooksForTesting(std::move(previous_)); }

private:
    SaveHooks previous_;
};

std::vector<std::string> namesIn(const fs::path& directory) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

ino_t inodeOf(const std::string& path) {
    struct stat status {};
    lstat(path.c_str(), &status);
    return status.st_ino;
}

// A directory with one file, server.cfg unless named otherwise, holding `bytes`.
struct OldFile : test::TempDir {
    std::string target;
    explicit OldFile(const std::string& bytes = "old\n", const std::string& name = "server.cfg") : target(file(name)) {
        test::writeBytes(target, bytes);
    }
};

} // namespace

// Whatever the temporary file is, the one flushed to disk becomes the target by the rename, and only after the
// flush: a save in place, one that skips the flush or renames first fails here. The new file keeps the old one's
// owner and mode, a new file is 0640 less the umask; the old name has the full length of 255 bytes, so a named
// temporary must find a name beside it.
TEST(AtomicSave, FlushesANewFileAndRenamesItOverTheOldKeepingItsOwnerAndModeBesideANameOfFullLength) {
    const std::string name(255, 'n');
    for (const bool unnamed : {true, false}) {
        OldFile dir("old\n", name);
        const std::string& target = dir.target;
        fs::create_hard_link(target, dir.file("hard.cfg"));
        // Root's save keeps another user's file theirs, set-group-ID bit and all.
        const bool root = test::runningAsRoot();
        const std::pair<uid_t, gid_t> owner =
            root ? std::pair<uid_t, gid_t>{1234, 2345} : std::pair{geteuid(), getegid()};
        ASSERT_EQ(chown(target.c_str(), owner.first, owner.second), 0);
        ASSERT_EQ(chmod(target.c_str(), root ? 02640 : 0600), 0);
        const int reader = open(target.c_str(), O_RDONLY | O_CLOEXEC);
        const ino_t oldFile = inodeOf(target);
        struct {
            int count = 0;
            ino_t file = 0;
            std::string targetBytes;
        } flushed;
        ScopedHooks hooks({.write = nullptr,
                           .flush =
                               [&](int fd) {
                                   struct stat status {};
                                   fstat(fd, &status);
                                   flushed = {flushed.count + 1, status.st_ino, test::readBytes(target)};
                                   return fsync(fd);
                               },
                           .unnamedTemporary = unnamed});

        ASSERT_TRUE(replaceFileAtomically(target, "new\n").ok);
        EXPECT_EQ(flushed.count, 1) << unnamed;
        EXPECT_NE(flushed.file, oldFile);
        EXPECT_EQ(flushed.targetBytes, "old\n");
        EXPECT_EQ(inodeOf(target), flushed.file);
        EXPECT_EQ(test::readBytes(target), "new\n");
        struct stat status {};
        stat(target.c_str(), &status);
        EXPECT_EQ(std::pair(status.st_uid, status.st_gid), owner);
        EXPECT_EQ(status.st_mode & 07777, root ? 02640u : 0600u);
        EXPECT_EQ(test::readBytes("/proc/self/fd/" + std::to_string(reader)), "old\n");
        EXPECT_EQ(test::readBytes(dir.file("hard.cfg")), "old\n");
        EXPECT_EQ(namesIn(dir.path()), (std::vector<std::string>{"hard.cfg", name}));
        close(reader);
        // A new file holds a password: others may not read it, whatever the umask lets through.
        for (const auto& [mask, mode] : {std::pair<mode_t, mode_t>{022, 0640}, {0, 0640}, {077, 0600}}) {
            const mode_t previous = umask(mask);
            EXPECT_TRUE(replaceFileAtomically(dir.file("new.cfg"), "new\n").ok);
            umask(previous);
            stat(dir.file("new.cfg").c_str(), &status);
            EXPECT_EQ(status.st_mode & 07777, mode) << mask;
            fs::remove(dir.file("new.cfg"));
        }
    }
}

TEST(AtomicSave, AWriteOrFlushThatFailsLeavesTheOldFileWholeAndNoTemporary) {
    const std::string old = "old content\n", bytes(100000, 'n');
    const auto shortWrite = [](int fd, const void* data, std::size_t size) {
        return ::write(fd, data, std::min<std::size_t>(size, 3));
    };
    int calls = 0;
    const auto fullDisk = [&](int fd, const void* data, std::size_t size) -> long {
        if (++calls == 1) return ::write(fd, data, std::min<std::size_t>(size, 500));
        errno = ENOSPC;
        return -1;
    };
    const auto failedFlush = [](int) {
        errno = EIO;
        return -1;
    };
    const struct {
        SaveHooks hooks;
        std::string reason; // empty: the save succeeds
    } cases[] = {{{.write = shortWrite}, ""},
                 {{.write = fullDisk}, "No space left on device"},
                 {{.flush = failedFlush}, "Input/output error"}};

    for (const bool unnamed : {true, false}) {
        for (const auto& [hooks, reason] : cases) {
            OldFile dir(old);
            calls = 0;
            SaveHooks these = hooks;
            these.unnamedTemporary = unnamed;
            const ScopedHooks scoped(these);
            EXPECT_EQ(replaceFileAtomically(dir.target, bytes).error, reason) << unnamed;
            EXPECT_TRUE(test::readBytes(dir.target) == (reason.empty() ? bytes : old)) << reason;
            EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"server.cfg"}) << reason;
        }

        // A real write that the file size limit stops, as a full disk would.
        OldFile dir(old);
        EXPECT_EQ(test::runInChild([&] {
                      std::signal(SIGXFSZ, SIG_IGN);
                      const rlimit limit{1000, 1000};
                      setrlimit(RLIMIT_FSIZE, &limit);
                      setSaveHooksForTesting({.unnamedTemporary = unnamed});
                      return replaceFileAtomically(dir.target, bytes).error == "File too large" ? 0 : 1;
                  }),
                  0)
            << unnamed;
        EXPECT_EQ(test::readBytes(dir.target), old);
        EXPECT_EQ(namesIn(dir.path()), std::vector<std::string>{"server.cfg"});
    }
}

TEST(AtomicSave, RefusesWhatIsNotARegularFileAndLinkLoopsTouchingNothingButFollowsOtherLinks) {
    test::TempDir dir;
    const auto at = [&](const std::string& name) { return dir.file(name); };
    ASSERT_EQ(mkfifo(at("fifo").c_str(), 0644), 0);
    const int sock = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s", at("socket").c_str());
    ASSERT_EQ(bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    fs::create_directory(at("dir"));
    fs::create_symlink("fifo", at("to-fifo"));
    fs::create_symlink("loop-b", at("loop-a"));
    fs::create_symlink("loop-a", at("loop-b"));
    // link-0 -> link-1 -> ... -> link-40 -> end: 41 links, one more than a path may pass.
    test::writeBytes(at("end"), "end\n");
    for (int i = 0; i <= 40; ++i)
        fs::create_symlink(i == 40 ? "end" : "link-" + std::to_string(i + 1), at("link-" + std::to_string(i)));

    std::vector<std::pair<std::string, std::string>> cases = {
        {"fifo", "it is not a regular file"},
        {"socket", "it is not a regular file"},
        {"to-fifo", "it is not a regular file"},
        {"dir", "it is a directory"},
        {"dir/", "it is a directory"},
        {"loop-a", "Too many levels of symbolic links"},
        {"link-0", "Too many levels of symbolic links"},
    };
    if (test::runningAsRoot()) {
        ASSERT_EQ(mknod(at("null").c_str(), S_IFCHR | 0666, makedev(1, 3)), 0);
        cases.emplace_back("null", "it is not a regular file");
    }
    const std::vector<std::string> before = namesIn(dir.path());
    for (const auto& [name, reason] : cases) {
        struct stat old {
        }, now{};
        lstat(at(name).c_str(), &old);
        EXPECT_EQ(replaceFileAtomically(at(name), "x").error, reason) << name;
        lstat(at(name).c_str(), &now);
        EXPECT_EQ(now.st_ino, old.st_ino) << name;
        EXPECT_EQ(now.st_mode, old.st_mode) << name;
    }
    EXPECT_EQ(namesIn(dir.path()), before);
    close(sock);

    // Forty links are as many as a path may pass; as `echo > link` does, a link whose file is missing gets it.
    ASSERT_TRUE(replaceFileAtomically(at("link-1"), "new\n").ok);
    EXPECT_EQ(test::readBytes(at("end")), "new\n");
    fs::create_symlink("dir/new.cfg", at("dangling"));
    ASSERT_TRUE(replaceFileAtomically(at("dangling"), "new\n").ok);
    EXPECT_TRUE(fs::is_symlink(at("dangling")) && test::readBytes(at("dir/new.cfg")) == "new\n");
}

// A save killed in the middle of its write: an unnamed temporary file goes with the process; a named one is
// removed by a later save once it is a minute old, and nothing else of that name's likeness is.
TEST(AtomicSave, AKilledSaveLeavesNothingThatLasts) {
    for (const bool unnamed : {true, false}) {
        OldFile dir;
        const std::string& target = dir.target;
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            setSaveHooksForTesting({.write =
                                        [&](int fd, const void* data, std::size_t size) {
                                            const long count = ::write(fd, data, size / 2);
                                            if (::write(ready[1], "w", 1) == 1) pause();
                                            return count;
                                        },
                                    .unnamedTemporary = unnamed});
            replaceFileAtomically(target, std::string(4096, 'n'));
            _exit(0);
        }
        char signal = 0;
        ASSERT_EQ(read(ready[0], &signal, 1), 1);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(ready[0]);
        close(ready[1]);
        EXPECT_EQ(test::readBytes(target), "old\n");

        std::vector<std::string> left = namesIn(dir.path());
        std::erase(left, "server.cfg");
        ASSERT_EQ(left.size(), unnamed ? 0u : 1u);
        if (unnamed) continue;
        const std::vector<std::string> others = {".ks0123456789ab.tmp", ".ksnothexdigits.tmp", "a.ks0123456789ab.tmp",
                                                 ".ks0123456789ab.tmp.cfg"};
        for (const std::string& name : others)
            test::writeBytes(dir.file(name), "theirs");
        const timespec twoMinutesAgo[2] = {{time(nullptr) - 120, 0}, {time(nullptr) - 120, 0}};
        for (const std::string& name : {left[0], others[1], others[2], others[3]})
            utimensat(AT_FDCWD, dir.file(name).c_str(), twoMinutesAgo, 0);

        ASSERT_TRUE(replaceFileAtomically(target, "new\n").ok);
        std::vector<std::string> expected = others;
        expected.push_back("server.cfg");
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(namesIn(dir.path()), expected);
    }
}

// In a sticky world-writable directory another user's link would steer root's save onto any file.
TEST(AtomicSave, AsRootFollowsNoStrangersLinkInASharedDirectory) {
    if (!test::runningAsRoot()) GTEST_SKIP() << "only root may give a link to another user";
    test::TempDir dir;
    const std::string victim = dir.file("victim"), shared = dir.file("shared");
    test::writeBytes(victim, "keep\n");
    fs::create_directory(shared);
    ASSERT_EQ(chmod(shared.c_str(), 01777), 0);
    const std::string link = shared + "/server.cfg";
    fs::create_symlink(victim, link);
    ASSERT_EQ(lchown(link.c_str(), 1234, 1234), 0);
    EXPECT_EQ(replaceFileAtomically(link, "new\n").error, "Permission denied");
    EXPECT_EQ(test::readBytes(victim), "keep\n");
    ASSERT_EQ(lchown(link.c_str(), 0, 0), 0);
    EXPECT_TRUE(replaceFileAtomically(link, "new\n").ok);
    EXPECT_EQ(test::readBytes(victim), "new\n");
}
