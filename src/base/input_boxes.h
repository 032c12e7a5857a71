#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QString>

#include <cstdint>

/// The input boxes of the measuring screens.
namespace base {

/// Base class of the boxes in which measures and signs are typed. A derived class may refuse a key:
/// the box is then read-only until the key is released, so that the key types nothing. A focus
/// change that is caused by a menu or by a switch to another program is ignored.
class InputBox : public QLineEdit
{
    Q_OBJECT

public:
    InputBox(const QString& name, const QString& text, int maxLength, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    virtual void gotFocus(Qt::FocusReason reason);
    virtual void keyDown(std::int32_t keyCode) = 0;
    virtual void lostFocus() = 0;

    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    /// Paints the selection and the cursor only while the box has the focus, because the order form
    /// also selects the text of boxes that do not have the focus.
    void paintEvent(QPaintEvent* event) override;

private:
    bool entered_ = false;
};

/// One of the two input boxes of a measure. A box with an even index is for the whole part: at most
/// 3 characters, right-aligned. A box with an odd index is for the hundredths: at most 2
/// characters, left-aligned. The text direction is always left-to-right.
class MeasureBox : public InputBox
{
    Q_OBJECT

public:
    enum class OnLeaving {
        /// When the user leaves an empty box, its text becomes "0" in a box for the whole part of a
        /// measure, and "00" in a box for the hundredths.
        FillDefault,
        /// An empty box gets the same text as with FillDefault. In addition, one digit in a box for
        /// the hundredths of a measure gets a "0" at the end, so that "5" becomes "50".
        FillDefaultAndPad,
    };

    /// Creates a box with the objectName `TextNum_<index>`.
    MeasureBox(int index, const QString& text, OnLeaving onLeaving, QWidget* parent = nullptr);
    int Index() const { return index_; }
    /// Sets whether the box selects its whole text when it gets the focus by keyboard or mouse.
    void setSelectsOnFocus(bool selects) { selectsOnFocus_ = selects; }

protected:
    void gotFocus(Qt::FocusReason reason) override;
    void keyDown(std::int32_t keyCode) override;
    void lostFocus() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool isWhole() const { return index_ % 2 == 0; }

    int index_;
    OnLeaving onLeaving_;
    bool selectsOnFocus_ = false;
    bool reachedByMouse_ = false;
};

/// The input box for the sign of a deduction in the series editor. It holds one character and
/// initially contains "-". An empty box becomes "+" when the user leaves it.
class SignBox : public InputBox
{
    Q_OBJECT

public:
    /// Creates a box with the objectName `TextSign_<index>`.
    explicit SignBox(int index, QWidget* parent = nullptr);

protected:
    void keyDown(std::int32_t keyCode) override;
    void lostFocus() override;
    void inputMethodEvent(QInputMethodEvent* event) override;
};

/// A white QFrame around the two input boxes of a measure. From left to right it contains the whole
/// box, a label with the decimal point and the hundredths box. This order is the same on
/// right-to-left forms.
class MeasurePair : public QFrame
{
    Q_OBJECT

public:
    MeasurePair(const QString& pictureName, MeasureBox* whole, MeasureBox* hundredths,
                const QString& pointName, QWidget* parent = nullptr);
    QLabel* point() const { return point_; }
    /// Sets the names that screen readers announce for the two boxes. A name consists of the
    /// measure's caption and the Hebrew word for "whole" or for "hundredths".
    void setSpokenCaption(const QString& caption);
    /// Returns the measure that the whole box and the hundredths box contain. Throws the errors of
    /// Module1::ReadMeasure.
    double measure() const;

private:
    MeasureBox* whole_;
    MeasureBox* hundredths_;
    QLabel* point_;
};

} // namespace base
