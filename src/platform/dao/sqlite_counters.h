#pragma once

#include <QString>

namespace dao::sqlite {

/// The statement that makes the trigger of a table's counter.
QString counterTrigger(const QString& table, const QString& field);

} // namespace dao::sqlite
