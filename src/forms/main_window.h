#pragma once

#include <QMainWindow>

namespace ks {

class Program;

// The launcher's working window.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(Program& program, QWidget* parent = nullptr);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    Program& program_;
};

} // namespace ks
