#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QString>

#include <cstdint>

/// The measuring screens' input boxes and the helpers behind them.
namespace Module1 {

/// Key codes as the helpers know them.
enum KeyCode : std::int32_t {
    KeyOther = 0, ///< Every key that the helpers treat alike.
    KeyBackspace = 8,
    KeyReturn = 13,
    KeyUp = 38,
    KeyDown = 40,
    KeyDelete = 46,
    KeyAdd = 107,      ///< Plus of the numeric keypad.
    KeySubtract = 109, ///< Minus of the numeric keypad.
    KeyMinus = 189,    ///< Minus of the main keyboard.
};

/// The key code of a key event.
std::int32_t keyCodeOf(const QKeyEvent& event);

/// Enter and Down go one tab stop on, Up one back, and the text of the box reached is selected,
/// whatever `selectAll` says. Refuses no key and reports no failure.
void KeyNavigate(QLineEdit& box, std::int32_t keyCode, bool selectAll);
/// Moves as above, selecting where `selectAll` says so; locks the box against every other key but
/// those that a sign needs.
void KeySignFilter(QLineEdit& box, std::int32_t keyCode, bool selectAll);
void SelectAllText(QLineEdit& box);

/// What both kinds of boxes have in common: the key codes, the lock that ends with the key, and a
/// gain and loss of the focus that leave out menus and the switch to another program.
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

private:
    bool entered_ = false;
};

/// One box of a measure: whole (even index, at most 3 characters, right-aligned) or hundredths (odd
/// index, at most 2, left-aligned). Measures stay left-to-right inside their boxes.
class MeasureBox : public InputBox
{
    Q_OBJECT

public:
    enum class OnLeaving {
        FillDefault,       ///< An emptied box becomes "0" or "00".
        FillDefaultAndPad, ///< The same, and a single character in a hundredths box gets a "0"
                           ///< behind it.
    };

    /// Its objectName is `TextNum_<index>`.
    MeasureBox(int index, const QString& text, OnLeaving onLeaving, QWidget* parent = nullptr);
    int Index() const { return index_; }
    /// Selects the whole text however the focus came.
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

/// A sign box of the series editor: one character, "-" at first, "+" when left empty.
class SignBox : public InputBox
{
    Q_OBJECT

public:
    /// Its objectName is `TextSign_<index>`.
    explicit SignBox(int index, QWidget* parent = nullptr);

protected:
    void keyDown(std::int32_t keyCode) override;
    void lostFocus() override;
    void inputMethodEvent(QInputMethodEvent* event) override;
};

/// The white box Picture1 that joins a pair: the whole box at the left, the "." (Label1), the
/// hundredths box, in this order from the left whatever direction the form reads in.
class MeasurePair : public QFrame
{
    Q_OBJECT

public:
    MeasurePair(const QString& pictureName, MeasureBox* whole, MeasureBox* hundredths,
                const QString& pointName, QWidget* parent = nullptr);
    QLabel* point() const { return point_; }

private:
    QLabel* point_;
};

} // namespace Module1
