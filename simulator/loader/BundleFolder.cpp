#include "simulator/loader/BundleFolder.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "simulator/loader/ByteReader.h"

namespace simulator {

namespace {

constexpr int kDeepestNesting = 64;
constexpr const char* kExecutableKey = "CFBundleExecutable";

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in || std::filesystem::is_directory(file)) {
    throw LoadError(fmt::format("{} cannot be read", file.string()));
  }
  return {std::istreambuf_iterator<char>(in), {}};
}

class PropertyList {
 public:
  explicit PropertyList(const std::filesystem::path& file) : file_(file), text_(readText(file)) {}

  Json read() {
    if (text_.starts_with("bplist")) {
      throw LoadError(fmt::format(
          "{} is a binary property list; XML is needed (plutil -convert xml1)", file_.string()));
    }
    const pugi::xml_parse_result parsed = document_.load_buffer(text_.data(), text_.size());
    if (!parsed) fail(parsed.offset, parsed.description());
    const pugi::xml_node list = document_.document_element();
    if (std::string_view(list.name()) != "plist") fail(list.offset_debug(), "<plist> is missing");
    return valueOf(onlyChild(list), 0);
  }

 private:
  Json valueOf(const pugi::xml_node& node, int depth) const {
    const std::string_view type = node.name();
    if (depth > kDeepestNesting) fail(node.offset_debug(), "the values are nested too deeply");
    if (type == "dict") return dictionaryOf(node, depth);
    if (type == "array") return arrayOf(node, depth);
    if (type == "string") return textOf(node);
    if (type == "integer") return numberOf<std::int64_t>(node);
    if (type == "real") return numberOf<double>(node);
    if (type == "true" || type == "false") return type == "true";
    if (type == "date" || type == "data") return Json{{type, textOf(node)}};
    fail(node.offset_debug(), fmt::format("<{}> is not a value of a property list", type));
  }

  Json dictionaryOf(const pugi::xml_node& node, int depth) const {
    Json values = Json::object();
    for (pugi::xml_node key = firstElement(node); key; key = nextElement(key)) {
      if (std::string_view(key.name()) != "key") fail(key.offset_debug(), "a <key> is missing");
      const std::string name = textOf(key);
      const pugi::xml_node value = nextElement(key);
      if (!value) fail(key.offset_debug(), fmt::format("{} has no value", name));
      values[name] = valueOf(value, depth + 1);
      key = value;
    }
    return values;
  }

  Json arrayOf(const pugi::xml_node& node, int depth) const {
    Json values = Json::array();
    for (pugi::xml_node value = firstElement(node); value; value = nextElement(value)) {
      values.push_back(valueOf(value, depth + 1));
    }
    return values;
  }

  template <class Number>
  Json numberOf(const pugi::xml_node& node) const {
    const std::string text = textOf(node);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
      fail(node.offset_debug(), fmt::format("\"{}\" is not a number", text));
    }
    return number;
  }

  // Text may be split by comments and CDATA sections.
  static std::string textOf(const pugi::xml_node& node) {
    std::string text;
    for (const pugi::xml_node& part : node.children()) text += part.value();
    return text;
  }

  pugi::xml_node onlyChild(const pugi::xml_node& list) const {
    const pugi::xml_node child = firstElement(list);
    if (!child || nextElement(child)) {
      fail(list.offset_debug(), "<plist> does not hold exactly one value");
    }
    return child;
  }

  static pugi::xml_node firstElement(const pugi::xml_node& node) {
    return node.find_child([](const pugi::xml_node& child) { return isElement(child); });
  }

  static pugi::xml_node nextElement(pugi::xml_node node) {
    do {
      node = node.next_sibling();
    } while (node && !isElement(node));
    return node;
  }

  static bool isElement(const pugi::xml_node& node) { return node.type() == pugi::node_element; }

  [[noreturn]] void fail(std::ptrdiff_t offset, std::string_view why) const {
    const auto place = static_cast<std::size_t>(std::max<std::ptrdiff_t>(offset, 0));
    const std::string_view before = std::string_view(text_).substr(0, place);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    throw LoadError(fmt::format("{}:{}: {}", file_.string(), line, why));
  }

  const std::filesystem::path& file_;
  const std::string text_;
  pugi::xml_document document_;
};

// The folder's own name; a path may end with a slash.
std::filesystem::path nameOf(const std::filesystem::path& folder) {
  return folder.has_filename() ? folder.stem() : folder.parent_path().stem();
}

// As the platform does: the key's value, else the folder's name.
std::string executableOf(const std::filesystem::path& folder, const std::filesystem::path& list) {
  if (!std::filesystem::exists(list)) return nameOf(folder);
  const Json values = readPropertyList(list);
  if (!values.is_object() || !values.contains(kExecutableKey)) return nameOf(folder);
  const Json& value = values[kExecutableKey];
  const std::string name = value.is_string() ? value.get<std::string>() : value.dump();
  if (!value.is_string() || name.empty() || name == "." || name == ".." ||
      name.find('/') != std::string::npos) {
    throw LoadError(fmt::format("{}: {} is \"{}\", which is not the name of a file", list.string(),
                                kExecutableKey, name));
  }
  return name;
}

}  // namespace

Json readPropertyList(const std::filesystem::path& file) { return PropertyList(file).read(); }

std::filesystem::path binaryOfBundle(const std::filesystem::path& folder) {
  const std::filesystem::path list = folder / "Contents" / "Info.plist";
  const std::string name = executableOf(folder, list);
  const std::filesystem::path binary = folder / "Contents" / "MacOS" / name;
  if (std::filesystem::is_regular_file(binary)) return binary;
  const bool hasList = std::filesystem::exists(list);
  throw LoadError(fmt::format(
      "{}: {}", folder.string(),
      hasList
          ? fmt::format("Contents/MacOS/{}, which Contents/Info.plist asks for, is not there", name)
          : fmt::format("cannot be read as a bundle: neither Contents/Info.plist nor "
                        "Contents/MacOS/{} is there",
                        name)));
}

}  // namespace simulator
