#include "forms/qt_platform.h"

#include "forms/sound_output.h"
#include "frame/file_tests.h"
#include "server/process.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPluginLoader>
#include <QProcess>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QStringDecoder>
#include <QUrl>

#include <utility>

namespace ks {

QString toQt(const std::string& bytes) { return QString::fromLatin1(bytes.data(), qsizetype(bytes.size())); }

std::string fromQt(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return std::string(bytes.constData(), std::size_t(bytes.size()));
}

QString pathToQt(const std::string& path) { return QFile::decodeName(QByteArray(path.data(), qsizetype(path.size()))); }

std::string pathFromQt(const QString& path) {
    const QByteArray bytes = QFile::encodeName(path);
    return std::string(bytes.constData(), std::size_t(bytes.size()));
}

QString displayText(const std::string& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
    return utf8.hasError() ? toQt(bytes) : text;
}

QtPlatform::QtPlatform() = default;
QtPlatform::~QtPlatform() = default;

std::string QtPlatform::programPath() {
    return pathFromQt(QDir::toNativeSeparators(QCoreApplication::applicationFilePath()));
}

SoundOutput* QtPlatform::soundOutput() {
    // Without the module the launcher stays silent, as on a machine without a sound device.
    if (!std::exchange(soundSearched_, true)) {
#ifdef Q_OS_LINUX
        // Without a session's runtime directory the sound server's client library would keep its runtime link
        // under ~/.config/pulse; the launcher keeps nothing under HOME, so the link goes where Qt keeps its own.
        if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR") && qEnvironmentVariableIsEmpty("PULSE_RUNTIME_PATH"))
            qputenv("PULSE_RUNTIME_PATH",
                    QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)));
#endif
        for (const QString& file : soundModuleFiles(QCoreApplication::applicationDirPath())) {
            sound_ = qobject_cast<SoundOutput*>(QPluginLoader(file).instance());
            if (sound_) break;
        }
    }
    return sound_;
}

std::uint32_t QtPlatform::soundDeviceCount() {
    SoundOutput* output = soundOutput();
    return output ? output->deviceCount() : 0;
}

void QtPlatform::playSoundAsync(const std::string& path) {
    if (!QFileInfo(pathToQt(path)).isFile()) return;
    if (SoundOutput* output = soundOutput()) output->play(pathToQt(path));
}

MessageAnswer QtPlatform::messageBox(const MessageBoxRequest& request) {
    QMessageBox box(parent_);
    QString text = displayText(request.text);
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    box.setText(text);
    box.setWindowTitle(displayText(request.title));
    switch (request.icon) {
    case MessageIcon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case MessageIcon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case MessageIcon::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case MessageIcon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    case MessageIcon::None:
        box.setIcon(QMessageBox::NoIcon);
        break;
    }
    QList<QMessageBox::StandardButton> buttons;
    switch (request.buttons) {
    case MessageButtons::Ok:
        buttons = {QMessageBox::Ok};
        break;
    case MessageButtons::OkCancel:
        buttons = {QMessageBox::Ok, QMessageBox::Cancel};
        break;
    case MessageButtons::YesNo:
        buttons = {QMessageBox::Yes, QMessageBox::No};
        break;
    case MessageButtons::YesNoCancel:
        buttons = {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
        break;
    }
    for (auto button : buttons)
        box.addButton(button);
    const int defaultIndex = std::min<int>(request.defaultButton, int(buttons.size()) - 1);
    box.setDefaultButton(buttons[std::max(0, defaultIndex)]);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MessageAnswer::Yes;
    case QMessageBox::No:
        return MessageAnswer::No;
    case QMessageBox::Cancel:
        return MessageAnswer::Cancel;
    default:
        return request.buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::Cancel;
    }
}

QString QtPlatform::qtFilter(const std::string& filter) {
    // "Quake Configuration Files (*.CFG)|*.CFG": the line as it reads, which names its pattern itself.
    const QString text = toQt(filter);
    const qsizetype bar = text.indexOf(QLatin1Char('|'));
    if (bar < 0) return text;
    const QString description = text.left(bar);
    if (description.contains(QLatin1Char('('))) return description;
    return description + QStringLiteral(" (") + text.mid(bar + 1) + QLatin1Char(')');
}

std::optional<std::string> QtPlatform::fileDialog(const FileDialogRequest& request) {
    QFileDialog dialog(parent_, toQt(request.title), pathToQt(request.initialDirectory), qtFilter(request.filter));
    dialog.setAcceptMode(request.kind == FileDialogKind::Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // A typed name that matches no file reaches the launcher, which tells the operator in its own words.
    dialog.setFileMode(QFileDialog::AnyFile);
    // The commands ask their own question before a file is replaced.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    // The launcher's own dialog on every desktop: its patterns match a name in any case, server.cfg and
    // SERVER.CFG alike, where a desktop's native dialog would tell the cases apart.
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setFilter(dialog.filter() & ~QDir::CaseSensitive);
    if (!request.fileName.empty()) dialog.selectFile(pathToQt(request.fileName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return pathFromQt(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}

bool QtPlatform::isPlainFile(const std::string& path) { return file_tests::isPlainFile(path); }
bool QtPlatform::isVisiblePlainFile(const std::string& path) { return file_tests::isVisiblePlainFile(path); }
bool QtPlatform::isDirectory(const std::string& path) { return file_tests::isDirectory(path); }
bool QtPlatform::hasPlainFile(const std::string& directory) { return file_tests::hasPlainFile(directory); }

OperationResult QtPlatform::changeDirectory(const std::string& path) {
    if (!QFileInfo(pathToQt(path)).isDir()) return OperationResult::failure("the directory does not exist");
    if (!QDir::setCurrent(pathToQt(path))) return OperationResult::failure("the directory cannot be entered");
    return OperationResult::success();
}

std::string QtPlatform::currentDirectory() { return pathFromQt(QDir::toNativeSeparators(QDir::currentPath())); }

ProcessStart QtPlatform::startProcess(const ProgramStart& start) {
#ifdef _WIN32
    // Windows hands the one command line on, as it always did.
    QStringList words = toQt(start.commandLine).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty()) return {OperationResult::failure("the command line is empty")};
    QProcess process;
    process.setProgram(words.takeFirst());
    process.setArguments(words);
    process.setWorkingDirectory(QDir::currentPath());
    qint64 pid = 0;
    if (!process.startDetached(&pid)) return {OperationResult::failure(fromQt(process.errorString()))};
    return {OperationResult::success(), static_cast<long>(pid)};
#else
    return startDetached(start.program, start.arguments, "", {start.logFile}).outcome();
#endif
}

OperationResult QtPlatform::openLink(const std::string& target) {
    const QString text = toQt(target);
    const QUrl url = text.contains(QLatin1String("://")) || text.startsWith(QLatin1String("mailto:"))
                         ? QUrl(text)
                         : QUrl::fromLocalFile(pathToQt(target));
    if (!QDesktopServices::openUrl(url)) return OperationResult::failure("no program opens " + target);
    return OperationResult::success();
}

std::vector<std::string> QtPlatform::drives() {
    std::vector<std::string> result;
#ifdef _WIN32
    for (const QFileInfo& drive : QDir::drives())
        result.push_back(pathFromQt(QDir::toNativeSeparators(drive.path())));
#else
    result.push_back("/");
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const QString root = volume.rootPath();
        if (root == QLatin1String("/") || !volume.isValid() || !volume.isReady()) continue;
        const QByteArray type = volume.fileSystemType();
        // Real volumes only: no kernel, memory or container file systems.
        static const QList<QByteArray> virtualTypes = {
            "proc",        "sysfs",  "tmpfs",   "devtmpfs", "devpts", "cgroup",    "cgroup2", "overlay",
            "securityfs",  "pstore", "debugfs", "tracefs",  "mqueue", "hugetlbfs", "fusectl", "configfs",
            "binfmt_misc", "autofs", "bpf",     "nsfs",     "ramfs",  "squashfs"};
        if (virtualTypes.contains(type)) continue;
        result.push_back(pathFromQt(root));
    }
#endif
    return result;
}

bool QtPlatform::driveReady(const std::string& drive) {
    const QStorageInfo volume(pathToQt(drive));
    return QFileInfo(pathToQt(drive)).isDir() && volume.isValid() && volume.isReady();
}

std::string QtPlatform::driveCurrentDirectory(const std::string& drive) {
    const std::string cwd = currentDirectory();
#ifdef _WIN32
    if (cwd.size() >= 2 && drive.size() >= 2 && QChar(cwd[0]).toUpper() == QChar(drive[0]).toUpper()) return cwd;
    return drive.substr(0, 2) + "\\";
#else
    // The working directory when it lies on that volume, else the volume's root.
    const QStorageInfo here(pathToQt(cwd));
    if (here.isValid() && pathFromQt(here.rootPath()) == drive) return cwd;
    return drive;
#endif
}

std::string QtPlatform::homeDirectory() { return pathFromQt(QDir::homePath()); }

void QtPlatform::endProgram() {
    if (end_)
        end_();
    else
        QCoreApplication::exit(0);
}

} // namespace ks
