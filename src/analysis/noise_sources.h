#pragma once
// Where a filter's noise comes from: the thermal noise of its resistors and
// the voltage and current noise of its amplifiers, with the amplifiers'
// figures taken from what the designer typed or from the chosen device.
#include "analysis/analysis_settings.h"
#include "catalogue/design_catalogue.h"

#include <string>

namespace qm {

constexpr double kBoltzmann = 1.380649e-23;           ///< J/K
constexpr double kElementaryCharge = 1.602176634e-19; ///< C
constexpr double kZeroCelsius = 273.15;               ///< K

/// A resistor's thermal noise as a current across it, in A²/Hz: 4kT/R.
double thermalNoiseCurrentSquared(double ohms, double temperatureC);

/// The shot noise of a current, in A/√Hz: √(2·q·I).
double shotNoise(double amps);

/// Where an amplifier noise figure came from.
enum class FigureOrigin {
    None,          ///< no figure: that noise is left out
    Entered,       ///< typed by the designer
    Catalogue,     ///< the chosen device's Vn
    ShotNoiseOfIb, ///< √(2·q·Ib) from the chosen device's Ib
};

/// The noise of every amplifier of the filter (all are the same device).
struct AmplifierNoise
{
    double enVoltsPerRootHz = 0; ///< in series with the non-inverting input
    double inAmpsPerRootHz = 0;  ///< into each input, uncorrelated
    FigureOrigin enOrigin = FigureOrigin::None;
    FigureOrigin inOrigin = FigureOrigin::None;
};

/// The figures typed in the settings; the chosen device's for those not
/// typed: its Vn for en, and for in the shot noise of its Ib.
AmplifierNoise amplifierNoiseOf(const NoiseSettings& settings, const AmplifierChoice& device);

/// Words to show beside a figure of that origin ("shot noise of Ib").
std::string originText(FigureOrigin origin);

} // namespace qm
