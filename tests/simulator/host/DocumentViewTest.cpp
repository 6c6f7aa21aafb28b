#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "simulator/host/DocumentView.h"
#include "tests/support/Machine.h"

namespace {

using namespace simulator;

class DocumentViewRedraw : public testing::Test {
 protected:
  DocumentViewRedraw() { CGRegisterScreenRefreshCallback(keep, &reported_); }
  ~DocumentViewRedraw() override { CGUnregisterScreenRefreshCallback(keep, &reported_); }

  static void keep(std::uint32_t count, const CGRect* rects, void* reported) {
    static_cast<std::vector<CGRect>*>(reported)->assign(rects, rects + count);
  }

  /// Redraws a window with this content and returns the one rectangle that was reported.
  CGRect redraw(const CGRect& content) {
    server_.window().content = content;
    theDocumentView().redraw();
    EXPECT_EQ(reported_.size(), 1U);
    return reported_.empty() ? CGRect{} : reported_[0];
  }

  testing_support::Machine machine_;
  WindowServer& server_ = theWindowServer();
  std::vector<CGRect> reported_;
};

TEST_F(DocumentViewRedraw, IsReportedWithYDownwardFromTheTopOfTheScreen) {
  const CGRect upper = redraw({{100.5, 700}, {800, 150.25}});
  EXPECT_EQ(upper.origin.x, 100.5);
  EXPECT_EQ(upper.origin.y, 49.75);
  EXPECT_EQ(upper.size.width, 800);
  EXPECT_EQ(upper.size.height, 150.25);
  server_.screen.size.height = 1000;
  EXPECT_EQ(redraw({{0, 0}, {10, 300}}).origin.y, 700);
  EXPECT_EQ(redraw({{0, 900}, {10, 300}}).origin.y, -200);
}

TEST_F(DocumentViewRedraw, EndsThePendingUpdateOfTheWindowButNotOfItsContentView) {
  server_.window().viewsNeedDisplay = true;
  server_.window().contentNeedsDisplay = true;
  redraw({{0, 0}, {10, 10}});
  EXPECT_FALSE(server_.window().viewsNeedDisplay);
  EXPECT_TRUE(server_.window().contentNeedsDisplay);
}

}  // namespace
