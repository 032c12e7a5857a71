#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace reliability {

enum class Engine { Embedded, Server };

/// The engine that the tests of this process run over.
Engine currentEngine();

using Figure = std::pair<QString, QString>;

/// Writes a test's figures where the last test of the folder finds them. Those of one topic over
/// both engines stand beside each other, each under its name.
void writeFigures(const QString& topic, const QList<Figure>& figures,
                  Engine engine = currentEngine());

/// A whole number from the environment; the default where none stands there.
int setting(const char* variable, int otherwise);

} // namespace reliability
