#include "hostactions/BrushSize.h"

#include <Carbon/Carbon.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "hostactions/ActiveTool.h"
#include "hostactions/PsUIBoss.h"
#include "hostutil/CFObject.h"
#include "hostwindow/HostWindow.h"

namespace {

constexpr int kSmallestDelta = 20;
constexpr int kKeyThreshold = 501;

/// The accumulator after a key. Not 0, which would ask for the tool again; as it is 1, the next key
/// needs 500 counts to a larger brush and 502 to a smaller one. The feel of the brush depends on
/// it.
constexpr std::int16_t kAfterKey = 1;

/// The numbers of the tools that have a brush, one bit each.
constexpr std::uint64_t kBrushTools = 0x23F6700BE0000000;
constexpr int kLastBrushTool = 61;

/// The virtual key codes of the host's shortcuts for a smaller and a larger brush on a layout.
struct BrushKeys {
  const char* layout;
  std::uint32_t smaller;
  std::uint32_t larger;
};

constexpr BrushKeys kLayoutKeys[] = {
    {"com.apple.keylayout.German", 41, 42},
    {"com.apple.keylayout.French", 30, 50},
};
constexpr BrushKeys kOtherLayoutKeys = {nullptr, 33, 30};

std::uint32_t brushSizeSmaller = 0;
std::uint32_t brushSizeLarger = 0;

/// Device counts since the last key or reset. 0 makes the next sample ask for the tool.
std::int16_t brushSizeAccumulator = 0;

void copyCurrentLayout(char* layout, CFIndex size) {
  layout[0] = '\0';
  const CFObject<TISInputSourceRef> source(TISCopyCurrentKeyboardInputSource());
  if (!source) return;
  const auto* identifier =
      static_cast<CFStringRef>(TISGetInputSourceProperty(source.get(), kTISPropertyInputSourceID));
  if (identifier == nullptr) return;
  if (!CFStringGetCString(identifier, layout, size, kCFStringEncodingUTF8)) layout[0] = '\0';
}

const BrushKeys& keysOf(const char* layout) {
  for (const BrushKeys& keys : kLayoutKeys) {
    if (std::strcmp(layout, keys.layout) == 0) return keys;
  }
  return kOtherLayoutKeys;
}

bool hasBrush(int tool) { return tool <= kLastBrushTool && ((kBrushTools >> tool) & 1) != 0; }

/// Adds the low 16 bits of the delta; the sum wraps.
void accumulate(int delta) {
  const auto counts = static_cast<std::int16_t>(delta);
  brushSizeAccumulator = static_cast<std::int16_t>(brushSizeAccumulator + counts);
  if (std::abs(brushSizeAccumulator) < kKeyThreshold) return;
  SimulateKeyboardEvent(brushSizeAccumulator > 0 ? brushSizeLarger : brushSizeSmaller, 0, 0);
  brushSizeAccumulator = kAfterKey;
}

struct Key {
  UInt32 code;
  char character;
  UInt32 modifiers;
};

/// Returns whether the event could be created and was taken by the queue.
bool postKey(EventQueueRef queue, UInt32 kind, const Key& key) {
  EventRef event = nullptr;
  CreateEvent(nullptr, kEventClassKeyboard, kind, 0.0, kEventAttributeUserEvent, &event);
  if (event == nullptr) return false;
  SetEventParameter(event, kEventParamKeyCode, typeUInt32, sizeof key.code, &key.code);
  SetEventParameter(event, kEventParamKeyMacCharCodes, typeChar, sizeof key.character,
                    &key.character);
  SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof key.modifiers,
                    &key.modifiers);
  const OSStatus status = PostEventToQueue(queue, event, kEventPriorityHigh);
  ReleaseEvent(event);
  return status == noErr;
}

/// The key that was pressed and whose release could not be posted.
std::optional<Key> heldKey;

/// Every sample tries again, so that the key does not stay down.
void releaseHeldKey() {
  if (heldKey && postKey(GetMainEventQueue(), kEventRawKeyUp, *heldKey)) heldKey.reset();
}

}  // namespace

void InitBrushSize(char*) {
  char layout[256];
  copyCurrentLayout(layout, sizeof layout);
  const BrushKeys& keys = keysOf(layout);
  brushSizeSmaller = keys.smaller;
  brushSizeLarger = keys.larger;
}

void AdjustBrushSize(int delta) {
  releaseHeldKey();
  static int toolID = kOtherTool;
  static int psToolID = 0;
  static int brushSize = 0;
  if (PsUIBoss::Instance().IsToolbarDirty()) return;
  if (getMainPhotoshopWindow() == nullptr) return;
  if (-kSmallestDelta < delta && delta < kSmallestDelta) return;
  if (brushSizeAccumulator == 0 && PlayeventGetActiveTool(&toolID, &psToolID) != 0) return;
  // Only the error is used: a tool without a brush ends the call here.
  if (brushSizeAccumulator == 0 && PlayeventGetBrushSize(&brushSize) != 0) return;
  if (hasBrush(toolID)) accumulate(delta);
}

void ResetBrushSizeAccumulator() {
  releaseHeldKey();
  brushSizeAccumulator = 0;
}

void SetNewBrushSize() {}

int SimulateKeyboardEvent(unsigned int keyCode, char character, unsigned int modifiers) {
  const Key key = {keyCode, character, modifiers};
  releaseHeldKey();
  if (heldKey) return noErr;
  const EventQueueRef queue = GetMainEventQueue();
  const bool pressed = postKey(queue, kEventRawKeyDown, key);
  const bool released = postKey(queue, kEventRawKeyUp, key);
  if (pressed && !released) heldKey = key;
  return noErr;
}
