#include "hostactions/PsUIBoss.h"

#include "hostactions/ShortcutFile.h"
#include "hostwindow/HostWindow.h"
#include "hostwindow/ObjcMessage.h"

namespace {

constexpr UInt32 kToolbarWindowID = 33;

/// The part of the tool bar that shows the brush, in window coordinates.
constexpr Rect kBrushArea = {.top = 0, .left = 70, .bottom = 31, .right = 150};

id retained(id object) {
  static const SEL retain = sel_registerName("retain");
  return sendMessage<id>(object, retain);
}

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
  // mrvInvalWindowRect releases one reference.
  return mrvInvalWindowRect(retained(toolbar()), &kBrushArea);
}

void PsUIBoss::PlayMrvPhotoshopPlugin() {}

id PsUIBoss::toolbar() {
  if (m_toolbarWindow == nullptr) m_toolbarWindow = retained(getToolbarWindow());
  return m_toolbarWindow;
}
