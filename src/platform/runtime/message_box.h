#pragma once

#include "platform/runtime/door.h"

#include <QString>

namespace runtime {

/// Flags of a message box. A caller of MsgBox passes the sum of one button set, one icon, and the
/// flags for right alignment and right-to-left text.
enum MessageBoxFlag {
    vbOKOnly = 0,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbMsgBoxRight = 524288,
    vbMsgBoxRtlReading = 1048576,
};

/// The button that the user presses in a message box.
enum MessageBoxAnswer { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

/// Flags of the message box of every refusal: critical icon, OK button, right-aligned,
/// right-to-left.
inline constexpr int refusalFlags = vbCritical + vbMsgBoxRight + vbMsgBoxRtlReading;
/// Flags of the message box of every confirmation: question icon, Yes and No buttons,
/// right-aligned, right-to-left.
inline constexpr int questionFlags = vbQuestion + vbYesNo + vbMsgBoxRight + vbMsgBoxRtlReading;

struct MessageBoxRequest
{
    QString text;
    int flags = vbOKOnly;
    QString title;
    /// A Hebrew explanation that is shown below the text of the message box; empty if there is
    /// none.
    QString explanation = {};
};

/// The function that shows a message box and returns the answer. The default, for programs without
/// windows, writes the text to stderr and returns vbOK. The desktop program installs a function
/// with real boxes at start.
using MessageBoxDoor = Door<MessageBoxAnswer(const MessageBoxRequest&)>;
MessageBoxDoor& messageBoxDoor();

/// Returns the project's name, "ProjZomrel", which is the title of every message box without a
/// title of its own.
QString projectName();

/// Shows a modal message box and returns the answer. An empty title becomes the project's name,
/// "ProjZomrel".
MessageBoxAnswer MsgBox(const QString& text, int flags = vbOKOnly, const QString& title = {});

} // namespace runtime
