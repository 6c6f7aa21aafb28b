#include "simulator/host/callbacks/CallbackRecords.h"

#include "simulator/host/callbacks/CallbackState.h"

namespace simulator {

Callbacks& theCallbacks() {
  static Callbacks& callbacks = *new Callbacks;
  return callbacks;
}

namespace {

OSErr advanceState() {
  return callbackCall("AdvanceState", [] { ++callbackState().advances; });
}

OSErr displayPixels(const PSPixelMap* source, const VRect* rectangle, int32 row, int32 column,
                    void*) {
  return callbackCall("DisplayPixels", [&] {
    if (source == nullptr || rectangle == nullptr) throw CallError{paramErr};
    callbackState().displayed.push_back({*rectangle, row, column});
  });
}

}  // namespace

AdvanceStateProc advanceStateProc() { return advanceState; }

DisplayPixelsProc displayPixelsProc() { return displayPixels; }

DescriptorRecord::DescriptorRecord() {
  parameters.descriptorParametersVersion = kCurrentDescriptorParametersVersion;
  parameters.playInfo = plugInDialogDontDisplay;
  parameters.writeDescriptorProcs = &write;
  parameters.readDescriptorProcs = &read;
}

const std::vector<DisplayedPixels>& Callbacks::displayed() const {
  return callbackState().displayed;
}

int Callbacks::advances() const { return callbackState().advances; }

std::size_t Callbacks::objectsOwned() const {
  const CallbackState& state = callbackState();
  return state.buffers.owned() + state.readers.owned() + state.writers.owned();
}

void Callbacks::reportLeaks() {
  CallbackState& state = callbackState();
  state.buffers.reportLeaks();
  state.readers.reportLeaks();
  state.writers.reportLeaks();
}

}  // namespace simulator
