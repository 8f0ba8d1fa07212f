#pragma once

#include "cli/layer.h"

#include "frame/platform.h"

#include <iosfwd>

namespace ks {

// The platform of the command-line tool: no window, no sound. Message boxes become lines on the error
// stream ("warning: TITLE: TEXT"), none while the platform is quiet, and take their first button; file
// dialogs are cancelled. Its files, directories and drives are those of the system it runs on: one root on POSIX
// systems, drive letters on Windows.
class ConsolePlatform : public Platform {
public:
    explicit ConsolePlatform(std::ostream& messages);

    int messageCount() const { return messageCount_; }
    bool quiet() const { return quiet_; }
    void setQuiet(bool quiet) { quiet_ = quiet; }

    std::string programPath() override;
    std::uint32_t soundDeviceCount() override { return 0; }
    void playSoundAsync(const std::string&) override {}
    MessageAnswer messageBox(const MessageBoxRequest& request) override;
    std::optional<std::string> fileDialog(const FileDialogRequest&) override { return std::nullopt; }
    bool isPlainFile(const std::string& path) override;
    bool isVisiblePlainFile(const std::string& path) override;
    bool isDirectory(const std::string& path) override;
    bool hasPlainFile(const std::string& directory) override;
    bool readableByOthers(const std::string& path) override;
    OperationResult changeDirectory(const std::string& path) override;
    std::string currentDirectory() override;
    ProcessStart startProcess(const ProgramStart& start) override;
    OperationResult openLink(const std::string& target) override;
    std::vector<std::string> drives() override;
    bool driveReady(const std::string& drive) override;
    std::string driveCurrentDirectory(const std::string& drive) override;
    std::string homeDirectory() override;
    void endProgram() override;

private:
    std::ostream& messages_;
    int messageCount_ = 0;
    bool quiet_ = false;
};

} // namespace ks
