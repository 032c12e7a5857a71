#pragma once

#include "platform/runtime/message_box.h"
#include "platform/runtime/process.h"

#include <QList>
#include <QString>

#include <deque>
#include <optional>
#include <vector>

namespace testsupport {

/// Replaces runtime::MsgBox for its lifetime, records every message box and returns the prepared
/// answers. A box without a prepared answer is recorded as unexpected and answered with No, or OK
/// if it has no No.
class RecordedBoxes
{
public:
    RecordedBoxes();
    ~RecordedBoxes();
    RecordedBoxes(const RecordedBoxes&) = delete;
    RecordedBoxes& operator=(const RecordedBoxes&) = delete;

    void answer(runtime::MessageBoxAnswer next) { answers_.push_back(next); }
    const std::vector<runtime::MessageBoxRequest>& shown() const { return shown_; }
    /// Returns the texts of the boxes without a prepared answer. Each test asserts at its end that
    /// the list is empty.
    const QList<QString>& unexpected() const { return unexpected_; }
    void clear();

private:
    runtime::MessageBoxAnswer take(const runtime::MessageBoxRequest& request);

    std::deque<runtime::MessageBoxAnswer> answers_;
    std::vector<runtime::MessageBoxRequest> shown_;
    QList<QString> unexpected_;
    runtime::MessageBoxDoor former_;
};

/// Replaces runtime::EndProcess for its lifetime. It records the first exit status and leaves the
/// handler by an exception.
class RecordedEnd
{
public:
    RecordedEnd();
    ~RecordedEnd();
    RecordedEnd(const RecordedEnd&) = delete;
    RecordedEnd& operator=(const RecordedEnd&) = delete;

    std::optional<int> exitStatus() const { return exitStatus_; }
    void clear() { exitStatus_.reset(); }

private:
    std::optional<int> exitStatus_;
    runtime::EndProcessDoor former_;
};

/// Fixes today's date for its lifetime.
class FixedToday
{
public:
    explicit FixedToday(const QDate& day);
    ~FixedToday();
    FixedToday(const FixedToday&) = delete;
    FixedToday& operator=(const FixedToday&) = delete;

private:
    runtime::Clock former_;
};

} // namespace testsupport
