#pragma once

#include "tools/store/command.h"

#include <QString>
#include <QTextStream>

#include <functional>
#include <vector>

class QCommandLineParser;

namespace shoptools {

struct Streams
{
    QTextStream& out;
    QTextStream& err;
};

using storetools::ExitStatus;
/// Thrown by a command for invalid arguments.
using storetools::WrongCall;

struct Option
{
    QString name;
    QString value; ///< Placeholder name of the value in the help text.
    bool isRequired = false;
};

struct Command
{
    QString name;
    QString usage;
    QString summary;
    std::vector<Option> options;
    std::function<ExitStatus(const QCommandLineParser&, const Streams&)> run;
};

/// Returns all commands of zomrel-shop, in the order of the help text.
const std::vector<Command>& commands();

} // namespace shoptools
