// The device maker's client framework: registration of a client and the messages that it gets.
// All four functions are weak references: where the framework is not installed they are null, and
// a caller asks that first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/FourCharCode.h"

/// The type of the message that carries a `MoravinDeviceState`.
enum : std::uint32_t { kMoravinMessageDeviceState = fourCharCode("3dSR") };

/// Commands of a device state.
enum : std::uint16_t {
  kMoravinCommandButtons = 2,
  kMoravinCommandAxes = 3,
  kMoravinCommandApplication = 10
};

#pragma pack(push, 2)

/// What the device does; it belongs to the framework and is valid only during the callback.
struct MoravinDeviceState {
  std::uint16_t version;
  std::uint16_t client;   ///< the client that the message is for
  std::uint16_t command;  ///< one of the commands above
  std::uint16_t reserved;
  std::uint32_t value;  ///< buttons: 0 when released; application: command in the low 16 bits
  std::uint64_t time;   ///< time stamp
  std::uint8_t report[10];
  std::int16_t axis[6];  ///< translations along, then rotations about the device's three axes
  std::uint16_t address;
  std::uint16_t button;  ///< which button the message concerns
  std::uint16_t padding;
};

#pragma pack(pop)

static_assert(offsetof(MoravinDeviceState, client) == 2);
static_assert(offsetof(MoravinDeviceState, command) == 4);
static_assert(offsetof(MoravinDeviceState, value) == 8);
static_assert(offsetof(MoravinDeviceState, time) == 12);
static_assert(offsetof(MoravinDeviceState, axis) == 30);
static_assert(offsetof(MoravinDeviceState, button) == 44);

extern "C" {

/// Called for every message to the process's clients, on the thread that installed the handlers.
typedef void (*MoravinMessageHandler)(std::uint32_t productID, std::uint32_t messageType,
                                      void* messageArgument);
typedef void (*MoravinDeviceHandler)(std::uint32_t productID);

/// Installs the handlers; the calling thread's event loop delivers. The device handlers may be
/// null. 0, or why it failed.
std::int16_t InstallMoravinHandlers(MoravinMessageHandler messageHandler,
                                    MoravinDeviceHandler addedHandler,
                                    MoravinDeviceHandler removedHandler) __attribute__((weak));

/// Registers a client of the application with that signature. `name` may be null. Returns the
/// client's id, 0 where it failed.
std::uint16_t RegisterMoravinClient(std::uint32_t signature, const char* name, std::uint32_t mode,
                                    std::uint32_t mask) __attribute__((weak));

void UnregisterMoravinClient(std::uint16_t client) __attribute__((weak));

/// Takes the installed handlers back.
void CleanupMoravinHandlers() __attribute__((weak));
}
