#pragma once
// One control of a window's view model: everything the screen shows of it and
// everything the design logic reads back. The shell draws it; the core never
// needs a window system.
#include <cstdint>
#include <string>
#include <vector>

namespace qm {

/// Colour as 0xRRGGBB, or one of the system colours below.
using Color = std::uint32_t;

constexpr Color rgb(unsigned r, unsigned g, unsigned b)
{
    return static_cast<Color>((r << 16) | (g << 8) | b);
}

constexpr Color kWhite = 0xFFFFFF;
constexpr Color kBlack = 0x000000;
/// System colours, resolved by the shell from the platform's palette.
constexpr Color kButtonFace = 0x8000000F;
constexpr Color kWindowColor = 0x80000005;
/// The main screen's own back colour.
constexpr Color kFormColor = 0x8000000E;
constexpr bool isSystemColor(Color c)
{
    return (c & 0x80000000u) != 0;
}

enum class ControlKind {
    Label,
    TextBox,
    ListBox,
    CheckBox,
    OptionButton,
    Frame,
    Picture,
    Line,
    Shape,
    Menu,
    Button,
    Window,
    Grid,
};

/// Values of option buttons and menu ticks, and of check boxes.
constexpr int kSelected = -1;
constexpr int kChecked = 1;

struct Control
{
    std::string name; ///< "Text18", "FSFreq(2)"
    std::string base; ///< array name without index: "FSFreq"
    int index = -1;   ///< array index, -1 for a single control
    ControlKind kind = ControlKind::Label;

    std::string text; ///< caption of a label, frame, option, box, menu or button; text of an entry
    bool visible = true;
    bool enabled = true;
    Color backColor = kFormColor;
    Color foreColor = kBlack;
    int left = 0; ///< twips, from the left of the container
    int top = 0;
    int width = 0;
    int height = 0;
    int x1 = 0, y1 = 0, x2 = 0, y2 = 0; ///< ends of a line
    int value = 0;                      ///< check box 1/0, option button and menu tick -1/0
    int listIndex = -1;
    std::vector<std::string> items;
    std::string toolTip;
    std::string container; ///< name of the frame it stands in, empty for the window
    std::string window;    ///< the window beside the design screen it belongs to, or empty
    bool raised = false;   ///< a 3-D entry border, as opposed to flat
    bool readOnly = false;
    bool multiLine = false;
    int fontSize = 0; ///< points; 0 is the window's font
    bool bold = false;
    int alignment = 0;       ///< 0 left, 1 right, 2 centre
    int tabIndex = -1;       ///< place in the tab order, -1 for none
    std::string menu;        ///< for a menu entry: the name of its menu
    std::string accelerator; ///< for a menu entry, "Ctrl+O"
    int helpContext = 0;

    bool selected() const { return value == kSelected; }
    bool checked() const { return value == kChecked; }
};

} // namespace qm
