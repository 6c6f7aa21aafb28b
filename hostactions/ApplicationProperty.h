// Queries of the host, reading of its answers, and playing of events. [main-thread]
//
// All functions throw the host's code as a `std::uint32_t` if a suite cannot be acquired.
#pragma once

#include "suites/HostObjects.h"

/// Creates `reference` to the property `key` of the current application and gets the host's answer
/// in `result`. Returns the first host error, 0 for success. What was created before an error stays
/// in the owners.
int getApplicationProperty(DescriptorKeyID key, ActionReference& reference,
                           ActionDescriptor& result);

/// Asks whether `descriptor` has `key` and writes the answer to `present`. Returns the host error,
/// 0 for success.
int askForKey(PIActionDescriptor descriptor, DescriptorKeyID key, bool& present);

/// Returns true if the descriptor has the key, false if not or if the host returns an error.
bool hasKey(const ActionDescriptor& descriptor, DescriptorKeyID key);

/// Reads the object under `key`, ignoring its class. Returns the host error, 0 for success.
int getObject(const ActionDescriptor& descriptor, DescriptorKeyID key, ActionDescriptor& object);

/// Plays `event` without a dialog and gets its result. Returns the host error, 0 for success.
int playSilently(ActionDescriptor& result, DescriptorEventID event,
                 const ActionDescriptor& descriptor);
