#include "cli/json_writer.h"

#include "cli/design_json.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <cstdio>

namespace qm {

std::string jsonEscape(const std::string& text)
{
    std::string out;
    out.reserve(text.size() + 2);
    for (char ch : text) {
        const auto c = static_cast<unsigned char>(ch);
        switch (ch) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            if (c < 0x20) {
                char buf[8];
                std::snprintf(buf, sizeof buf, "\\u%04x", c);
                out += buf;
            } else {
                out += ch;
            }
        }
    }
    return out;
}

namespace {

const char* boolText(bool b)
{
    return b ? "true" : "false";
}

/// "#RRGGBB", or the name of a system colour, which the platform resolves.
std::string colorText(Color c)
{
    switch (c) {
    case kButtonFace:
        return "ButtonFace";
    case kWindowColor:
        return "Window";
    case kFormColor:
        return "Form";
    default:
        break;
    }
    char buf[16];
    std::snprintf(buf, sizeof buf, "#%06X", static_cast<unsigned>(c & 0xFFFFFFu));
    return buf;
}

void appendControl(std::string& out, const Control& c)
{
    out += "\"" + jsonEscape(c.name) + "\": {\"text\": \"" + jsonEscape(c.text) +
           "\", \"visible\": " + boolText(c.visible) + ", \"enabled\": " + boolText(c.enabled);
    if (c.kind == ControlKind::ListBox) out += ", \"index\": " + std::to_string(c.listIndex);
    if (c.kind == ControlKind::OptionButton || c.kind == ControlKind::CheckBox ||
        c.kind == ControlKind::Menu)
        out += ", \"value\": " + std::to_string(c.value);
    if (c.kind == ControlKind::Menu) out += std::string(", \"checked\": ") + boolText(c.value != 0);
    if (c.kind == ControlKind::Line)
        out += ", \"x1\": " + std::to_string(c.x1) + ", \"y1\": " + std::to_string(c.y1) +
               ", \"x2\": " + std::to_string(c.x2) + ", \"y2\": " + std::to_string(c.y2);
    out += ", \"backColor\": \"" + colorText(c.backColor) + "\"";
    out += ", \"helpContext\": " + std::to_string(c.helpContext);
    out += "}";
}

} // namespace

std::string screenAsJson(const QuellmarkForm& form, const RecordingPlatform& platform,
                         const std::string& moreMembers)
{
    std::string out = "{\"title\": \"" + jsonEscape(form.Form.text) + "\", \"controls\": {";
    bool first = true;
    for (const Control* c : form.all()) {
        out += first ? "\n  " : ",\n  ";
        first = false;
        appendControl(out, *c);
    }
    for (const Control* c : form.windowControls()) {
        out += ",\n  ";
        appendControl(out, *c);
    }
    out +=
        "\n}, \"windows\": [\n  {\"name\": \"QuellmarkForm\", \"visible\": true, \"caption\": \"" +
        jsonEscape(form.Form.text) + "\"}";
    for (const Control* w : form.windows())
        out += ",\n  {\"name\": \"" + jsonEscape(w->name) +
               "\", \"visible\": " + boolText(w->visible) + ", \"caption\": \"" +
               jsonEscape(w->text) + "\"}";
    out += "\n], \"messages\": [";
    first = true;
    for (const RecordedMessage& m : platform.messages) {
        out += first ? "\n  " : ",\n  ";
        first = false;
        out += "{\"title\": \"" + jsonEscape(m.title) + "\", \"text\": \"" + jsonEscape(m.text) +
               "\"}";
    }
    out += "\n], \"help\": [";
    for (std::size_t k = 0; k < platform.helpOpened.size(); ++k)
        out += (k ? ", " : "") + std::to_string(platform.helpOpened[k]);
    out += "], \"printed\": " + std::to_string(platform.pageOrientations.size());
    out += ",\n\"design\": " + designAsJson(form);
    out += moreMembers + "}\n";
    return out;
}

std::string screenAsText(const QuellmarkForm& form, const RecordingPlatform& platform)
{
    std::string out;
    for (const Control* c : form.all())
        if (c->visible && !c->text.empty() && c->kind != ControlKind::Menu)
            out += c->name + " = " + c->text + "\n";
    for (const RecordedMessage& m : platform.messages)
        out += "message: " + m.title + ": " + m.text + "\n";
    return out;
}

} // namespace qm
