#include "Questions.h"

#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <random>
#include <string_view>

namespace {

using Units = std::u16string;

constexpr char kUntouched = '\xEE';

/// Text is written whole up to this number of bytes, and as a number and a checksum above it.
constexpr std::size_t kWholeBytes = 48;

struct Encoding {
  char letter;
  CFStringEncoding code;
};
constexpr Encoding kEncodings[] = {{'u', kCFStringEncodingUTF8}, {'m', kCFStringEncodingMacRoman}};

// ---- How answers are written ----

std::string hex(std::uint64_t value, int digits) {
  char text[17];
  std::snprintf(text, sizeof text, "%0*llx", digits, static_cast<unsigned long long>(value));
  return text;
}

std::string checksum(std::string_view bytes) {
  std::uint64_t sum = 0xcbf29ce484222325;  // FNV-1a
  for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
  return std::to_string(bytes.size()) + "#" + hex(sum, 16);
}

std::string hexOf(std::string_view bytes) {
  if (bytes.size() > kWholeBytes) return checksum(bytes);
  std::string text;
  for (const char byte : bytes) text += hex(static_cast<unsigned char>(byte), 2);
  return "x" + text;
}

std::string hexOf(const Units& units) {
  std::string bytes;
  for (const char16_t unit : units) {
    bytes += static_cast<char>(unit >> 8);
    bytes += static_cast<char>(unit & 0xFF);
  }
  return hexOf(bytes);
}

std::string inQuotes(std::string_view path) {
  if (path.size() > kWholeBytes) return checksum(path);
  std::string text = "\"";
  for (const char byte : path) {
    const bool plain = byte >= ' ' && byte <= '~' && byte != '\\' && byte != '"';
    text += plain ? std::string(1, byte) : "\\x" + hex(static_cast<unsigned char>(byte), 2);
  }
  return text + '"';
}

// ---- Strings ----

/// A buffer that shows how many of its bytes were written.
class Buffer {
 public:
  explicit Buffer(std::size_t size) : bytes_(size + 8, kUntouched), size_(size) {}

  char* data() { return bytes_.data(); }
  CFIndex size() const { return static_cast<CFIndex>(size_); }
  bool isEmptyText() const { return size_ > 0 && bytes_.front() == '\0'; }
  bool isUntouched() const { return bytes_.find_first_not_of(kUntouched) == std::string::npos; }
  bool isOverrun() const {
    return bytes_.find_first_not_of(kUntouched, size_) != std::string::npos;
  }
  /// The bytes up to the last zero byte: text may contain further zeros.
  std::optional<std::string> text() const {
    const std::size_t end = bytes_.rfind('\0');
    return end == std::string::npos ? std::nullopt : std::optional(bytes_.substr(0, end));
  }

 private:
  std::string bytes_;
  std::size_t size_;
};

bool isAscii(const Units& units) {
  return std::all_of(units.begin(), units.end(), [](char16_t unit) { return unit < 0x80; });
}

/// Some libraries write the terminator of a text that is not ASCII beyond a buffer of one byte.
bool isAskable(std::size_t size, const Encoding& encoding, const Units& units) {
  return size != 1 || encoding.code != kCFStringEncodingUTF8 || isAscii(units);
}

/// The letter of the encoding and the text, or '-' if it cannot be converted. A letter follows for
/// each rule that a buffer of any size did not obey.
std::string convertedBy(CFStringRef string, const Encoding& encoding, const Units& units) {
  Buffer whole(units.size() * 3 + 4);
  const bool converts = CFStringGetCString(string, whole.data(), whole.size(), encoding.code) != 0;
  const std::string text = converts ? whole.text().value_or("") : "";
  bool fits = true;
  bool empties = converts || whole.isEmptyText();
  bool stays = true;
  for (std::size_t size = 0; size <= text.size() + 2; ++size) {
    if (!isAskable(size, encoding, units) || (size > 8 && size + 2 < text.size())) continue;
    Buffer small(size);
    const bool done = CFStringGetCString(string, small.data(), small.size(), encoding.code) != 0;
    fits = fits && done == (converts && size > text.size()) && (!done || small.text() == text);
    empties = empties && (done || (size == 0 ? small.isUntouched() : small.isEmptyText()));
    stays = stays && !small.isOverrun();
  }
  return std::string(" ") + encoding.letter + " " + (converts ? hexOf(text) : "-") +
         (fits ? "" : " F") + (empties ? "" : " E") + (stays ? "" : " S");
}

std::string answersFor(const Units& units) {
  const CFStringRef string = CFStringCreateWithCharacters(
      kCFAllocatorDefault, reinterpret_cast<const UniChar*>(units.data()),
      static_cast<CFIndex>(units.size()));
  std::string line =
      "string " + hexOf(units) + " length " + std::to_string(CFStringGetLength(string));
  for (const Encoding& encoding : kEncodings) line += convertedBy(string, encoding, units);
  CFRelease(string);
  return line;
}

std::optional<std::string> macRoman(const Units& units) {
  const CFStringRef string = CFStringCreateWithCharacters(
      kCFAllocatorDefault, reinterpret_cast<const UniChar*>(units.data()),
      static_cast<CFIndex>(units.size()));
  Buffer buffer(16);
  const bool converts =
      CFStringGetCString(string, buffer.data(), buffer.size(), kCFStringEncodingMacRoman) != 0;
  CFRelease(string);
  return converts ? buffer.text() : std::nullopt;
}

/// The units, in Mac Roman, that are not ASCII but can be converted alone.
std::string macRomanOfEveryUnit() {
  std::string line = "units above 7f in Mac Roman:";
  for (std::uint32_t unit = 0x80; unit <= 0xFFFF; ++unit) {
    const auto text = macRoman(Units(1, static_cast<char16_t>(unit)));
    if (text) line += " " + hex(unit, 4) + "=" + hexOf(*text).substr(1);
  }
  return line;
}

std::vector<char16_t> combiningMarks() {
  std::vector<char16_t> marks;
  for (char16_t mark = 0x300; mark < 0x370; ++mark) marks.push_back(mark);
  marks.insert(marks.end(), {0x5B0, 0x610, 0x1DC4, 0x20D0, 0x3099, 0xFE20});
  return marks;
}

std::vector<char16_t> basesOfAccents() {
  std::vector<char16_t> bases;
  for (char16_t base = 0x20; base < 0x7F; ++base) bases.push_back(base);
  bases.insert(bases.end(), {0xC4, 0xD8, 0xE6, 0xE9, 0x131, 0x152, 0x3A9, 0x2126, 0x2206, 0xFB01});
  return bases;
}

/// What letters and signs become in Mac Roman together with a mark after them.
std::vector<std::string> macRomanOfMarks() {
  std::vector<std::string> lines;
  for (const char16_t base : basesOfAccents()) {
    std::string line;
    for (const char16_t mark : combiningMarks()) {
      const auto text = macRoman(Units{base, mark});
      if (text) line += " " + hex(mark, 4) + "=" + hexOf(*text).substr(1);
    }
    if (!line.empty()) lines.push_back("marks on " + hex(base, 4) + " in Mac Roman:" + line);
  }
  return lines;
}

const std::vector<Units>& pieces() {
  static const std::vector<Units> all = {
      u"",           u"a",       u"Z",          u"e",          u" ",          u"\t",
      u"\n",         u"/",       u"\\",         u"~",          u"\x7F",       u"\x80",
      u"\xA0",       u"\xAD",    u"\xC4",       u"\xE9",       u"\xD0",       u"\xFE",
      u"\u0131",     u"\u0152",  u"\u0192",     u"\u03A9",     u"\u03C0",     u"\u2126",
      u"\u2022",     u"\u2122",  u"\u20AC",     u"\u00A4",     u"\uFB01",     u"\uF8FF",
      u"\u2206",     u"\u0394",  u"\u00B5",     u"\u03BC",     u"\u2260",     u"\u0300",
      u"\u0301",     u"\u0308",  u"\u030A",     u"\u0327",     u"\u0338",     u"\u0345",
      u"\u0361",     u"e\u0301", u"A\u030A",    u"=\u0338",    u"\u034F",     u"\u200B",
      u"\u200C",     u"\u200D",  u"\u200E",     u"\u2028",     u"\u202A",     u"\u2060",
      u"\uFE0F",     u"\uFEFF",  u"\u180E",     u"\u115F",     u"\u4E2D",     u"\uAC00",
      u"\u1100",     u"\u1161",  u"\u3099",     u"\uFFFD",     u"\uFFFE",     u"\uFFFF",
      u"\uFDD0",     u"\uE000",  u"\U0001F58C", u"\U00010000", u"\U0010FFFF", u"\U000E0001",
      u"\U0002F800", Units{0},   Units{0xD800}, Units{0xDBFF}, Units{0xDC00}, Units{0xDFFF}};
  return all;
}

Units repeated(const Units& piece, std::size_t count) {
  Units text;
  for (std::size_t i = 0; i < count; ++i) text += piece;
  return text;
}

std::vector<Units> strings() {
  std::vector<Units> all = pieces();
  for (const Units& piece : pieces()) {
    all.push_back(u"a" + piece);
    all.push_back(piece + u"b");
    all.push_back(u"e" + piece + u"\u0301");
    all.push_back(u"\u00E9" + piece + u"z");
  }
  for (const std::size_t count : {63U, 255U, 256U, 512U, 1025U}) {
    for (const char16_t* piece : {u"a", u"\u00E9", u"e\u0301", u"\u4E2D", u"\U0001F58C"}) {
      all.push_back(repeated(piece, count));
      all.push_back(u"x" + repeated(piece, count));
      all.push_back(repeated(piece, count) + Units{0xD800});
    }
  }
  std::mt19937 random(1);
  for (int i = 0; i < 700; ++i) {
    Units text;
    for (auto count = 2 + random() % 5; count > 0; --count) {
      text += pieces()[random() % pieces().size()];
    }
    all.push_back(text);
  }
  return all;
}

// ---- Paths ----

std::string utf8Of(CFStringRef string) {
  Buffer buffer(static_cast<std::size_t>(CFStringGetLength(string)) * 3 + 4);
  if (CFStringGetCString(string, buffer.data(), buffer.size(), kCFStringEncodingUTF8) == 0) {
    return "?";
  }
  return buffer.text().value_or("?");
}

std::string copiedPath(CFURLRef url) {
  const CFStringRef path = CFURLCopyFileSystemPath(url, kCFURLPOSIXPathStyle);
  if (path == nullptr) return "-";
  const std::string text = utf8Of(path);
  CFRelease(path);
  return inQuotes(text);
}

bool represent(CFURLRef url, bool resolve, Buffer& buffer) {
  return CFURLGetFileSystemRepresentation(url, resolve, reinterpret_cast<UInt8*>(buffer.data()),
                                          buffer.size()) != 0;
}

/// The path in a file system's form and the least buffer that it fits into; '-' if there is none.
/// "unterminated" if the path in that buffer has no terminator, and a letter for each other rule
/// that a buffer of any size did not obey.
std::string representation(CFURLRef url, bool resolve) {
  Buffer whole(8192);
  if (!represent(url, resolve, whole)) return "-";
  const std::string path = whole.text().value_or("?");
  std::optional<std::size_t> least;
  bool fits = true;
  bool stays = true;
  bool terminated = true;
  for (std::size_t size = 0; size <= path.size() + 2; ++size) {
    if (size > 8 && size + 2 < path.size()) continue;
    Buffer small(size);
    const bool done = represent(url, resolve, small);
    stays = stays && !small.isOverrun();
    fits = fits && (done || !least);
    if (!done) continue;
    if (!least) least = size;
    if (size > path.size()) {
      fits = fits && small.text() == path;
    } else {
      terminated = false;
    }
  }
  return inQuotes(path) + " in " + (least ? std::to_string(*least) : "?") +
         (terminated ? "" : " unterminated") + (fits ? "" : " F") + (stays ? "" : " S");
}

/// Some systems decompose the characters of a relative path, others do not.
bool isDecomposable(const std::string& path, CFURLRef url) {
  if (path.front() == '/') return false;
  const bool ascii = std::all_of(path.begin(), path.end(), [](char byte) { return byte >= 0; });
  return !ascii && copiedPath(url) != "-";
}

std::string answersFor(const std::string& path, bool isDirectory) {
  std::string line = (isDirectory ? "folder " : "file ") + inQuotes(path);
  const CFURLRef url = CFURLCreateFromFileSystemRepresentation(
      kCFAllocatorDefault, reinterpret_cast<const UInt8*>(path.data()),
      static_cast<CFIndex>(path.size()), isDirectory);
  if (url == nullptr) return line + " -";
  line += " path " + copiedPath(url);
  if (!isDecomposable(path, url)) {
    const std::string resolved = representation(url, true);
    const std::string own = representation(url, false);
    line += " resolved " + resolved + " own " + (own == resolved ? "=" : own);
  }
  CFRelease(url);
  return line;
}

const std::vector<std::string>& components() {
  static const std::vector<std::string> all = {"",
                                               ".",
                                               "..",
                                               "a",
                                               "b c",
                                               "...",
                                               "..a",
                                               ".a",
                                               "%",
                                               "%41",
                                               "%2F",
                                               "%zz",
                                               "100%",
                                               ";x=1",
                                               "?q",
                                               "#f",
                                               "a:b",
                                               "~",
                                               "\"",
                                               "\\",
                                               "\xC3\xA9",
                                               "e\xCC\x81",
                                               "\xFF",
                                               "\xC3",
                                               "a\n",
                                               "\x01",
                                               "[x]",
                                               "a&b=",
                                               "\xF0\x9F\x96\x8C",
                                               "\xED\xA0\x80",
                                               "\xC0\xAF",
                                               "\x7F"};
  return all;
}

std::vector<std::string> paths() {
  using namespace std::string_literals;
  std::vector<std::string> all = {"/",    "//",     "///",         "/.",      "/..",    "/../",
                                  "/./",  "a\0"s,   "/a\0"s,       "/a\0\0"s, "/a\0b"s, "\0a"s,
                                  "a//"s, "../.."s, "../../../..", ""};
  for (const std::string& first : components()) {
    for (const char* end : {"", "/", "//"}) {
      all.push_back(first + end);
      all.push_back("/" + first + end);
      all.push_back("/a/" + first + end);
      all.push_back("a/" + first + end);
      all.push_back(first + "/b" + end);
      all.push_back("/" + first + "/b" + end);
    }
  }
  for (const std::size_t count : {500U, 1023U, 1024U, 1025U, 2000U}) {
    all.push_back("/" + std::string(count, 'a'));
    all.push_back("/" + std::string(count, ' '));
    all.push_back("/" + std::string(count, '\xFF'));
    all.push_back(std::string(count, 'a'));
  }
  std::mt19937 random(2);
  for (int i = 0; i < 500; ++i) {
    std::string path = random() % 2 == 0 ? "/" : "";
    for (auto count = 2 + random() % 4; count > 0; --count) {
      path += components()[random() % components().size()];
      path += random() % 8 == 0 ? "//" : "/";
    }
    if (random() % 2 == 0) path.pop_back();
    all.push_back(path);
  }
  std::erase(all, "");
  return all;
}

}  // namespace

std::vector<std::string> answersAboutLengths() {
  constexpr CFIndex kLast = std::numeric_limits<CFIndex>::max();
  std::vector<std::string> lines;
  for (const CFIndex length : {CFIndex{0}, CFIndex{1}, CFIndex{2}, CFIndex{1000}, CFIndex{1} << 31,
                               CFIndex{1} << 62, kLast / 3 - 1, kLast / 3, kLast / 3 + 1, kLast / 2,
                               kLast - 1, kLast, CFIndex{-1}, CFIndex{-2}, CFIndex{-1000}}) {
    std::string line = "maximum size of " + std::to_string(length);
    for (const Encoding& encoding : kEncodings) {
      line += std::string(" ") + encoding.letter + " " +
              std::to_string(CFStringGetMaximumSizeForEncoding(length, encoding.code));
    }
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> answersAboutMacRoman() {
  std::vector<std::string> lines = {macRomanOfEveryUnit()};
  for (std::string& line : macRomanOfMarks()) lines.push_back(std::move(line));
  return lines;
}

std::vector<std::string> answersAboutStrings() {
  std::vector<std::string> lines;
  for (const Units& units : strings()) lines.push_back(answersFor(units));
  return lines;
}

std::vector<std::string> answersAboutPaths() {
  std::vector<std::string> lines;
  for (const std::string& path : paths()) {
    lines.push_back(answersFor(path, false));
    lines.push_back(answersFor(path, true));
  }
  return lines;
}
