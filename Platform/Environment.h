#pragma once

namespace platform {

/// The environment of this process, as a child gets it to inherit: ended by a null pointer.
///
/// Ownership:  the process; what it holds is good until somebody changes the environment.
/// Threads:    any, as long as nobody changes the environment meanwhile.
/// Platform:   a library has its own way to it on the phone.
char** environment();

} // namespace platform
