// The simulated machine for the benchmarks that follow a device sample: it writes no log, and the
// plug-in's code is linked into the program.
#pragma once

#include <MoravinClient/MoravinClient.h>

#include <filesystem>

#include "device/MrvDeviceEvents.h"
#include "navigate/Navigate2D.h"
#include "simulator/host/Host.h"
#include "simulator/macos/EventManager.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/WindowServer.h"
#include "simulator/scenario/HostFiles.h"
#include "simulator/scenario/Player.h"
#include "suites/BasicSuite.h"

/// Makes the receiver of device events. The calling thread then also plays the device thread's
/// part.
inline Navigate2D& prepareMachine() {
  static const simulator::TemporaryHome home;
  simulator::writeHostFiles({}, simulator::preferencesFolder(home.path()));
  simulator::setHomeFolder(home.path());
  sSPBasic = simulator::theHost().basicSuite();
  MrvDeviceEvents::m_mainEventQueue = GetMainEventQueue();
  return Navigate2D::Instance();
}

/// A sample in the device's own order of axes, addressed to the plug-in's client.
inline MoravinDeviceState axisSample(std::int16_t x, std::int16_t push, std::int16_t twist) {
  MoravinDeviceState state = {};
  state.client = MrvDeviceEvents::m_clientID;
  state.command = kMoravinCommandAxes;
  state.axis[0] = x;
  state.axis[1] = push;
  state.axis[4] = twist;
  return state;
}

/// Passes the sample to the framework's callback and dispatches the event that it posts.
inline void deliver(MoravinDeviceState& state) {
  MrvDeviceEvents::messageHandlerProc(1, kMoravinMessageDeviceState, &state);
  simulator::theEventManager().dispatchNext();
}
