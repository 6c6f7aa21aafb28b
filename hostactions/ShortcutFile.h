// The shortcut that the user gave this plug-in, from the host's keyboard-shortcuts file.
#pragma once

struct Shortcut {
  unsigned char modifier = 0;  ///< virtual key codes of the modifier keys, merged by OR
  char key = 0;                ///< the key's character, 0 for none
};

/// Looks for the shortcuts file of the running host's version under each of its names and reads
/// the first that opens. False, with `shortcut` left alone, where there is no file or this plug-in
/// has no record in it. Throws what the version query throws. [main-thread]
bool readPluginShortcut(Shortcut& shortcut);
