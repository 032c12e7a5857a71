#pragma once

#include <QPointer>
#include <QWidget>

class QMdiArea;
class QMdiSubWindow;

namespace controls {

/// Sets the area that hosts the child windows. Without one, as in tests, a child form is a
/// top-level window.
void setFrame(QMdiArea* frame);
QMdiArea* frame();
/// Returns the window that contains the frame, or nullptr without a frame.
QWidget* mainWindow();
/// Returns the largest size of a dialog whose title bar stays on the screen. The screen is that of
/// the parent, or the dialog's own screen if it has no parent.
QSize roomOnScreen(const QWidget& window);
/// Moves a window to the middle of the available area of its parent's screen, or of its own screen
/// if it has no parent.
void centreOnScreen(QWidget& window);
/// Returns the largest size of a child form that the frame shows completely, or an unlimited size
/// without a frame.
QSize roomInFrame();

/// A child window of the main window's frame.
class ChildForm : public QWidget
{
    Q_OBJECT

public:
    explicit ChildForm(const QString& name, const QString& title);

    /// Shows the form in the frame, activates it and gives it the focus.
    void Show();
    /// Closes the form. It is deleted when control returns to the event loop, but its
    /// DefaultInstance counts as not loaded immediately.
    void Unload();

signals:
    void unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    /// Returns true if Show opens the form maximised the first time.
    virtual bool opensMaximised() const { return false; }
    /// Runs once before the form closes, by Unload or by its close box. A form writes pending edits
    /// of its grids here.
    virtual void aboutToUnload() {}

private:
    void leave();
    void showInFrame(QMdiArea& area);
    void focusFirst();

    QPointer<QMdiSubWindow> window_;
    bool leaving_ = false;
};

/// The single instance of a form. The first access creates the form, which runs its load; the first
/// access after Unload creates it again. Form needs a default constructor and the signal
/// unloaded().
template <typename Form>
class DefaultInstance
{
public:
    bool isLoaded() const { return !form_.isNull(); }
    /// Returns the form, creating it if it is not loaded. Throws any error of the form's load; the
    /// form then stays not loaded.
    Form& operator()()
    {
        if (form_.isNull()) {
            form_ = new Form;
            QObject::connect(form_.data(), &Form::unloaded, form_.data(),
                             [this] { form_.clear(); });
        }
        return *form_;
    }

private:
    QPointer<Form> form_;
};

} // namespace controls
