// How the tests were built.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define MRV_TESTS_SANITIZED 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define MRV_TESTS_SANITIZED 1
#endif

namespace testing_support {

/// Whether a sanitizer watches: everything takes many times as long then, and memory that is given
/// back stays with the process for a while.
#ifdef MRV_TESTS_SANITIZED
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

/// Whether the compiler optimises. Without it, and with coverage counted, long runs take several
/// times as long.
#ifdef __OPTIMIZE__
inline constexpr bool kOptimized = true;
#else
inline constexpr bool kOptimized = false;
#endif

/// How many random inputs a function is compared over with its second implementation.
inline constexpr int kRandomInputs = kSanitized || !kOptimized ? 30'000 : 1'000'000;

}  // namespace testing_support
