#include "screen/form_controls.h"
#include "screen/form_layout.h"

#include <string>

namespace qm {

namespace {

struct ToolTip
{
    const char* control; ///< a single control, or the base name of a whole array
    const char* text;
};

constexpr ToolTip kToolTips[] = {
    {"Text18", "Enter the number of poles desired"},
    {"Text19", "The ripple entry is for Chybychev filter type."},
    {"Text34", "Cutoff frequency is the 3 dB point for most filters and for Chebychev filters it "
               "is the maximum frequency within the ripple value."},
    {"Text12", "The R1 Seed value is the initial value R1 is calculated to."},
    {"RespF", "Response Frequency is the frequency shown in blue on the graph and the frequency "
              "for the Gain and Phase Values in the table below."},
    {"TypeFilter", "Select the desired filter type."},
    {"FDAcircuit", "Fully Differential Amplifier circuits provide a balanced output."},
    {"SallenKey", "Sallen-Key is a non-inverting filter circuit."},
    {"MFBtype", "MFB is an inverting filter circuit."},
    {"ResistorList", "Make a selection of standard resistor values.  Clicking here will display "
                     "more information in the prompt box."},
    {"CapacitorList", "Make a selection of standard capacitor values.  Clicking here will display "
                      "more information in the prompt box."},
    {"CompValue", "When the Component Values radio button is selected the values on the "
                  "schematic are component values."},
    {"SensTrue", "When the Sensitivities radio button is selected the values on the schematic "
                 "are sensitivity values."},
    {"C1Entry", "Enter desired section value for C1."},
    {"C2Entry", "Enter desired section value for C2."},
    {"GainTB", "Enter desired section gain value."},
    {"C1RealEntry", "Enter the desired value for C1 in the real section."},
    {"FnInput", "Enter new value for Fn or double click for entry of other formats."},
    {"QInput", "Enter new value for Q or double click for entry of other formats."},
    {"Qtotal", "This box provides entry of a custom Q value when the \"Custom Q\" filter type is "
               "selected."},
    {"TopAmp", "Enter the maximum gain to show on the graph."},
    {"BotAmp", "Enter the minimum gain to show on the graph."},
    {"Ampl(0)", "Click here to enter custom gain scale."},
    {"Ampl(8)", "Click here to enter custom gain scale."},
    {"Graph", "Click here to change the Response Frequency.  Green is gain, red is phase, black "
              "is group delay, and blue is the response frequency. Double click to invert "
              "background."},
    {"FSFreq", "Fn is the natural frequency of the section."},
    {"Qdisp", "Q is the Q of the section."},
    {"GBPreq", "This field shows the minimum recommended Gain Bandwith Product (GBP) for the "
               "section."},
    {"DCgain", "This is the gain calculated from the resistors selected."},
    {"DCgain(5)", "This is the product of gain calculated from the resistors selected for all "
                  "the sections."},
    {"GainF", "This field dispays the gain of the section at the entered response frequency."},
    {"GainF(5)", "This field dispays the total gain of the design at the response frequency."},
    {"PhaseF", "This field dispays the phase response of the section at the entered response "
               "frequency."},
    {"PhaseF(5)", "This field dispays the total phase response of the design at the entered "
                  "response frequency."},
    {"Prompt", "The prompt field provides context sensitive information."},
    {"Label43", "The prompt field provides context sensitive information."},
};

} // namespace

// An entry naming an array gives every element its text; an element named
// with its index, listed after its array, then takes its own.
void applyToolTips(FormControls& form)
{
    for (const ToolTip& tip : kToolTips) {
        if (Control* single = form.find(tip.control)) {
            single->toolTip = tip.text;
            continue;
        }
        for (Control* c : form.all())
            if (c->index >= 0 && c->base == tip.control) c->toolTip = tip.text;
    }
}

} // namespace qm
