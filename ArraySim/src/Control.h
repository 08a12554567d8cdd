// Control.h - the simulator's test hooks: injected faults, semaphore
// time-outs, call delays and log capture (see zarsim_test.h).
#ifndef ZARSIM_CONTROL_H
#define ZARSIM_CONTROL_H

#include <string>

namespace zarsim {

// True when a fault is armed for operation: consumes one and returns its
// code and text.
bool takeFault(const char* operation, int* code, std::string* text);

// True when the next semaphore wait is to time out (consumes one).
bool takeSemTimeout();

// Sleeps for the delay set for operation, if any.
void applyDelay(const char* operation);

// Offers a finished log line to the capture; true when captured (then it is
// not written anywhere else).
bool captureLogLine(int level, const std::string& line);

// PBKDF2 iteration count for new password hashes.
int hashIterations();

}  // namespace zarsim

#endif
