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
    KeyBackspace = 8,
    KeyReturn = 13,
    KeyUp = 38,
    KeyDown = 40,
    KeyDelete = 46,
    KeyAdd = 107,      ///< Plus of the numeric keypad.
    KeySubtract = 109, ///< Minus of the numeric keypad.
    KeyMinus = 189,    ///< Minus of the main keyboard.
};

/// Enter and Down go one tab stop on, Up one back, and the text of the box reached is selected.
/// Refuses no key and reports no failure.
void KeyNavigate(QLineEdit& box, std::int32_t keyCode, bool selectAll);
/// As above for a sign box; locks the box against every other key but those that a sign needs.
void KeySignFilter(QLineEdit& box, std::int32_t keyCode, bool selectAll);
void SelectAllText(QLineEdit& box);

/// One box of a measure: whole (even index, at most 3 characters, right-aligned) or hundredths (odd
/// index, at most 2, left-aligned). Measures stay left-to-right inside their boxes.
class MeasureBox : public QLineEdit
{
    Q_OBJECT

public:
    enum class OnLeaving {
        FillDefault,       ///< An emptied box becomes "0" or "00".
        FillDefaultAndPad, ///< The same, and a single character in a hundredths box gets a "0"
                           ///< behind it.
    };

    MeasureBox(int index, const QString& text, OnLeaving onLeaving, QWidget* parent = nullptr);
    int Index() const { return index_; }
    /// Selects the whole text however the focus came.
    void setSelectsOnFocus(bool selects) { selectsOnFocus_ = selects; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    int index_;
    OnLeaving onLeaving_;
    bool selectsOnFocus_ = false;
    bool reachedByMouse_ = false;
};

/// A sign box of the series editor: one character, "-" at first, "+" when left empty.
class SignBox : public QLineEdit
{
    Q_OBJECT

public:
    explicit SignBox(int index, QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
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
