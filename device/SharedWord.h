// Access to words that two threads share without a lock. Callers accept stale values, so relaxed
// order suffices; it compiles to plain loads and stores.
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
