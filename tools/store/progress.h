#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTextStream>

namespace storetools {

/// Shows on a terminal how far a long command has come, in one line that goes when the command
/// ends. Elsewhere it shows nothing.
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
