#include "platform/controls/accessibility.h"
#include "platform/controls/message_box_window.h"
#include "platform/runtime/library_paths.h"
#include "shell/appearance.h"
#include "shell/enter_clicks.h"
#include "shell/error_explanations.h"
#include "shell/focus_return.h"
#include "shell/help_key.h"
#include "shell/stall_notice.h"
#include "shell/start.h"

#include <QApplication>

int main(int argc, char** argv)
{
    runtime::useTrustedLibraryPaths();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zomrel"));
    shell::setUpAppearance(application);
    if (const auto stall = shell::stallToShow(QApplication::arguments()))
        return shell::showStall(*stall);
    const auto watch = shell::watchForStalls();
    controls::installAccessibility();
    controls::installMessageBoxes();
    shell::installErrorExplanations();
    shell::EnterClicks enterClicks;
    application.installEventFilter(&enterClicks);
    shell::HelpKey helpKey;
    application.installEventFilter(&helpKey);
    shell::FocusReturn focusReturn;
    application.installEventFilter(&focusReturn);
    const auto window = shell::openMainWindow();
    return QApplication::exec();
}
