// The user's shortcut for this plug-in, from the host's keyboard-shortcuts file.
#pragma once

struct Shortcut {
  unsigned char modifier = 0;  ///< virtual key codes of the modifier keys, merged by OR; 0 for none
  char key = 0;                ///< the key's character, 0 for none
};

/// Reads the shortcut from the shortcuts file of the running host's version: the first of its
/// localised names that can be opened. Returns false and leaves `shortcut` unchanged if there is no
/// file or it has no record for this plug-in. Throws what `PSMajorVersion` (HostVersion.h) throws.
/// [main-thread]
bool readPluginShortcut(Shortcut& shortcut);
