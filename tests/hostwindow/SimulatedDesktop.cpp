// The simulated Mac as a desktop.
#include "tests/hostwindow/Desktop.h"
#include "tests/support/Machine.h"

namespace testing_support {

namespace {

using namespace simulator;

constexpr double kTitleBarHeight = 22;

class SimulatedDesktop : public Desktop {
 public:
  SimulatedDesktop() { server_.closeWindow(); }

  double screenHeight() override { return server_.screen.size.height; }

  id openWindow(const CGRect& content) override {
    server_.openWindow();
    server_.window().content = content;
    server_.window().frame = {content.origin,
                              {content.size.width, content.size.height + kTitleBarHeight}};
    return server_.windowObject();
  }

  void hideWindow() override { server_.window().isMain = false; }
  void showWindow() override { server_.window().isMain = true; }
  void closeWindow() override { server_.closeWindow(); }

  CGRect frame() override { return server_.window().frame; }
  CGRect content() override { return server_.window().content; }
  long references(id) override { return server_.window().references; }

  void turnLoop() override { runMainLoopUntilIdle(); }
  bool turnDraws() override { return false; }

  void moveMouse(int x, int y) override {
    server_.mouse = {static_cast<double>(x), screenHeight() - y};
  }

 private:
  Machine machine_;
  WindowServer& server_ = theWindowServer();
};

}  // namespace

std::unique_ptr<Desktop> openDesktop() { return std::make_unique<SimulatedDesktop>(); }

}  // namespace testing_support
