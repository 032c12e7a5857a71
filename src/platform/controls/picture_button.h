#pragma once

#include <QPushButton>

namespace controls {

/// A button that shows its picture and its caption together in the centre. Qt's styles place a
/// right-to-left caption at the edge of the button, away from the picture. If the button is high
/// enough, the picture is above the caption.
class PictureButton : public QPushButton
{
public:
    PictureButton(const QString& name, const QString& caption, const QIcon& picture,
                  QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Places
    {
        QRect picture;
        QRect caption;
    };
    Places places() const;
};

} // namespace controls
