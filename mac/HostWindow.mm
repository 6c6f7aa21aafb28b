#include "mac/HostWindow.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>

#include <cmath>

#include "mac/InputWatch.h"

@interface MrvHostView : NSView
@property(nonatomic) double redrawDelay;
@property(nonatomic, readonly) std::uint64_t redraws;
@property(nonatomic, readonly) const std::vector<mrvmac::Input>& inputs;
@end

@implementation MrvHostView {
  std::vector<mrvmac::Input> _inputs;
}

- (const std::vector<mrvmac::Input>&)inputs {
  return _inputs;
}

- (BOOL)acceptsFirstResponder {
  return YES;
}

- (void)drawRect:(NSRect)area {
  ++_redraws;
  [NSColor.windowBackgroundColor setFill];
  NSRectFill(area);
}

- (void)redrawLater {
  const auto delay = static_cast<std::int64_t>(self.redrawDelay * NSEC_PER_MSEC);
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, delay), dispatch_get_main_queue(), ^{
    [self setNeedsDisplay:YES];
  });
}

- (void)scrollWheel:(NSEvent*)event {
  if (event.CGEvent != nullptr) _inputs.push_back(mrvmac::wheelInput(event.CGEvent));
  [self redrawLater];
}

- (void)addKey:(NSEvent*)event down:(bool)down {
  mrvmac::Input input;
  input.kind = mrvmac::InputKind::kTypedKey;
  input.key = event.keyCode;
  input.down = down;
  _inputs.push_back(input);
  [self redrawLater];
}

- (void)keyDown:(NSEvent*)event {
  [self addKey:event down:true];
}

- (void)keyUp:(NSEvent*)event {
  [self addKey:event down:false];
}
@end

namespace mrvmac {

namespace {

constexpr NSSize kContentSize = {800, 600};
constexpr double kStripHeight = 20;
constexpr double kSettleSeconds = 0.5;

/// The screen whose lower left corner is the origin of window coordinates.
double screenHeight() { return NSScreen.screens.firstObject.frame.size.height; }

/// Between two places on the screen that are meant to be the same.
bool isNear(double one, double other) { return std::fabs(one - other) < 1.5; }

struct Refreshes {
  std::uint64_t count = 0;
  std::vector<CGRect> rects;
};

void countRefresh(std::uint32_t count, const CGRect* rects, void* refreshes) {
  auto& seen = *static_cast<Refreshes*>(refreshes);
  ++seen.count;
  seen.rects.insert(seen.rects.end(), rects, rects + count);
}

}  // namespace

struct HostWindow::Parts {
  NSWindow* window;
  MrvHostView* view;
  Refreshes refreshes;

  /// The content on the screen, counted from its bottom.
  NSRect content() const { return [window convertRectToScreen:view.frame]; }

  /// Which way the rectangle of a redrawn strip at the content's upper edge counts; nullopt if no
  /// rectangle is that small.
  std::optional<bool> countsDownward() const {
    const NSRect place = content();
    for (const CGRect& rect : refreshes.rects) {
      const bool isStrip = rect.size.height < place.size.height / 2 && rect.size.height > 0 &&
                           CGRectGetMinX(rect) < NSMaxX(place) &&
                           NSMinX(place) < CGRectGetMaxX(rect);
      const double top = screenHeight() - NSMaxY(place);
      if (isStrip && std::fabs(CGRectGetMinY(rect) - top) < kStripHeight) return true;
      if (isStrip && std::fabs(CGRectGetMaxY(rect) - NSMaxY(place)) < kStripHeight) return false;
    }
    return std::nullopt;
  }
};

HostWindow::HostWindow(double redrawDelay) : parts_(std::make_unique<Parts>()) {
  [NSApplication sharedApplication];
  [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
  [NSApp finishLaunching];
  const NSRect screen = NSScreen.screens.firstObject.frame;
  const NSRect content = {{screen.size.width / 2 - kContentSize.width / 2,
                           screen.size.height / 2 - kContentSize.height / 2},
                          kContentSize};
  parts_->window = [[NSWindow alloc] initWithContentRect:content
                                               styleMask:NSWindowStyleMaskTitled
                                                 backing:NSBackingStoreBuffered
                                                   defer:NO];
  parts_->window.releasedWhenClosed = NO;
  parts_->window.title = @"mrvmac: please do not touch mouse or keyboard";
  parts_->view =
      [[MrvHostView alloc] initWithFrame:NSMakeRect(0, 0, content.size.width, content.size.height)];
  parts_->view.redrawDelay = redrawDelay;
  parts_->window.contentView = parts_->view;
  [parts_->window makeFirstResponder:parts_->view];
  [parts_->window makeKeyAndOrderFront:nil];
  [NSApp activateIgnoringOtherApps:YES];
  CGRegisterScreenRefreshCallback(countRefresh, &parts_->refreshes);
}

HostWindow::~HostWindow() {
  CGUnregisterScreenRefreshCallback(countRefresh, &parts_->refreshes);
  [parts_->window close];
}

void HostWindow::handleEvents(double seconds) {
  NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:seconds];
  while (true) {
    @autoreleasepool {
      NSEvent* const event = [NSApp nextEventMatchingMask:NSEventMaskAny
                                                untilDate:end
                                                   inMode:NSDefaultRunLoopMode
                                                  dequeue:YES];
      if (event != nil) [NSApp sendEvent:event];
      [NSApp updateWindows];
    }
    if (end.timeIntervalSinceNow <= 0) return;
  }
}

void HostWindow::probe(Observations& seen) {
  NSWindow* const window = parts_->window;
  seen.windowIsMain = NSApp.mainWindow == window;
  const NSRect believed = [window contentRectForFrameRect:window.frame];
  seen.contentRectFits = NSEqualRects(believed, parts_->content());

  [parts_->view setNeedsDisplay:YES];
  seen.pendingAfterMarking = window.viewsNeedDisplay;
  [window displayIfNeeded];
  seen.pendingAfterDrawing = window.viewsNeedDisplay;

  const CGEventRef here = CGEventCreate(nullptr);
  if (here != nullptr) {
    const double fromBottom = NSEvent.mouseLocation.y;
    const double fromTop = CGEventGetLocation(here).y;
    CFRelease(here);
    // In the middle of the screen both are the same.
    if (!isNear(fromTop, screenHeight() / 2)) {
      seen.mouseCountsUpward = isNear(fromBottom, screenHeight() - fromTop);
    }
  }

  handleEvents(kSettleSeconds);
  parts_->refreshes.rects.clear();
  [parts_->view setNeedsDisplayInRect:NSMakeRect(0, kContentSize.height - kStripHeight,
                                                 kContentSize.width, kStripHeight)];
  handleEvents(kSettleSeconds);
  seen.refreshRectsCountDownward = parts_->countsDownward();
}

void HostWindow::report(Observations& seen) const {
  seen.inWindow = parts_->view.inputs;
  seen.redraws = parts_->view.redraws;
  seen.refreshes = parts_->refreshes.count;
}

bool HostWindow::contains(double x, double y) const {
  return NSPointInRect(NSMakePoint(x, screenHeight() - y), NSInsetRect(parts_->content(), -1, -1));
}

}  // namespace mrvmac
