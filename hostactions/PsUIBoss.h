// What the plug-in knows of the host's user interface. [main-thread]
#pragma once

#include <objc/objc.h>

/// The process's one record of the host's mouse button, tool bar and shortcut for this plug-in.
class PsUIBoss {
 public:
  /// The one record, made on the first call; the shortcut is read only then. Throws what the
  /// version query throws; the next call then tries again.
  static PsUIBoss& Instance();

  /// REQUIRES: the object's storage is zero.
  PsUIBoss();
  ~PsUIBoss() = default;
  PsUIBoss(const PsUIBoss&) = delete;
  PsUIBoss& operator=(const PsUIBoss&) = delete;

  /// Reads this plug-in's shortcut from the host's keyboard-shortcuts file; left as it is where
  /// there is no file or no shortcut in it.
  void getPluginShortcutKey();

  void SetMouseDown(bool down) { m_mouseDown = down; }
  bool MouseIsDown() const { return m_mouseDown; }

  /// The host window that stands for the tool bar, asked afresh at each call.
  id getToolbarWindow();

  /// Whether the tool bar waits to be redrawn.
  bool IsToolbarDirty();

  /// Marks the part of the tool bar that shows the brush for redrawing. Returns 0.
  int RedrawToolbar();

  /// Does nothing: the place where the shortcut would be played.
  void PlayMrvPhotoshopPlugin();

  /// The virtual key codes of the shortcut's modifier keys, merged by OR; 0 where there is none.
  unsigned char ShortcutModifier() const { return m_shortcutModifier; }

  /// The shortcut's key character; 0 where there is none.
  char ShortcutKey() const { return m_shortcutKey; }

 private:
  id toolbar();

  bool m_mouseDown;
  unsigned char m_shortcutModifier;
  char m_shortcutKey;
  id m_toolbarWindow;  ///< fetched on first need and kept, without a reference of its own
};
