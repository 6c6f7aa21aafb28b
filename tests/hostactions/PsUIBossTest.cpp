#include <gtest/gtest.h>

#include <fstream>
#include <type_traits>

#include "hostactions/PsUIBoss.h"
#include "suites/Suites.h"
#include "tests/hostactions/RecordingHost.h"

using namespace simulator;
using namespace testing_support;

namespace {

static_assert(!std::is_polymorphic_v<PsUIBoss>);

class PsUIBossRecord : public testing::Test {
 protected:
  /// Writes a shortcuts file with Option and `key` as the plug-in's shortcut.
  void writeShortcut(char key) {
    const auto folder = machine_.preferences() / settingsFolderOf(12, 1);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "Keyboard Shortcuts.psp", std::ios::binary)
        << shortcutsFile({{.plugIn = "MrvPhotoshop", .option = true, .key = key}}, 0);
  }

  std::size_t versionQuestions() const { return machine_.lines("get").size(); }

  Machine machine_;
};

}  // namespace

TEST_F(PsUIBossRecord, IsOneObject) {
  EXPECT_EQ(&PsUIBoss::Instance(), &PsUIBoss::Instance());
  EXPECT_EQ(versionQuestions(), 1U);
}

TEST_F(PsUIBossRecord, ReportsTheMouseUpUntilItIsSetDown) {
  PsUIBoss& boss = PsUIBoss::Instance();
  EXPECT_FALSE(boss.MouseIsDown());
  boss.SetMouseDown(true);
  EXPECT_TRUE(boss.MouseIsDown());
  boss.SetMouseDown(false);
  EXPECT_FALSE(boss.MouseIsDown());
}

TEST_F(PsUIBossRecord, ReadsTheShortcutOnlyAtTheFirstUse) {
  writeShortcut('k');
  EXPECT_EQ(PsUIBoss::Instance().ShortcutKey(), 'k');
  EXPECT_EQ(PsUIBoss::Instance().ShortcutModifier(), 58);
  writeShortcut('m');
  EXPECT_EQ(PsUIBoss::Instance().ShortcutKey(), 'k');
  PsUIBoss::Instance().getPluginShortcutKey();
  EXPECT_EQ(PsUIBoss::Instance().ShortcutKey(), 'm');
}

TEST_F(PsUIBossRecord, HasShortcut0WithoutASettingsFolder) {
  EXPECT_EQ(PsUIBoss::Instance().ShortcutKey(), 0);
  EXPECT_EQ(PsUIBoss::Instance().ShortcutModifier(), 0);
}

TEST_F(PsUIBossRecord, KeepsTheShortcutIfTheFileIsGone) {
  writeShortcut('k');
  PsUIBoss& boss = PsUIBoss::Instance();
  std::filesystem::remove_all(machine_.preferences());
  boss.getPluginShortcutKey();
  EXPECT_EQ(boss.ShortcutKey(), 'k');
  EXPECT_EQ(boss.ShortcutModifier(), 58);
}

TEST_F(PsUIBossRecord, IsConstructedByTheNextCallAfterAnException) {
  writeShortcut('k');
  theFaults().add({"Basic.AcquireSuite", 42, 0, 2});
  for (int i = 0; i < 2; ++i) {
    const Outcome outcome = attempt([] { return PsUIBoss::Instance().ShortcutKey(); });
    EXPECT_TRUE(outcome.threw);
    EXPECT_EQ(outcome.thrown, 42U);
  }
  EXPECT_EQ(PsUIBoss::Instance().ShortcutKey(), 'k');
}

TEST_F(PsUIBossRecord, ReportsTheToolBarDirtyWhileTheContentViewNeedsDisplay) {
  PsUIBoss& boss = PsUIBoss::Instance();
  EXPECT_FALSE(boss.IsToolbarDirty());
  theWindowServer().window().viewsNeedDisplay = true;
  EXPECT_FALSE(boss.IsToolbarDirty()) << "other views are of no account";
  theWindowServer().window().contentNeedsDisplay = true;
  EXPECT_TRUE(boss.IsToolbarDirty());
}

TEST_F(PsUIBossRecord, CachesTheToolBarWindowAtTheFirstUse) {
  PsUIBoss& boss = PsUIBoss::Instance();
  WindowState& window = theWindowServer().window();
  window.contentNeedsDisplay = true;
  window.isMain = false;
  EXPECT_FALSE(boss.IsToolbarDirty()) << "there is none yet";
  window.isMain = true;
  EXPECT_TRUE(boss.IsToolbarDirty());
  window.isMain = false;
  EXPECT_TRUE(boss.IsToolbarDirty()) << "the one of before";
}

TEST_F(PsUIBossRecord, QueriesTheToolBarWindowAtEachGet) {
  PsUIBoss& boss = PsUIBoss::Instance();
  EXPECT_EQ(boss.getToolbarWindow(), theWindowServer().windowObject());
  theWindowServer().window().isMain = false;
  EXPECT_EQ(boss.getToolbarWindow(), nullptr);
  EXPECT_FALSE(boss.IsToolbarDirty());
}

TEST_F(PsUIBossRecord, MarksTheBrushAreaAndKeepsTheWindowsReferences) {
  PsUIBoss& boss = PsUIBoss::Instance();
  for (int i = 0; i < 3; ++i) EXPECT_EQ(boss.RedrawToolbar(), 0);
  WindowServer& server = theWindowServer();
  ASSERT_EQ(server.invalidated.size(), 3U);
  const CGRect& area = server.invalidated.front();
  EXPECT_EQ(area.origin.x, 70);
  EXPECT_EQ(area.origin.y, 0);
  EXPECT_EQ(area.size.width, 80);
  EXPECT_EQ(area.size.height, 31);
  EXPECT_EQ(server.window().references, 2) << "the host's and the one kept";
  EXPECT_TRUE(boss.IsToolbarDirty());
}

TEST_F(PsUIBossRecord, RetainsTheWindowOnceWhenItIsFirstKept) {
  PsUIBoss& boss = PsUIBoss::Instance();
  const WindowState& window = theWindowServer().window();
  boss.getToolbarWindow();
  EXPECT_EQ(window.references, 1) << "nothing is kept yet";
  for (int i = 0; i < 3; ++i) {
    boss.IsToolbarDirty();
    EXPECT_EQ(window.references, 2);
  }
  boss.getToolbarWindow();
  EXPECT_EQ(window.references, 2);
}

TEST_F(PsUIBossRecord, RetainsTheWindowThatARedrawFetched) {
  PsUIBoss& boss = PsUIBoss::Instance();
  boss.RedrawToolbar();
  boss.IsToolbarDirty();
  EXPECT_EQ(theWindowServer().window().references, 2);
}

TEST_F(PsUIBossRecord, RetainsNothingBeforeThereIsAWindow) {
  WindowState& window = theWindowServer().window();
  window.isMain = false;
  PsUIBoss::Instance().IsToolbarDirty();
  EXPECT_EQ(window.references, 1);
}

TEST_F(PsUIBossRecord, KeepsAWindowThatTheHostCloses) {
  PsUIBoss& boss = PsUIBoss::Instance();
  boss.RedrawToolbar();
  WindowServer& server = theWindowServer();
  server.closeWindow();
  EXPECT_TRUE(boss.IsToolbarDirty());
  EXPECT_EQ(boss.RedrawToolbar(), 0);
  server.openWindow();
  EXPECT_TRUE(boss.IsToolbarDirty()) << "it is not the new window that is asked";
  EXPECT_EQ(boss.getToolbarWindow(), server.windowObject());
  EXPECT_EQ(server.window().references, 1);
}

TEST_F(PsUIBossRecord, KeepsTheWindowThatARedrawFetched) {
  PsUIBoss& boss = PsUIBoss::Instance();
  boss.RedrawToolbar();
  theWindowServer().window().isMain = false;
  boss.RedrawToolbar();
  EXPECT_EQ(theWindowServer().invalidated.size(), 2U);
}

TEST_F(PsUIBossRecord, RedrawsNothingWithoutAWindow) {
  theWindowServer().window().isMain = false;
  EXPECT_EQ(PsUIBoss::Instance().RedrawToolbar(), 0);
  EXPECT_TRUE(theWindowServer().invalidated.empty());
}

TEST_F(PsUIBossRecord, DoesNothingWhenPlayingTheShortcut) {
  PsUIBoss& boss = PsUIBoss::Instance();
  machine_.drain();
  boss.PlayMrvPhotoshopPlugin();
  EXPECT_TRUE(machine_.drain().empty());
}
