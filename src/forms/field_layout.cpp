#include "forms/field_layout.h"

#include "forms/qt_platform.h"
#include "forms/views.h"
#include "frame/field.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace ks {

namespace {

constexpr int kShortWidth = 40;

// Labels that carry a control name of their own.
struct NamedLabel {
    std::string_view field;
    std::string_view labelName;
};
constexpr NamedLabel kNamedLabels[] = {{"FCD3", kCampDistanceLabelName}};

// The two phrases of the label that spans two fields.
QStringList sharedLabelPhrases() { return captionPhrases(toQt(std::string(kSharedRespawnLabel))); }

QGridLayout* newGrid(QWidget* owner) {
    auto* grid = new QGridLayout(owner);
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(1);
    grid->setColumnStretch(1, 1);
    return grid;
}

class PageBuilder {
public:
    PageBuilder(QWidget* page, Form& form, std::span<const FieldRow> rows, int tab, const ColumnPlan& plan,
                const PageExtras& extras)
        : page_(page), form_(form), rows_(rows), tab_(tab), plan_(plan), extras_(extras) {}

    std::vector<QVBoxLayout*> build() {
        auto* row = new QHBoxLayout(page_);
        row->setContentsMargins(2, 2, 2, 2);
        row->setSpacing(4);
        row_ = row;
        newColumn();
        std::vector<std::string_view> doneGroups;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const FieldRow& entry = rows_[i];
            if (!onPage(entry)) continue;
            if (!entry.group.empty()) {
                if (std::find(doneGroups.begin(), doneGroups.end(), entry.group) != doneGroups.end()) continue;
                doneGroups.push_back(entry.group);
                if (isBreak(entry.group)) newColumn();
                addGroup(entry.group);
                loose_ = nullptr;
                continue;
            }
            if (isBreak(entry.name)) {
                newColumn();
                loose_ = nullptr;
            }
            if (!loose_) {
                auto* holder = new QWidget;
                loose_ = newGrid(holder);
                loose_->setContentsMargins(0, 0, 0, 0);
                columns_.back()->addWidget(holder);
            }
            addRow(loose_, i);
        }
        while (int(columns_.size()) < plan_.columns)
            newColumn();
        for (QVBoxLayout* column : columns_)
            column->addStretch(1);
        const bool allFixed = std::all_of(columns_.begin(), columns_.end(), [&](QVBoxLayout* column) {
            return column->parentWidget()->minimumWidth() == column->parentWidget()->maximumWidth();
        });
        if (allFixed) row_->addStretch(1);
        return columns_;
    }

private:
    bool onPage(const FieldRow& entry) const { return tab_ == kAnyTab || entry.tab == tab_; }

    bool isBreak(std::string_view name) const {
        return std::find(plan_.breaks.begin(), plan_.breaks.end(), name) != plan_.breaks.end() && !name.empty();
    }

    void newColumn() {
        const std::size_t index = columns_.size();
        auto* holder = new QWidget;
        auto* column = new QVBoxLayout(holder);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(3);
        const int width = index < plan_.widths.size() ? plan_.widths[index] : 0;
        if (width > 0) holder->setFixedWidth(width);
        row_->addWidget(holder, width > 0 ? 0 : 1);
        columns_.push_back(column);
    }

    void addGroup(std::string_view caption) {
        auto* box = new QGroupBox(toQt(std::string(caption)));
        QGridLayout* grid = newGrid(box);
        grid->setContentsMargins(4, 2, 4, 3);
        for (std::size_t i = 0; i < rows_.size(); ++i)
            if (onPage(rows_[i]) && rows_[i].group == caption) addRow(grid, i);
        columns_.back()->addWidget(box);
    }

    // The field's row; a row that the shared label already covers gets no label of its own.
    void addRow(QGridLayout* grid, std::size_t index) {
        const FieldRow& entry = rows_[index];
        Field& field = form_.field(index);
        auto* edit = new FieldEdit(field, nullptr,
                                   entry.kind == ValueKind::Path ? FieldEdit::Holds::Path : FieldEdit::Holds::Text);
        edit->setFixedHeight(kRowHeight);
        int& nextRow = nextRows_[grid];
        const int row = nextRow++;

        QWidget* fieldCell = edit;
        const bool hasCheck = std::any_of(extras_.checks.begin(), extras_.checks.end(),
                                          [&](const CheckRow& check) { return check.nearField == entry.name; });
        if (hasCheck) {
            auto* cell = new QWidget;
            auto* line = new QHBoxLayout(cell);
            line->setContentsMargins(0, 0, 0, 0);
            line->setSpacing(4);
            line->addWidget(edit, 1);
            // The check boxes stand on the form in the order of their rows.
            for (std::size_t c = 0; c < extras_.checks.size(); ++c)
                if (extras_.checks[c].nearField == entry.name) line->addWidget(new CheckView(form_.check(c)));
            fieldCell = cell;
        }
        if (entry.width == BoxWidth::Short) {
            edit->setFixedWidth(kShortWidth);
            grid->addWidget(fieldCell, row, 1, Qt::AlignLeft);
        } else {
            grid->addWidget(fieldCell, row, 1);
        }

        const QStringList shared = sharedLabelPhrases();
        const QString label = toQt(std::string(entry.label));
        if (shared.size() == 2 && label == shared[1] && coveredGrid_ == grid && coveredRow_ == row) {
            // Covered by the label of the row above.
        } else if (shared.size() == 2 && label == shared[0]) {
            auto* span = new SpanLabel(toQt(std::string(kSharedRespawnLabel)), 2);
            span->setBuddy(edit);
            grid->addWidget(span, row, 0, 2, 1);
            coveredGrid_ = grid;
            coveredRow_ = row + 1;
        } else {
            auto* text = new QLabel(label);
            text->setBuddy(edit);
            for (const NamedLabel& named : kNamedLabels)
                if (named.field == entry.name) text->setObjectName(toQt(std::string(named.labelName)));
            grid->addWidget(text, row, 0);
        }
        grid->setRowMinimumHeight(row, kRowHeight);

        for (const Hint& hint : extras_.hints) {
            if (hint.nearField != entry.name) continue;
            auto* note = new QLabel(toQt(std::string(hint.text)));
            note->setWordWrap(true);
            note->setObjectName(QStringLiteral("hint_") + toQt(std::string(entry.name)));
            grid->addWidget(note, nextRow++, 0, 1, 2);
        }
    }

    QWidget* page_;
    Form& form_;
    std::span<const FieldRow> rows_;
    int tab_;
    const ColumnPlan& plan_;
    const PageExtras& extras_;
    QHBoxLayout* row_ = nullptr;
    std::vector<QVBoxLayout*> columns_;
    QGridLayout* loose_ = nullptr;
    std::map<QGridLayout*, int> nextRows_;
    QGridLayout* coveredGrid_ = nullptr;
    int coveredRow_ = -1;
};

} // namespace

std::vector<QVBoxLayout*> layOutFields(QWidget* page, Form& form, std::span<const FieldRow> rows, int tab,
                                       const ColumnPlan& plan, const PageExtras& extras) {
    return PageBuilder(page, form, rows, tab, plan, extras).build();
}

} // namespace ks
