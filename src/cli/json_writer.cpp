#include "cli/json_writer.h"

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

void appendControl(std::string& out, const Control& c)
{
    out += "\"" + jsonEscape(c.name) + "\": {\"text\": \"" + jsonEscape(c.text) +
           "\", \"visible\": " + boolText(c.visible) + ", \"enabled\": " + boolText(c.enabled);
    if (c.kind == ControlKind::ListBox) out += ", \"index\": " + std::to_string(c.listIndex);
    if (c.kind == ControlKind::OptionButton || c.kind == ControlKind::CheckBox ||
        c.kind == ControlKind::Menu)
        out += ", \"value\": " + std::to_string(c.value);
    out += "}";
}

} // namespace

std::string screenAsJson(const QuellmarkForm& form, const RecordingPlatform& platform,
                         const std::string& moreMembers)
{
    std::string out = "{\"controls\": {";
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
    out += "\n]" + moreMembers + "}\n";
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
