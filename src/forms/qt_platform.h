#pragma once

#include "forms/layer.h"

#include "frame/platform.h"

#include <QPointer>

#include <functional>

class QWidget;

namespace ks {

class SoundOutput;

// The platform of the desktop program, on Qt.
class QtPlatform : public Platform {
public:
    QtPlatform();
    ~QtPlatform() override;

    // Message boxes and dialogs are centred on this window.
    void setDialogParent(QWidget* parent) { parent_ = parent; }
    // What ending the program does: the main window's farewell. Without it the event loop just ends.
    void setProgramEnd(std::function<void()> end) { end_ = std::move(end); }

    std::string programPath() override;
    std::uint32_t soundDeviceCount() override;
    void playSoundAsync(const std::string& path) override;
    MessageAnswer messageBox(const MessageBoxRequest& request) override;
    std::optional<std::string> fileDialog(const FileDialogRequest& request) override;
    bool isPlainFile(const std::string& path) override;
    bool isVisiblePlainFile(const std::string& path) override;
    bool isDirectory(const std::string& path) override;
    bool hasPlainFile(const std::string& directory) override;
    OperationResult changeDirectory(const std::string& path) override;
    std::string currentDirectory() override;
    ProcessStart startProcess(const ProgramStart& start) override;
    OperationResult openLink(const std::string& target) override;
    std::vector<std::string> drives() override;
    bool driveReady(const std::string& drive) override;
    std::string driveCurrentDirectory(const std::string& drive) override;
    std::string homeDirectory() override;
    void endProgram() override;

    // "Description (*.EXT)|*.EXT" in Qt's form.
    static QString qtFilter(const std::string& filter);

private:
    SoundOutput* soundOutput();

    QPointer<QWidget> parent_;
    SoundOutput* sound_ = nullptr;
    bool soundSearched_ = false;
    std::function<void()> end_;
};

// File texts are bytes; the widgets show them as Latin-1 so that every byte comes back unchanged.
QString toQt(const std::string& bytes);
std::string fromQt(const QString& text);

// Paths cross between the windows and the core in the file system's encoding.
QString pathToQt(const std::string& path);
std::string pathFromQt(const QString& path);

// Text for the operator's eyes that may hold a path as well as typed bytes: read as UTF-8 when it is valid
// UTF-8, else as Latin-1.
QString displayText(const std::string& bytes);

} // namespace ks
