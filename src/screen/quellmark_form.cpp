#include "screen/quellmark_form.h"

#include "numbers/float_store.h"
#include "screen/event_table.h"

#include <exception>
#include <utility>

namespace qm {

namespace {

std::string handlerKey(std::string_view base, FormEvent event)
{
    static constexpr const char* kNames[] = {"Click",     "DblClick",    "GotFocus", "LostFocus",
                                             "Validate",  "KeyDown",     "Change",   "MouseDown",
                                             "HeadClick", "RowColChange"};
    return std::string(base) + "_" + kNames[static_cast<int>(event)];
}

} // namespace

QuellmarkForm::QuellmarkForm(PlatformServices services) : platform(std::move(services))
{
    registerFormHandlers(*this);
}

void QuellmarkForm::on(std::string_view base, FormEvent event, FormHandler handler)
{
    handlers_[handlerKey(base, event)] = std::move(handler);
}

bool QuellmarkForm::hasHandler(std::string_view base, FormEvent event) const
{
    return handlers_.contains(handlerKey(base, event));
}

void QuellmarkForm::fire(Control& c, FormEvent event, const EventArgs& args)
{
    auto it = handlers_.find(handlerKey(c.base, event));
    if (it != handlers_.end()) it->second(*this, c.index, args);
}

void QuellmarkForm::setListIndex(Control& list, int index)
{
    if (list.listIndex == index) return;
    list.listIndex = index;
    fire(list, FormEvent::Click, {});
}

void QuellmarkForm::selectOption(Control& option)
{
    if (option.value == kSelected) return;
    for (Control* other : all())
        if (other != &option && other->kind == ControlKind::OptionButton &&
            other->container == option.container)
            other->value = 0;
    option.value = kSelected;
    fire(option, FormEvent::Click, {});
}

void QuellmarkForm::deselectOption(Control& option)
{
    option.value = 0;
}

void QuellmarkForm::setCheck(Control& box, int value)
{
    if (box.value == value) return;
    box.value = value;
    fire(box, FormEvent::Click, {});
}

void QuellmarkForm::showMessage(const std::string& text)
{
    if (platform.messages)
        platform.messages->showMessage(text, kProgramTitle, MessageButtons::Ok, MessageIcon::None);
}

bool QuellmarkForm::raise(std::string_view controlName, FormEvent event, const EventArgs& args)
{
    Control* c = find(controlName);
    if (!c) return false;
    runGuarded([&] { fire(*c, event, args); });
    return true;
}

void QuellmarkForm::runGuarded(const std::function<void()>& work)
{
    try {
        work();
    } catch (const std::exception& e) {
        // The handler had no catch of its own: the design stays as far as it
        // was computed, and the designer is told why the rest is missing.
        if (platform.busy) platform.busy->setBusy(false);
        showMessage(std::string("The design could not be recalculated: ") + e.what() + ".");
    }
}

void QuellmarkForm::moveFocus(std::string_view controlName)
{
    if (focused_ == controlName) return;
    std::string left = focused_;
    focused_ = std::string(controlName);
    if (!left.empty()) {
        const Control* old = find(left);
        if (old && old->kind == ControlKind::TextBox) raise(left, FormEvent::Validate);
        raise(left, FormEvent::LostFocus);
    }
    if (!focused_.empty()) raise(focused_, FormEvent::GotFocus);
}

} // namespace qm
