#pragma once

#include "platform/runtime/message_box.h"
#include "platform/runtime/process.h"

#include <QList>
#include <QString>

#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace testsupport {

/// Replaces runtime::MsgBox for its lifetime. Records every box and returns the answers that the
/// test has prepared. A box without a prepared answer counts as unexpected and is answered No, or
/// OK if it has no such button. The destructor fails the test if a box was unexpected or an
/// expected one has not been shown.
class RecordedBoxes
{
public:
    RecordedBoxes();
    ~RecordedBoxes();
    RecordedBoxes(const RecordedBoxes&) = delete;
    RecordedBoxes& operator=(const RecordedBoxes&) = delete;

    /// Expects one more box and prepares its answer.
    void answer(runtime::MessageBoxAnswer next) { answers_.push_back(next); }
    const std::vector<runtime::MessageBoxRequest>& shown() const { return shown_; }
    /// Returns the texts of the unexpected boxes.
    const QList<QString>& unexpected() const { return unexpected_; }
    /// Returns the texts of the unexpected boxes and clears the list, so that they do not fail the
    /// test. A test that cannot predict whether a box is shown uses this and checks the texts
    /// itself.
    QList<QString> takeUnexpected() { return std::exchange(unexpected_, {}); }
    /// Forgets the boxes that were shown so far. First fails the test if a box was unexpected or an
    /// expected one has not been shown.
    void clear();

private:
    runtime::MessageBoxAnswer take(const runtime::MessageBoxRequest& request);
    void reportUnexpected() const;

    std::deque<runtime::MessageBoxAnswer> answers_;
    std::vector<runtime::MessageBoxRequest> shown_;
    QList<QString> unexpected_;
    runtime::MessageBoxDoor::Function former_;
};

/// Makes a message box fail the test if no RecordedBoxes exists when it is shown. The main function
/// of each test binary calls this function first.
void failOnUnwatchedBoxes();

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
    runtime::EndProcessDoor::Function former_;
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
    runtime::ClockDoor::Function former_;
};

} // namespace testsupport
