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

    /// Expects one more box and sets up its answer.
    void answer(runtime::MessageBoxAnswer next) { answers_.push_back(next); }
    const std::vector<runtime::MessageBoxRequest>& shown() const { return shown_; }
    /// Returns the texts of the boxes without a prepared answer. Each test asserts at its end that
    /// the list is empty.
    const QList<QString>& unexpected() const { return unexpected_; }
    /// Gives these texts and forgets them, so that they no longer fail the test. For tests that
    /// cannot know beforehand whether a box will come; they have to check what they take.
    QList<QString> takeUnexpected() { return std::exchange(unexpected_, {}); }
    /// Forgets the boxes shown so far. Fails the test for what was not as expected up to here.
    void clear();

private:
    runtime::MessageBoxAnswer take(const runtime::MessageBoxRequest& request);
    void reportUnexpected() const;

    std::deque<runtime::MessageBoxAnswer> answers_;
    std::vector<runtime::MessageBoxRequest> shown_;
    QList<QString> unexpected_;
    runtime::MessageBoxDoor::Function former_;
};

/// Makes every box that comes while no RecordedBoxes lives fail the test. The main function of each
/// test binary calls it first.
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
