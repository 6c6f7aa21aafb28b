#include "mac/Beliefs.h"

#include <algorithm>

namespace mrvmac {

namespace {

using Seen = const Observations&;
using Answer = std::optional<bool>;

constexpr std::int32_t kEventAlreadyPosted = -9860;
constexpr std::int32_t kHandlerAlreadyInstalled = -9866;
constexpr std::int32_t kParameterNotFound = -9870;

template <class Value, class Expected>
Answer equals(const std::optional<Value>& value, Expected expected) {
  if (!value) return std::nullopt;
  return *value == expected;
}

Answer inverse(Answer answer) {
  if (answer) *answer = !*answer;
  return answer;
}

/// Without the permission no input arrives, which says nothing about the belief.
bool mayArrive(Seen seen, InputKind kind) {
  return seen.permission.value_or(false) && !only(seen.expected, kind).empty();
}

bool mayPassTap(Seen seen, InputKind kind) {
  return seen.tapInstalled.value_or(false) && mayArrive(seen, kind);
}

Answer passesTap(Seen seen, InputKind kind) {
  if (!mayPassTap(seen, kind)) return std::nullopt;
  return !only(seen.atTap, kind).empty();
}

Answer reachesWindow(Seen seen, InputKind kind) {
  if (!mayArrive(seen, kind)) return std::nullopt;
  return !only(seen.inWindow, kind).empty();
}

Answer modifiersArrive(Seen seen) {
  const auto withModifier = [](const Input& input) { return input.flags != 0; };
  const bool expected = std::any_of(seen.expected.begin(), seen.expected.end(), withModifier);
  if (!expected || !mayPassTap(seen, InputKind::kWheel)) return std::nullopt;
  return std::any_of(seen.atTap.begin(), seen.atTap.end(), withModifier);
}

/// Each key that went down came up again.
Answer keysComeUp(Seen seen) {
  const std::vector<Input> keys = only(seen.atTap, InputKind::kKey);
  if (keys.empty()) return std::nullopt;
  return std::all_of(keys.begin(), keys.end(), [&](const Input& key) {
    const auto last = std::find_if(keys.rbegin(), keys.rend(),
                                   [&](const Input& other) { return other.key == key.key; });
    return !last->down;
  });
}

Answer sameAsSimulated(Seen seen) {
  if (!mayPassTap(seen, InputKind::kWheel)) return std::nullopt;
  return compareAtTap(seen).equal;
}

constexpr Belief kBeliefs[] = {
    {"bundle-loads", "The system loads the bundle and finds its entry point.",
     [](Seen seen) { return seen.bundleLoads; }},
    {"weak-framework",
     "The plug-in's weak references are those of the device framework that is present.",
     [](Seen seen) { return seen.frameworkFound; }},
    {"startup", "The entry point returns 0 for \"Startup\" and for \"Shutdown\".",
     [](Seen seen) -> Answer {
       if (!seen.startupResult || !seen.shutdownResult) return std::nullopt;
       return *seen.startupResult == 0 && *seen.shutdownResult == 0;
     }},
    {"device-thread", "MPCreateTask starts a thread, and the plug-in meets the framework there.",
     [](Seen seen) { return inverse(seen.installedOnMain); }},
    {"task-created", "MPCreateTask returns 0.",
     [](Seen seen) { return equals(seen.taskCreated, 0); }},
    {"device-loop",
     "RunCurrentEventLoop on the device thread serves sources of that thread's run loop.",
     [](Seen seen) -> Answer {
       if (!seen.messagesDelivered) return std::nullopt;
       return equals(seen.messagesSent, *seen.messagesDelivered);
     }},
    {"hand-over",
     "An event that another thread posts to the main queue is handled on the main thread.",
     [](Seen seen) { return seen.postedEventReachesMain; }},
    {"priority", "An event of high priority overtakes one of standard priority.",
     [](Seen seen) { return seen.highPriorityFirst; }},
    {"posted-twice", "An event that is in a queue cannot be posted again (-9860).",
     [](Seen seen) { return equals(seen.postedTwice, kEventAlreadyPosted); }},
    {"installed-twice", "The same handler cannot be installed twice (-9866).",
     [](Seen seen) { return equals(seen.installedTwice, kHandlerAlreadyInstalled); }},
    {"missing-parameter", "Reading a parameter that an event does not have fails (-9870).",
     [](Seen seen) { return equals(seen.missingParameter, kParameterNotFound); }},
    {"main-window", "The front window of the active application is its mainWindow.",
     [](Seen seen) { return seen.windowIsMain; }},
    {"content-rectangle", "contentRectForFrameRect: of the frame is where the content is.",
     [](Seen seen) { return seen.contentRectFits; }},
    {"pending-marked", "viewsNeedDisplay is true after a view was marked.",
     [](Seen seen) { return seen.pendingAfterMarking; }},
    {"pending-drawn", "viewsNeedDisplay is false after displayIfNeeded.",
     [](Seen seen) { return inverse(seen.pendingAfterDrawing); }},
    {"mouse-upward", "mouseLocation counts from the bottom of the screen, an event from the top.",
     [](Seen seen) { return seen.mouseCountsUpward; }},
    {"refreshes", "Screen refresh callbacks are called when the window is redrawn.",
     [](Seen seen) -> Answer {
       if (!seen.refreshes || seen.redraws == 0) return std::nullopt;
       return *seen.refreshes > 0;
     }},
    {"refreshes-downward", "Redrawn rectangles count from the top of the screen.",
     [](Seen seen) { return seen.refreshRectsCountDownward; }},
    {"layout", "The keyboard layout's identifier begins with com.apple.keylayout.",
     [](Seen seen) -> Answer {
       if (!seen.layout) return std::nullopt;
       return seen.layout->starts_with("com.apple.keylayout.");
     }},
    {"preferences", "FSFindFolder finds the user's Library/Preferences.",
     [](Seen seen) -> Answer {
       if (!seen.preferencesFolder) return std::nullopt;
       return seen.preferencesFolder->ends_with("/Library/Preferences");
     }},
    {"ticks-at-tap", "Posted wheel events pass a tap of the session.",
     [](Seen seen) { return passesTap(seen, InputKind::kWheel); }},
    {"ticks-in-window", "Posted wheel events reach the view below their location.",
     [](Seen seen) { return reachesWindow(seen, InputKind::kWheel); }},
    {"ticks-inside", "The location of every tick is inside the window.",
     [](Seen seen) { return seen.ticksAreInside; }},
    {"keys-at-tap", "Posted modifier keys pass a tap of the session.",
     [](Seen seen) { return passesTap(seen, InputKind::kKey); }},
    {"flags", "Wheel events arrive with the modifiers that they were given.",
     [](Seen seen) { return modifiersArrive(seen); }},
    {"keys-up", "No modifier key stays down.", [](Seen seen) { return keysComeUp(seen); }},
    {"typed-keys", "Keys that are posted to the main queue reach the window.",
     [](Seen seen) { return reachesWindow(seen, InputKind::kTypedKey); }},
    {"as-simulated", "What arrives is what the simulated Mac says.",
     [](Seen seen) { return sameAsSimulated(seen); }},
};

}  // namespace

std::span<const Belief> beliefs() { return kBeliefs; }

Comparison compareAtTap(const Observations& seen) {
  return compareInputs(without(seen.expected, InputKind::kTypedKey), seen.atTap);
}

}  // namespace mrvmac
