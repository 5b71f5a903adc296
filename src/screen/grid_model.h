#pragma once
// The table of a grid control: column heads, rows of cell texts, the current
// cell and what the user may change. The window that owns the grid fills it;
// the shell shows it and the command line prints it.
#include "screen/control.h"

#include <string>
#include <vector>

namespace qm {

struct GridColumn
{
    std::string caption; ///< "\r" breaks a two-line head
    int width = 0;       ///< twips
    int alignment = -1;  ///< -1 the grid's own, 0 left, 1 right, 2 centre
    std::string format;  ///< digit pattern of numbers, empty for as stored
};

struct GridModel
{
    std::string name; ///< the grid control's name, "frmKRNamps.DBGrid1"
    std::vector<GridColumn> columns;
    std::vector<std::vector<std::string>> rows;
    /// Per row: a back colour and a tool-tip that mark it, or kWindowColor
    /// and an empty text.
    std::vector<Color> rowColors;
    std::vector<std::string> rowTips;
    int row = 0; ///< current row; rows.size() is the place of a new row
    int col = 0; ///< current column
    bool allowAddNew = false;
    bool allowUpdate = false;

    /// The current cell's text, or nullptr past the rows.
    std::string* currentCell()
    {
        if (row < 0 || col < 0 || row >= static_cast<int>(rows.size())) return nullptr;
        auto& r = rows[static_cast<std::size_t>(row)];
        if (col >= static_cast<int>(r.size())) return nullptr;
        return &r[static_cast<std::size_t>(col)];
    }
    int rowCount() const { return static_cast<int>(rows.size()); }
    void clearMarks()
    {
        rowColors.assign(rows.size(), kWindowColor);
        rowTips.assign(rows.size(), std::string());
    }
};

} // namespace qm
