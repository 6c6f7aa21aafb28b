// The state of the host's user interface that the plug-in tracks. [main-thread]
#pragma once

#include <objc/objc.h>

/// The process's one record of the host's mouse button, tool bar and shortcut for this plug-in.
class PsUIBoss {
 public:
  /// Returns the one record, created by the first call, which reads the shortcut. Throws what
  /// `getPluginShortcutKey` throws; the next call then tries again.
  static PsUIBoss& Instance();

  /// REQUIRES: the object's storage is zeroed; the shortcut and the window are not initialised.
  PsUIBoss();
  ~PsUIBoss() = default;
  PsUIBoss(const PsUIBoss&) = delete;
  PsUIBoss& operator=(const PsUIBoss&) = delete;

  /// Reads this plug-in's shortcut from the host's keyboard-shortcuts file. Leaves it unchanged if
  /// there is no file or the file has no shortcut for this plug-in. Throws what `PSMajorVersion`
  /// (HostVersion.h) throws.
  void getPluginShortcutKey();

  void SetMouseDown(bool down) { m_mouseDown = down; }
  bool MouseIsDown() const { return m_mouseDown; }

  /// Returns the window that takes the place of the tool bar (HostWindow.h), queried at each call.
  /// The caller gets no reference.
  id getToolbarWindow();

  /// Returns whether the tool bar is waiting to be redrawn.
  bool IsToolbarDirty();

  /// Marks the part of the tool bar that shows the brush for redrawing. Returns 0.
  int RedrawToolbar();

  /// Placeholder for playing the shortcut: does nothing.
  void PlayMrvPhotoshopPlugin();

  /// The virtual key codes of the shortcut's modifier keys, merged by OR; 0 if there are none.
  unsigned char ShortcutModifier() const { return m_shortcutModifier; }

  /// The shortcut's key character; 0 if there is none.
  char ShortcutKey() const { return m_shortcutKey; }

 private:
  id toolbar();

  bool m_mouseDown;
  unsigned char m_shortcutModifier;
  char m_shortcutKey;
  /// Cached at the first use and retained for the life of the process: the host may close the
  /// window, and a message to a freed one would crash.
  id m_toolbarWindow;
};
