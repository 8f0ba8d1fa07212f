#pragma once

#include "frame/platform.h"

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace ks::test {

// A scripted platform: it records every call, answers message boxes and file dialogs from queues, and
// knows the files and directories it is told about.
class FakePlatform : public Platform {
public:
    std::string program = "/opt/kslaunch/kslaunch";
    std::uint32_t soundDevices = 1;
    std::set<std::string> plainFiles;
    std::set<std::string> hiddenFiles;
    std::set<std::string> directories;
    std::set<std::string> directoriesWithFiles;
    std::vector<std::string> driveList{"/"};
    std::set<std::string> notReadyDrives;
    std::map<std::string, std::string> driveCurrent;
    std::string home = "/home/operator";
    std::string cwd = "/";
    bool failChangeDirectory = false;
    bool failStartProcess = false;
    bool failOpenLink = false;

    std::deque<MessageAnswer> messageAnswers;            // default answer: the first button
    std::deque<std::optional<std::string>> dialogAnswers; // default answer: cancel

    std::vector<std::string> calls;
    std::vector<MessageBoxRequest> messages;
    std::vector<FileDialogRequest> dialogs;
    std::vector<std::string> sounds;
    std::vector<std::string> processes;
    std::vector<std::string> links;
    std::vector<std::string> directoryChanges;
    int quitCalls = 0;

    std::string programPath() override { return record("programPath"), program; }
    std::uint32_t soundDeviceCount() override { return record("soundDeviceCount"), soundDevices; }
    void playSoundAsync(const std::string& path) override {
        record("playSound " + path);
        sounds.push_back(path);
    }
    MessageAnswer messageBox(const MessageBoxRequest& request) override {
        record("messageBox " + request.title + ": " + request.text);
        messages.push_back(request);
        if (messageAnswers.empty()) return firstButton(request.buttons);
        const MessageAnswer answer = messageAnswers.front();
        messageAnswers.pop_front();
        return answer;
    }
    std::optional<std::string> fileDialog(const FileDialogRequest& request) override {
        record("fileDialog " + request.title);
        dialogs.push_back(request);
        if (dialogAnswers.empty()) return std::nullopt;
        auto answer = dialogAnswers.front();
        dialogAnswers.pop_front();
        return answer;
    }
    bool isPlainFile(const std::string& path) override {
        record("isPlainFile " + path);
        return plainFiles.count(path) > 0 || hiddenFiles.count(path) > 0;
    }
    bool isVisiblePlainFile(const std::string& path) override {
        record("isVisiblePlainFile " + path);
        return plainFiles.count(path) > 0;
    }
    bool isDirectory(const std::string& path) override {
        record("isDirectory " + path);
        return directories.count(path) > 0 || directoriesWithFiles.count(path) > 0;
    }
    bool hasPlainFile(const std::string& directory) override {
        record("hasPlainFile " + directory);
        return directoriesWithFiles.count(directory) > 0;
    }
    OperationResult changeDirectory(const std::string& path) override {
        record("changeDirectory " + path);
        directoryChanges.push_back(path);
        if (failChangeDirectory) return OperationResult::failure("No such file or directory");
        cwd = path;
        return OperationResult::success();
    }
    std::string currentDirectory() override { return cwd; }
    OperationResult startProcess(const std::string& commandLine) override {
        record("startProcess " + commandLine);
        processes.push_back(commandLine);
        if (failStartProcess) return OperationResult::failure("No such file or directory");
        return OperationResult::success();
    }
    OperationResult openLink(const std::string& target) override {
        record("openLink " + target);
        links.push_back(target);
        if (failOpenLink) return OperationResult::failure("no handler");
        return OperationResult::success();
    }
    std::vector<std::string> drives() override { return driveList; }
    bool driveReady(const std::string& drive) override { return notReadyDrives.count(drive) == 0; }
    std::string driveCurrentDirectory(const std::string& drive) override {
        const auto it = driveCurrent.find(drive);
        return it == driveCurrent.end() ? drive : it->second;
    }
    std::string homeDirectory() override { return home; }
    void quit() override {
        record("quit");
        ++quitCalls;
    }

    // The answer a box gives when the test did not script one.
    static MessageAnswer firstButton(MessageButtons buttons) {
        return buttons == MessageButtons::YesNo || buttons == MessageButtons::YesNoCancel ? MessageAnswer::Yes
                                                                                           : MessageAnswer::Ok;
    }

private:
    void record(std::string call) { calls.push_back(std::move(call)); }
};

} // namespace ks::test
