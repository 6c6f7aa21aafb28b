// The simulated machine as the benchmarks of the device's road use it: silent, with the plug-in's
// code linked in.
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

/// Makes the receiver of device events and lets the calling thread stand for the device thread.
inline Navigate2D& prepareMachine() {
  static const simulator::TemporaryHome home;
  simulator::writeHostFiles({}, simulator::preferencesFolder(home.path()));
  simulator::setHomeFolder(home.path());
  sSPBasic = simulator::theHost().basicSuite();
  MrvDeviceEvents::m_mainEventQueue = GetMainEventQueue();
  return Navigate2D::Instance();
}

/// A sample of the device's own axes for the client that the plug-in takes for its own.
inline MoravinDeviceState axisSample(std::int16_t x, std::int16_t push, std::int16_t twist) {
  MoravinDeviceState state = {};
  state.client = MrvDeviceEvents::m_clientID;
  state.command = kMoravinCommandAxes;
  state.axis[0] = x;
  state.axis[1] = push;
  state.axis[4] = twist;
  return state;
}

/// Takes the sample from the framework's callback to the end of its dispatch.
inline void deliver(MoravinDeviceState& state) {
  MrvDeviceEvents::messageHandlerProc(1, kMoravinMessageDeviceState, &state);
  simulator::theEventManager().dispatchNext();
}
