#pragma once
// Runs ngspice in batch mode on a netlist and reads the AC sweep it writes:
// the frequencies and the complex voltage of the filter's output.
#include "support/files_fixture.h"

#include <complex>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace qm::test {

struct AcSweep
{
    std::vector<double> freqs;
    std::vector<std::complex<double>> out; ///< V(out), or V(outp) − V(outn)
    std::string error;                     ///< why nothing was read, empty when it was
};

/// Reads an ASCII raw file of an AC analysis; the output is `out`, or the
/// difference of `outp` and `outn` when the circuit is differential.
inline AcSweep readAsciiRaw(const std::string& path)
{
    AcSweep sweep;
    std::ifstream in(path);
    if (!in) return {{}, {}, "no raw file " + path};
    std::string line;
    std::vector<std::string> names;
    std::size_t points = 0;
    while (std::getline(in, line)) {
        if (line.rfind("No. Points:", 0) == 0) points = std::stoul(line.substr(11));
        if (line == "Variables:") {
            while (std::getline(in, line) && line != "Values:") {
                std::istringstream words(line);
                std::string index, name;
                words >> index >> name;
                names.push_back(name);
            }
            break;
        }
    }
    const auto column = [&](const std::string& name) -> int {
        for (std::size_t i = 0; i < names.size(); ++i)
            if (names[i] == name) return static_cast<int>(i);
        return -1;
    };
    const int out = column("v(out)"), outp = column("v(outp)"), outn = column("v(outn)");
    if (out < 0 && (outp < 0 || outn < 0)) return {{}, {}, "no output in " + path};
    const auto complexOf = [](const std::string& text) {
        const auto comma = text.find(',');
        return std::complex<double>(std::stod(text.substr(0, comma)),
                                    std::stod(text.substr(comma + 1)));
    };
    for (std::size_t p = 0; p < points; ++p) {
        std::vector<std::complex<double>> v;
        for (std::size_t k = 0; k < names.size(); ++k) {
            std::string word;
            if (!(in >> word)) return {{}, {}, "raw file cut short"};
            if (k == 0 && !(in >> word)) return {{}, {}, "raw file cut short"};
            v.push_back(complexOf(word));
        }
        sweep.freqs.push_back(v[0].real());
        sweep.out.push_back(out >= 0 ? v[static_cast<std::size_t>(out)]
                                     : v[static_cast<std::size_t>(outp)] -
                                           v[static_cast<std::size_t>(outn)]);
    }
    return sweep;
}

/// Writes the netlist into `dir`, runs ngspice on it and reads its sweep.
inline AcSweep runNgspice(const TempFolder& dir, const std::string& name,
                          const std::string& netlist)
{
    const std::string cir = dir.file(name + ".cir");
    const std::string raw = dir.file(name + ".raw");
    std::ofstream(cir) << netlist;
    const std::string command = "SPICE_ASCIIRAWFILE=1 ngspice -b -r '" + raw + "' '" + cir +
                                "' > '" + dir.file(name + ".log") + "' 2>&1";
    if (std::system(command.c_str()) != 0) return {{}, {}, "ngspice failed on " + cir};
    return readAsciiRaw(raw);
}

/// Every vector of an ASCII raw file by its name ("frequency", "v(n1p)"),
/// complex for an AC analysis and real (imaginary part 0) for a transient.
struct RawVectors
{
    std::map<std::string, std::vector<std::complex<double>>> byName;
    std::string error; ///< why nothing was read, empty when it was
};

inline RawVectors readRawVectors(const std::string& path)
{
    RawVectors raw;
    std::ifstream in(path);
    if (!in) return {{}, "no raw file " + path};
    std::string line;
    std::vector<std::string> names;
    std::size_t points = 0;
    while (std::getline(in, line)) {
        if (line.rfind("No. Points:", 0) == 0) points = std::stoul(line.substr(11));
        if (line == "Variables:") {
            while (std::getline(in, line) && line != "Values:") {
                std::istringstream words(line);
                std::string index, name;
                words >> index >> name;
                names.push_back(name);
            }
            break;
        }
    }
    const auto valueOf = [](const std::string& text) {
        const auto comma = text.find(',');
        if (comma == std::string::npos) return std::complex<double>(std::stod(text), 0);
        return std::complex<double>(std::stod(text.substr(0, comma)),
                                    std::stod(text.substr(comma + 1)));
    };
    for (std::size_t p = 0; p < points; ++p)
        for (std::size_t k = 0; k < names.size(); ++k) {
            std::string word;
            if (!(in >> word)) return {{}, "raw file cut short"};
            if (k == 0 && !(in >> word)) return {{}, "raw file cut short"};
            raw.byName[names[k]].push_back(valueOf(word));
        }
    return raw;
}

/// Runs ngspice on the netlist in `dir` and reads every vector it wrote.
inline RawVectors runNgspiceVectors(const TempFolder& dir, const std::string& name,
                                    const std::string& netlist)
{
    const std::string cir = dir.file(name + ".cir");
    const std::string raw = dir.file(name + ".raw");
    std::ofstream(cir) << netlist;
    const std::string command = "SPICE_ASCIIRAWFILE=1 ngspice -b -r '" + raw + "' '" + cir +
                                "' > '" + dir.file(name + ".log") + "' 2>&1";
    if (std::system(command.c_str()) != 0) {
        std::ifstream log(dir.file(name + ".log"));
        const std::string text((std::istreambuf_iterator<char>(log)), {});
        constexpr std::size_t kShown = 600;
        return {{},
                "ngspice failed on " + cir + ": " +
                    text.substr(text.size() > kShown ? text.size() - kShown : 0)};
    }
    return readRawVectors(raw);
}

} // namespace qm::test
