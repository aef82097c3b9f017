#pragma once
// The player's waits: they pump the message queue each turn so that the stop
// and pause hotkeys are seen, and end once their time has passed or the play
// was stopped.
#include <cstdint>

#include "sys/clock_port.h"

namespace kx {

// A wait of its own length from now. `playing` is read after every pump; the
// wait returns as soon as it is false.
void PumpingWait(ClockPort& clock, double milliseconds, const bool& playing);

// A wait that ends once the performance counter has passed `deadline`. The
// counter read at `start` tells a counter that runs backwards: the measure
// then restarts from zero, as the millisecond wait does.
void PumpingWaitUntil(ClockPort& clock, std::int64_t start, std::int64_t deadline,
                      const bool& playing);

// Milliseconds to and from ticks of the performance counter.
std::int64_t CounterTicks(ClockPort& clock, double milliseconds);
double CounterMilliseconds(ClockPort& clock, std::int64_t ticks);

}  // namespace kx
