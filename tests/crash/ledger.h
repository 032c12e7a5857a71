#pragma once

#include "crash/contents.h"

#include <functional>
#include <string>
#include <vector>

namespace crash {

/// The acknowledged changes of a store in their order, each with the steps of the
/// record that belong to it and the contents of the store after it.
class Ledger
{
public:
    explicit Ledger(Contents before);

    /// Runs a change that has to lead to these contents. If it throws, it stays under way.
    void make(const std::function<void()>& change, const Contents& after);
    /// Returns the contents after the last acknowledged change.
    const Contents& contents() const { return acknowledged().contents; }

    /// Returns a number that is the same for all positions with the same expectation.
    std::size_t phaseAt(std::size_t position) const;
    /// Compares a store after a power cut at a position: all acknowledged changes are there, the
    /// one under way is there or not, and nothing else is. Returns the first difference.
    std::string findingAt(std::size_t position, const Contents& found) const;
    /// Compares a store after the last change, which may have failed.
    std::string findingNow(const Contents& found) const;

private:
    struct Change
    {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool isAcknowledged = false;
        Contents contents{};
    };

    const Change& acknowledged() const;
    static std::string compare(const Change& last, const Change* underWay, const Contents& found);

    std::vector<Change> changes_;
};

} // namespace crash
