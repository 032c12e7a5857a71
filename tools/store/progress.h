#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTextStream>

namespace storetools {

/// Shows the progress of a long command in one terminal line, which is erased when the command
/// ends. If the output is not a terminal, nothing is shown.
class Progress
{
public:
    explicit Progress(QTextStream& terminal);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(const QString& what, qint64 rows);

private:
    QTextStream& terminal_;
    bool isOn_;
    qsizetype width_ = 0;
    QElapsedTimer sinceShown_;
};

} // namespace storetools
