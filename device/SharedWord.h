// Access to words that two threads share without a lock. It compiles to plain loads and stores.
//
// Relaxed order suffices, also on processors that reorder memory accesses, because no word
// announces other memory of the plug-in:
//
// - a flag or an id means nothing beyond its own value, and readers accept a stale one;
// - a queue or a handler is the platform's object. The plug-in only passes it back to the platform,
//   whose locks order what is inside;
// - what the main thread stored before it started the device thread is visible there, because the
//   start of a thread orders it;
// - the values of a device message reach the main thread inside an event, and the queue's lock
//   orders the event's contents.
//
// A word that announces other memory, such as a pointer to a record of the plug-in's own, needs
// release and acquire order instead.
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
