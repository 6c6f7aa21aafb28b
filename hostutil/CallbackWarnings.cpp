// The checks that show a warning.
#include "hostutil/CallbackChecks.h"
#include "hostutil/HostUtilities.h"
#include "hostutil/Strings.h"

namespace {

/// The first host version that has a record, and how many decimal places of it are shown.
struct HostVersion {
  double version;
  short places;
};

constexpr HostVersion kDisplayPixels = {2.502, 3};
constexpr HostVersion kAdvanceState = {3.0, 1};
constexpr HostVersion kColorServices = {2.5, 1};
constexpr HostVersion kBufferProcs = {2.5, 1};
constexpr HostVersion kResourceProcs = {3.0, 1};
constexpr HostVersion kHandleProcs = {3.0, 1};
constexpr HostVersion kProperty = {2.5, 1};
constexpr HostVersion kChannelPort = {4.0, 1};
constexpr HostVersion kDescriptor = {4.0, 1};

bool availableOrWarned(bool available, const HostVersion& needed) {
  if (available) return true;
  unsigned char text[256] = {};
  DoubleToString(text, needed.places, needed.version);
  AppendCharToString(text, '.');
  ShowVersionAlert(text);
  return false;
}

}  // namespace

bool WarnHostDisplayPixelsAvailable(DisplayPixelsProc displayProc) {
  return availableOrWarned(HostDisplayPixelsAvailable(displayProc), kDisplayPixels);
}

bool WarnHostAdvanceStateAvailable(AdvanceStateProc advanceProc) {
  return availableOrWarned(advanceProc != nullptr, kAdvanceState);
}

bool WarnHostColorServicesAvailable(ColorServicesProc colorProc) {
  return availableOrWarned(colorProc != nullptr, kColorServices);
}

bool WarnHostBufferProcsAvailable(const BufferProcs* procs) {
  return availableOrWarned(HostBufferProcsAvailable(procs), kBufferProcs);
}

bool WarnHostResourceProcsAvailable(const ResourceProcs* procs) {
  return availableOrWarned(HostResourceProcsAvailable(procs), kResourceProcs);
}

bool WarnHostHandleProcsAvailable(const HandleProcs* procs) {
  return availableOrWarned(HostHandleProcsAvailable(procs), kHandleProcs);
}

bool WarnHostPropertyAvailable(const PropertyProcs* procs) {
  return availableOrWarned(HostPropertyAvailable(procs), kProperty);
}

bool WarnHostChannelPortAvailable(const ChannelPortProcs* procs) {
  return availableOrWarned(HostChannelPortAvailable(procs), kChannelPort);
}

bool WarnHostDescriptorAvailable(const PIDescriptorParameters* procs) {
  return availableOrWarned(HostDescriptorAvailable(procs), kDescriptor);
}
