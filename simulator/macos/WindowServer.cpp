#include "simulator/macos/WindowServer.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "simulator/macos/MacFaults.h"

namespace simulator {

namespace {

bool isSame(const CGRect& a, const CGRect& b) {
  return a.origin.x == b.origin.x && a.origin.y == b.origin.y && a.size.width == b.size.width &&
         a.size.height == b.size.height;
}

/// The content rectangle that `window` would have if its frame were `frame`.
CGRect contentRectFor(const WindowState& window, const CGRect& frame) {
  const CGRect& own = window.frame;
  const CGRect& content = window.content;
  // Exact for the window's own frame; the sums below could round.
  if (isSame(frame, own)) return content;
  return {{frame.origin.x + (content.origin.x - own.origin.x),
           frame.origin.y + (content.origin.y - own.origin.y)},
          {frame.size.width + (content.size.width - own.size.width),
           frame.size.height + (content.size.height - own.size.height)}};
}

}  // namespace

/// The methods of the objects; the first two arguments are the receiver and the selector.
struct AppKitMethods {
  static WindowServer::Window& windowOf(id part) {
    return *static_cast<WindowServer::WindowPart*>(part)->owner;
  }
  static WindowState& stateOf(id part) { return windowOf(part).state; }

  static id sharedApplication(id, SEL) { return &theWindowServer().application_; }

  static id mainWindow(id, SEL) {
    if (failureOf(MacCall::kMainWindow)) return nullptr;
    WindowServer& server = theWindowServer();
    return server.window().isMain ? server.windowObject() : nullptr;
  }

  static CGPoint mouseLocation(id, SEL) { return theWindowServer().mouse; }

  static BOOL viewsNeedDisplay(id self, SEL) { return stateOf(self).viewsNeedDisplay; }

  static void displayIfNeeded(id self, SEL) {
    ++theWindowServer().displaysForced;
    stateOf(self).viewsNeedDisplay = false;
    stateOf(self).contentNeedsDisplay = false;
  }

  static CGRect windowFrame(id self, SEL) { return stateOf(self).frame; }

  static CGRect contentRectForFrameRect(id self, SEL, CGRect frame) {
    return contentRectFor(stateOf(self), frame);
  }

  static id contentView(id self, SEL) {
    if (failureOf(MacCall::kContentView)) return nullptr;
    return &windowOf(self).view;
  }

  static id windowScreen(id, SEL) {
    if (failureOf(MacCall::kScreen)) return nullptr;
    WindowServer& server = theWindowServer();
    return server.windowHasScreen ? &server.screen_ : nullptr;
  }

  static id retain(id self, SEL) {
    ++stateOf(self).references;
    return self;
  }

  static void release(id self, SEL) {
    if (stateOf(self).isOpen && stateOf(self).references == 1) {
      theLog().misuse("the window was released more often than it was retained");
    }
    WindowServer::giveBack(windowOf(self));
  }

  static BOOL needsDisplay(id self, SEL) { return stateOf(self).contentNeedsDisplay; }

  static void setNeedsDisplayInRect(id self, SEL, CGRect rect) {
    stateOf(self).contentNeedsDisplay = true;
    stateOf(self).viewsNeedDisplay = true;
    theWindowServer().invalidated.push_back(rect);
  }

  static CGRect screenFrame(id, SEL) { return theWindowServer().screen; }
};

WindowServer::WindowServer()
    : windowClass_{nullptr, "NSWindow", {}},
      viewClass_{nullptr, "NSView", {}},
      screenClass_{nullptr, "NSScreen", {}},
      applicationMeta_{nullptr, "NSApplication class", {}},
      applicationClass_{&applicationMeta_, "NSApplication", {}},
      eventMeta_{nullptr, "NSEvent class", {}},
      eventClass_{&eventMeta_, "NSEvent", {}},
      application_{&applicationClass_},
      screen_{&screenClass_},
      deliver_([](const SynthesizedEvent&) {}) {
  addMethod(applicationMeta_, "sharedApplication", &AppKitMethods::sharedApplication);
  addMethod(applicationClass_, "mainWindow", &AppKitMethods::mainWindow);
  addMethod(eventMeta_, "mouseLocation", &AppKitMethods::mouseLocation);
  addMethod(windowClass_, "viewsNeedDisplay", &AppKitMethods::viewsNeedDisplay);
  addMethod(windowClass_, "displayIfNeeded", &AppKitMethods::displayIfNeeded);
  addMethod(windowClass_, "frame", &AppKitMethods::windowFrame);
  addMethod(windowClass_, "contentRectForFrameRect:", &AppKitMethods::contentRectForFrameRect);
  addMethod(windowClass_, "contentView", &AppKitMethods::contentView);
  addMethod(windowClass_, "screen", &AppKitMethods::windowScreen);
  addMethod(windowClass_, "retain", &AppKitMethods::retain);
  addMethod(windowClass_, "release", &AppKitMethods::release);
  addMethod(viewClass_, "needsDisplay", &AppKitMethods::needsDisplay);
  addMethod(viewClass_, "setNeedsDisplayInRect:", &AppKitMethods::setNeedsDisplayInRect);
  addMethod(screenClass_, "frame", &AppKitMethods::screenFrame);
  registerClass(applicationClass_);
  registerClass(eventClass_);
  openWindow();
}

void WindowServer::openWindow() {
  Window& window = windows_.emplace_back();
  window.object = {{&windowClass_}, &window};
  window.view = {{&viewClass_}, &window};
}

void WindowServer::closeWindow() {
  WindowState& state = window();
  if (!state.isOpen) return;
  state.isMain = false;
  state.isOpen = false;
  giveBack(windows_.back());
}

void WindowServer::giveBack(Window& window) {
  if (--window.state.references > 0) return;
  freeObject(window.object);
  freeObject(window.view);
}

void WindowServer::post(CGEventTapLocation tap, const SynthesizedEvent& event) {
  input_.push_back(event);
  if (!theLog().enabled()) return;
  if (const auto* key = std::get_if<KeyboardEvent>(&event.input)) {
    theLog().write("key",
                   {{"key", key->key}, {"down", key->down}, {"type", event.type}, {"tap", tap}});
  } else {
    const auto& wheel = std::get<WheelEvent>(event.input);
    theLog().write("wheel", {{"units", wheel.units},
                             {"wheels", jsonList(wheel.wheels)},
                             {"flags", event.flags},
                             {"location", jsonList(std::array{event.location.x, event.location.y})},
                             {"type", event.type},
                             {"tap", tap}});
  }
}

void WindowServer::deliverInput() {
  while (!input_.empty()) {
    const SynthesizedEvent event = input_.front();
    input_.pop_front();
    deliver_(event);
  }
}

void WindowServer::setApplication(std::function<void(const SynthesizedEvent&)> application) {
  deliver_ = std::move(application);
}

CGRect WindowServer::onDisplay(const CGRect& rect) const {
  const double top = screen.size.height - rect.origin.y - rect.size.height;
  return {{rect.origin.x, top}, rect.size};
}

void WindowServer::registerRefresh(CGScreenRefreshCallback callback, void* userInfo) {
  refreshCallbacks_.emplace_back(callback, userInfo);
  theLog().write("refreshCallback", {{"do", "register"}});
}

void WindowServer::unregisterRefresh(CGScreenRefreshCallback callback, void* userInfo) {
  std::erase(refreshCallbacks_, RefreshCallback{callback, userInfo});
  theLog().write("refreshCallback", {{"do", "unregister"}});
}

void WindowServer::refresh(const std::vector<CGRect>& rects) {
  const auto callbacks = refreshCallbacks_;
  for (const auto& [callback, userInfo] : callbacks) {
    callback(static_cast<std::uint32_t>(rects.size()), rects.data(), userInfo);
  }
}

void WindowServer::reportLeaks() {
  constexpr long kKept = 1;
  long leaked = -kKept;
  for (const Window& window : windows_) {
    leaked += window.state.references - (window.state.isOpen ? 1 : 0);
  }
  if (leaked > 0) {
    theLog().misuse(fmt::format("references to the window were leaked: {}", leaked));
  }
}

WindowServer& theWindowServer() {
  static WindowServer& server = *new WindowServer;
  return server;
}

}  // namespace simulator
