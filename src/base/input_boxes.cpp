#include "base/input_boxes.h"

#include "base/key_helpers.h"
#include "base/measures.h"
#include "base/slips.h"

#include <QApplication>
#include <QFont>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyleOptionFrame>
#include <QStylePainter>

namespace base {

using namespace Qt::StringLiterals;

namespace {

/// Returns false if the focus changes because of a menu or a switch to another program. In these
/// cases no other control of this program gets the focus.
bool countsAsChange(const QFocusEvent& event)
{
    switch (event.reason()) {
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return false;
    case Qt::ActiveWindowFocusReason:
        return QApplication::activeWindow() != nullptr;
    default:
        return true;
    }
}

/// Returns a fixed-pitch font from font families that are installed with the program's packages.
/// The system's default fixed font depends on the other installed software and may not have a fixed
/// pitch.
QFont fixedPitchFont()
{
    QFont font;
    font.setFamilies({u"DejaVu Sans Mono"_s, u"Liberation Mono"_s});
    font.setStyleHint(QFont::TypeWriter);
    return font;
}

} // namespace

InputBox::InputBox(const QString& name, const QString& text, int maxLength, QWidget* parent)
    : QLineEdit(parent)
{
    setObjectName(name);
    setLayoutDirection(Qt::LeftToRight);
    setMaxLength(maxLength);
    setText(text);
}

QSize InputBox::sizeHint() const
{
    const QSize usual = QLineEdit::sizeHint();
    // The box is one digit wider than its longest text, which leaves room for the cursor and for a
    // letter that is wider than a digit.
    const int contents = fontMetrics().horizontalAdvance(QString(maxLength() + 1, u'0'));
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QSize framed = style()->sizeFromContents(QStyle::CT_LineEdit, &option, {contents, 0});
    return {framed.width(), usual.height()};
}

QSize InputBox::minimumSizeHint() const
{
    return sizeHint();
}

void InputBox::gotFocus(Qt::FocusReason /*reason*/) {}

void InputBox::keyPressEvent(QKeyEvent* event)
{
    const std::int32_t keyCode = Module1::keyCodeOf(*event);
    keyDown(keyCode);
    if (keyCode == Module1::KeyReturn || keyCode == Module1::KeyUp || keyCode == Module1::KeyDown)
        // If the event were not accepted, Enter would press the default button of the dialog that
        // contains the box.
        event->accept();
    else
        QLineEdit::keyPressEvent(event);
}

void InputBox::keyReleaseEvent(QKeyEvent* event)
{
    if (!event->isAutoRepeat())
        setReadOnly(false);
    QLineEdit::keyReleaseEvent(event);
}

void InputBox::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (entered_)
        return;
    entered_ = true;
    gotFocus(event->reason());
}

void InputBox::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (!countsAsChange(*event))
        return;
    entered_ = false;
    // A held key may have made the box read-only. The box gets no release event after it has lost
    // the focus, so the read-only state ends now.
    setReadOnly(false);
    lostFocus();
}

void InputBox::paintEvent(QPaintEvent* event)
{
    if (hasFocus()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QStyleOptionFrame option;
    initStyleOption(&option);
    QStylePainter painter(this);
    painter.drawPrimitive(QStyle::PE_PanelLineEdit, option);
    // The text is drawn where QLineEdit draws it: 2 pixels from the left and right edges and 1
    // pixel from the top and bottom edges of the contents rectangle.
    const QRect text = style()
                           ->subElementRect(QStyle::SE_LineEditContents, &option, this)
                           .marginsRemoved(textMargins())
                           .adjusted(2, 1, -2, -1);
    const Qt::Alignment shown = QStyle::visualAlignment(Qt::LeftToRight, alignment());
    painter.drawItemText(text, static_cast<int>(shown.toInt()), option.palette, isEnabled(),
                         this->text(), QPalette::Text);
}

MeasureBox::MeasureBox(int index, const QString& text, OnLeaving onLeaving, QWidget* parent)
    : InputBox(u"TextNum_%1"_s.arg(index), text, index % 2 == 0 ? 3 : 2, parent), index_(index),
      onLeaving_(onLeaving)
{
    showSlips(*this);
    setAlignment((isWhole() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute |
                 Qt::AlignVCenter);
}

void MeasureBox::gotFocus(Qt::FocusReason reason)
{
    if (!selectsOnFocus_)
        return;
    reachedByMouse_ = reason == Qt::MouseFocusReason;
    Module1::SelectAllText(*this);
}

void MeasureBox::keyDown(std::int32_t keyCode)
{
    Module1::KeyNavigate(*this, keyCode, true);
}

void MeasureBox::lostFocus()
{
    reachedByMouse_ = false;
    if (text().isEmpty())
        setText(isWhole() ? u"0"_s : u"00"_s);
    else if (onLeaving_ == OnLeaving::FillDefaultAndPad && !isWhole() && text().size() == 1)
        setText(text() + u'0');
}

// The mouse click that gives the box the focus also places the cursor, which removes the selection.
// Therefore the text is selected again.
void MeasureBox::mousePressEvent(QMouseEvent* event)
{
    QLineEdit::mousePressEvent(event);
    if (reachedByMouse_)
        Module1::SelectAllText(*this);
}

void MeasureBox::mouseMoveEvent(QMouseEvent* event)
{
    if (!reachedByMouse_)
        QLineEdit::mouseMoveEvent(event);
}

void MeasureBox::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    reachedByMouse_ = false;
}

SignBox::SignBox(int index, QWidget* parent)
    : InputBox(u"TextSign_%1"_s.arg(index), u"-"_s, 1, parent)
{
    setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
}

void SignBox::keyDown(std::int32_t keyCode)
{
    Module1::KeySignFilter(*this, keyCode, true);
}

void SignBox::lostFocus()
{
    if (text().isEmpty())
        setText(u"+"_s);
}

void SignBox::inputMethodEvent(QInputMethodEvent* event)
{
    // The input box for a plus or minus sign ignores input methods, because their text would bypass
    // the check of the typed character.
    event->ignore();
}

MeasurePair::MeasurePair(const QString& pictureName, MeasureBox* whole, MeasureBox* hundredths,
                         const QString& pointName, QWidget* parent)
    : QFrame(parent), whole_(whole), hundredths_(hundredths), point_(new QLabel(u"."_s, this))
{
    setObjectName(pictureName);
    setLayoutDirection(Qt::LeftToRight);
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    point_->setObjectName(pointName);
    point_->setFont(fixedPitchFont());

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (MeasureBox* box : {whole, hundredths})
        box->setFrame(false);
    // The QFrame around the two boxes of a measure stays white when it is disabled.
    QPalette white = palette();
    white.setColor(QPalette::Disabled, QPalette::Base, white.color(QPalette::Base));
    setPalette(white);
    layout->addWidget(whole);
    layout->addWidget(point_);
    layout->addWidget(hundredths);
}

void MeasurePair::setSpokenCaption(const QString& caption)
{
    const QString spoken = caption.simplified().remove(u" :"_s);
    whole_->setAccessibleName(spoken + u", שלם"_s);
    hundredths_->setAccessibleName(spoken + u", מאיות"_s);
}

double MeasurePair::measure() const
{
    return Module1::ReadMeasure(whole_->text(), hundredths_->text());
}

} // namespace base
