#pragma once

#include <QString>

#include <functional>

namespace runtime {

/// Flags of a message box: one button set plus one icon plus reading flags, added up.
enum MessageBoxFlag {
    vbOKOnly = 0,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbMsgBoxRight = 524288,
    vbMsgBoxRtlReading = 1048576,
};

/// What a message box answers.
enum MessageBoxAnswer { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

/// Flags of every refusal: critical icon, OK, right-aligned, right-to-left.
inline constexpr int refusalFlags = vbCritical + vbMsgBoxRight + vbMsgBoxRtlReading;
/// Flags of every confirmation: question icon, Yes and No, right-aligned, right-to-left.
inline constexpr int questionFlags = vbQuestion + vbYesNo + vbMsgBoxRight + vbMsgBoxRtlReading;

struct MessageBoxRequest
{
    QString text;
    int flags = vbOKOnly;
    QString title;
};

/// Shows the box, waits and answers. The default writes the text to standard error and answers OK,
/// for programs without a screen; the desktop program puts a real box behind it at start.
using MessageBoxDoor = std::function<MessageBoxAnswer(const MessageBoxRequest&)>;

/// Replaces the door and returns the former one.
MessageBoxDoor setMessageBoxDoor(MessageBoxDoor door);

/// Shows a message box; an empty title becomes the project's, "ProjZomrel".
MessageBoxAnswer MsgBox(const QString& text, int flags = vbOKOnly, const QString& title = {});

} // namespace runtime
