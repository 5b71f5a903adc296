#pragma once
// The design screen as lines of text, one control a line, for comparison with
// reference files in tests/data.
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/reference_data.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace qm::test {

/// A text with its line breaks and tabs made visible, so one value is one line.
inline std::string visible(const std::string& text)
{
    std::string out;
    for (char ch : text)
        out += ch == '\r' ? "\\r" : ch == '\n' ? "\\n" : ch == '\t' ? "\\t" : std::string(1, ch);
    return out;
}

inline std::string colorName(Color c)
{
    if (c == kButtonFace) return "ButtonFace";
    if (c == kWindowColor) return "Window";
    if (c == kFormColor) return "Form";
    char buf[16];
    std::snprintf(buf, sizeof buf, "#%06X", static_cast<unsigned>(c & 0xFFFFFFu));
    return buf;
}

inline const char* kindName(ControlKind k)
{
    constexpr const char* kNames[] = {"Label",  "TextBox", "ListBox", "CheckBox", "Option",
                                      "Frame",  "Picture", "Line",    "Shape",    "Menu",
                                      "Button", "Window",  "Grid"};
    return kNames[static_cast<int>(k)];
}

/// Everything the screen shows of one control, on one line.
inline std::string controlLine(const Control& c)
{
    std::ostringstream s;
    s << c.name << " " << kindName(c.kind) << (c.visible ? " shown" : " hidden")
      << (c.enabled ? " enabled" : " disabled") << " back=" << colorName(c.backColor)
      << " fore=" << colorName(c.foreColor);
    if (!c.container.empty()) s << " in=" << c.container;
    s << " at=" << c.left << "," << c.top << " size=" << c.width << "x" << c.height;
    if (c.kind == ControlKind::Line)
        s << " line=" << c.x1 << "," << c.y1 << "-" << c.x2 << "," << c.y2;
    if (c.kind == ControlKind::ListBox) s << " index=" << c.listIndex;
    if (c.kind == ControlKind::OptionButton || c.kind == ControlKind::CheckBox ||
        c.kind == ControlKind::Menu)
        s << " value=" << c.value;
    if (c.raised) s << " raised";
    if (c.readOnly) s << " readonly";
    if (c.bold) s << " bold";
    if (c.multiLine) s << " multiline";
    if (c.fontSize != 0) s << " font=" << c.fontSize;
    if (c.alignment != 0) s << " align=" << c.alignment;
    if (c.tabIndex >= 0) s << " tab=" << c.tabIndex;
    if (!c.menu.empty()) s << " menu=" << c.menu << " key=" << c.accelerator;
    s << " text=\"" << visible(c.text) << "\"";
    return s.str();
}

/// The lines of one surface, by colour: how many, where they reach and the
/// sums of their ends' coordinates, so that a line moved, added or lost shows.
inline void addDrawing(std::vector<std::string>& lines, const char* surface,
                       const RecordingSurface& drawn)
{
    std::vector<Color> colors;
    for (const RecordedLine& l : drawn.lines)
        if (std::find(colors.begin(), colors.end(), l.color) == colors.end())
            colors.push_back(l.color);
    for (Color c : colors) {
        int count = 0;
        double sumX = 0, sumY = 0, minX = 1e9, maxX = -1e9, minY = 1e9, maxY = -1e9;
        for (const RecordedLine& l : drawn.lines) {
            if (l.color != c) continue;
            ++count;
            sumX += double(l.x1) + double(l.x2);
            sumY += double(l.y1) + double(l.y2);
            minX = std::min({minX, double(l.x1), double(l.x2)});
            maxX = std::max({maxX, double(l.x1), double(l.x2)});
            minY = std::min({minY, double(l.y1), double(l.y2)});
            maxY = std::max({maxY, double(l.y1), double(l.y2)});
        }
        char buf[200];
        std::snprintf(buf, sizeof buf, "%s %s lines=%d x=%.0f..%.0f y=%.0f..%.0f sums=%.0f,%.0f",
                      surface, colorName(c).c_str(), count, minX, maxX, minY, maxY, sumX, sumY);
        lines.push_back(buf);
    }
}

/// A grid's heads, cell, rows and the marks of its rows.
inline void addGrid(std::vector<std::string>& lines, const GridModel& g)
{
    std::string head = g.name + " grid row=" + std::to_string(g.row) +
                       " col=" + std::to_string(g.col) + (g.allowUpdate ? " editing" : "") +
                       (g.allowAddNew ? " adding" : "") + " |";
    constexpr const char* kAlign[] = {"grid's", "left", "right", "centre"};
    for (const GridColumn& c : g.columns)
        head += " " + visible(c.caption) + " " + std::to_string(c.width) + " " +
                kAlign[std::clamp(c.alignment + 1, 0, 3)] +
                (c.format.empty() ? "" : " " + c.format) + " |";
    lines.push_back(head);
    for (std::size_t r = 0; r < g.rows.size(); ++r) {
        std::string row = "  |";
        for (const std::string& cell : g.rows[r])
            row += " " + visible(cell) + " |";
        if (r < g.rowTips.size() && !g.rowTips[r].empty()) row += " mark: " + visible(g.rowTips[r]);
        lines.push_back(row);
    }
}

/// The design screen's own controls, the windows beside it that are shown,
/// then the messages that were raised.
inline std::vector<std::string> screenLines(const QuellmarkForm& form,
                                            const RecordingPlatform& platform)
{
    std::vector<std::string> lines;
    lines.push_back("Form caption=\"" + visible(form.Form.text) + "\" height=" +
                    std::to_string(form.Form.height) + " focus=" + form.focusedControl() +
                    " recalculations=" + std::to_string(platform.busyCount));
    for (const Control* c : form.all())
        lines.push_back(controlLine(*c));
    for (const Control* w : form.windows()) {
        if (!w->visible) continue;
        lines.push_back(controlLine(*w));
        for (const Control* c : form.windowControls())
            if (c->window == w->name) lines.push_back(controlLine(*c));
        for (const GridModel* g : form.grids())
            if (g->name.rfind(w->name + ".", 0) == 0) addGrid(lines, *g);
    }
    addDrawing(lines, "graph", platform.graph);
    addDrawing(lines, "background", platform.background);
    for (const RecordedMessage& m : platform.messages)
        lines.push_back("message " + visible(m.title) + ": " + visible(m.text));
    return lines;
}

} // namespace qm::test
