#pragma once

#include "frame/platform.h"

#include <deque>
#include <functional>
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

    std::deque<MessageAnswer> messageAnswers;             // default answer: the first button
    std::deque<std::optional<std::string>> dialogAnswers; // default answer: cancel

    std::vector<std::string> calls;
    std::vector<MessageBoxRequest> messages;
    std::vector<FileDialogRequest> dialogs;
    std::vector<std::string> sounds;
    std::vector<std::string> processes;
    std::vector<std::string> links;
    int endCalls = 0;

    std::string programPath() override { return record("programPath"), program; }
    std::uint32_t soundDeviceCount() override { return record("soundDeviceCount"), soundDevices; }
    void playSoundAsync(const std::string& path) override { record("playSound " + path, sounds, path); }
    MessageAnswer messageBox(const MessageBoxRequest& request) override {
        record("messageBox " + request.title + ": " + request.text, messages, request);
        return next(messageAnswers, firstButton(request.buttons));
    }
    std::optional<std::string> fileDialog(const FileDialogRequest& request) override {
        record("fileDialog " + request.title, dialogs, request);
        return next(dialogAnswers, std::optional<std::string>());
    }
    bool isPlainFile(const std::string& path) override {
        return record("isPlainFile " + path), plainFiles.count(path) > 0 || hiddenFiles.count(path) > 0;
    }
    bool isVisiblePlainFile(const std::string& path) override {
        return record("isVisiblePlainFile " + path), plainFiles.count(path) > 0;
    }
    bool isDirectory(const std::string& path) override {
        return record("isDirectory " + path), directories.count(path) > 0 || directoriesWithFiles.count(path) > 0;
    }
    bool hasPlainFile(const std::string& directory) override {
        return record("hasPlainFile " + directory), directoriesWithFiles.count(directory) > 0;
    }
    OperationResult changeDirectory(const std::string& path) override {
        record("changeDirectory " + path);
        if (failChangeDirectory) return OperationResult::failure("No such file or directory");
        cwd = path;
        return OperationResult::success();
    }
    std::string currentDirectory() override { return cwd; }
    std::vector<ProgramStart> starts;
    long startedPid = 0; // the process id a start gives; 0: unknown, as where the platform cannot tell
    ProcessStart startProcess(const ProgramStart& start) override {
        record("startProcess " + start.commandLine, processes, start.commandLine);
        starts.push_back(start);
        if (failStartProcess) return {OperationResult::failure("No such file or directory")};
        return {OperationResult::success(), startedPid};
    }
    OperationResult openLink(const std::string& target) override {
        record("openLink " + target, links, target);
        return failOpenLink ? OperationResult::failure("no handler") : OperationResult::success();
    }
    std::vector<std::string> drives() override { return driveList; }
    bool driveReady(const std::string& drive) override { return notReadyDrives.count(drive) == 0; }
    std::string driveCurrentDirectory(const std::string& drive) override {
        const auto it = driveCurrent.find(drive);
        return it == driveCurrent.end() ? drive : it->second;
    }
    std::string homeDirectory() override { return home; }
    std::function<void()> onEnd; // what ending does besides being counted
    void endProgram() override {
        record("endProgram"), ++endCalls;
        if (onEnd) onEnd();
    }

    // The answer a box gives when the test did not script one.
    static MessageAnswer firstButton(MessageButtons buttons) {
        return buttons == MessageButtons::YesNo || buttons == MessageButtons::YesNoCancel ? MessageAnswer::Yes
                                                                                          : MessageAnswer::Ok;
    }

private:
    void record(std::string call) { calls.push_back(std::move(call)); }
    template <class Item> void record(std::string call, std::vector<Item>& list, const Item& item) {
        record(std::move(call));
        list.push_back(item);
    }
    template <class Answer> static Answer next(std::deque<Answer>& queue, Answer otherwise) {
        if (queue.empty()) return otherwise;
        const Answer answer = queue.front();
        queue.pop_front();
        return answer;
    }
};

} // namespace ks::test
