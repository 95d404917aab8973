#pragma once

// Under the sanitizers every step runs several times slower, so a wait that stands for "at once" to the
// operator is given that much longer there; the normal build alone judges the time.
namespace porvane::test {

#if defined(__SANITIZE_ADDRESS__)
inline constexpr int kSlowdown = 5;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
inline constexpr int kSlowdown = 5;
#else
inline constexpr int kSlowdown = 1;
#endif
#else
inline constexpr int kSlowdown = 1;
#endif

// "Within a second", in milliseconds.
inline constexpr int kWithinASecond = 1000 * kSlowdown;

} // namespace porvane::test
