#pragma once
// Runs ngspice's noise analysis on a netlist and reads what it writes: the
// output noise density of every noisy element and of the whole, and the
// totals it integrates over the sweep.
#include "support/files_fixture.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace qm::test {

struct NoiseSweep
{
    std::vector<double> freqs;
    /// V/√Hz at the output by ngspice's name: "onoise_spectrum" for the whole,
    /// "onoise_r.xa.r1a" for resistor R1A of the instance XA.
    std::map<std::string, std::vector<double>> density;
    /// The integrals over the sweep, V: "onoise_total", "onoise_total_r.xa.r1a".
    std::map<std::string, double> total;
    std::string error; ///< why nothing was read, empty when it was
};

namespace detail {

/// One plot of an ASCII raw file of real values: its variables' names
/// (after the first, the scale) and their columns.
inline bool readRealPlot(std::istream& in, std::vector<std::string>& names,
                         std::vector<std::vector<double>>& columns)
{
    std::string line;
    std::size_t points = 0;
    names.clear();
    while (std::getline(in, line)) {
        if (line.rfind("No. Points:", 0) == 0) points = std::stoul(line.substr(11));
        if (line == "Variables:") break;
    }
    while (std::getline(in, line) && line != "Values:") {
        std::istringstream words(line);
        std::string index, name;
        words >> index >> name;
        names.push_back(name);
    }
    if (names.empty()) return false;
    columns.assign(names.size(), {});
    for (std::size_t p = 0; p < points; ++p) {
        std::string index;
        if (!(in >> index)) return false;
        for (std::vector<double>& column : columns) {
            double x = 0;
            if (!(in >> x)) return false;
            column.push_back(x);
        }
    }
    return true;
}

} // namespace detail

/// Reads the two plots of a noise analysis: the densities, then the totals.
inline NoiseSweep readNoiseRaw(const std::string& path)
{
    NoiseSweep sweep;
    std::ifstream in(path);
    std::vector<std::string> names;
    std::vector<std::vector<double>> columns;
    if (!detail::readRealPlot(in, names, columns)) return {{}, {}, {}, "no densities in " + path};
    sweep.freqs = columns[0];
    for (std::size_t k = 1; k < names.size(); ++k)
        sweep.density[names[k]] = columns[k];
    if (!detail::readRealPlot(in, names, columns)) return {{}, {}, {}, "no totals in " + path};
    for (std::size_t k = 0; k < names.size(); ++k) {
        // "v(onoise_total_r.xa.r1a)" as "onoise_total_r.xa.r1a".
        std::string name = names[k];
        if (name.rfind("v(", 0) == 0) name = name.substr(2, name.size() - 3);
        sweep.total[name] = columns[k].at(0);
    }
    return sweep;
}

/// Writes the netlist into `dir`, runs ngspice on it and reads its noise.
inline NoiseSweep runNgspiceNoise(const TempFolder& dir, const std::string& name,
                                  const std::string& netlist)
{
    const std::string cir = dir.file(name + ".cir");
    const std::string raw = dir.file(name + ".raw");
    std::ofstream(cir) << netlist;
    const std::string command = "SPICE_ASCIIRAWFILE=1 ngspice -b -r '" + raw + "' '" + cir +
                                "' > '" + dir.file(name + ".log") + "' 2>&1";
    if (std::system(command.c_str()) != 0) return {{}, {}, {}, "ngspice failed on " + cir};
    return readNoiseRaw(raw);
}

} // namespace qm::test
