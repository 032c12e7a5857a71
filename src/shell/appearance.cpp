#include "shell/appearance.h"

#include "platform/controls/png_icon.h"
#include "platform/report/font_substitutes.h"
#include "shell/delivered_files.h"
#include "shell/font_rules.h"
#include "shell/program_style.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QIcon>
#include <QPalette>
#include <QStyle>
#include <QThreadPool>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

constexpr qreal readablePoints = 11;

/// Reads the list of the system's fonts in another thread, because the reading takes about a
/// quarter of the start time and opening the store needs no font. Qt locks the list meanwhile, so
/// the layout of the first text waits until the list is read.
void readFontsAhead()
{
    QThreadPool::globalInstance()->start([] { QFontDatabase::families(); });
}

/// Widgets without a font of their own use Arial, so that they look the same on every desktop.
void setProgramFont()
{
    QFont font = QApplication::font();
    font.setFamily(u"Arial"_s);
    if (font.pointSizeF() < readablePoints)
        font.setPointSizeF(readablePoints);
    QApplication::setFont(font);
}

QIcon programIcon()
{
    QStringList files;
    for (const int side : {16, 32, 48})
        files.append(u":/zomrel/icons/zomrel-%1.png"_s.arg(side));
    return controls::pngIcon(files);
}

/// Returns the program's palette. A selection with the focus has a dark highlight, on which white
/// text is readable. A selection without the focus has a light highlight. A disabled field keeps
/// its white background, and only its text is grey.
QPalette programPalette(QPalette palette)
{
    const QColor focused(0x1f, 0x5f, 0x99);
    const QColor unfocused(0xd5, 0xdb, 0xe2);
    palette.setColor(QPalette::Active, QPalette::Highlight, focused);
    palette.setColor(QPalette::Active, QPalette::HighlightedText, Qt::white);
    for (const auto group : {QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Highlight, unfocused);
        palette.setColor(group, QPalette::HighlightedText, Qt::black);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base,
                     palette.color(QPalette::Active, QPalette::Base));
    return palette;
}

void translateToolkit(QApplication& application)
{
    auto* translator = new QTranslator(&application);
    if (loadToolkitTranslation(*translator,
                               QApplication::applicationDirPath() + u"/translations"_s))
        QApplication::installTranslator(translator);
}

} // namespace

void setUpAppearance(QApplication& application)
{
    useFontRules();
    report::loadDeliveredFonts();
    report::substituteFonts();
    readFontsAhead();
    QApplication::setStyle(new ProgramStyle);
    // The program uses the standard palette of its style, so that text is black on a light
    // background regardless of the desktop theme.
    QApplication::setPalette(programPalette(QApplication::style()->standardPalette()));
    QApplication::setLayoutDirection(Qt::RightToLeft);
    setProgramFont();
    translateToolkit(application);
    QGuiApplication::setDesktopFileName(u"zomrel"_s);
    QApplication::setWindowIcon(programIcon());
}

} // namespace shell
