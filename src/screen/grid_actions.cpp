#include "screen/grid_actions.h"

#include "screen/quellmark_form.h"
#include "screen/user_actions.h"

#include <cstdlib>

namespace qm {

namespace {

/// A whole number from `low` to `high`, or an ActionError that says so.
int numberIn(const Control& c, const std::string& text, int low, int high, const char* what)
{
    char* end = nullptr;
    const long v = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || v < low || v > high)
        throw ActionError(c.name + " has no " + what + " '" + text + "' (" + std::to_string(low) +
                          " to " + std::to_string(high) + ")");
    return static_cast<int>(v);
}

GridModel& gridOf(QuellmarkForm& form, const Control& c)
{
    GridModel* g = form.grid(c.name);
    if (!g) throw ActionError(c.name + " is not a grid");
    return *g;
}

} // namespace

/// "ROW" or "ROW,COL": the grid's current cell moves there.
void selectGridCell(QuellmarkForm& form, Control& c, const std::string& text)
{
    GridModel& g = gridOf(form, c);
    const auto comma = text.find(',');
    const int lastColumn = static_cast<int>(g.columns.size()) - 1;
    const int row = numberIn(c, text.substr(0, comma), 0, g.rowCount() - 1, "row");
    const int col = comma == std::string::npos
                        ? g.col
                        : numberIn(c, text.substr(comma + 1), 0, lastColumn, "column");
    form.moveFocus(c.name);
    g.row = row;
    g.col = col;
    form.raise(c.name, FormEvent::RowColChange);
}

void clickGridHead(QuellmarkForm& form, Control& c, const std::string& text)
{
    GridModel& g = gridOf(form, c);
    EventArgs args;
    args.column = numberIn(c, text, 0, static_cast<int>(g.columns.size()) - 1, "column");
    form.moveFocus(c.name);
    form.raise(c.name, FormEvent::HeadClick, args);
}

/// Typing into a grid replaces the text of its current cell, where the grid
/// allows it.
void typeIntoGrid(QuellmarkForm& form, Control& c, const std::string& text)
{
    GridModel& g = gridOf(form, c);
    std::string* cell = g.currentCell();
    if (!g.allowUpdate || !cell) throw ActionError(c.name + " can't be changed here");
    form.moveFocus(c.name);
    *cell = text;
}

} // namespace qm
