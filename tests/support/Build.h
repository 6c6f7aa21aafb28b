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

/// Whether a sanitizer is active: the tests then run many times slower, and freed memory stays with
/// the process for a while.
#ifdef MRV_TESTS_SANITIZED
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

/// Whether the compiler optimises. Without optimisation, or with coverage, long runs take several
/// times as long.
#ifdef __OPTIMIZE__
inline constexpr bool kOptimized = true;
#else
inline constexpr bool kOptimized = false;
#endif

/// Whether the tests are built for arm64, which runs under qemu: long double is slow there.
#if defined(__aarch64__)
inline constexpr bool kEmulated = true;
#else
inline constexpr bool kEmulated = false;
#endif

/// The number of random inputs on which a function is compared with a second implementation.
inline constexpr int kRandomInputs = kSanitized || !kOptimized || kEmulated ? 30'000 : 1'000'000;

}  // namespace testing_support
