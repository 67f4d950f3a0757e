// Happens-before edges for ThreadSanitizer where the synchronisation lives in a library that
// isn't built with it (oneTBB from Debian): the render thread's work before a parallel loop is
// seen by the row tasks, and their writes by the render thread after the loop. Outside a
// ThreadSanitizer build these are empty.
#pragma once

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

namespace vl1 {

#if defined(__SANITIZE_THREAD__)
inline constexpr bool thread_checker_build = true;
#else
inline constexpr bool thread_checker_build = false;
#endif

inline void announce_to_other_threads([[maybe_unused]] const void* token)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_release(const_cast<void*>(token));
#endif
}

inline void take_over_from_other_threads([[maybe_unused]] const void* token)
{
#if defined(__SANITIZE_THREAD__)
    __tsan_acquire(const_cast<void*>(token));
#endif
}

}  // namespace vl1
