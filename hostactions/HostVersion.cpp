#include "hostactions/HostVersion.h"

#include <HostTerms.h>
#include <PIProperties.h>

#include <cstdint>

#include "hostactions/ApplicationProperty.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

namespace {

/// A number that cannot be read stays 0.
struct Version {
  std::int32_t major = 0;
  std::int32_t minor = 0;
};

bool queryVersion(Version& answer) {
  // Freed in the reverse order of declaration: the result first.
  ActionReference reference;
  ActionDescriptor version;
  ActionDescriptor result;
  if (getApplicationProperty(kKeyHostVersion, reference, result) != 0) return false;
  if (!hasKey(result, kKeyHostVersion)) return false;
  if (getObject(result, kKeyHostVersion, version) != 0) return false;
  if (!hasKey(version, kKeyVersionMajor)) return false;
  sPSActionDescriptor->GetInteger(version.get(), kKeyVersionMajor, &answer.major);
  sPSActionDescriptor->GetInteger(version.get(), kKeyVersionMinor, &answer.minor);
  return true;
}

}  // namespace

int PSMajorVersion(int* major, int* minor) {
  static int version = 0;
  static int majorVer = 0;
  static int minorVer = 0;
  if (major == nullptr || minor == nullptr) return 0;
  if (version == 0) {
    Version answer;
    if (!queryVersion(answer)) return 0;
    version = majorVer = answer.major;
    minorVer = answer.minor;
  }
  *major = majorVer;
  *minor = minorVer;
  return version;
}

bool PSIsModal() {
  // A call that fails normally leaves the 1, so the host counts as modal.
  std::intptr_t modal = 1;
  if (sPSProperty->getPropertyProc == nullptr) return true;
  sPSProperty->getPropertyProc(kPhotoshopSignature, propAppIsModal, 0, &modal, nullptr);
  return modal != 0;
}
