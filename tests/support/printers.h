#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include <ostream>

// Overloads with which GoogleTest prints Qt values in failure messages. GoogleTest finds them by
// name.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QDate& date, std::ostream* out)
{
    *out << date.toString(Qt::ISODate).toStdString();
}

inline void PrintTo(const QVariant& value, std::ostream* out)
{
    *out << (value.isValid() ? value.typeName() : "Null") << " \"" << value.toString().toStdString()
         << '"';
}
