#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include <ostream>

// How GoogleTest shows Qt's values where an expectation fails; it looks for these by name.

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
