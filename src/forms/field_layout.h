#pragma once

#include "forms/layer.h"

#include "frame/catalogue.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

class QWidget;
class QVBoxLayout;

namespace ks {

class Form;

// How the fields of one page stand in columns: a new column begins before the named field or group, and
// each column can have a fixed width in pixels (0 lets it take what is left). The page has at least
// `columns` columns; one that no field fills stays free for the caller.
struct ColumnPlan {
    std::array<std::string_view, 3> breaks;
    std::array<int, 4> widths;
    int columns = 1;
};

// What stands beside the fields besides their labels: hints and check boxes, each at its field.
struct PageExtras {
    std::span<const Hint> hints;
    std::span<const CheckRow> checks;
};

// Height of one text box, a pixel under the classic 285 twips, so that the rows of the fullest tab stand apart.
inline constexpr int kRowHeight = 18;

// Lays the catalogue's fields of one tab (all fields when tab is kAnyTab) onto the page: each field with its
// label to the left at the same height and its tool tip; grouped fields inside a frame with the group's
// caption, in the order the catalogue gives. Gives the columns, so that the caller can add more to them.
inline constexpr int kAnyTab = -2;
std::vector<QVBoxLayout*> layOutFields(QWidget* page, Form& form, std::span<const FieldRow> rows, int tab,
                                       const ColumnPlan& plan, const PageExtras& extras = {});

} // namespace ks
