// Reads the bytes as a configuration file, as File, Open does, and writes the file again. Whatever the bytes,
// the launcher must not crash, and what it writes has its fixed layout: a line for each row of the layout, the
// IP's only with a server IP, each ending in CR LF. The lines kscfg keeps behind the layout leave the reading as
// it was, and kscfg check comes to its end.

#include "cli/console_platform.h"
#include "config/config_check.h"
#include "config/kept_lines.h"
#include "config/layout.h"
#include "config/reader.h"
#include "config/setting_keys.h"
#include "config/writer.h"
#include "frame/program.h"
#include "session/startup.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

std::size_t countLines(const std::string& text) {
    std::size_t lines = 0;
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; at += 2)
        ++lines;
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The input lives in a file of memory, so that the reader opens it as it opens any file.
    const int fd = memfd_create("ks-fuzz", 0);
    if (fd < 0) return 0;
    for (std::size_t done = 0; done < size;) {
        const ssize_t n = write(fd, data + done, size - done);
        if (n <= 0) break;
        done += static_cast<std::size_t>(n);
    }
    const std::string path = "/proc/self/fd/" + std::to_string(fd);

    std::ostringstream messages;
    ks::ConsolePlatform platform(messages);
    ks::Program program(platform, ks::PathStyle::Linux);
    ks::connectHandlers(program);
    program.check(ks::id::ipCheck).setState(1);
    ks::readConfig(program, path);
    const std::string written = ks::renderConfig(program);
    close(fd);

    const std::size_t lines = countLines(written);
    const bool withAddress = !program.field(ks::id::IP).text().empty();
    if (lines != ks::layoutLineCount(withAddress) || !written.ends_with("\r\n")) std::abort();

    // What was written reads back without harm too.
    ks::Program again(platform, ks::PathStyle::Linux);
    ks::connectHandlers(again);
    const int back = memfd_create("ks-fuzz-again", 0);
    if (back < 0) return 0;
    if (write(back, written.data(), written.size()) == static_cast<ssize_t>(written.size()))
        ks::readConfig(again, "/proc/self/fd/" + std::to_string(back));
    close(back);

    // The lines that kscfg set keeps behind the layout give the reader nothing: with them the file reads as
    // without them.
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    ks::Program withBlock(platform, ks::PathStyle::Linux);
    ks::connectHandlers(withBlock);
    ks::readConfigText(withBlock, written + ks::keptBlock(ks::linesToKeep(input, ks::PathStyle::Linux)));
    for (const ks::SettingKey& setting : ks::settingKeys())
        if (withBlock.field(setting.field).text() != again.field(setting.field).text()) std::abort();

    // The check of the bytes comes to its end, whatever they are.
    ks::Program checked(platform, ks::PathStyle::Linux), reloaded(platform, ks::PathStyle::Linux);
    ks::connectHandlers(checked);
    ks::connectHandlers(reloaded);
    ks::checkConfig(checked, reloaded, input);
    return 0;
}
