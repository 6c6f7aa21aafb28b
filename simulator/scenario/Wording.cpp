#include "simulator/scenario/Wording.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

#include "simulator/base/Text.h"

namespace simulator {

namespace {

constexpr std::size_t kLongestFileName = 400;
constexpr std::size_t kLongestGuessedName = 100;

/// The bytes of the UTF-8 character that `text` begins with; 1 if it begins with another byte.
std::size_t characterLength(std::string_view text) {
  for (std::size_t length = 2; length <= 4 && length <= text.size(); ++length) {
    const bool isOne = (text[0] & 0xC0) == 0xC0 && isUtf8(text.substr(0, length));
    if (isOne) return length;
  }
  return 1;
}

/// Control characters of two bytes (U+0080 to U+009F) and the marks that turn the direction of a
/// line (U+202A to U+202E, U+2066 to U+2069) or break it (U+2028, U+2029).
bool isInvisible(std::string_view character) {
  if (character.size() == 2) return character[0] == '\xC2' && (character[1] & 0xE0) == 0x80;
  if (character.size() != 3 || character[0] != '\xE2') return false;
  const auto last = static_cast<unsigned char>(character[2]);
  return (character[1] == '\x80' && last >= 0xA8 && last <= 0xAE) ||
         (character[1] == '\x81' && last >= 0xA6 && last <= 0xA9);
}

std::string shown(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  const bool plain =
      character.size() == 1 ? first >= 0x20 && first < 0x7F : !isInvisible(character);
  if (plain) return std::string(character);
  if (character == "\n") return "\\n";
  if (character == "\t") return "\\t";
  std::string text;
  for (const char c : character) text += fmt::format("\\x{:02X}", static_cast<unsigned char>(c));
  return text;
}

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

/// The number of letters to insert, remove, replace or swap with a neighbour, in thirds: a change
/// of case alone is one third.
std::size_t distance(std::string_view a, std::string_view b) {
  constexpr std::size_t kWhole = 3;
  std::vector<std::vector<std::size_t>> cost(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = (i + j) * kWhole;
        continue;
      }
      const std::size_t replace = a[i - 1] == b[j - 1]                 ? 0
                                  : lower(a[i - 1]) == lower(b[j - 1]) ? 1
                                                                       : kWhole;
      cost[i][j] = std::min(
          {cost[i - 1][j] + kWhole, cost[i][j - 1] + kWhole, cost[i - 1][j - 1] + replace});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + kWhole);
    }
  }
  return cost[a.size()][b.size()];
}

}  // namespace

std::string printable(std::string_view text, std::size_t longest) {
  std::vector<std::string> characters;
  // Of a long text, only what can be shown is looked at.
  const std::size_t most = 4 * longest;
  std::string whole;
  if (text.size() > 2 * most) {
    whole = std::string(text.substr(0, most)).append(text.substr(text.size() - most));
    text = whole;
  }
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    characters.push_back(shown(text.substr(0, length)));
    text.remove_prefix(length);
  }
  std::string result;
  const std::size_t half = longest / 2;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const bool cut = characters.size() > longest && i >= half && i < characters.size() - half;
    if (!cut) result += characters[i];
    if (cut && i == half) result += "...";
  }
  return result;
}

std::string printableFile(std::string_view file) { return printable(file, kLongestFileName); }

std::string nearest(std::string_view name, const std::vector<std::string>& candidates) {
  if (name.size() > kLongestGuessedName) return {};
  // A third of the letters may differ, and at least one.
  std::size_t best = std::max<std::size_t>(name.size(), 3) + 1;
  std::string found;
  for (const std::string& candidate : candidates) {
    const std::size_t away = distance(name, candidate);
    if (away >= best) continue;
    best = away;
    found = candidate;
  }
  return found;
}

std::string guess(std::string_view name, const std::vector<std::string>& candidates) {
  const std::string found = nearest(name, candidates);
  return found.empty() ? "" : fmt::format("; did you mean \"{}\"?", found);
}

std::string counted(std::uint64_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string listed(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
    text += names[i];
  }
  return text;
}

}  // namespace simulator
