#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace reliability {

using Figure = std::pair<QString, QString>;

/// Writes a test's figures where the last test of the folder finds them.
void writeFigures(const QString& topic, const QList<Figure>& figures);

/// A whole number from the environment; the default where none stands there.
int setting(const char* variable, int otherwise);

} // namespace reliability
