#pragma once

class QString;
class QTranslator;

namespace shell {

/// Loads all fonts of the folder for this process and returns their number. Other files, a missing
/// folder and a folder that others can write to are ignored.
int loadFonts(const QString& folder);

/// Loads the Hebrew translation of Qt's own texts, from the folder if it contains one and otherwise
/// from the installed Qt. A folder that others can write to is not looked into. Returns false if
/// there is none.
bool loadToolkitTranslation(QTranslator& translator, const QString& folder);

} // namespace shell
