#pragma once

#include "shell/help_text.h"

#include <QDialog>
#include <QTextBrowser>

class QComboBox;
class QListWidget;

namespace shell {

/// Shows one chapter of the manual. Pictures that are wider than the view are reduced.
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpBrowser(QWidget* parent);
    void showChapter(const HelpChapter& chapter, Qt::LayoutDirection direction);
    QVariant loadResource(int type, const QUrl& name) override;
};

/// The help window. It shows the chapters of the user manual in Hebrew or English and needs no
/// network. Escape closes the window.
class HelpWindow : public QDialog
{
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);

private:
    void layOut();
    void setLanguage(HelpLanguage language);
    void showChapter(int index);
    void follow(const QUrl& link);

    QComboBox* ComboLanguage;
    QListWidget* ListChapters;
    HelpBrowser* TextHelp;
    QList<HelpChapter> chapters_;
    Qt::LayoutDirection direction_ = Qt::RightToLeft;
};

} // namespace shell
