#pragma once

#include <QString>

namespace dao::postgres {

/// The SQL texts for the tokens of added rows.
///
/// A token is a random value that the statement that adds a row stores together with the row. If
/// the answer to this statement is lost, the token shows whether the row is stored. The tokens are
/// in the table `answers` of the schema `zomrel_log`. The tables of the store are in another
/// schema, so that no listing, copy or backup of the store contains tokens. Of each connection,
/// only the last token is kept.

/// Returns the statement that creates the schema and the table of the tokens. The statement does
/// nothing if the schema exists or if the role may not create a schema in the database.
QString tokenTableStatement();

/// Returns an SQL expression that is true if the table of the tokens exists and the current role
/// may read, add and delete tokens.
QString tokensAreUsable();

/// Extends an INSERT, so that the statement returns the row id of the added row and stores a token.
/// `parameters` is the number of parameters of the INSERT. The next parameter is the token. If
/// `hasPrevious` is true, the parameter after the token is the previous token of the connection,
/// and the statement deletes this previous token. Otherwise the statement deletes all tokens that
/// are older than seven days.
QString insertWithToken(const QString& insert, const QString& rowNumber, qsizetype parameters,
                        bool hasPrevious);

/// Returns the statement that finds out whether a row was added with the token $1. The statement
/// waits for an INSERT with this token that is still in progress, and then tries to store the
/// token. If this changes no row, the token was already stored, so the row was added. If it changes
/// one row, the row was not added and can no longer be added, because tokens are unique.
QString claimToken();

} // namespace dao::postgres
