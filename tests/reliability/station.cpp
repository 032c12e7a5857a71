// A station at work, for tests that kill it or run several stations.
//
//     reliability_station FOLDER SCENARIO NAME COUNT
//
// SCENARIO "lines" adds COUNT lines, with new-order commands and closings between them. "paced"
// does one step for each line on its standard input: "order", "close", "print", "line", "work",
// which is a step of "lines", or "date YYYY-MM-DD", which sets the program's clock. "mixed" does
// COUNT random changes of all kinds, with NAME as the seed. "aside" does the same but only in
// order 1. Before each change the station prints a line that starts with "?" and names the change.
// After the change's handler has returned, it prints the same line without the question mark.

#include "reliability/expected_line.h"
#include "reliability/workplace.h"

#include "platform/runtime/guard.h"
#include "platform/runtime/process.h"
#include "shell/appearance.h"
#include "support/widgets.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <memory>
#include <random>
#include <string>

using namespace Qt::StringLiterals;
using reliability::Workplace;

namespace {

void say(const QString& what)
{
    std::printf("%s\n", qUtf8Printable(what));
    std::fflush(stdout);
}

/// Reports a change before and after it.
template <typename Change>
void told(const QString& what, Change change)
{
    say(u"? "_s + what);
    change();
    say(what);
}

class Station
{
public:
    Station(const QString& folder, const QString& scenario, const QString& name)
        : scenario_(scenario), name_(name), random_(name.toUInt()), workplace_(folder)
    {
        if (scenario_ == u"aside")
            workplace_.takeOrder(1);
        else
            newOrder();
        say(u"ready"_s);
    }

    void step()
    {
        if (scenario_ == u"mixed")
            mixed();
        else if (scenario_ == u"paced")
            paced();
        else if (scenario_ == u"aside")
            aside();
        else
            lines();
        ++steps_;
    }

private:
    int random(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }

    void newOrder()
    {
        say(u"? order"_s);
        workplace_.newOrder();
        say(u"order %1"_s.arg(workplace_.currentOrder()));
    }

    void addLine()
    {
        if (!workplace_.hasSeries())
            workplace_.chooseSeries(reliability::seriesOfLines(), random(3) == 0);
        const reliability::Opening opening{u"%1-%2"_s.arg(name_).arg(++lines_), 60 + random(200),
                                           60 + random(200)};
        const QString what = u"line %1 %2"_s.arg(workplace_.currentOrder()).arg(opening.tag);
        say(u"? "_s + what);
        const int number = workplace_.addLine(opening);
        say(u"%1 %2 %3 %4"_s.arg(what).arg(number).arg(opening.width).arg(opening.height));
    }

    void closeOrder()
    {
        told(u"closed %1"_s.arg(workplace_.currentOrder()), [&] { workplace_.closeOrder(); });
    }

    void closeAndGoOn()
    {
        if (workplace_.lineCount() == 0)
            return;
        closeOrder();
        newOrder();
    }

    void print()
    {
        if (workplace_.lineCount() == 0)
            return;
        told(u"printed %1"_s.arg(workplace_.currentOrder()), [&] { workplace_.print(); });
    }

    void deleteLine()
    {
        workplace_.goToLastLine();
        if (workplace_.lineCount() > 0)
            told(u"deleted "_s + workplace_.currentTag(), [&] { workplace_.deleteLine(); });
    }

    void deleteAllLines()
    {
        workplace_.goToLastLine();
        if (workplace_.lineCount() > 0)
            told(u"emptied %1"_s.arg(workplace_.currentOrder()),
                 [&] { workplace_.deleteAllLines(); });
    }

    void editSeries()
    {
        const QString series = u"%1-%2"_s.arg(name_).arg(++series_);
        told(u"series %1 1"_s.arg(series), [&] { workplace_.addSeries(series, 1); });
        const int number = 2 + random(90);
        told(u"series %1 %2"_s.arg(series).arg(number),
             [&] { workplace_.changeSeries(series, number); });
        if (random(2) == 0)
            told(u"seriesdeleted "_s + series, [&] { workplace_.deleteSeries(series); });
        workplace_.closeSeriesForm();
    }

    /// Changes a name in one of the kind and colour lists.
    void editNames()
    {
        const int list = random(8);
        const auto nextTag = [this] { return u"%1-%2"_s.arg(name_).arg(++names_); };
        const QString added = nextTag();
        const QString what = u"name %1 %2"_s.arg(list).arg(added);
        say(u"? "_s + what);
        const int code = workplace_.addName(list, reliability::listedName(added));
        say(u"%1 %2"_s.arg(what).arg(code));
        const QString changed = nextTag();
        told(u"renamed %1 %2 %3"_s.arg(list).arg(changed).arg(code),
             [&] { workplace_.changeName(list, code, reliability::listedName(changed)); });
        if (random(2) == 0)
            told(u"unnamed %1 %2"_s.arg(list).arg(code),
                 [&] { workplace_.deleteName(list, code); });
        workplace_.closeKinds();
    }

    void mixed()
    {
        const int dice = random(100);
        if (dice < 50)
            addLine();
        else if (dice < 60)
            deleteLine();
        else if (dice < 66)
            print();
        else if (dice < 74)
            closeAndGoOn();
        else if (dice < 77)
            deleteAllLines();
        else if (dice < 82)
            newOrder();
        else if (dice < 91)
            editSeries();
        else
            editNames();
    }

    void aside()
    {
        const int dice = random(100);
        if (dice < 50)
            addLine();
        else if (dice < 65)
            deleteLine();
        else if (dice < 70)
            print();
        else if (dice < 80)
            editSeries();
        else if (dice < 90)
            editNames();
        else
            workplace_.takeOrder(1);
    }

    void paced()
    {
        std::string word;
        for (int c = std::getchar(); c != '\n' && c != EOF; c = std::getchar())
            word += static_cast<char>(c);
        if (word == "order")
            newOrder();
        else if (word == "close")
            closeOrder();
        else if (word == "print")
            print();
        else if (word.starts_with("date "))
            setDate(QString::fromStdString(word.substr(5)));
        else if (word == "work")
            lines();
        else
            addLine();
    }

    static void setDate(const QString& text)
    {
        const QDate date = QDate::fromString(text, Qt::ISODate);
        runtime::clockDoor().replace([date] { return date; });
        say(u"date "_s + text);
    }

    /// Gives the new-order command every 25 lines and closes the order first every 50 lines.
    void lines()
    {
        if (steps_ % 50 == 49)
            closeAndGoOn();
        else if (steps_ % 50 == 24)
            newOrder();
        addLine();
    }

    QString scenario_;
    QString name_;
    std::mt19937 random_;
    Workplace workplace_;
    int steps_ = 0;
    int lines_ = 0;
    int series_ = 0;
    int names_ = 0;
};

} // namespace

int main(int argc, char** argv)
{
    testsupport::beforeApplication();
    QApplication application(argc, argv);
    shell::setUpAppearance(application);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 5)
        qFatal("usage: reliability_station FOLDER SCENARIO NAME COUNT");
    reliability::answerBoxes();
    std::unique_ptr<Station> station;
    runtime::guarded(
        [&] { station = std::make_unique<Station>(arguments[1], arguments[2], arguments[3]); });
    int left = arguments[4].toInt();
    // Runs the steps one after the other, even if a step processes events.
    QTimer work;
    work.setSingleShot(true);
    runtime::on(&work, &QTimer::timeout, &work, [&] {
        if (left-- == 0)
            runtime::EndProcess(0);
        station->step();
        work.start(0);
    });
    work.start(0);
    return QApplication::exec();
}
