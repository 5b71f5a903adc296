#include "screen/user_actions.h"

#include "screen/grid_actions.h"
#include "screen/quellmark_form.h"
#include "screen/shell_menus.h"

#include <cstdlib>

namespace qm {

namespace {

Control& controlNamed(QuellmarkForm& form, const std::string& name)
{
    Control* c = form.find(name);
    if (!c) throw ActionError("no control named '" + name + "'");
    return *c;
}

int listItem(const Control& list, const std::string& item)
{
    char* end = nullptr;
    const long index = std::strtol(item.c_str(), &end, 10);
    if (!item.empty() && *end == '\0') {
        if (index < 0 || index >= static_cast<long>(list.items.size()))
            throw ActionError("list " + list.name + " has no item " + item);
        return static_cast<int>(index);
    }
    for (std::size_t i = 0; i < list.items.size(); ++i)
        if (list.items[i] == item) return static_cast<int>(i);
    throw ActionError("list " + list.name + " has no item '" + item + "'");
}

void requireKind(const Control& c, ControlKind kind, const char* what)
{
    if (c.kind != kind) throw ActionError(c.name + " is not " + what);
}

void typeInto(QuellmarkForm& form, Control& c, const std::string& text, bool pressEnter)
{
    if (c.kind == ControlKind::Grid) {
        typeIntoGrid(form, c, text);
        return;
    }
    requireKind(c, ControlKind::TextBox, "a text entry");
    form.moveFocus(c.name);
    c.text = text;
    if (form.hasHandler(c.base, FormEvent::Change)) form.raise(c.name, FormEvent::Change);
    if (pressEnter) {
        EventArgs enter;
        enter.keyCode = kKeyEnter;
        form.raise(c.name, FormEvent::KeyDown, enter);
    } else {
        form.moveFocus("");
    }
}

void clickOn(QuellmarkForm& form, Control& c, const std::string& text)
{
    if (c.kind == ControlKind::Grid && !text.empty()) {
        clickGridHead(form, c, text);
        return;
    }
    switch (c.kind) {
    case ControlKind::OptionButton:
        form.moveFocus(c.name);
        form.runGuarded([&] { form.selectOption(c); });
        break;
    case ControlKind::CheckBox:
        form.moveFocus(c.name);
        form.runGuarded([&] { form.setCheck(c, c.value == kChecked ? 0 : kChecked); });
        break;
    case ControlKind::Button:
    case ControlKind::Grid:
    case ControlKind::ListBox:
    case ControlKind::TextBox:
        form.moveFocus(c.name);
        form.raise(c.name, FormEvent::Click);
        break;
    default:
        // Menus, frames, labels and pictures take no focus.
        form.raise(c.name, FormEvent::Click);
        break;
    }
}

EventArgs pointAt(const Control& c, const std::string& text)
{
    const auto comma = text.find(',');
    char* endX = nullptr;
    char* endY = nullptr;
    EventArgs args;
    if (comma != std::string::npos) {
        const std::string xs = text.substr(0, comma);
        const std::string ys = text.substr(comma + 1);
        args.x = std::strtof(xs.c_str(), &endX);
        args.y = std::strtof(ys.c_str(), &endY);
        if (!xs.empty() && !ys.empty() && *endX == '\0' && *endY == '\0') return args;
    }
    throw ActionError("a mouse position on " + c.name + " is X,Y in twips, not '" + text + "'");
}

/// A press at a place, then the click that its release makes.
void mouseOn(QuellmarkForm& form, Control& c, const EventArgs& at)
{
    if (c.kind == ControlKind::TextBox || c.kind == ControlKind::ListBox) form.moveFocus(c.name);
    form.raise(c.name, FormEvent::MouseDown, at);
    form.raise(c.name, FormEvent::Click, at);
}

} // namespace

void applyAction(QuellmarkForm& form, const UserAction& action)
{
    Control& c = controlNamed(form, action.control);
    const Control* window = c.window.empty() ? nullptr : form.find(c.window);
    if (window && window != &c && !window->visible)
        throw ActionError(c.name + " is not available (its window " + c.window + " is not open)");
    if (!c.visible || !c.enabled)
        throw ActionError(c.name + " is not available (hidden or disabled)");
    switch (action.kind) {
    case ActionKind::Type:
        typeInto(form, c, action.text, false);
        break;
    case ActionKind::Enter:
        typeInto(form, c, action.text, true);
        break;
    case ActionKind::Select: {
        if (c.kind == ControlKind::Grid) {
            selectGridCell(form, c, action.text);
            break;
        }
        requireKind(c, ControlKind::ListBox, "a list");
        const int index = listItem(c, action.text);
        form.moveFocus(c.name);
        form.runGuarded([&] { form.setListIndex(c, index); });
        break;
    }
    case ActionKind::Click:
        clickOn(form, c, action.text);
        break;
    case ActionKind::Mouse:
        mouseOn(form, c, pointAt(c, action.text));
        break;
    case ActionKind::DblClick:
        mouseOn(form, c, action.text.empty() ? EventArgs{} : pointAt(c, action.text));
        form.raise(c.name, FormEvent::DblClick);
        break;
    case ActionKind::HelpKey:
        if (c.kind != ControlKind::Menu && c.kind != ControlKind::Label) form.moveFocus(c.name);
        pressF1(form, c.name);
        break;
    case ActionKind::Check:
    case ActionKind::Uncheck: {
        requireKind(c, ControlKind::CheckBox, "a check box");
        const bool want = action.kind == ActionKind::Check;
        if (c.checked() != want) clickOn(form, c, {});
        break;
    }
    }
}

} // namespace qm
