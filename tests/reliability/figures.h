#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace reliability {

enum class Engine { Embedded, Server };

/// Returns the SQL engine that the tests of this process use.
Engine currentEngine();

using Figure = std::pair<QString, QString>;

/// Writes a test's figures to a file for the last test of the folder, which joins them. Figures of
/// the same topic are listed side by side for both engines.
void writeFigures(const QString& topic, const QList<Figure>& figures,
                  Engine engine = currentEngine());

/// Returns the integer value of an environment variable, or the default if it is not set.
int setting(const char* variable, int otherwise);

} // namespace reliability
