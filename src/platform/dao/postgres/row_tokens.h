#pragma once

#include <QString>

namespace dao::postgres {

/// The statements for the tokens of added rows.
///
/// A token is a random value that is stored by the statement that adds a row. If the answer of that
/// statement is lost, the token tells whether the row is stored. The tokens are in the table
/// `answers` of the schema `zomrel_log`, outside the schema of the store's tables, so that no
/// listing, copy or backup of the store contains them. A connection keeps only its last token.

/// Returns the statement that creates the table unless it exists. It does nothing if the role may
/// not create a schema in the database.
QString tokenTableStatement();

/// Returns an expression that is true if the table exists and the role may use it.
QString tokensAreUsable();

/// Extends an INSERT, such that it returns the row id of the added row and stores a token with it.
/// The token is the parameter after the given number of parameters. The parameter after that is the
/// previous token of the connection, which is deleted; if there is none, old tokens of connections
/// that have ended are deleted.
QString insertWithToken(const QString& insert, const QString& rowNumber, qsizetype parameters,
                        bool hasPrevious);

/// Returns the statement that stores the token $1 itself, unless it is stored already. If it
/// changes one row, the row of the token is not stored and can no longer be stored, because tokens
/// are unique. If it changes no row, the row is stored. It waits for an insertion under way.
QString claimToken();

} // namespace dao::postgres
