#include "shell/status_bar.h"

#include "platform/controls/twips.h"
#include "platform/runtime/conversions.h"
#include "platform/runtime/guard.h"

#include <QLabel>
#include <QLocale>
#include <QTime>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

constexpr int milliseconds = 1000;

QString shortTime(const QTime& time)
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return time.toString(u"HH:mm"_s);
    return locale.toString(time, QLocale::ShortFormat);
}

} // namespace

StatusBar::StatusBar(QWidget* parent) : QStatusBar(parent)
{
    setObjectName(u"StatusBar1"_s);
    date_ = addPanel(1, {}, 1764);
    addPanel(2, u"תאריך"_s, 1411)->setToolTip(u"תאריך"_s);
    time_ = addPanel(3, {}, 1058);
    addPanel(4, u"שעה"_s, 1058)->setToolTip(u"שעה"_s);
    const QString product = u"זומרל  - תוכנה לחישוב חיתוכים לעבודות אלומניום ."_s;
    addPanel(5, product, 17621)->setToolTip(product);
    date_->setLayoutDirection(Qt::LeftToRight);
    time_->setLayoutDirection(Qt::LeftToRight);
    showNow();
    auto* second = new QTimer(this);
    runtime::on(second, &QTimer::timeout, this, [this] { showNow(); });
    second->start(milliseconds);
}

QLabel* StatusBar::addPanel(int index, const QString& text, int twips)
{
    auto* panel = new QLabel(text, this);
    panel->setObjectName(u"StatusBar1_"_s + QString::number(index));
    panel->setTextFormat(Qt::PlainText);
    panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    panel->setMargin(3);
    // The last panel may be wider than a small screen, so it gets the remaining width of the status
    // bar. Its tool tip shows the whole text.
    const bool last = index == 5;
    if (last) {
        panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    } else {
        panel->setAlignment(Qt::AlignCenter);
        panel->setMinimumWidth(controls::pixels(twips));
    }
    addWidget(panel, last ? 1 : 0);
    return panel;
}

void StatusBar::showNow()
{
    date_->setText(runtime::toShortDate(runtime::Today()));
    time_->setText(shortTime(QTime::currentTime()));
}

} // namespace shell
