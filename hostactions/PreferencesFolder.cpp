#include "hostactions/PreferencesFolder.h"

#include <CoreServices/CoreServices.h>

#include "hostutil/CFObject.h"

void copyPreferencesFolderPath(char* path, CFIndex size) {
  path[0] = '\0';
  FSRef folder = {};
  FSFindFolder(kUserDomain, kPreferencesFolderType, kCreateFolder, &folder);
  const CFObject<CFURLRef> url(CFURLCreateFromFSRef(kCFAllocatorDefault, &folder));
  if (!url) return;
  const CFObject<CFStringRef> text(CFURLCopyFileSystemPath(url.get(), kCFURLPOSIXPathStyle));
  if (!text) return;
  if (!CFStringGetCString(text.get(), path, size, kCFStringEncodingMacRoman)) path[0] = '\0';
}
