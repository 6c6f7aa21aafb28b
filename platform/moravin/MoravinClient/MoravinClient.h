// The device maker's client framework: registration of a client, and the messages sent to it.
// The four functions are weak references: they are null if the framework is not installed, so
// callers must check them first.
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

/// The state of the device. The framework owns it; it is valid only during the callback.
struct MoravinDeviceState {
  std::uint16_t version;
  std::uint16_t client;   ///< the id of the client to which the message is addressed
  std::uint16_t command;  ///< one of the commands above
  std::uint16_t reserved;
  std::uint32_t value;  ///< buttons: 0 when released; application: command in the low 16 bits
  std::uint64_t time;   ///< time stamp
  std::uint8_t report[10];
  std::int16_t axis[6];  ///< translations along, then rotations about, the three axes
  std::uint16_t address;
  std::uint16_t button;  ///< the button to which the message refers
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

/// Called for each message to a client of the process, on the thread that installed the handlers.
typedef void (*MoravinMessageHandler)(std::uint32_t productID, std::uint32_t messageType,
                                      void* messageArgument);
typedef void (*MoravinDeviceHandler)(std::uint32_t productID);

/// Installs the handlers, which the calling thread's event loop will call. The device handlers may
/// be null. Returns 0 or an error code. [any-thread]
std::int16_t InstallMoravinHandlers(MoravinMessageHandler messageHandler,
                                    MoravinDeviceHandler addedHandler,
                                    MoravinDeviceHandler removedHandler) __attribute__((weak));

/// Registers a client for the application with this signature. `name` may be null. Returns the
/// client's id, 0 on failure. [any-thread]
std::uint16_t RegisterMoravinClient(std::uint32_t signature, const char* name, std::uint32_t mode,
                                    std::uint32_t mask) __attribute__((weak));

/// Ends a client's registration. [any-thread]
void UnregisterMoravinClient(std::uint16_t client) __attribute__((weak));

/// Removes the installed handlers. [any-thread]
void CleanupMoravinHandlers() __attribute__((weak));
}
