#include "platform/controls/message_box_window.h"

#include "platform/runtime/message_box.h"

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace controls {

using namespace Qt::StringLiterals;
using runtime::MessageBoxAnswer;
using runtime::MessageBoxRequest;

namespace {

constexpr int buttonBits = 0xf;
constexpr int iconBits = 0xf0;

QMessageBox::Icon iconOf(int flags)
{
    switch (flags & iconBits) {
    case runtime::vbCritical:
        return QMessageBox::Critical;
    case runtime::vbQuestion:
        return QMessageBox::Question;
    default:
        return QMessageBox::NoIcon;
    }
}

void addButton(QMessageBox& box, QMessageBox::StandardButton button, const QString& caption)
{
    QAbstractButton* added = box.addButton(button);
    added->setText(caption);
    added->setIcon({}); // Some desktops set an icon that leaves too little space for the caption.
}

/// Adds the buttons that the MsgBox flags select, in reading order. Enter presses the first button.
/// Escape and the close box press the last button.
void addButtons(QMessageBox& box, int flags)
{
    const int set = flags & buttonBits;
    if (set == runtime::vbYesNo || set == runtime::vbYesNoCancel) {
        addButton(box, QMessageBox::Yes, u"כן"_s);
        addButton(box, QMessageBox::No, u"לא"_s);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
    } else {
        addButton(box, QMessageBox::Ok, u"אישור"_s);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Ok);
    }
    if (set == runtime::vbYesNoCancel) {
        addButton(box, QMessageBox::Cancel, u"ביטול"_s);
        box.setEscapeButton(QMessageBox::Cancel);
    }
}

void layOutText(QMessageBox& box, int flags)
{
    const bool rightToLeft = (flags & runtime::vbMsgBoxRtlReading) != 0;
    const bool right = rightToLeft || (flags & runtime::vbMsgBoxRight) != 0;
    box.setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    // The button layout is fixed, because the order of the buttons must not depend on the desktop.
    box.setStyleSheet(u"QDialogButtonBox { button-layout: 0 }"_s);
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (label == nullptr)
        return;
    label->setAlignment((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                        Qt::AlignVCenter);
    // The text is selectable, because QLabel breaks lines at carriage returns only in a selectable
    // text.
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

/// Shows a Hebrew explanation below the text of the message box. The explanation is right-to-left,
/// whatever the language of the text is.
void addExplanation(QMessageBox& box, const QString& explanation)
{
    if (explanation.isEmpty())
        return;
    box.setInformativeText(explanation);
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_informativelabel"_s);
    if (label == nullptr)
        return;
    label->setLayoutDirection(Qt::RightToLeft);
    label->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

MessageBoxAnswer answerOf(int button)
{
    switch (button) {
    case QMessageBox::Yes:
        return runtime::vbYes;
    case QMessageBox::No:
        return runtime::vbNo;
    case QMessageBox::Cancel:
        return runtime::vbCancel;
    default:
        return runtime::vbOK;
    }
}

MessageBoxAnswer showBox(const MessageBoxRequest& request)
{
    const QPointer<QMessageBox> box = new QMessageBox(QApplication::activeWindow());
    box->setTextFormat(Qt::PlainText);
    box->setWindowTitle(request.title);
    box->setIcon(iconOf(request.flags));
    box->setText(request.text);
    addButtons(*box, request.flags);
    layOutText(*box, request.flags);
    addExplanation(*box, request.explanation);
    const MessageBoxAnswer answer = answerOf(box->exec());
    delete box; // The pointer is null if the parent window has been deleted.
    return answer;
}

} // namespace

void installMessageBoxes()
{
    runtime::messageBoxDoor().replace(showBox);
}

} // namespace controls
