#include "tools/store/progress.h"

#include "tools/store/system.h"
#include "tools/store/words.h"

namespace storetools {

Progress::Progress(QTextStream& terminal) : terminal_(terminal), isOn_(errorsGoToATerminal())
{
    sinceShown_.start();
}

Progress::~Progress()
{
    if (width_ > 0) {
        terminal_ << '\r' << QString(width_, u' ') << '\r';
        terminal_.flush();
    }
}

void Progress::show(const QString& what, qint64 rows)
{
    constexpr qint64 pause = 100; // Milliseconds between two updates.
    if (!isOn_ || sinceShown_.elapsed() < pause)
        return;
    sinceShown_.restart();
    const QString line = say({u"%1: %2 rows", u"%1: %2 רשומות"}, Phrase{what}, rows);
    terminal_ << '\r' << line.leftJustified(width_);
    terminal_.flush();
    width_ = qMax(width_, line.size());
}

} // namespace storetools
