#pragma once

namespace platform {

/// `file` under a number that no standard stream has. A process whose standard streams are closed
/// gives their numbers to what it opens next, and what is printed would end in there. -1 with the
/// reason in errno when that fails, or when `file` was that.
int awayFromStandardStreams(int file);

} // namespace platform
