// What the plug-in believes about the platform, as far as a program can test it.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "mac/Inputs.h"

namespace mrvmac {

/// What mrvmac saw. A member without a value was not observed.
struct Observations {
  std::string system;     ///< name and build, such as "macOS 13.4 (22F66)"
  std::string processor;  ///< the machine's, and whether the program runs translated

  /// Whether the system lets this program synthesize input for others.
  std::optional<bool> permission;

  // The plug-in.
  std::optional<bool> bundleLoads;
  std::optional<std::int64_t> startupResult, shutdownResult;

  // The device framework and its thread.
  std::optional<bool> frameworkFound;   ///< the plug-in called the stand-in framework
  std::optional<bool> installedOnMain;  ///< ... on the main thread
  std::optional<std::uint64_t> messagesSent, messagesDelivered;

  // Probes of the event manager: the statuses of calls that must succeed or fail in a known way.
  std::optional<std::int32_t> postedTwice, installedTwice, missingParameter, taskCreated;
  std::optional<bool>
      postedEventReachesMain;  ///< posted by another thread, handled on the main one
  std::optional<bool> highPriorityFirst;

  // The window.
  std::optional<bool> windowIsMain;
  std::optional<bool> contentRectFits;      ///< contentRectForFrameRect: is where the content is
  std::optional<bool> pendingAfterMarking;  ///< viewsNeedDisplay after a view was marked
  std::optional<bool> pendingAfterDrawing;  ///< the same after displayIfNeeded
  std::optional<bool> mouseCountsUpward;    ///< [NSEvent mouseLocation] against a CGEvent's

  // Screen refreshes.
  std::uint64_t redraws = 0;
  std::optional<std::uint64_t> refreshes;         ///< callbacks while the window was redrawn
  std::optional<bool> refreshRectsCountDownward;  ///< from the top of the screen

  std::optional<std::string> layout;             ///< the identifier of the keyboard layout
  std::optional<std::string> preferencesFolder;  ///< by FSFindFolder

  // Input.
  std::optional<bool> tapInstalled;    ///< whether the system let this program watch the session
  std::vector<Input> expected;         ///< by the simulated Mac
  std::vector<Input> atTap;            ///< seen by an event tap: wheels and keys
  std::vector<Input> inWindow;         ///< seen by the window's view: wheels and typed keys
  std::optional<bool> ticksAreInside;  ///< every tick was located in the window's content
  std::vector<std::string> misuses;    ///< of the host's suites
};

/// `holds`: nullopt if the observations do not decide it. [any-thread]
struct Belief {
  const char* name;
  const char* sentence;
  std::optional<bool> (*holds)(const Observations& seen);
};

/// Every belief, in the order of the report. [any-thread]
std::span<const Belief> beliefs();

/// What passed the tap against the ticks and modifier keys that were expected: typed keys are
/// posted to the main queue and pass no tap. [any-thread]
Comparison compareAtTap(const Observations& seen);

}  // namespace mrvmac
