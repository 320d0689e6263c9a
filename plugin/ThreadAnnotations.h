#pragma once

// Tells ThreadSanitizer of orderings that Qt's own, uninstrumented code makes: what happened before
// a release of `object` is visible after an acquire of it. Without the sanitizer both are nothing.

#if defined(__SANITIZE_THREAD__)
#define TSA_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TSA_THREAD_SANITIZER 1
#endif
#endif

#ifdef TSA_THREAD_SANITIZER
extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);
#endif

inline void annotateAcquire([[maybe_unused]] void* object)
{
#ifdef TSA_THREAD_SANITIZER
    __tsan_acquire(object);
#endif
}

inline void annotateRelease([[maybe_unused]] void* object)
{
#ifdef TSA_THREAD_SANITIZER
    __tsan_release(object);
#endif
}
