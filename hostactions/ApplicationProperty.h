// Questions to the host, and reading its answers. [main-thread]
//
// All functions throw the host's code as a `std::uint32_t` if a suite cannot be acquired.
#pragma once

#include "suites/HostObjects.h"

/// Makes `reference` to the property `key` of the current application and has the host answer it
/// with the descriptor `result`. Returns the first host error, 0 for success; each object is held
/// from the moment when it is made.
int getApplicationProperty(DescriptorKeyID key, ActionReference& reference,
                           ActionDescriptor& result);

/// Asks whether `descriptor` has `key`; returns the host error, and the answer in `present`.
int askForKey(PIActionDescriptor descriptor, DescriptorKeyID key, bool& present);

/// True if the descriptor has the key; false also if the host fails.
bool hasKey(const ActionDescriptor& descriptor, DescriptorKeyID key);

/// Reads the object under `key`, whatever its class. Returns the host error, 0 for success.
int getObject(const ActionDescriptor& descriptor, DescriptorKeyID key, ActionDescriptor& object);

/// Plays an event without a dialog; returns the host error, 0 for success.
int playSilently(ActionDescriptor& result, DescriptorEventID event,
                 const ActionDescriptor& descriptor);
