#include "mac/RealHost.h"

#import <Foundation/Foundation.h>
#include <PIActionsPlugIn.h>
#include <SPInterf.h>
#include <dlfcn.h>

#include <cstdio>

#include "mac/Playback.h"
#include "simulator/host/Host.h"

namespace mrvmac {

namespace {

constexpr char kEntryPoint[] = "AutoPluginMain";

template <class Function>
Function function(void* library, const char* name) {
  return reinterpret_cast<Function>(dlsym(library, name));
}

/// The executable that the bundle's property list names; empty if there is none.
std::string executableOf(const std::string& bundle) {
  NSBundle* const known = [NSBundle bundleWithPath:@(bundle.c_str())];
  return known.executablePath == nil ? "" : known.executablePath.UTF8String;
}

}  // namespace

StandInFramework::StandInFramework(const std::string& folder) {
  const std::string file = folder + "/MoravinClient.framework/Versions/A/MoravinClient";
  void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_GLOBAL);
  if (library == nullptr) throw CannotRun(std::string("the stand-in framework: ") + dlerror());
  send_ = function<StandInSend>(library, kStandInSend);
  read_ = function<StandInRead>(library, kStandInRead);
  if (send_ == nullptr || read_ == nullptr) {
    throw CannotRun(file + " is not the stand-in framework of mrvmac");
  }
}

void StandInFramework::send(const simulator::DeviceMessage& message, std::int64_t at) const {
  const MoravinDeviceState state = recordOf(message, at, read_().client);
  send_(message.type, &state);
}

void StandInFramework::report(Observations& seen) const {
  const StandInState state = read_();
  seen.frameworkFound = state.installed;
  if (!state.installed) return;
  seen.installedOnMain = state.installedOnMain;
  seen.messagesSent = state.sent;
  seen.messagesDelivered = state.delivered;
}

RealHost::RealHost(const simulator::HostSetup& setup, const std::string& bundle,
                   Observations& seen) {
  simulator::Host& host = simulator::theHost();
  host.setVersion(setup.version);
  host.setTool(setup.tool);
  host.setBrush(setup.brush);
  const std::string executable = executableOf(bundle);
  if (executable.empty()) throw CannotRun(bundle + " is not a bundle with an executable");
  void* const library = dlopen(executable.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    std::fprintf(stderr, "mrvmac: %s\n", dlerror());
  } else {
    entry_ = function<Entry>(library, kEntryPoint);
  }
  seen.bundleLoads = entry_ != nullptr;
}

void RealHost::call(const simulator::CallStep& step, Observations& seen) {
  if (entry_ == nullptr) return;
  PSActionsPlugInMessage message = {};
  auto* const data = reinterpret_cast<SPMessageData*>(&message);
  data->self = simulator::theHost().plugIn();
  data->basic = simulator::theHost().basicSuite();
  const int result = entry_(step.caller.c_str(), step.selector.c_str(), &message);
  if (step.selector == kSPInterfaceStartupSelector) seen.startupResult = result;
  if (step.selector == kSPInterfaceShutdownSelector) seen.shutdownResult = result;
}

}  // namespace mrvmac
