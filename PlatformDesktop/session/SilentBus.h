#pragma once

#include <chrono>
#include <string>

namespace qb {

/// Whether the session bus at `address` takes connections and then says nothing within `limit`, as
/// when its daemon hangs. A bus that refuses is not silent, and of one that is reached otherwise
/// than by a socket of this machine nothing is known.
bool isSilentBus(const std::string& address, std::chrono::milliseconds limit);

/// Has this process, and what it starts, do without a session bus that is silent for five seconds,
/// and says so in the log. Qt would wait for it, however long that takes, in the midst of drawing a
/// dialog. To be called before Qt starts.
void turnSilentSessionBusOff();

}  // namespace qb
