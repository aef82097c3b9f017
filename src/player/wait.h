#pragma once
// The player's wait: pumps the message queue each turn so that the stop and
// pause hotkeys are seen, and ends once the time has passed or the play was
// stopped.
#include "sys/clock_port.h"

namespace kx {

// `playing` is read after every pump; the wait returns as soon as it is false.
void PumpingWait(ClockPort& clock, double milliseconds, const bool& playing);

}  // namespace kx
