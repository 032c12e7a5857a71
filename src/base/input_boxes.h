#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QString>

#include <cstdint>

/// The input boxes of the measuring screens.
namespace base {

/// Base class of the input boxes. It translates key events to key codes and removes the read-only
/// state when the key is released. It ignores focus changes that are caused by menus or by
/// switching to another program.
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
    /// Paints the selection and the cursor only while the box has the focus. The order form selects
    /// the text of a box that does not have it.
    void paintEvent(QPaintEvent* event) override;

private:
    bool entered_ = false;
};

/// One input box of a measure. An even index is a whole box: at most 3 characters, right-aligned.
/// An odd index is a hundredths box: at most 2 characters, left-aligned. The text direction is
/// always left-to-right.
class MeasureBox : public InputBox
{
    Q_OBJECT

public:
    enum class OnLeaving {
        /// A box that is left empty becomes "0" (whole) or "00" (hundredths).
        FillDefault,
        /// Fills an empty box as FillDefault does, and appends a "0" to a single digit in a
        /// hundredths box.
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

/// A sign box of the series editor. It holds one character, starts with "-", and becomes "+" when
/// it is left empty.
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

/// The white frame Picture1 around the two boxes of a measure. From left to right it holds the
/// whole box, the point label and the hundredths box, on right-to-left forms as well.
class MeasurePair : public QFrame
{
    Q_OBJECT

public:
    MeasurePair(const QString& pictureName, MeasureBox* whole, MeasureBox* hundredths,
                const QString& pointName, QWidget* parent = nullptr);
    QLabel* point() const { return point_; }
    /// Sets what a screen reader says for the two boxes: the caption of the measure and which half
    /// it is.
    void setSpokenCaption(const QString& caption);
    /// Returns the value of the two boxes. Throws the errors of Module1::ReadMeasure.
    double measure() const;

private:
    MeasureBox* whole_;
    MeasureBox* hundredths_;
    QLabel* point_;
};

} // namespace base
