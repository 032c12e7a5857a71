#pragma once

#include "tools/store/program.h"

#include <QMap>
#include <QString>

#include <functional>
#include <vector>

namespace storetools {

/// What a command was given: its arguments in order and its options with their values.
struct Call
{
    QStringList arguments;
    QMap<QString, QString> options;
};

struct Option
{
    QString name;
    QString value; ///< What stands behind it on the command line; empty where nothing does.
    QString summary;
    bool required = false;
};

/// Raised by a command for a call that it does not understand.
class WrongCall
{
public:
    explicit WrongCall(QString message) : message_(std::move(message)) {}
    const QString& message() const { return message_; }

private:
    QString message_;
};

struct Command
{
    QString name;
    QStringList arguments;
    QString summary;
    std::function<ExitStatus(const Call&, QTextStream& out, QTextStream& err)> run;
    std::vector<Option> options = {};
};

} // namespace storetools
