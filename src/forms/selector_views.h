#pragma once

#include "forms/layer.h"

#include "frame/field.h"

#include <QComboBox>
#include <QTreeView>

class QFileSystemModel;

namespace ks {

class Program;

// The drive list: shows the core's selected drive; the operator's choice goes through selectDrive.
class DriveView : public QComboBox {
    Q_OBJECT
public:
    explicit DriveView(Program& program, QWidget* parent = nullptr);
    ~DriveView() override;

private:
    void refresh();

    Program& program_;
    Observers::Id view_;
};

// The directory tree: shows the core's selected directory; a directory the operator opens (double click or
// Enter) goes through selectDirectory.
class DirectoryView : public QTreeView {
    Q_OBJECT
public:
    explicit DirectoryView(Program& program, QWidget* parent = nullptr);
    ~DirectoryView() override;

private:
    void refresh();
    void showCurrent(); // scrolls the selected directory to the middle of the tree

    Program& program_;
    QFileSystemModel* model_;
    bool sortPending_ = false; // a directory on the way to the selection was read and awaits its sorting
    Observers::Id driveView_;
    Observers::Id dirView_;
};

} // namespace ks
