#include "crash/contents.h"

#include <functional>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace crash {

namespace {

using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;
using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

std::string textOf(sqlite3_stmt* statement, int column)
{
    const unsigned char* text = sqlite3_column_text(statement, column);
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

void query(sqlite3* connection, const std::string& sql,
           const std::function<void(sqlite3_stmt*)>& visit)
{
    sqlite3_stmt* made = nullptr;
    if (sqlite3_prepare_v2(connection, sql.c_str(), -1, &made, nullptr) != SQLITE_OK)
        throw std::runtime_error(sql + ": " + sqlite3_errmsg(connection));
    const Statement statement(made, sqlite3_finalize);
    int result = sqlite3_step(made);
    for (; result == SQLITE_ROW; result = sqlite3_step(made))
        visit(made);
    if (result != SQLITE_DONE)
        throw std::runtime_error(sql + ": " + sqlite3_errmsg(connection));
}

Row rowOf(sqlite3_stmt* statement)
{
    Row row;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
        if (sqlite3_column_type(statement, i) != SQLITE_NULL)
            row[sqlite3_column_name(statement, i)] = textOf(statement, i);
    }
    return row;
}

} // namespace

Contents readStore(const std::string& path)
{
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, "unix");
    const Connection connection(opened, sqlite3_close);
    if (result != SQLITE_OK)
        throw std::runtime_error("cannot open " + path);
    query(opened, "PRAGMA integrity_check", [](sqlite3_stmt* finding) {
        if (textOf(finding, 0) != "ok")
            throw std::runtime_error("integrity check: " + textOf(finding, 0));
    });
    Contents contents;
    query(opened,
          "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite!_%' "
          "ESCAPE '!' AND name NOT LIKE 'zomrel!_%' ESCAPE '!'",
          [&](sqlite3_stmt* table) {
              const std::string name = textOf(table, 0);
              query(opened, "SELECT * FROM \"" + name + '"', [&](sqlite3_stmt* row) {
                  const std::string key = name + ' ' + textOf(row, 0);
                  if (!contents.emplace(key, rowOf(row)).second)
                      throw std::runtime_error(key + " is stored twice");
              });
          });
    return contents;
}

std::string difference(const Contents& expected, const Contents& found)
{
    for (const auto& [key, row] : expected) {
        const auto stored = found.find(key);
        if (stored == found.end())
            return key + " is missing";
        for (const auto& [field, value] : row) {
            const auto cell = stored->second.find(field);
            const std::string text = cell == stored->second.end() ? "Null" : cell->second;
            if (text != value)
                return key + ", " + field + ": " + text + " instead of " + value;
        }
        if (stored->second.size() != row.size())
            return key + " has a value too many";
    }
    for (const auto& [key, row] : found) {
        if (!expected.contains(key))
            return key + " was never stored";
    }
    return {};
}

} // namespace crash
