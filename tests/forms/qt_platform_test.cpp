#include "window_launcher.h"

#include "config/file_commands.h"
#include "forms/sound_output.h"

#include <QFileDialog>
#include <QFileSystemModel>
#include <QMessageBox>
#include <QPluginLoader>
#include <QPushButton>

#include <filesystem>

using namespace ks;
using namespace ks::test;

namespace {

// While it lives, answers the file dialogs of the real platform with the next path, typed whole into the name box,
// and notes the text of every message box, which it closes with its default button.
class ModalAnswers : public QObject {
public:
    explicit ModalAnswers(QStringList paths) : paths_(std::move(paths)) {
        timer_.callOnTimeout([this] {
            QWidget* modal = QApplication::activeModalWidget();
            if (auto* dialog = qobject_cast<QFileDialog*>(modal)) {
                dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(paths_.value(0));
                paths_.mid(1).swap(paths_);
                QMetaObject::invokeMethod(dialog, "accept");
            } else if (auto* box = qobject_cast<QMessageBox*>(modal)) {
                messages << box->text();
                box->defaultButton()->click();
            }
        });
        timer_.start(20);
    }
    QStringList messages;

private:
    QStringList paths_;
    QTimer timer_;
};

} // namespace

class QtPlatformTest : public QObject {
    Q_OBJECT
private slots:
    // Names beyond ASCII and with blanks go to the file system as they are named there, while the bytes of a
    // file's text stay bytes; a name typed into the Open dialog that matches no file gets the launcher's message.
    void pathsWithAccentsAndBlanksSaveAndOpenThroughTheDialogsAndAMissingOneIsTold() {
        TempDir temp;
        QtPlatform platform;
        Program program(platform, PathStyle::Linux);
        connectHandlers(program);
        for (const QString& folder : {QStringLiteral("Caf\u00e9"), QStringLiteral("with blank")}) {
            const QString dir = QString::fromStdString(temp.path().string()) + QLatin1Char('/') + folder;
            QVERIFY(QDir().mkpath(dir));
            const QString file = dir + QStringLiteral("/server.cfg");
            const std::string bytes = file.toUtf8().toStdString();
            ModalAnswers saveAs({file});
            saveConfigAs(program);
            QCOMPARE(saveAs.messages, QStringList());
            QCOMPARE(program.field(id::FFile).text(), bytes);
            QVERIFY(std::filesystem::is_regular_file(std::filesystem::u8path(bytes)));
            QVERIFY(platform.isPlainFile(bytes) && platform.isDirectory(dir.toUtf8().toStdString()));
            program.field(id::FFile).setText("NONE");
            ModalAnswers open({file});
            chooseAndOpenConfig(program);
            QCOMPARE(open.messages, QStringList());
            QCOMPARE(program.field(id::FFile).text(), bytes);
            QVERIFY(platform.changeDirectory(dir.toUtf8().toStdString()).ok);
            QCOMPARE(platform.currentDirectory(), dir.toUtf8().toStdString());
            // The current file shows as the file system names it.
            QCOMPARE(FieldEdit(program.field(id::FFile), nullptr, FieldEdit::Holds::Path).text(), file);
        }
        QVERIFY(QDir::setCurrent(QDir::rootPath()));
        ModalAnswers open({QString::fromStdString(temp.file("missing.cfg"))});
        chooseAndOpenConfig(program);
        QCOMPARE(open.messages, QStringList{QStringLiteral("There is no such existing file!")});
        QCOMPARE(program.field(id::FFile).text(), std::string("NONE"));
    }

    // The file-type lines read as the launcher names them and match a name in either case.
    void theFileTypeLinesReadAsNamedAndMatchEitherCase() {
        TempDir temp;
        for (const char* name : {"server.cfg", "SERVER.CFG", "notes.txt"})
            writeBytes(temp.file(name), "");
        QtPlatform platform;
        for (const auto& [kind, line] : {std::pair{FileDialogKind::Open, "Quake Configuration Files (*.CFG)"},
                                         {FileDialogKind::Save, "All Files (*.CFG)"}}) {
            QStringList shown, filters;
            whenModal([&](QWidget* modal) {
                auto* dialog = qobject_cast<QFileDialog*>(modal);
                QVERIFY(dialog);
                filters = dialog->nameFilters();
                auto* model = dialog->findChild<QFileSystemModel*>();
                const QModelIndex folder = model->index(QString::fromStdString(temp.path().string()));
                QTRY_COMPARE_WITH_TIMEOUT(model->rowCount(folder), 2, 60000);
                for (int row = 0; row < model->rowCount(folder); ++row)
                    shown << model->fileName(model->index(row, 0, folder));
                dialog->reject();
            });
            QVERIFY(!platform.fileDialog({kind, "Open", temp.path().string(), "", std::string(line) + "|*.CFG"}));
            QCOMPARE(filters, QStringList{QString::fromLatin1(line)});
            shown.sort();
            QCOMPARE(shown, (QStringList{QStringLiteral("SERVER.CFG"), QStringLiteral("server.cfg")}));
        }
    }

    // The end of the program leaves the event loop, so that everything is torn down in order. The sounds come from
    // the module built beside the launcher, which answers for the devices on a machine without sound as well.
    void endingTheProgramEndsTheEventLoopAndTheSoundModuleBesideTheLauncherLoads() {
        QtPlatform platform;
        QTimer::singleShot(0, [&] { platform.endProgram(); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QPluginLoader loader(soundModuleFiles(QStringLiteral(KS_LAUNCHER_DIR)).value(0));
        auto* output = qobject_cast<SoundOutput*>(loader.instance());
        QVERIFY2(output, qPrintable(loader.errorString()));
        QVERIFY(output->deviceCount() < 64);
    }
};

static RegisterTest<QtPlatformTest> registerQtPlatformTest("QtPlatformTest");

#include "qt_platform_test.moc"
