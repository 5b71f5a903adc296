#include "circuit/circuit_exports.h"

#include "circuit/circuit_builder.h"
#include "circuit/parts_list.h"
#include "circuit/spice_netlist.h"
#include "screen/file_export.h"
#include "screen/quellmark_form.h"

#include <chrono>

namespace qm {

std::string programVersion()
{
    return QUELLMARK_VERSION;
}

std::string todaysDate()
{
    const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    const std::chrono::year_month_day ymd{today};
    char buf[16];
    std::snprintf(buf, sizeof buf, "%04d-%02u-%02u", static_cast<int>(ymd.year()),
                  static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()));
    return buf;
}

void addCircuitHandlers(QuellmarkForm& f)
{
    f.on("ExportSpice", FormEvent::Click, [](QuellmarkForm& form, int, const EventArgs&) {
        exportToChosenFile(form, {"Export SPICE Netlist", "SPICE netlist (*.cir)|*.*", "cir"}, [&] {
            return spiceNetlist(filterCircuitOf(form), {programVersion(), todaysDate(), 0});
        });
    });
    f.on("ExportBom", FormEvent::Click, [](QuellmarkForm& form, int, const EventArgs&) {
        exportToChosenFile(form,
                           {"Export Bill of Materials", "Comma Separated Value (*.csv)|*.*", "csv"},
                           [&] { return billOfMaterialsCsv(filterCircuitOf(form)); });
    });
}

} // namespace qm
