#include "shell/stall_window.h"

#include "platform/runtime/guard.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

const QString title = u"ProjZomrel"_s;
// The following sizes are in device-independent pixels.
constexpr int textWidth = 460;
constexpr int buttonWidth = 140;
constexpr int margin = 18;
constexpr int spacing = 12;

QLabel* addLabel(QVBoxLayout& layout, const QString& name, const QString& text)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    layout.addWidget(label);
    return label;
}

/// Returns the path with an invisible blank after each separator, so that a long path can be
/// wrapped.
QString wrappable(QString path)
{
    return path.replace(u'/', u"/\u200b"_s);
}

/// Asks the user whether to end the program. Enter presses No, so that a key that was meant for the
/// program's own window does not end the program.
bool isConfirmed(QWidget* parent)
{
    QMessageBox box(QMessageBox::Question, title, u"לסיים את התוכנית? מה שעדיין לא נשמר יאבד."_s,
                    QMessageBox::NoButton, parent);
    const QPushButton* yes = box.addButton(u"כן"_s, QMessageBox::YesRole);
    QPushButton* no = box.addButton(u"לא"_s, QMessageBox::NoRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

} // namespace

StallWindow::StallWindow(const QString& what, int seconds) : seconds_(seconds)
{
    setObjectName(u"StallWindow"_s);
    setWindowTitle(title);
    setLayoutDirection(Qt::RightToLeft);
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowStaysOnTopHint);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(spacing);
    LabelWaiting = addLabel(*layout, u"LabelWaiting"_s, {});
    QLabel* labelWhat = addLabel(*layout, u"LabelWhat"_s, wrappable(what));
    // A path is read from left to right but is aligned to the right, like the other texts of the
    // window.
    labelWhat->setLayoutDirection(Qt::LeftToRight);
    labelWhat->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    addLabel(*layout, u"LabelLock"_s,
             u"ייתכן שעמדה אחרת כותבת עכשיו. אם כך, ההמתנה תיגמר בתוך כמה שניות."_s);
    addLabel(*layout, u"LabelGoesOn"_s,
             u"ברגע שתגיע תשובה תיעלם הודעה זו והעבודה תימשך.\nכל מה שנשמר עד עכשיו שמור."_s);
    LabelChoice = addLabel(*layout, u"LabelChoice"_s,
                           u"אפשר גם לסיים את התוכנית עכשיו. מה שעדיין לא נשמר יאבד."_s);
    CmdEnd = new QPushButton(u"סיום התוכנית"_s);
    CmdEnd->setObjectName(u"CmdEnd"_s);
    CmdEnd->setAutoDefault(false);
    CmdEnd->setMinimumWidth(buttonWidth);
    layout->addWidget(CmdEnd, 0, Qt::AlignHCenter);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    // The window itself takes the focus. Otherwise its button would have the focus, and a key that
    // was meant for the main window could press it.
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
    runtime::on(CmdEnd, &QPushButton::clicked, this, [this] { cmdEnd_Click(); });
    runtime::on(&second_, &QTimer::timeout, this, [this] { countOn(); });
    constexpr int oneSecond = 1000; // ms
    second_.start(oneSecond);
    --seconds_;
    countOn();
}

void StallWindow::countOn()
{
    ++seconds_;
    const QString time = seconds_ == 1 ? u"שנייה"_s : u"%1 שניות"_s.arg(seconds_);
    LabelWaiting->setText(u"התוכנית ממתינה כבר %1 לתשובה מבסיס הנתונים:"_s.arg(time));
}

/// Ends the program after a confirmation. The system can keep an ended program until its blocked
/// call returns. The notice therefore says that the program's windows disappear as soon as the
/// system releases the program.
void StallWindow::cmdEnd_Click()
{
    if (!isConfirmed(this))
        return;
    CmdEnd->setEnabled(false);
    LabelChoice->setText(u"התוכנית נסגרת. החלונות שלה ייעלמו ברגע שהמערכת תשחרר אותה."_s);
    emit endChosen();
}

} // namespace shell
