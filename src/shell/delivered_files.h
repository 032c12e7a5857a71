#pragma once

class QString;
class QTranslator;

namespace shell {

/// Loads the Hebrew translation of Qt's own texts, from the folder if it contains one and otherwise
/// from the installed Qt. A folder that others can write to is not looked into. Returns false if
/// there is none.
bool loadToolkitTranslation(QTranslator& translator, const QString& folder);

} // namespace shell
