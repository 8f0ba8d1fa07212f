#pragma once

#include "forms/layer.h"

#include "frame/field.h"

#include <QWidget>

class QStackedWidget;

namespace ks {

// A tab control with its tabs in rows of a fixed count and one page for each tab. It shows the core tab
// control: a click on a tab sets the core's current tab, and a change in the core turns the page. As with
// the classic multi-row tab control, the row that holds the current tab moves down next to the page.
class RowTabs : public QWidget {
    Q_OBJECT
public:
    RowTabs(TabControl& tabs, int perRow, QWidget* parent = nullptr);
    ~RowTabs() override;

    int count() const;
    int rows() const;
    // The tab that is shown.
    int currentIndex() const;
    QWidget* page(int index) const;
    QString caption(int index) const;
    // Where the tab's handle stands, in this widget's coordinates.
    QRect tabRect(int index) const;
    int headerHeight() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose(int index);
    void refresh();
    int tabHeight() const;
    // The screen row of a tab's handle, counted from the top; the current tab's row is the last.
    int screenRow(int index) const;

    TabControl& tabs_;
    int perRow_;
    QStackedWidget* stack_;
    Observers::Id view_;
};

} // namespace ks
