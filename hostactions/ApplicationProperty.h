// A property of the current application, asked of the host by reference. [main-thread]
#pragma once

#include "plugin/HostObjects.h"

/// Makes `reference` to the property `key` of the current application and has the host answer it
/// with the descriptor `result`. Returns the first host error, 0 for success; each object is held
/// from the moment when it is made. Throws where a suite cannot be acquired.
int getApplicationProperty(DescriptorKeyID key, ActionReference& reference,
                           ActionDescriptor& result);

/// Asks whether `descriptor` has `key`; returns the host error, and the answer in `present`.
int askForKey(const ActionDescriptor& descriptor, DescriptorKeyID key, bool& present);

/// Whether the descriptor has the key; false also where the host fails.
bool hasKey(const ActionDescriptor& descriptor, DescriptorKeyID key);
