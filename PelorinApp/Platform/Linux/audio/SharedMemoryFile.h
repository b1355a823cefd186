#pragma once

namespace quillon {

/// The sound library shares memory with its server through an open file that programs would
/// inherit: this process started anew, and what it starts. Closes it for them.
void keepSharedMemoryFromPrograms();

} // namespace quillon
