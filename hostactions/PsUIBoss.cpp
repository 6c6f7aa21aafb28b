#include "hostactions/PsUIBoss.h"

#include "hostactions/ShortcutFile.h"
#include "hostwindow/HostWindow.h"
#include "hostwindow/ObjcMessage.h"

namespace {

constexpr UInt32 kToolbarWindowID = 33;

/// The part of the tool bar that shows the brush, in window coordinates.
constexpr Rect kBrushArea = {.top = 0, .left = 70, .bottom = 31, .right = 150};

}  // namespace

PsUIBoss& PsUIBoss::Instance() {
  static PsUIBoss boss;
  return boss;
}

PsUIBoss::PsUIBoss() {
  m_mouseDown = false;
  getPluginShortcutKey();
}

void PsUIBoss::getPluginShortcutKey() {
  Shortcut shortcut;
  if (!readPluginShortcut(shortcut)) return;
  m_shortcutModifier = shortcut.modifier;
  m_shortcutKey = shortcut.key;
}

id PsUIBoss::getToolbarWindow() { return mrvGetToolbarWindow(kToolbarWindowID); }

bool PsUIBoss::IsToolbarDirty() { return mrvIsWindowUpdatePending(toolbar()); }

int PsUIBoss::RedrawToolbar() {
  static const SEL retain = sel_registerName("retain");
  const id window = toolbar();
  // mrvInvalWindowRect releases one reference.
  sendMessage<id>(window, retain);
  return mrvInvalWindowRect(window, &kBrushArea);
}

void PsUIBoss::PlayMrvPhotoshopPlugin() {}

id PsUIBoss::toolbar() {
  if (m_toolbarWindow == nullptr) m_toolbarWindow = mrvGetToolbarWindow(kToolbarWindowID);
  return m_toolbarWindow;
}
