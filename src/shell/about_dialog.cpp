#include "shell/about_dialog.h"

#include "shell/qt_platform.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace qm {

namespace {

const char* const kWindow = "AboutQuellmark";

std::string controlName(const char* name)
{
    return std::string(kWindow) + "." + name;
}

} // namespace

AboutDialog::AboutDialog(QuellmarkForm& form, ControlEvents& events,
                         std::function<void()> closedByFrame, QWidget* parent)
    : QDialog(parent), form_(form), closedByFrame_(std::move(closedByFrame))
{
    setModal(false);
    label_ = new QLabel(this);
    // The lines are centred by leading blanks, which only an even pitch
    // keeps centred.
    label_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    box_ = new QCheckBox(this);
    ok_ = new QPushButton(this);
    ok_->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(box_);
    buttons->addStretch();
    buttons->addWidget(ok_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label_);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    connect(box_, &QCheckBox::clicked, this,
            [&events] { events.choiceClicked(controlName("ShowOnStartup")); });
    connect(ok_, &QPushButton::clicked, this,
            [&events] { events.userEvent(controlName("Ok"), FormEvent::Click); });
}

void AboutDialog::syncFromModel()
{
    const Control& window = *form_.find(kWindow);
    setWindowTitle(QString::fromStdString(window.text));
    label_->setText(screenText(form_.find(controlName("Label1"))->text));
    const Control& box = *form_.find(controlName("ShowOnStartup"));
    {
        const QSignalBlocker block(box_);
        box_->setText(QString::fromStdString(box.text));
        box_->setChecked(box.checked());
    }
    ok_->setText(QString::fromStdString(form_.find(controlName("Ok"))->text));
    if (window.visible && !isVisible()) {
        show();
        raise();
        activateWindow();
    } else if (!window.visible && isVisible()) {
        hide();
    }
}

void AboutDialog::reject()
{
    // Escape or the window's frame: the window goes, and nothing is stored.
    QDialog::reject();
    if (form_.find(kWindow)->visible) closedByFrame_();
}

} // namespace qm
