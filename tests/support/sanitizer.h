// What tests cannot show while the sanitizers watch.
#pragma once

// Whether the checks of types at run time are built in: they open a pipe for each object that they look at,
// and fail in a process that has no free file descriptor.
inline constexpr bool ChecksNeedDescriptors =
#ifdef __SANITIZE_ADDRESS__
    true;
#else
    false;
#endif
