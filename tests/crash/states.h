#pragma once

#include "crash/record.h"

#include <functional>

namespace crash {

/// Files that a power cut may leave.
struct State
{
    std::size_t position = 0; ///< The number of steps before the power cut.
    std::string description;  ///< The step that comes next and what is lost.
    Image files;
};

/// Returns how many random states are made for each position: ZOMREL_CRASHES, or 8.
int randomStates();

/// Calls `visit` with the states at all positions of the record. Positions of the same phase have
/// the same expectation, so a state that occurred in the same phase before is left out. Returns the
/// number of visited states.
int forEachState(const Record& record, const std::function<std::size_t(std::size_t)>& phaseOf,
                 const std::function<void(const State&)>& visit);

} // namespace crash
