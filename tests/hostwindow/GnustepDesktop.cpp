// GNUstep as a desktop. The program does not link the simulated Mac; the names that both define are
// GNUstep's here.
#include <string>

#include "hostwindow/ObjcMessage.h"
#include "tests/hostwindow/Desktop.h"
#include "tests/support/Process.h"

extern "C" {

// The GNU runtime's functions that the platform's does not have, or not by this name.
struct objc_method;
void* objc_msg_lookup(id receiver, SEL selector);
objc_method* class_getClassMethod(Class type, SEL selector);
void* method_setImplementation(objc_method* method, void* implementation);

/// Serves the trampolines of simulator/macos/MessageSend.cpp: the GNU runtime has no
/// `objc_msgSend`.
void* simulatorFindMethod(id receiver, SEL selector) { return objc_msg_lookup(receiver, selector); }
}

namespace testing_support {

namespace {

constexpr unsigned long kTitledClosableResizable = 1 | 2 | 8;
constexpr unsigned long kBuffered = 2;
constexpr unsigned long kAnyEvent = 0xFFFFFFFF;

template <class Result = id, class... Arguments>
Result send(id receiver, const char* selector, Arguments... arguments) {
  return sendMessage<Result>(receiver, sel_registerName(selector), arguments...);
}

id classNamed(const char* name) { return reinterpret_cast<id>(objc_getClass(name)); }

id makeObject(const char* className) { return send(send(classNamed(className), "alloc"), "init"); }

id text(const char* utf8) { return send(classNamed("NSString"), "stringWithUTF8String:", utf8); }

id nothing(id, SEL) { return nullptr; }

class GnustepDesktop : public Desktop {
 public:
  GnustepDesktop() {
    // GNUstep draws the title bars itself, as there is no window manager.
    const id defaults = send(classNamed("NSDictionary"), "dictionaryWithObject:forKey:", text("NO"),
                             text("GSX11HandlesWindowDecorations"));
    send<void>(send(classNamed("NSUserDefaults"), "standardUserDefaults"),
               "registerDefaults:", defaults);
    // The workspace would start a daemon that outlives the test.
    objc_method* workspace =
        class_getClassMethod(objc_getClass("NSWorkspace"), sel_registerName("sharedWorkspace"));
    method_setImplementation(workspace, reinterpret_cast<void*>(&nothing));
    application_ = send(classNamed("NSApplication"), "sharedApplication");
    send<void>(application_, "finishLaunching");
    turnLoop();
  }

  ~GnustepDesktop() override { send<void>(pool_, "release"); }

  double screenHeight() override {
    return send<CGRect>(send(classNamed("NSScreen"), "mainScreen"), "frame").size.height;
  }

  id openWindow(const CGRect& content) override {
    window_ = send(send(classNamed("NSWindow"), "alloc"),
                   "initWithContentRect:styleMask:backing:defer:", content,
                   kTitledClosableResizable, kBuffered, BOOL{0});
    showWindow();
    return window_;
  }

  void hideWindow() override {
    send<void>(window_, "orderOut:", id{});
    turnLoop();
  }

  void showWindow() override {
    send<void>(window_, "makeKeyAndOrderFront:", id{});
    turnLoop();
  }

  void closeWindow() override {
    send<void>(window_, "close");
    turnLoop();
  }

  CGRect frame() override { return send<CGRect>(window_, "frame"); }

  /// Asks the content view, not the window.
  CGRect content() override {
    const CGRect frame = send<CGRect>(send(window_, "contentView"), "frame");
    return {send<CGPoint>(window_, "convertBaseToScreen:", frame.origin), frame.size};
  }

  long references(id window) override {
    return static_cast<long>(send<unsigned long>(window, "retainCount"));
  }

  /// Handles the events that the X server has sent up to now, and those that follow from them.
  void turnLoop() override {
    for (int round = 0; round < 2; ++round) {
      // The answer of the X server arrives after all events before it.
      send<CGPoint>(classNamed("NSEvent"), "mouseLocation");
      while (const id event = nextEvent()) send<void>(application_, "sendEvent:", event);
    }
    send<void>(pool_, "release");
    pool_ = makeObject("NSAutoreleasePool");
  }

  bool turnDraws() override { return true; }

  void moveMouse(int x, int y) override {
    run({MRV_XDOTOOL, "mousemove", std::to_string(x), std::to_string(y)});
  }

 private:
  id nextEvent() {
    return send(application_, "nextEventMatchingMask:untilDate:inMode:dequeue:", kAnyEvent,
                send(classNamed("NSDate"), "distantPast"), text("NSDefaultRunLoopMode"), BOOL{1});
  }

  id pool_ = makeObject("NSAutoreleasePool");
  id application_ = nullptr;
  id window_ = nullptr;
};

}  // namespace

std::unique_ptr<Desktop> openDesktop() { return std::make_unique<GnustepDesktop>(); }

}  // namespace testing_support
