#pragma once
// The design record: every field of the one filter design that the program
// holds, beside the controls of the design screen. Numbers of the design are
// 32-bit floats stored through f32, counters 16-bit integers, flags -1 and 0.
#include "design/section_results.h"
#include "numbers/sections.h"

#include <array>
#include <cstdint>
#include <string>

namespace qm {

using i16 = std::int16_t;

constexpr int kSweepSlots = 601;
using SweepFloats = std::array<float, kSweepSlots>;

struct DesignRecord
{
    // Plan of the design.
    i16 n = 0;
    float ripple = 1.0f;
    float fc = 1000.0f;
    float respFreq = 0.0f;
    float respFreqMapped = 0.0f;
    i16 circuitType = 0;
    i16 realPoleFlag = 0, realPoleCount = 0, sectionRows = 0;
    i16 viewMode = 0;
    i16 digits = 3;
    char decSep = '.';
    std::string workText, outText, numText, tableLine, descText;

    // Sections.
    SectionFloats b0{}, b1{};
    float b0Design = 0, b1Design = 0;
    SectionFloats C1{}, C2{}, c1max{}, c2min{};
    SectionFloats C1Value{}, C2Value{};
    SectionFlags C1Changed{}, C2Changed{};
    float ROne = 0, RTwo = 0, RThree = 0, RFour = 0;
    float R1Seed = 10000.0f;
    i16 R1percent = 0;
    i16 capdiv = 1;
    SectionFloats gainEntry{};
    float sectionGain = 1.0f;
    std::array<float, 6> stageGain{};
    std::array<float, 6> FnDisplay{}, QDisplay{};
    SectionFloats gainDBAtResp{}, phaseAtResp{};
    float QProduct = 1.0f;
    float totalGain = 1.0f, totalGainDB = 0.0f;
    float reqGBP = 0.0f;
    i16 sectionNum = 0;
    i16 suppressUpdate = 0;
    i16 promptKey = 1;
    std::string filterTypeName;
    std::string sectionName;
    /// Each section's results as numbers, by result row.
    std::array<SectionResult, 5> sectionResults{};

    // Families and custom poles.
    i16 filterType = 0, baseFilterType = 0;
    float QScale = 1.0f, QBaseProduct = 1.0f;
    i16 poleRow = 0;

    // Synthesis and component pass.
    i16 gainResistorFlag = 0, hpRoundGuard = 0, eSeriesSize = 24;
    float b0Real = 0, b1Real = 0;
    float adjFnSensC1 = 0, adjQSensC1 = 0, adjFnSensC2 = 0, adjQSensC2 = 0;
    float adjDFn = 0, adjDQ = 0;
    float anaWn = 0, anaQ = 0;
    float secGainValue = 0;

    // Sensitivities.
    std::string sensR1, sensR2, sensR3, sensR4, sensC1, sensC2;
    std::string sensFnText, sensQText;
    float sensFnValue = 0, sensQValue = 0;

    // Response.
    float respMag = 0, respPhase = 0;

    // Chart.
    i16 graphWidth = 0, graphHeight = 0;
    i16 decades = 3;
    float sweepFreq = 0;
    SweepFloats sweepFreqs{}, sweepGainDB{}, sweepPhaseDeg{};
    i16 gainOverTop = 0;
    std::array<std::string, 11> ampTextArray{};
    float ampStep = 0, ampScale = 0, ampOffset = 0;
    float chartGainRef = 0;
    i16 phaseBase = 0;
    float gdMax = 0, gdMantissa = 0, gdExp = 0;
    std::int32_t gdScale = 1;

    // Entry behaviour.
    std::string pendingEntry;
    i16 lastPoles = 3, minPoles = 2, lastPassband = 0;
    std::array<float, 5> gainPrevious{};
    i16 entryIndex = 0;
    std::string msgText;

    // Files, printing, shell.
    i16 designLoaded = 0;
    std::string currentFile;
    /// A design file is being read: every failure belongs to the reader.
    bool readingDesignFile = false;
    std::uint32_t savedBackColor = 0;
    bool showAboutSetting = true;
    bool formLoaded = false; ///< the window's first load has run
};

} // namespace qm
