#include "mac/Probes.h"

#include <CoreServices/CoreServices.h>
#include <pthread.h>

#include <algorithm>

#include "platform/FourCharCode.h"

namespace mrvmac {

namespace {

constexpr OSType kProbeClass = fourCharCode("mrvP");
constexpr EventParamName kNoParameter = fourCharCode("none");
constexpr ByteCount kTaskStack = 512000;

enum : UInt32 { kStandard = 1, kHigh = 2, kFromTask = 3 };

EventRef makeEvent(UInt32 kind) {
  EventRef event = nullptr;
  CreateEvent(nullptr, kProbeClass, kind, 0.0, kEventAttributeUserEvent, &event);
  return event;
}

}  // namespace

EventProbes::EventProbes(Observations& seen) {
  install(seen);
  post(seen);
}

EventProbes::~EventProbes() {
  if (handler_ != nullptr) RemoveEventHandler(handler_);
}

void EventProbes::install(Observations& seen) {
  static constexpr EventTypeSpec kTypes[] = {
      {kProbeClass, kStandard}, {kProbeClass, kHigh}, {kProbeClass, kFromTask}};
  const EventTargetRef target = GetEventDispatcherTarget();
  InstallEventHandler(target, handle, std::size(kTypes), kTypes, this, &handler_);
  EventHandlerRef second = nullptr;
  seen.installedTwice =
      InstallEventHandler(target, handle, std::size(kTypes), kTypes, this, &second);
  if (second != nullptr) RemoveEventHandler(second);
}

void EventProbes::post(Observations& seen) {
  const EventQueueRef queue = GetMainEventQueue();
  const EventRef standard = makeEvent(kStandard);
  const EventRef high = makeEvent(kHigh);
  if (standard != nullptr && high != nullptr) {
    PostEventToQueue(queue, standard, kEventPriorityStandard);
    seen.postedTwice = PostEventToQueue(queue, standard, kEventPriorityStandard);
    PostEventToQueue(queue, high, kEventPriorityHigh);
    SInt16 value = 0;
    seen.missingParameter =
        GetEventParameter(high, kNoParameter, typeSInt16, nullptr, sizeof value, nullptr, &value);
  }
  if (standard != nullptr) ReleaseEvent(standard);
  if (high != nullptr) ReleaseEvent(high);
  MPTaskID task = kInvalidID;
  seen.taskCreated =
      MPCreateTask(postFromTask, queue, kTaskStack, nullptr, nullptr, nullptr, 0, &task);
}

OSStatus EventProbes::postFromTask(void* queue) {
  const EventRef event = makeEvent(kFromTask);
  if (event == nullptr) return noErr;
  PostEventToQueue(static_cast<EventQueueRef>(queue), event, kEventPriorityHigh);
  ReleaseEvent(event);
  return noErr;
}

OSStatus EventProbes::handle(EventHandlerCallRef, EventRef event, void* self) {
  static_cast<EventProbes*>(self)->handled_.push_back(
      {GetEventKind(event), pthread_main_np() != 0});
  return noErr;
}

void EventProbes::report(Observations& seen) const {
  const auto place = [this](UInt32 kind) {
    return std::find_if(handled_.begin(), handled_.end(),
                        [kind](const Handled& event) { return event.kind == kind; });
  };
  const auto fromTask = place(kFromTask);
  seen.postedEventReachesMain = fromTask != handled_.end() && fromTask->onMain;
  const auto high = place(kHigh);
  if (high != handled_.end()) seen.highPriorityFirst = high < place(kStandard);
}

}  // namespace mrvmac
