#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTextStream>

namespace storetools {

/// Shows the progress of a long command in one line of the terminal. The line is erased when the
/// command ends. If the output is not a terminal, nothing is shown.
class Progress
{
public:
    explicit Progress(QTextStream& terminal);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Shows the name of the current step and the number of rows that are done. The name `what` is
    /// in the user's language.
    void show(const QString& what, qint64 rows);

private:
    QTextStream& terminal_;
    bool isOn_;
    qsizetype width_ = 0;
    QElapsedTimer sinceShown_;
};

/// Calls `work`, which runs a long command, with a progress callback. The progress is shown if the
/// error stream is a terminal.
template <typename Work>
auto withProgress(QTextStream& err, Work&& work)
{
    Progress progress(err);
    return work([&](const QString& what, qint64 rows) { progress.show(what, rows); });
}

} // namespace storetools
