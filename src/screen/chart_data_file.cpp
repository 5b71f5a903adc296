// The chart-data export behind the menu entry "Save chart data".
#include "chart/chart_export.h"
#include "screen/chart_interaction.h"
#include "screen/file_export.h"
#include "screen/quellmark_form.h"

namespace qm {

void SaveChartData_Click(QuellmarkForm& f)
{
    exportToChosenFile(f, {"Save Chart Data", "Comma Separated Value (*.csv)|*.*", "csv"},
                       [&] { return chartDataText(f); });
}

} // namespace qm
