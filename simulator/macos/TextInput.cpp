#include "simulator/macos/TextInput.h"

#include <Carbon/Carbon.h>

#include <atomic>

#include "simulator/macos/CFObjects.h"
#include "simulator/macos/MacFaults.h"
#include "simulator/macos/ThreadRules.h"

namespace simulator {

namespace {

std::atomic<std::uint32_t> keyModifiers{0};

/// The value is compared but never dereferenced; it is not an object and cannot be released.
constexpr std::uintptr_t kInputSourceIDKey = 0x10;

}  // namespace

std::string& keyboardLayout() {
  static std::string& layout = *new std::string("com.apple.keylayout.US");
  return layout;
}

void setKeyModifiers(std::uint32_t modifiers) { keyModifiers = modifiers; }

}  // namespace simulator

using namespace simulator;

const CFStringRef kTISPropertyInputSourceID = reinterpret_cast<CFStringRef>(kInputSourceIDKey);

UInt32 GetCurrentKeyModifiers() {
  requireMainThread("GetCurrentKeyModifiers");
  return keyModifiers.load();
}

TISInputSourceRef TISCopyCurrentKeyboardInputSource() {
  requireMainThread("TISCopyCurrentKeyboardInputSource");
  if (failureOf(MacCall::kTISCopyCurrentKeyboardInputSource)) return nullptr;
  const CFTypeRef source = theCFObjects().make(InputSource{makeCFString(keyboardLayout())});
  return static_cast<TISInputSourceRef>(const_cast<void*>(source));
}

void* TISGetInputSourceProperty(TISInputSourceRef inputSource, CFStringRef propertyKey) {
  requireMainThread("TISGetInputSourceProperty");
  if (failureOf(MacCall::kTISGetInputSourceProperty)) return nullptr;
  if (propertyKey != kTISPropertyInputSourceID) return nullptr;
  const auto source = theCFObjects().get<InputSource>(inputSource, "TISGetInputSourceProperty");
  return source ? const_cast<__CFString*>(source->identifier) : nullptr;
}
