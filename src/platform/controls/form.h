#pragma once

#include <QPointer>
#include <QWidget>

class QMdiArea;
class QMdiSubWindow;

namespace controls {

/// Sets the MDI area that contains the child forms. Without an MDI area, as in tests, a child form
/// is a top-level window.
void setFrame(QMdiArea* frame);
QMdiArea* frame();
/// Returns the window that contains the MDI area, or nullptr if there is no MDI area.
QWidget* mainWindow();
/// Returns the largest size of a dialog that fits on the screen together with its title bar. The
/// screen is that of the dialog's parent. If the dialog has no parent, its own screen is used.
QSize roomOnScreen(const QWidget& window);
/// Moves a window to the middle of the available area of the screen. The screen is that of the
/// window's parent. If the window has no parent, its own screen is used.
void centreOnScreen(QWidget& window);
/// Returns the largest size of a child form that is completely visible in the MDI area, or an
/// unlimited size if there is no MDI area.
QSize roomInFrame();

/// A form that is a child window in the MDI area of the main window.
class ChildForm : public QWidget
{
    Q_OBJECT

public:
    explicit ChildForm(const QString& name, const QString& title);

    /// Shows the form in the MDI area, activates the form and gives it the focus.
    void Show();
    /// Closes the form. The object is deleted when control returns to the event loop, but
    /// isLoaded() of its DefaultInstance returns false immediately.
    void Unload();

signals:
    void unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    /// Returns true if the form is maximised when Show is called for the first time.
    virtual bool opensMaximised() const { return false; }
    /// Called once before the form closes, by Unload or by its close box. A derived form overrides
    /// this function to write the pending edits of its grids.
    virtual void aboutToUnload() {}

private:
    void leave();
    void showInFrame(QMdiArea& area);
    void focusFirst();

    QPointer<QMdiSubWindow> window_;
    bool leaving_ = false;
};

/// The single instance of a form. The first access creates the form and so loads its data. The
/// first access after Unload creates the form again. The type Form needs a default constructor and
/// the signal unloaded().
template <typename Form>
class DefaultInstance
{
public:
    bool isLoaded() const { return !form_.isNull(); }
    /// Returns the form, and creates it if it is not loaded. Throws any error that occurs while the
    /// form loads. After an error the form is not loaded.
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
