#include "analysis/noise_sources.h"

#include <cmath>

namespace qm {

namespace {

constexpr double kNano = 1e-9;
constexpr double kPico = 1e-12;

} // namespace

double thermalNoiseCurrentSquared(double ohms, double temperatureC)
{
    return 4 * kBoltzmann * (temperatureC + kZeroCelsius) / ohms;
}

double shotNoise(double amps)
{
    return std::sqrt(2 * kElementaryCharge * std::fabs(amps));
}

AmplifierNoise amplifierNoiseOf(const NoiseSettings& settings, const AmplifierChoice& device)
{
    AmplifierNoise a;
    const bool chosen = !device.deviceName.empty();
    if (settings.enNanoVolts) {
        a.enVoltsPerRootHz = *settings.enNanoVolts * kNano;
        a.enOrigin = FigureOrigin::Entered;
    } else if (chosen && device.noiseDensity) {
        a.enVoltsPerRootHz = *device.noiseDensity;
        a.enOrigin = FigureOrigin::Catalogue;
    }
    if (settings.inPicoAmps) {
        a.inAmpsPerRootHz = *settings.inPicoAmps * kPico;
        a.inOrigin = FigureOrigin::Entered;
    } else if (chosen && device.biasCurrentA) {
        // The catalogue has no current noise figure; the bias current's
        // shot noise is the least an input of that current carries.
        a.inAmpsPerRootHz = shotNoise(*device.biasCurrentA);
        a.inOrigin = FigureOrigin::ShotNoiseOfIb;
    }
    return a;
}

std::string originText(FigureOrigin origin)
{
    switch (origin) {
    case FigureOrigin::None:
        return "none";
    case FigureOrigin::Entered:
        return "entered";
    case FigureOrigin::Catalogue:
        return "catalogue Vn";
    case FigureOrigin::ShotNoiseOfIb:
        break;
    }
    return "shot noise of catalogue Ib";
}

} // namespace qm
