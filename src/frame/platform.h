#pragma once

#include "frame/layer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ks {

enum class MessageButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class MessageIcon { None, Critical, Question, Exclamation, Information };
enum class MessageAnswer { Ok, Cancel, Yes, No };

struct MessageBoxRequest {
    std::string text; // lines are joined by a carriage return
    std::string title;
    MessageButtons buttons = MessageButtons::Ok;
    MessageIcon icon = MessageIcon::None;
    int defaultButton = 0; // 0 first button, 1 second, 2 third
};

enum class FileDialogKind { Open, Save };

struct FileDialogRequest {
    FileDialogKind kind = FileDialogKind::Open;
    std::string title;
    std::string initialDirectory;
    std::string fileName; // preset name
    std::string filter;   // "Description (*.EXT)|*.EXT"
};

// Outcome of an operation that can fail for a reason the operator should read.
struct OperationResult {
    bool ok = true;
    std::string error;
    static OperationResult success() { return {}; }
    static OperationResult failure(std::string why) { return {false, std::move(why)}; }
};

// The outcome of a start: on success the started program's process id, where the platform knows it (0 where it
// does not).
struct ProcessStart : OperationResult {
    long pid = 0;
};

// A program to start without waiting for it: one path that is never split, and its arguments. `commandLine`
// is the same as one line, as the operator reads it and as Windows hands it on.
struct ProgramStart {
    std::string program;
    std::vector<std::string> arguments;
    std::string commandLine;
    std::string logFile; // standard output and error are appended here; when empty they go nowhere
};

// The start of a program with its arguments, and its command line joined at blanks.
inline ProgramStart programStart(std::string program, std::vector<std::string> arguments) {
    std::string line = program;
    for (const std::string& argument : arguments)
        line += ' ' + argument;
    return {std::move(program), std::move(arguments), std::move(line), {}};
}

// Everything the launcher needs from the machine it runs on. The GUI, the command-line tool and the
// tests each provide one.
class Platform {
public:
    virtual ~Platform() = default;

    // Full path of the running program.
    virtual std::string programPath() = 0;
    virtual std::uint32_t soundDeviceCount() = 0;
    // Starts playing and returns at once; a missing file plays nothing.
    virtual void playSoundAsync(const std::string& path) = 0;

    virtual MessageAnswer messageBox(const MessageBoxRequest& request) = 0;
    // The chosen path, or nothing when the operator cancels.
    virtual std::optional<std::string> fileDialog(const FileDialogRequest& request) = 0;

    // A plain file (not a directory) of that name exists.
    virtual bool isPlainFile(const std::string& path) = 0;
    // A hidden file does not count.
    virtual bool isVisiblePlainFile(const std::string& path) { return isPlainFile(path); }
    virtual bool isDirectory(const std::string& path) = 0;
    // The directory lists at least one plain file; false for a missing, unreadable or not ready one.
    virtual bool hasPlainFile(const std::string& directory) = 0;
    // Users other than the file's owner and group may read it, by its mode bits; false where files have none.
    virtual bool readableByOthers(const std::string&) { return false; }

    virtual OperationResult changeDirectory(const std::string& path) = 0;
    virtual std::string currentDirectory() = 0;
    // Starts a program from the current directory without waiting; its standard input is empty.
    virtual ProcessStart startProcess(const ProgramStart& start) = 0;
    // Hands a document or link to the desktop's default handler.
    virtual OperationResult openLink(const std::string& target) = 0;

    // The drives (volume roots) that can be selected, and the current directory of one.
    virtual std::vector<std::string> drives() = 0;
    virtual bool driveReady(const std::string& drive) = 0;
    virtual std::string driveCurrentDirectory(const std::string& drive) = 0;
    // Home directory of the user; empty when unknown.
    virtual std::string homeDirectory() = 0;

    // Ends the program: the launcher's one way out. Nothing is saved on the way.
    virtual void endProgram() = 0;
};

} // namespace ks
