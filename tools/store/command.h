#pragma once

#include "tools/store/exit_status.h"
#include "tools/store/words.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <vector>

namespace storetools {

/// The parsed command line of a command: its arguments, and its options with their values.
struct Call
{
    QStringList arguments;
    QMap<QString, QString> options;
};

struct Option
{
    QString name;
    /// Placeholder name of the option's value in the help text; empty if the option takes no value.
    QString value;
    Text summary;
    /// The command's arguments, as the help text shows them, if this option is given. If the list
    /// is empty, the option does not change the arguments.
    QStringList arguments = {};
};

/// Thrown by a command for invalid arguments. The message is in the user's language.
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
    /// The command's arguments, as the help text shows them. An argument in brackets, such as
    /// "[STORE]", is optional.
    QStringList arguments;
    Text summary;
    std::function<ExitStatus(const Call&, QTextStream& out, QTextStream& err)> run;
    std::vector<Option> options = {};
};

} // namespace storetools
