#pragma once

#include <QPushButton>

namespace controls {

/// A button with a picture before its caption, both together in the middle. The toolkit's styles
/// push a caption that reads from right to left away from its picture, out at the button's edge.
/// In a button that is high enough the picture stands above its caption.
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
