#include "simulator/macos/EventManager.h"

#include <fmt/format.h>

#include <algorithm>

#include "simulator/macos/ThreadRules.h"

namespace simulator {

namespace {

// Published codes that the platform headers here do not declare.
constexpr OSStatus kEventInternalErr = -9868;
constexpr OSStatus kCoercionFailed = -1700;

constexpr std::size_t kUsualParameters = 8;

bool isSame(const EventTypeSpec& a, const EventTypeSpec& b) {
  return a.eventClass == b.eventClass && a.eventKind == b.eventKind;
}

Json typesAsJson(std::span<const EventTypeSpec> types) {
  Json list = Json::array();
  for (const EventTypeSpec& type : types) {
    list.push_back({idText(type.eventClass), type.eventKind});
  }
  return list;
}

/// What the log says about an event that is posted.
struct PostedText {
  std::string eventClass;
  UInt32 kind = 0;
  JsonText parameters;
};

JsonText textOf(const std::vector<EventParameter>& parameters) {
  constexpr std::size_t kUsualSize = 32;  // of a parameter's text
  JsonText list{"["};
  list.text.reserve(parameters.size() * kUsualSize);
  for (const EventParameter& parameter : parameters) {
    if (list.text.size() > 1) list.text += ',';
    appendJson(list.text, parameter);
  }
  list.text += ']';
  return list;
}

PostedText textOf(const EventContent& event) {
  return {idText(event.eventClass), event.kind, textOf(event.parameters)};
}

}  // namespace

EventManager::EventManager() : application_([](EventRef) {}) {}

EventRef EventManager::create(OSType eventClass, UInt32 kind, EventTime when) {
  if (failingCreations_ > 0) {
    --failingCreations_;
    return nullptr;
  }
  Event event = {{eventClass, kind, when, {}}};
  event.parameters.reserve(kUsualParameters);
  const std::lock_guard lock(mutex_);
  const void* handle = events_.insert(std::move(event));
  return static_cast<EventRef>(const_cast<void*>(handle));
}

void EventManager::retain(EventRef ref) {
  const std::lock_guard lock(mutex_);
  if (Event* event = find(ref, "RetainEvent")) ++event->references;
}

void EventManager::release(EventRef ref) {
  const std::lock_guard lock(mutex_);
  Event* event = find(ref, "ReleaseEvent");
  if (event == nullptr || --event->references > 0) return;
  if (observer_) observer_(*event);
  events_.erase(ref);
}

OSType EventManager::classOf(EventRef ref) {
  const std::lock_guard lock(mutex_);
  const Event* event = find(ref, "GetEventClass");
  return event != nullptr ? event->eventClass : 0;
}

UInt32 EventManager::kindOf(EventRef ref) {
  const std::lock_guard lock(mutex_);
  const Event* event = find(ref, "GetEventKind");
  return event != nullptr ? event->kind : 0;
}

OSStatus EventManager::setParameter(EventRef ref, EventParamName name, EventParamType type,
                                    std::span<const std::byte> bytes) {
  const std::lock_guard lock(mutex_);
  Event* event = find(ref, "SetEventParameter");
  if (event == nullptr) return paramErr;
  if (event->posted && !isMainThread()) {
    theLog().misuse(
        "SetEventParameter: called on another thread than the main one for an event that was "
        "posted");
  }
  auto& parameters = event->parameters;
  const auto known = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const EventParameter& p) { return p.name == name; });
  EventParameter parameter = {name, type, ParameterBytes(bytes)};
  if (known != parameters.end()) {
    *known = std::move(parameter);
  } else {
    parameters.push_back(std::move(parameter));
  }
  return noErr;
}

OSStatus EventManager::getParameter(EventRef ref, EventParamName name, EventParamType wanted,
                                    EventParamType* type, std::span<std::byte> buffer,
                                    ByteCount* size) {
  const std::lock_guard lock(mutex_);
  const Event* event = find(ref, "GetEventParameter");
  if (event == nullptr) return paramErr;
  const auto& parameters = event->parameters;
  const auto known = std::find_if(parameters.begin(), parameters.end(),
                                  [&](const EventParameter& p) { return p.name == name; });
  if (known == parameters.end()) return eventParameterNotFoundErr;
  std::optional<EventParameter> other;
  if (!isOfType(*known, wanted)) {
    other = converted(*known, wanted);
    if (!other) return kCoercionFailed;
  }
  const EventParameter& parameter = other ? *other : *known;
  const auto bytes = parameter.bytes.view();
  if (type != nullptr) *type = parameter.type;
  if (size != nullptr) *size = bytes.size();
  std::copy_n(bytes.begin(), std::min(bytes.size(), buffer.size()), buffer.begin());
  return noErr;
}

EventQueueRef EventManager::mainQueue() { return reinterpret_cast<EventQueueRef>(&queue_); }

OSStatus EventManager::post(EventQueueRef queue, EventRef ref, EventPriority priority) {
  const bool known =
      queue == mainQueue() && kEventPriorityLow <= priority && priority <= kEventPriorityHigh;
  PostedText posted;
  {
    const std::lock_guard lock(mutex_);
    Event* event = find(ref, "PostEventToQueue");
    if (event == nullptr || !known) return paramErr;
    if (event->queued) return eventAlreadyPostedErr;
    event->queued = true;
    event->posted = true;
    ++event->references;
    if (theLog().enabled()) posted = textOf(*event);
  }
  // Without the lock: what writes the log may call the event manager.
  if (theLog().enabled()) {
    theLog().write("posted", {{"class", posted.eventClass},
                              {"kind", posted.kind},
                              {"priority", priority},
                              {"parameters", posted.parameters}});
  }
  const std::lock_guard lock(mutex_);
  queue_[static_cast<std::size_t>(priority)].push_back(ref);
  return noErr;
}

EventTargetRef EventManager::dispatcher() { return reinterpret_cast<EventTargetRef>(&handlers_); }

OSStatus EventManager::install(EventTargetRef target, EventHandlerUPP handler,
                               std::span<const EventTypeSpec> types, void* userData,
                               EventHandlerRef* ref) {
  if (ref != nullptr) *ref = nullptr;
  if (target != dispatcher() || handler == nullptr) return paramErr;
  {
    const std::lock_guard lock(mutex_);
    if (isInstalledForAny(handler, types)) return eventHandlerAlreadyInstalledErr;
    // Numbers are never reused, so the reference of a removed handler stays invalid.
    const auto made = reinterpret_cast<EventHandlerRef>(++lastHandler_);
    handlers_.push_back({{made, handler, userData}, {types.begin(), types.end()}});
    if (ref != nullptr) *ref = made;
  }
  if (theLog().enabled()) {
    theLog().write("handler", {{"do", "install"}, {"types", typesAsJson(types)}});
  }
  return noErr;
}

OSStatus EventManager::remove(EventHandlerRef ref) {
  InstalledHandler removed;
  {
    const std::lock_guard lock(mutex_);
    const auto known = std::find_if(handlers_.begin(), handlers_.end(),
                                    [&](const InstalledHandler& h) { return h.ref == ref; });
    if (known == handlers_.end()) return kEventInternalErr;
    removed = std::move(*known);
    handlers_.erase(known);
  }
  if (theLog().enabled()) {
    theLog().write("handler", {{"do", "remove"}, {"types", typesAsJson(removed.types)}});
  }
  return noErr;
}

OSStatus EventManager::callNext(EventHandlerCallRef ref, EventRef event) {
  Call* call = calls_.find(ref);
  if (call != nullptr) return callFrom(*call, event);
  theLog().misuse("CallNextEventHandler: called outside of the handler that was given the call");
  return paramErr;
}

/// Calls the handlers in order until one handles the event. A handler that called
/// CallNextEventHandler has already advanced `next`, so no handler runs twice.
OSStatus EventManager::callFrom(Call& call, EventRef event) {
  OSStatus status = eventNotHandledErr;
  while (status == eventNotHandledErr && call.next < call.handlers.size()) {
    const Handler& handler = call.handlers[call.next++];
    if (!isInstalled(handler.ref)) continue;
    status = handler.function(call.ref, event, handler.userData);
  }
  if (status == eventNotHandledErr) call.reachedHost = true;
  return status;
}

Dispatched EventManager::dispatch(EventRef event) {
  const void* handle = calls_.insert({handlersFor(classOf(event), kindOf(event))});
  Call& call = *calls_.find(handle);
  call.ref = static_cast<EventHandlerCallRef>(const_cast<void*>(handle));
  const Dispatched dispatched = {.status = callFrom(call, event), .reachedHost = call.reachedHost};
  calls_.erase(handle);
  if (dispatched.reachedHost) application_(event);
  return dispatched;
}

bool EventManager::dispatchNext() {
  const EventRef event = takeNext();
  if (event == nullptr) return false;
  dispatch(event);
  release(event);
  return true;
}

void EventManager::setApplication(std::function<void(EventRef)> application) {
  application_ = std::move(application);
}

void EventManager::setObserver(std::function<void(const EventContent&)> observer) {
  const std::lock_guard lock(mutex_);
  observer_ = std::move(observer);
}

std::size_t EventManager::queued() {
  const std::lock_guard lock(mutex_);
  return queue_[0].size() + queue_[1].size() + queue_[2].size();
}

std::size_t EventManager::installed() {
  const std::lock_guard lock(mutex_);
  return handlers_.size();
}

std::size_t EventManager::live() {
  const std::lock_guard lock(mutex_);
  return events_.live();
}

void EventManager::reportLeaks() {
  const std::lock_guard lock(mutex_);
  events_.forEach([](const Event& event) {
    theLog().misuse(fmt::format("an event of class '{}', kind {}, was leaked",
                                idText(event.eventClass), event.kind));
  });
}

EventManager::Event* EventManager::find(EventRef ref, const char* procedure) {
  Event* event = events_.find(ref);
  if (event == nullptr) {
    theLog().misuse(fmt::format("{}: {} is no event, or was released", procedure,
                                static_cast<const void*>(ref)));
  }
  return event;
}

std::vector<EventManager::Handler> EventManager::handlersFor(OSType eventClass, UInt32 kind) {
  const auto listens = [&](const InstalledHandler& handler) {
    return std::any_of(handler.types.begin(), handler.types.end(),
                       [&](const EventTypeSpec& type) { return isSame(type, {eventClass, kind}); });
  };
  std::vector<Handler> found;
  const std::lock_guard lock(mutex_);
  std::copy_if(handlers_.rbegin(), handlers_.rend(), std::back_inserter(found), listens);
  return found;
}

bool EventManager::isInstalled(EventHandlerRef ref) {
  const std::lock_guard lock(mutex_);
  return std::any_of(handlers_.begin(), handlers_.end(),
                     [&](const InstalledHandler& handler) { return handler.ref == ref; });
}

bool EventManager::isInstalledForAny(EventHandlerUPP function,
                                     std::span<const EventTypeSpec> types) const {
  return std::any_of(handlers_.begin(), handlers_.end(), [&](const InstalledHandler& handler) {
    return handler.function == function &&
           std::find_first_of(types.begin(), types.end(), handler.types.begin(),
                              handler.types.end(), isSame) != types.end();
  });
}

EventRef EventManager::takeNext() {
  const std::lock_guard lock(mutex_);
  const auto waiting = std::find_if(queue_.rbegin(), queue_.rend(),
                                    [](const auto& events) { return !events.empty(); });
  if (waiting == queue_.rend()) return nullptr;
  const EventRef event = waiting->front();
  waiting->pop_front();
  events_.find(event)->queued = false;
  return event;
}

EventManager& theEventManager() {
  static EventManager& manager = *new EventManager;
  return manager;
}

}  // namespace simulator
