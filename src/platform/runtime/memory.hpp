#pragma once

namespace platform {

/// Keeps the memory that is freed for what comes next instead of handing it back to the system at once: a run that goes
/// over many programs asks for as much again for each of them. Once, at the start of a process; where the C library
/// has no such choice nothing happens.
void keepFreedMemory();

} // namespace platform
