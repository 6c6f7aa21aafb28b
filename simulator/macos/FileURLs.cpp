#include "simulator/macos/FileURLs.h"

#include <CoreServices/CoreServices.h>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <vector>

#include "simulator/base/Log.h"
#include "simulator/base/Text.h"
#include "simulator/macos/Folders.h"
#include "simulator/macos/MacFaults.h"

namespace simulator {

namespace {

/// Characters other than letters and digits that a URL's path contains unescaped.
constexpr std::string_view kPlain = "!$&'()*+,-./:=@_~";

bool isPlain(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         kPlain.find(c) != std::string_view::npos;
}

bool isRelative(const CFUrl& url) { return url.path.front() != '/'; }

std::string withoutSlash(std::string path) {
  if (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

/// A relative path of a folder loses a second slash if it contains an escaped character.
std::string relativePathOf(const CFUrl& url) {
  const bool escaped = !std::all_of(url.path.begin(), url.path.end(), isPlain);
  const std::string path = withoutSlash(url.path);
  return escaped && url.isDirectory ? withoutSlash(path) : path;
}

std::string ownPathOf(const CFUrl& url) {
  return isRelative(url) ? relativePathOf(url) : withoutSlash(url.path);
}

std::vector<std::string> componentsOf(std::string_view path) {
  std::vector<std::string> components(1);
  for (const char c : path) {
    if (c == '/') {
      components.emplace_back();
    } else {
      components.back() += c;
    }
  }
  return components;
}

/// Removes "." and, with the component before it, "..".
std::string resolved(std::string_view absolute) {
  std::vector<std::string> kept;
  bool endsInFolder = false;
  for (const std::string& component : componentsOf(absolute)) {
    const bool goesUp = component == ".." && kept.size() > 1 && kept.back() != "..";
    endsInFolder = goesUp || component == ".";
    if (goesUp) {
      kept.pop_back();
    } else if (component != ".") {
      kept.push_back(component);
    }
  }
  if (endsInFolder) kept.emplace_back();
  return withoutSlash(fmt::format("{}", fmt::join(kept, "/")));
}

std::string workingFolder() {
  std::error_code error;
  const std::string path = std::filesystem::current_path(error).string();
  return path.ends_with('/') ? path : path + '/';
}

bool copyText(const std::string& text, UInt8* buffer, CFIndex size) {
  if (static_cast<CFIndex>(text.size()) >= size) return false;
  std::copy_n(text.c_str(), text.size() + 1, buffer);
  return true;
}

/// The buffer needs room for the slash at the end of a folder's path, but not for a terminator: a
/// path that just fits is not terminated.
bool copyAbsolutePath(const CFUrl& url, UInt8* buffer, CFIndex size) {
  const auto length = static_cast<CFIndex>(url.path.size());
  if (size < 1) return false;
  buffer[0] = '\0';
  if (length > size) return false;
  const std::string path = withoutSlash(url.path);
  const auto end = std::copy(path.begin(), path.end(), buffer);
  if (end < buffer + size) *end = '\0';
  return true;
}

}  // namespace

CFURLRef makeFileURL(std::string_view path, bool isDirectory) {
  std::string text(path);
  while (!isDirectory && text.size() > 1 && text.back() == '/') text.pop_back();
  if (isDirectory && text.back() != '/') text += '/';
  const std::string base = text.front() == '/' ? "" : workingFolder();
  return static_cast<CFURLRef>(theCFObjects().make(CFUrl{text, base, isDirectory}));
}

std::string absolutePathOf(const CFUrl& url) {
  if (!isRelative(url)) return withoutSlash(url.path);
  const std::string path = relativePathOf(url);
  return isUtf8(path) ? resolved(url.base + path) : withoutSlash(url.base);
}

}  // namespace simulator

using namespace simulator;

CFURLRef CFURLCreateFromFileSystemRepresentation(CFAllocatorRef, const UInt8* buffer,
                                                 CFIndex bufLen, Boolean isDirectory) {
  if (failureOf(MacCall::kCFURLCreateFromFileSystemRepresentation)) return nullptr;
  if (bufLen <= 0) return nullptr;
  const std::string_view bytes(reinterpret_cast<const char*>(buffer),
                               static_cast<std::size_t>(bufLen));
  const std::string_view path = bytes.substr(0, bytes.find('\0'));
  const bool isText = bytes.find_first_not_of('\0', path.size()) == std::string_view::npos;
  return isText && !path.empty() ? makeFileURL(path, isDirectory != 0) : nullptr;
}

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef* fsRef) {
  if (failureOf(MacCall::kCFURLCreateFromFSRef)) return nullptr;
  const std::optional<std::string> path = pathOfRef(*fsRef);
  if (!path) return nullptr;
  std::error_code error;
  return makeFileURL(*path, std::filesystem::is_directory(*path, error));
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef anURL, CFURLPathStyle pathStyle) {
  if (failureOf(MacCall::kCFURLCopyFileSystemPath)) return nullptr;
  const auto url = theCFObjects().get<CFUrl>(anURL, "CFURLCopyFileSystemPath");
  if (!url) return nullptr;
  if (pathStyle != kCFURLPOSIXPathStyle) {
    theLog().misuse(fmt::format("CFURLCopyFileSystemPath: the style {} is not simulated; {} is",
                                pathStyle, static_cast<CFIndex>(kCFURLPOSIXPathStyle)));
    return nullptr;
  }
  const std::string path = ownPathOf(*url);
  return isUtf8(path) ? makeCFString(path) : nullptr;
}

/// Does not decompose the characters of a relative path, as the platform does.
Boolean CFURLGetFileSystemRepresentation(CFURLRef url, Boolean resolveAgainstBase, UInt8* buffer,
                                         CFIndex maxBufLen) {
  if (failureOf(MacCall::kCFURLGetFileSystemRepresentation)) return false;
  if (url == nullptr) return false;
  const auto known = theCFObjects().get<CFUrl>(url, "CFURLGetFileSystemRepresentation");
  if (!known) return false;
  if (!isRelative(*known)) return copyAbsolutePath(*known, buffer, maxBufLen);
  if (resolveAgainstBase != 0) return copyText(absolutePathOf(*known), buffer, maxBufLen);
  const std::string path = relativePathOf(*known);
  return isUtf8(path) && copyText(path, buffer, maxBufLen);
}
