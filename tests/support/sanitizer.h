// SPDX-License-Identifier: GPL-3.0-or-later
// What tests allow for while the sanitizers watch.
#pragma once

inline constexpr bool UnderSanitizers =
#ifdef __SANITIZE_ADDRESS__
    true;
#else
    false;
#endif

// The checks of types at run time open a pipe for each object that they look at, and fail in a process that
// has no free file descriptor.
inline constexpr bool ChecksNeedDescriptors = UnderSanitizers;
