#include "shell/font_rules.h"

#include <QLibrary>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

/// Rules for the library fontconfig: the usual font folders of the system and of the user, and the
/// fonts that replace missing ones. The substitutes for Arial and Helvetica and the settings for
/// smoothing are copied from Debian's rules. If only Debian's fonts are installed, the screens look
/// the same as with Debian's rules.
constexpr char rules[] = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <dir>/usr/share/fonts</dir>
  <dir>/usr/local/share/fonts</dir>
  <dir prefix="xdg">fonts</dir>
  <dir>~/.fonts</dir>
  <cachedir>/var/cache/fontconfig</cachedir>
  <cachedir prefix="xdg">fontconfig</cachedir>
  <selectfont><rejectfont><pattern>
    <patelt name="scalable"><bool>false</bool></patelt>
  </pattern></rejectfont></selectfont>
  <match target="pattern">
    <edit name="antialias" mode="append"><bool>true</bool></edit>
    <edit name="hintstyle" mode="append"><const>hintslight</const></edit>
    <edit name="lcdfilter" mode="append"><const>lcddefault</const></edit>
  </match>
  <alias binding="same"><family>David</family><accept><family>David CLM</family></accept></alias>
  <alias binding="same"><family>Arial</family>
    <accept><family>Arimo</family><family>Liberation Sans</family></accept></alias>
  <alias binding="same"><family>Helvetica</family>
    <accept><family>Arial</family><family>Arimo</family><family>Liberation Sans</family></accept></alias>
  <match target="pattern">
    <test name="family" compare="not_eq" qual="all"><string>serif</string></test>
    <test name="family" compare="not_eq" qual="all"><string>monospace</string></test>
    <edit name="family" mode="append_last"><string>sans-serif</string></edit>
  </match>
  <alias><family>sans-serif</family><prefer><family>DejaVu Sans</family></prefer></alias>
  <alias><family>serif</family><prefer><family>DejaVu Serif</family></prefer></alias>
  <alias><family>monospace</family><prefer><family>DejaVu Sans Mono</family></prefer></alias>
</fontconfig>)";

/// On Windows the toolkit does not use the library fontconfig.
#ifdef Q_OS_WIN
constexpr bool mayHaveLibrary = false;
#else
constexpr bool mayHaveLibrary = true;
#endif

bool environmentNamesRules()
{
    constexpr std::array variables{"FONTCONFIG_FILE", "FONTCONFIG_PATH", "FONTCONFIG_SYSROOT"};
    return std::ranges::any_of(variables,
                               [](const char* each) { return qEnvironmentVariableIsSet(each); });
}

/// The functions of the library fontconfig, which are found at run time. The program does not link
/// the library, because the toolkit uses it only on some systems.
class FontLibrary
{
public:
    bool isComplete() const { return create_ && load_ && build_ && use_ && destroy_; }

    /// Installs the font rules for the whole process. Returns false if the library fontconfig
    /// refuses the rules.
    bool useRules(const char* text) const
    {
        Rules* const made = create_();
        const bool done = load_(made, reinterpret_cast<const unsigned char*>(text), 1) != 0 &&
                          build_(made) != 0 && use_(made) != 0;
        destroy_(made); // the library keeps its own reference to the rules that it uses
        return done;
    }

private:
    using Rules = void;
    template <typename Function>
    Function function(const char* name)
    {
        return reinterpret_cast<Function>(library_.resolve(name));
    }

    QLibrary library_{u"fontconfig"_s, 1};
    Rules* (*create_)() = function<Rules* (*)()>("FcConfigCreate");
    int (*load_)(Rules*, const unsigned char*, int) =
        function<int (*)(Rules*, const unsigned char*, int)>("FcConfigParseAndLoadFromMemory");
    int (*build_)(Rules*) = function<int (*)(Rules*)>("FcConfigBuildFonts");
    int (*use_)(Rules*) = function<int (*)(Rules*)>("FcConfigSetCurrent");
    void (*destroy_)(Rules*) = function<void (*)(Rules*)>("FcConfigDestroy");
};

} // namespace

bool useFontRules()
{
    if (!mayHaveLibrary || environmentNamesRules())
        return false;
    const FontLibrary library;
    return library.isComplete() && library.useRules(rules);
}

} // namespace shell
