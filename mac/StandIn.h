// The stand-in for the device framework: a library under the framework's name, which mrvmac
// controls.
#pragma once

#include <MoravinClient/MoravinClient.h>

#include <cstdint>

/// What happened to the stand-in so far.
struct StandInState {
  bool installed;        ///< handlers were installed
  bool installedOnMain;  ///< ... on the main thread, the last time
  std::uint16_t client;  ///< the registered client, 0 if there is none
  std::uint64_t sent, delivered;
};

extern "C" {

/// Queues a message for the installed handler, which the run loop of the thread that installed it
/// will call. Does nothing if no handler is installed. [any-thread]
typedef void (*StandInSend)(std::uint32_t messageType, const MoravinDeviceState* state);
/// Reads the state. [any-thread]
typedef StandInState (*StandInRead)();
}

/// The names under which the stand-in exports the two functions.
inline constexpr char kStandInSend[] = "mrvStandInSend";
inline constexpr char kStandInRead[] = "mrvStandInRead";
