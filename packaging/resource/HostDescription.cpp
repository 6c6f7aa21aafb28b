#include "packaging/resource/HostDescription.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "packaging/resource/BigEndian.h"

namespace {

constexpr std::size_t kEntryNameOffset = 8;
constexpr std::size_t kLongestText = 255;

std::string countedText(const std::string& text) {
  if (text.size() > kLongestText) throw ResourceError("a text is too long");
  return static_cast<char>(text.size()) + text;
}

std::uint32_t codeOf(const std::string& word) {
  if (word.size() != 4) throw ResourceError("'" + word + "' is not a four-character code");
  return readBigEndian(word, 0, 4);
}

std::uint32_t numberFrom(const std::string& word) {
  char* end = nullptr;
  const unsigned long long value = std::strtoull(word.c_str(), &end, 0);
  if (word.empty() || *end != '\0' || value > UINT32_MAX || word[0] == '-') {
    throw ResourceError("'" + word + "' is not a 32-bit number");
  }
  return static_cast<std::uint32_t>(value);
}

std::uint32_t flagFrom(const std::string& word) {
  static constexpr struct {
    const char* name;
    HostMessages flag;
  } kFlags[] = {{"startup", kWantsStartup},
                {"purge-cache", kWantsPurgeCache},
                {"shutdown", kWantsShutdown},
                {"properties", kWantsProperties}};
  for (const auto& known : kFlags) {
    if (word == known.name) return known.flag;
  }
  throw ResourceError("'" + word + "' is no call of the host");
}

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

// Splits a line at spaces; text in double quotes is one word. A '#' starts a comment.
std::vector<std::string> wordsOf(const std::string& line) {
  std::vector<std::string> words;
  for (std::size_t at = 0; at < line.size() && line[at] != '#';) {
    if (isSpace(line[at])) {
      ++at;
      continue;
    }
    const bool quoted = line[at] == '"';
    const auto begin = line.begin() + static_cast<std::ptrdiff_t>(at + (quoted ? 1 : 0));
    const auto end =
        std::find_if(begin, line.end(), [&](char c) { return quoted ? c == '"' : isSpace(c); });
    if (quoted && end == line.end()) throw ResourceError("a text has no end");
    words.emplace_back(begin, end);
    at = static_cast<std::size_t>(end - line.begin()) + (quoted ? 1 : 0);
  }
  return words;
}

class DescriptionParser {
 public:
  Resource run(const std::string& text) {
    std::size_t begin = 0;
    for (int number = 1; begin < text.size(); ++number) {
      const std::size_t end = std::min(text.find('\n', begin), text.size());
      readLine(number, text.substr(begin, end - begin));
      begin = end + 1;
    }
    if (resource_.type == 0) throw ResourceError("the description names no resource");
    return finish();
  }

 private:
  void readLine(int number, const std::string& line) {
    try {
      const std::vector<std::string> words = wordsOf(line);
      if (words.empty()) return;
      words[0] == "resource" ? readResource(words) : readProperty(words);
    } catch (const ResourceError& error) {
      throw ResourceError("line " + std::to_string(number) + ": " + error.what());
    }
  }

  void readResource(const std::vector<std::string>& words) {
    if (words.size() != 4) throw ResourceError("a resource has a type, a number and a name");
    if (resource_.type != 0) throw ResourceError("there is a resource already");
    const std::uint32_t id = numberFrom(words[2]);
    if (id > INT16_MAX) throw ResourceError("a resource's number has 15 bits");
    resource_.type = codeOf(words[1]);
    resource_.id = static_cast<std::int16_t>(id);
    resource_.name = words[3];
  }

  void readProperty(const std::vector<std::string>& words) {
    if (resource_.type == 0) throw ResourceError("a property comes before its resource");
    if (words.size() < 4) throw ResourceError("a property has a vendor, a key, a form and a value");
    const std::vector<std::string> values(words.begin() + 3, words.end());
    appendProperty(codeOf(words[0]), codeOf(words[1]), dataOf(words[2], values));
  }

  static std::string dataOf(const std::string& form, const std::vector<std::string>& values) {
    if (form == "number") return numbers(values);
    if (form == "flags") return flags(values);
    if (values.size() != 1) throw ResourceError("a property of this form has one value");
    if (form == "code") return numbers({std::to_string(codeOf(values[0]))});
    if (form == "text") return countedText(values[0]);
    if (form == "cstring") return values[0] + '\0';
    // Offset and length of the code within the file come first; both 0 mean the whole file.
    if (form == "entry") return std::string(kEntryNameOffset, '\0') + countedText(values[0]);
    throw ResourceError("'" + form + "' is no form of a property");
  }

  static std::string numbers(const std::vector<std::string>& values) {
    std::string data;
    for (const std::string& value : values) appendBigEndian(data, numberFrom(value), 4);
    return data;
  }

  static std::string flags(const std::vector<std::string>& values) {
    std::uint32_t bits = 0;
    for (const std::string& value : values) bits |= flagFrom(value);
    return numbers({std::to_string(bits)});
  }

  void appendProperty(std::uint32_t vendor, std::uint32_t key, std::string data) {
    data.resize((data.size() + 3) / 4 * 4, '\0');
    appendBigEndian(properties_, vendor, 4);
    appendBigEndian(properties_, key, 4);
    appendBigEndian(properties_, 0, 4);
    appendBigEndian(properties_, data.size(), 4);
    properties_ += data;
    ++count_;
  }

  Resource finish() {
    appendBigEndian(resource_.data, 0, 4);
    appendBigEndian(resource_.data, count_, 4);
    resource_.data += properties_;
    return resource_;
  }

  Resource resource_;
  std::string properties_;
  std::uint32_t count_ = 0;
};

}  // namespace

Resource parseHostDescription(const std::string& text) { return DescriptionParser().run(text); }

std::vector<HostProperty> readHostProperties(const Resource& resource) {
  if (resource.type != kHostResourceType) throw ResourceError("the resource is of another type");
  if (readBigEndian(resource.data, 0, 4) != 0) throw ResourceError("the resource is too new");
  const std::uint32_t count = readBigEndian(resource.data, 4, 4);
  std::vector<HostProperty> properties;
  std::size_t at = 8;
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::size_t size = readBigEndian(resource.data, at + 12, 4);
    properties.push_back({readBigEndian(resource.data, at, 4),
                          readBigEndian(resource.data, at + 4, 4),
                          readBytes(resource.data, at + 16, size)});
    at += 16 + (size + 3) / 4 * 4;
  }
  return properties;
}

const HostProperty* findHostProperty(const std::vector<HostProperty>& properties,
                                     std::uint32_t key) {
  const auto found =
      std::find_if(properties.begin(), properties.end(), [&](const HostProperty& property) {
        return property.vendor == kHostVendor && property.key == key;
      });
  return found == properties.end() ? nullptr : &*found;
}

std::uint32_t numberOf(const HostProperty& property) { return readBigEndian(property.data, 0, 4); }

std::string textOf(const HostProperty& property) { return readCountedText(property.data, 0); }

std::string zeroTerminatedTextOf(const HostProperty& property) {
  const std::size_t end = property.data.find('\0');
  if (end == std::string::npos) throw ResourceError("a text has no zero byte at its end");
  return property.data.substr(0, end);
}

std::string entryPointOf(const HostProperty& property) {
  return readCountedText(property.data, kEntryNameOffset);
}
