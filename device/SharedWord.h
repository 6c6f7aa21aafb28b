// Words that two threads share without a lock. A stale read is accepted, so the order is relaxed:
// the instructions are those of a plain access.
#pragma once

/// Reads the word. [any-thread]
template <class T>
T loadShared(const T& word) {
  T value;
  __atomic_load(&word, &value, __ATOMIC_RELAXED);
  return value;
}

/// Writes the word. [any-thread]
template <class T>
void storeShared(T& word, T value) {
  __atomic_store(&word, &value, __ATOMIC_RELAXED);
}
