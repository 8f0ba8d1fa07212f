#include "forms/selector_views.h"

#include "forms/qt_platform.h"
#include "frame/catalogue.h"
#include "frame/program.h"
#include "frame/selectors.h"

#include <QAbstractFileIconProvider>
#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QSignalBlocker>

#include <utility>

namespace ks {

namespace {

// The tree shows directories alone, yet its model looks at every file of a directory it reads. The usual
// provider would look up each file's type in the MIME database for an icon and a type name that the tree never
// shows, and the first lookup loads the whole database. Directories and drives keep their usual icons.
class DirectoryIcons : public QAbstractFileIconProvider {
public:
    using QAbstractFileIconProvider::icon;
    QIcon icon(const QFileInfo& info) const override {
        return info.isDir() ? QAbstractFileIconProvider::icon(info) : QIcon();
    }
    QString type(const QFileInfo& info) const override {
        return info.isDir() ? QAbstractFileIconProvider::type(info) : QString();
    }
};

// The model's reader thread asks the provider as long as any model lives, so it lives as long as the program.
QAbstractFileIconProvider* directoryIcons() {
    static DirectoryIcons icons;
    return &icons;
}

} // namespace

DriveView::DriveView(Program& program, QWidget* parent) : QComboBox(parent), program_(program) {
    setObjectName(toQt(program.driveSelector().name()));
    setToolTip(toQt(program.driveSelector().toolTip()));
    for (const std::string& drive : program.platform().drives())
        addItem(pathToQt(drive));
    view_ = program_.driveSelector().addView([this] { refresh(); });
    connect(this, &QComboBox::activated, this, [this](int index) {
        // A drive that is not ready leaves the list where it was.
        if (!selectDrive(program_, pathFromQt(itemText(index)))) refresh();
    });
    refresh();
}

DriveView::~DriveView() { program_.driveSelector().removeView(view_); }

void DriveView::refresh() {
    const QString drive = pathToQt(program_.driveSelector().text());
    int index = drive.isEmpty() ? -1 : findText(drive);
    const QSignalBlocker blocker(this);
    if (index < 0 && !drive.isEmpty()) {
        addItem(drive);
        index = count() - 1;
    }
    setCurrentIndex(index);
}

DirectoryView::DirectoryView(Program& program, QWidget* parent)
    : QTreeView(parent), program_(program), model_(new QFileSystemModel(this)) {
    setObjectName(toQt(program.directorySelector().name()));
    setToolTip(toQt(program.directorySelector().toolTip()));
    model_->setIconProvider(directoryIcons());
    model_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    model_->setRootPath(QString());
    setModel(model_);
    for (int column = 1; column < model_->columnCount(); ++column)
        hideColumn(column);
    header()->hide();
    setIndentation(10);
    setUniformRowHeights(true);
    driveView_ = program_.driveSelector().addView([this] { refresh(); });
    dirView_ = program_.directorySelector().addView([this] { refresh(); });
    connect(this, &QTreeView::activated, this, [this](const QModelIndex& index) {
        const std::string path = pathFromQt(QDir::toNativeSeparators(model_->filePath(index)));
        if (!selectDirectory(program_, path)) refresh();
    });
    // The model reads directories in the background and sorts them afterwards: once one on the way to the
    // selected directory has been read and sorted, the selection is brought into view.
    connect(model_, &QFileSystemModel::directoryLoaded, this, [this](const QString& loaded) {
        const QString current = model_->filePath(currentIndex());
        const QString prefix = loaded.endsWith(QLatin1Char('/')) ? loaded : loaded + QLatin1Char('/');
        if (current.isEmpty() || (current != loaded && !current.startsWith(prefix))) return;
        showCurrent();
        sortPending_ = true;
    });
    connect(model_, &QAbstractItemModel::layoutChanged, this, [this] {
        if (std::exchange(sortPending_, false)) showCurrent();
    });
    refresh();
}

DirectoryView::~DirectoryView() {
    program_.driveSelector().removeView(driveView_);
    program_.directorySelector().removeView(dirView_);
}

void DirectoryView::refresh() {
    const QString drive = QDir::fromNativeSeparators(pathToQt(program_.driveSelector().text()));
    const QString path = QDir::fromNativeSeparators(pathToQt(program_.directorySelector().text()));
    const QModelIndex root = drive.isEmpty() ? QModelIndex() : model_->index(drive);
    const QModelIndex current = path.isEmpty() ? QModelIndex() : model_->index(path);
    // The tree starts at the selected drive when the directory lies on it.
    bool onDrive = root.isValid();
    for (QModelIndex up = current; onDrive && up.isValid() && up != root; up = up.parent())
        if (!up.parent().isValid()) onDrive = false;
    setRootIndex(onDrive ? root : QModelIndex());
    if (current.isValid()) {
        setCurrentIndex(current);
        expand(current);
        showCurrent();
    }
}

void DirectoryView::showCurrent() { scrollTo(currentIndex(), PositionAtCenter); }

} // namespace ks
