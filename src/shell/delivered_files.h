#pragma once

class QString;
class QTranslator;

namespace shell {

/// Loads the Hebrew translation of Qt's own texts from the folder, or from the installed Qt if the
/// folder has no translation or if other users can write to the folder. Returns false if no
/// translation is found.
bool loadToolkitTranslation(QTranslator& translator, const QString& folder);

} // namespace shell
