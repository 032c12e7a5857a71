#pragma once

#include <QPointer>
#include <QWidget>

class QMdiArea;
class QMdiSubWindow;

namespace controls {

/// The frame that hosts the child windows. Without one (in a test) a child form is a window of its
/// own.
void setFrame(QMdiArea* frame);
QMdiArea* frame();

/// A child window of the frame.
class ChildForm : public QWidget
{
    Q_OBJECT

public:
    explicit ChildForm(const QString& name, const QString& title);

    /// Shows the form in the frame, brings it forward and gives it the focus.
    void Show();
    /// Takes the form away. It is deleted when control is back in the event loop; the form's
    /// instance counts as not loaded at once.
    void Unload();

signals:
    void unloaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    /// How Show shows it for the first time.
    virtual bool opensMaximised() const { return false; }
    /// Runs once before the form goes, whether by Unload or by its close box: the place to write
    /// what a grid has not written yet.
    virtual void aboutToUnload() {}

private:
    void leave();
    void showInFrame(QMdiArea& area);
    void focusFirst();

    QPointer<QMdiSubWindow> window_;
    bool leaving_ = false;
};

/// The one shared reference to a form: empty at the start, filled by the first touch, which creates
/// the form and so runs its load. After Unload the next touch loads it afresh. Form needs a default
/// constructor and the signal unloaded().
template <typename Form>
class DefaultInstance
{
public:
    bool isLoaded() const { return !form_.isNull(); }
    /// The loaded form, created where there is none. Raises what the form's load raises; there is
    /// no instance then.
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
