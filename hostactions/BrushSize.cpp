#include "hostactions/BrushSize.h"

#include <Carbon/Carbon.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

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

void postKey(EventQueueRef queue, UInt32 kind, UInt32 keyCode, char character, UInt32 modifiers) {
  EventRef event = nullptr;
  CreateEvent(nullptr, kEventClassKeyboard, kind, 0.0, kEventAttributeUserEvent, &event);
  if (event == nullptr) return;
  SetEventParameter(event, kEventParamKeyCode, typeUInt32, sizeof keyCode, &keyCode);
  SetEventParameter(event, kEventParamKeyMacCharCodes, typeChar, sizeof character, &character);
  SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof modifiers, &modifiers);
  PostEventToQueue(queue, event, kEventPriorityHigh);
  ReleaseEvent(event);
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

void ResetBrushSizeAccumulator() { brushSizeAccumulator = 0; }

void SetNewBrushSize() {}

int SimulateKeyboardEvent(unsigned int keyCode, char character, unsigned int modifiers) {
  const EventQueueRef queue = GetMainEventQueue();
  postKey(queue, kEventRawKeyDown, keyCode, character, modifiers);
  postKey(queue, kEventRawKeyUp, keyCode, character, modifiers);
  return noErr;
}
