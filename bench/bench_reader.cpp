// Reads a configuration file of about 50 MB three ways and prints the throughput of each: std::getline as
// the yardstick, the record reader alone, and the whole reader with the words cut and the fields filled.

#include "config/reader.h"
#include "config/record_reader.h"
#include "config/writer.h"
#include "frame/program.h"
#include "session/startup.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <random>
#include <string>

namespace fs = std::filesystem;

namespace {

// A machine with nothing attached: no sound, no dialogs, every box answered with its first button.
class QuietPlatform : public ks::Platform {
public:
    std::string programPath() override { return "/nonexistent/kslaunch"; }
    std::uint32_t soundDeviceCount() override { return 0; }
    void playSoundAsync(const std::string&) override {}
    ks::MessageAnswer messageBox(const ks::MessageBoxRequest&) override {
        ++messages;
        return ks::MessageAnswer::Ok;
    }
    std::optional<std::string> fileDialog(const ks::FileDialogRequest&) override { return std::nullopt; }
    bool isPlainFile(const std::string&) override { return false; }
    bool isDirectory(const std::string&) override { return false; }
    bool hasPlainFile(const std::string&) override { return false; }
    ks::OperationResult changeDirectory(const std::string&) override { return ks::OperationResult::success(); }
    std::string currentDirectory() override { return "/"; }
    ks::ProcessStart startProcess(const ks::ProgramStart&) override { return {}; }
    ks::OperationResult openLink(const std::string&) override { return ks::OperationResult::success(); }
    std::vector<std::string> drives() override { return {"/"}; }
    bool driveReady(const std::string&) override { return true; }
    std::string driveCurrentDirectory(const std::string& drive) override { return drive; }
    std::string homeDirectory() override { return {}; }
    void endProgram() override {}
    long messages = 0;
};

// Written files one after another, each with other values in a few fields, so the handlers have work.
std::string makeFile(const fs::path& path, std::size_t targetBytes) {
    QuietPlatform platform;
    ks::Program program(platform);
    ks::connectHandlers(program);
    ks::loadMainForm(program);
    std::ofstream out(path, std::ios::binary);
    std::size_t written = 0;
    for (int round = 0; written < targetBytes; ++round) {
        program.field(ks::mainField("FFGL1")).setText(std::to_string(round));
        program.field(ks::id::FHOSTN).setText("\"Server " + std::to_string(round) + "\"");
        program.check(ks::flagsCheck("Check57")).setState(round % 2);
        program.field(ks::weaponField("FWD7")).setText(std::to_string(70 + round % 10));
        const std::string text = ks::renderConfig(program);
        out << text;
        written += text.size();
    }
    return path.string();
}

double seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void report(const char* what, double bytes, double secs, std::size_t records) {
    std::printf("%-34s %8.1f MB/s  %7.3f s  %9zu records\n", what, bytes / 1e6 / secs, secs, records);
}

} // namespace

int main() {
    std::random_device device;
    const fs::path dir = fs::temp_directory_path() / ("ksbench-" + std::to_string(device()));
    fs::create_directories(dir);
    const std::string path = makeFile(dir / "big.cfg", 50u * 1000u * 1000u);
    const double bytes = static_cast<double>(fs::file_size(path));
    std::printf("file: %.1f MB of configuration lines\n", bytes / 1e6);

    for (int pass = 0; pass < 3; ++pass) {
        std::size_t lines = 0;
        double secs = seconds([&] {
            std::ifstream in(path, std::ios::binary);
            std::string line;
            while (std::getline(in, line))
                ++lines;
        });
        report("std::getline", bytes, secs, lines);

        std::size_t records = 0;
        secs = seconds([&] {
            ks::RecordReader reader;
            reader.open(path);
            std::string record;
            while (!reader.atEnd() && reader.read(record))
                ++records;
        });
        report("record reader alone", bytes, secs, records);

        QuietPlatform platform;
        ks::Program program(platform);
        ks::connectHandlers(program);
        ks::loadMainForm(program);
        platform.messages = 0; // the start-up search may have spoken
        ks::ReadResult result;
        secs = seconds([&] { result = ks::readConfig(program, path); });
        report("reader: cut, dispatch, handlers", bytes, secs, records);
        if (!result.read || !result.markerFound || platform.messages != 0)
            std::printf("unexpected: read %d, marker %d, %ld messages\n", result.read, result.markerFound,
                        platform.messages);
    }

    // Linear in size: a file a tenth as large takes a tenth of the time.
    for (std::size_t megabytes : {5u, 50u}) {
        const std::string sized = megabytes == 50u ? path : makeFile(dir / "small.cfg", megabytes * 1000u * 1000u);
        QuietPlatform platform;
        ks::Program program(platform);
        ks::connectHandlers(program);
        const double secs = seconds([&] { ks::readConfig(program, sized); });
        std::printf("reader on %2zu MB                     %8.3f s  %8.1f ns per byte\n", megabytes, secs,
                    secs * 1e9 / static_cast<double>(fs::file_size(sized)));
    }
    std::error_code ec;
    fs::remove_all(dir, ec);
    return 0;
}
