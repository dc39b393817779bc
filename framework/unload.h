// unload.h: what the GNU runtime leaves behind when the library is unloaded, given back.
#pragma once

namespace framework {

/// The process ends: other modules may be gone already, so nothing is given back.
void KeepForProcessExit();

}  // namespace framework
