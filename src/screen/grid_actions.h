#pragma once
// What a person does to a grid: moving its current cell, clicking a column
// head, typing into the current cell. A request the grid can't take throws
// ActionError.
#include <string>

namespace qm {

class QuellmarkForm;
struct Control;

/// "ROW" or "ROW,COL": the current cell moves there and RowColChange is raised.
void selectGridCell(QuellmarkForm& form, Control& c, const std::string& text);
/// "COL": a click on that column's head raises HeadClick.
void clickGridHead(QuellmarkForm& form, Control& c, const std::string& text);
/// Replaces the text of the current cell, where the grid allows changes.
void typeIntoGrid(QuellmarkForm& form, Control& c, const std::string& text);

} // namespace qm
