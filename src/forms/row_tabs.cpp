#include "forms/row_tabs.h"

#include "forms/qt_platform.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace ks {

namespace {
constexpr int kRaise = 2;  // the current tab stands this much higher than the others
constexpr int kBorder = 2; // width of the page's frame
} // namespace

RowTabs::RowTabs(TabControl& tabs, int perRow, QWidget* parent)
    : QWidget(parent), tabs_(tabs), perRow_(qMax(1, perRow)), stack_(new QStackedWidget(this)) {
    setObjectName(toQt(tabs.name()));
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);
    for (int i = 0; i < count(); ++i) {
        auto* page = new QWidget(stack_);
        page->setObjectName(QStringLiteral("%1_page%2").arg(objectName()).arg(i));
        stack_->addWidget(page);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kBorder + 2, headerHeight() + kBorder + 2, kBorder + 2, kBorder + 2);
    layout->addWidget(stack_);
    view_ = tabs_.addView([this] { refresh(); });
    refresh();
}

RowTabs::~RowTabs() { tabs_.removeView(view_); }

int RowTabs::count() const { return int(tabs_.captions().size()); }
int RowTabs::rows() const { return (count() + perRow_ - 1) / perRow_; }
int RowTabs::currentIndex() const { return stack_->currentIndex(); }
QWidget* RowTabs::page(int index) const { return stack_->widget(index); }
QString RowTabs::caption(int index) const { return toQt(tabs_.captions().at(std::size_t(index))); }
int RowTabs::tabHeight() const { return fontMetrics().height() + 7; }
int RowTabs::headerHeight() const { return rows() * tabHeight() + kRaise; }

int RowTabs::screenRow(int index) const {
    const int row = index / perRow_;
    const int currentRow = tabs_.current() / perRow_;
    // The rows keep their order, turned round so that the current row comes last.
    return (row - currentRow - 1 + 2 * rows()) % rows();
}

QRect RowTabs::tabRect(int index) const {
    const int column = index % perRow_;
    const int left = column * width() / perRow_;
    const int right = (column + 1) * width() / perRow_;
    const QRect rect(left, kRaise + screenRow(index) * tabHeight(), right - left, tabHeight());
    if (index == tabs_.current()) return rect.adjusted(-1, -kRaise, 1, 1);
    return rect;
}

QSize RowTabs::sizeHint() const {
    int widest = 0;
    for (int i = 0; i < count(); ++i)
        widest = qMax(widest, fontMetrics().horizontalAdvance(caption(i)) + 16);
    const QSize pages = stack_->sizeHint();
    return QSize(qMax(widest * perRow_, pages.width() + 2 * (kBorder + 2)),
                 headerHeight() + pages.height() + 2 * (kBorder + 2));
}

QSize RowTabs::minimumSizeHint() const { return sizeHint(); }

void RowTabs::choose(int index) {
    // The core decides; the page turns when it tells its views.
    tabs_.setCurrent(index);
}

void RowTabs::refresh() {
    if (stack_->currentIndex() != tabs_.current()) stack_->setCurrentIndex(tabs_.current());
    update();
}

void RowTabs::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    for (int i = 0; i < count(); ++i) {
        if (tabRect(i).contains(event->position().toPoint())) {
            choose(i);
            return;
        }
    }
    QWidget::mousePressEvent(event);
}

void RowTabs::keyPressEvent(QKeyEvent* event) {
    const int current = tabs_.current();
    switch (event->key()) {
    case Qt::Key_Left:
        if (current > 0) choose(current - 1);
        return;
    case Qt::Key_Right:
        if (current + 1 < count()) choose(current + 1);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void RowTabs::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QPalette& colours = palette();
    const QColor light = colours.color(QPalette::Light);
    const QColor dark = colours.color(QPalette::Dark);
    const QColor shadow = colours.color(QPalette::Shadow);
    const QColor face = colours.color(QPalette::Window);

    // The page's raised frame.
    const QRect pageRect(0, headerHeight(), width(), height() - headerHeight());
    painter.fillRect(pageRect, face);
    painter.setPen(light);
    painter.drawLine(pageRect.topLeft(), pageRect.topRight());
    painter.drawLine(pageRect.topLeft(), pageRect.bottomLeft());
    painter.setPen(shadow);
    painter.drawLine(pageRect.bottomLeft(), pageRect.bottomRight());
    painter.drawLine(pageRect.topRight(), pageRect.bottomRight());
    painter.setPen(dark);
    painter.drawLine(pageRect.bottomLeft() + QPoint(1, -1), pageRect.bottomRight() + QPoint(-1, -1));
    painter.drawLine(pageRect.topRight() + QPoint(-1, 1), pageRect.bottomRight() + QPoint(-1, -1));

    // The handles; the current one last, so that it stands over its neighbours and opens into the page.
    std::vector<int> order;
    for (int i = 0; i < count(); ++i)
        if (i != tabs_.current()) order.push_back(i);
    if (tabs_.current() >= 0 && tabs_.current() < count()) order.push_back(tabs_.current());
    for (int i : order) {
        const bool current = i == tabs_.current();
        const QRect rect = tabRect(i);
        painter.fillRect(rect.adjusted(1, 1, -1, current ? 0 : -1), face);
        painter.setPen(light);
        painter.drawLine(rect.left(), rect.bottom(), rect.left(), rect.top() + 2);
        painter.drawLine(rect.left() + 2, rect.top(), rect.right() - 2, rect.top());
        painter.drawPoint(rect.left() + 1, rect.top() + 1);
        painter.setPen(shadow);
        painter.drawLine(rect.right(), rect.top() + 2, rect.right(), rect.bottom());
        painter.drawPoint(rect.right() - 1, rect.top() + 1);
        painter.setPen(dark);
        painter.drawLine(rect.right() - 1, rect.top() + 2, rect.right() - 1, rect.bottom());
        if (current) {
            painter.setPen(face);
            painter.drawLine(rect.left() + 1, rect.bottom(), rect.right() - 2, rect.bottom());
        }
        painter.setPen(colours.color(QPalette::WindowText));
        QFont font = this->font();
        painter.setFont(font);
        const QRect textRect = rect.adjusted(4, 1, -4, 0);
        painter.drawText(textRect, Qt::AlignCenter | Qt::TextSingleLine, caption(i));
        if (current && hasFocus()) {
            QRect focus = painter.boundingRect(textRect, Qt::AlignCenter, caption(i)).adjusted(-2, 0, 2, 0);
            painter.setPen(QPen(colours.color(QPalette::WindowText), 1, Qt::DotLine));
            painter.drawRect(focus);
        }
    }
}

} // namespace ks
