#include "codegen/RecordedSteps.h"

#include <CoreServices/CoreServices.h>
#include <PIGeneral.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <new>
#include <vector>

#include "codegen/HostValues.h"
#include "codegen/PathConversion.h"
#include "suites/Suites.h"

namespace {

bool isNamed(const char* name, const char* wanted) {
  return wanted != nullptr && std::strcmp(name, wanted) == 0;
}

int playSteps(const RecordedStep* steps, int count) {
  for (int i = 0; i < count; ++i) {
    const int error = steps[i].isEnabled ? steps[i].play() : 0;
    if (error != 0) return error;
  }
  return 0;
}

}  // namespace

int playRecordedAction(const RecordedAction* actions, const RecordedStep* steps,
                       const char* setName, const char* actionName) noexcept {
  for (; actions->action != nullptr; steps += actions->steps, ++actions) {
    if (!isNamed(actions->set, setName) || !isNamed(actions->action, actionName)) continue;
    try {
      return playSteps(steps, actions->steps);
    } catch (const std::uint32_t error) {
      return static_cast<int>(error);
    } catch (const std::bad_alloc&) {
      return memFullErr;
    }
  }
  return errMissingParameter;
}

int RuntimeID::lookUp() {
  if (isKnown_) return 0;
  const int error = sPSActionControl->StringIDToTypeID(name_, &id_);
  isKnown_ = error == 0;
  return error;
}

int lookUp(std::initializer_list<RuntimeID*> ids) {
  for (RuntimeID* const id : ids) {
    if (const int error = id->lookUp(); error != 0) return error;
  }
  return 0;
}

// Both functions for aliases acquire the suite that frees the alias before there is one.

int aliasOfPath(const char* path, OwnedAlias& alias) {
  sPSHandle.operator->();
  FullPathToAlias(path, *alias.out());
  return alias ? 0 : static_cast<int>(fnfErr);
}

int aliasOfBytes(const char* bytes, std::size_t size, OwnedAlias& alias) {
  sPSHandle.operator->();
  return PtrToHand(bytes, alias.out(), static_cast<long>(size));
}

int bookmarkOfPath(const char* path, OwnedBookmark& bookmark) {
  FullPathToBookmark(path, *bookmark.out());
  return bookmark ? 0 : static_cast<int>(fnfErr);
}

int bookmarkOfBytes(const char* bytes, std::size_t size, OwnedBookmark& bookmark) {
  *bookmark.out() = CFDataCreate(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes),
                                 static_cast<CFIndex>(size));
  return bookmark ? 0 : static_cast<int>(memFullErr);
}

int textOfUnits(const char16_t* units, std::size_t count, OwnedText& text) {
  sASZString.operator->();
  std::vector<ASUnicode> copy(units, units + count);
  return sASZString->MakeFromUnicode(copy.data(), count * sizeof(ASUnicode), text.out());
}

double realOfBits(std::uint64_t bits) {
  double number = 0;
  static_assert(sizeof number == sizeof bits);
  std::memcpy(&number, &bits, sizeof number);
  return number;
}
