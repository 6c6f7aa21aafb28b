// Each folder includes headers only from the folders that cmake/folders.txt allows.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Each folder with the folders that it may include directly.
using Layers = std::map<std::string, std::set<std::string>>;

Layers readLayers() {
  Layers layers;
  std::ifstream table(MRV_ROOT "/cmake/folders.txt");
  for (std::string line; std::getline(table, line);) {
    std::istringstream words(line);
    std::string kind;
    std::string folder;
    if (!(words >> kind >> folder) || kind == "#") continue;
    std::set<std::string>& below = layers[folder];
    for (std::string word; words >> word;) below.insert(word);
  }
  return layers;
}

/// The deepest folder of the table that contains a path; empty if there is none.
std::string folderOf(const std::string& path, const Layers& layers) {
  for (fs::path folder = fs::path(path).parent_path(); !folder.empty();
       folder = folder.parent_path()) {
    if (layers.contains(folder.string())) return folder.string();
  }
  return "";
}

/// The paths that a source includes in quotes, relative to the project's root.
std::vector<std::string> includesOf(const fs::path& source) {
  constexpr std::string_view kDirective = "#include \"";
  std::vector<std::string> includes;
  std::ifstream lines(source);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with(kDirective)) continue;
    includes.push_back(line.substr(kDirective.size(), line.rfind('"') - kDirective.size()));
  }
  return includes;
}

bool isSource(const fs::path& path) {
  return path.extension() == ".cpp" || path.extension() == ".h";
}

/// Every include that the table does not allow, as "from -> to (source)".
std::vector<std::string> arrowsAgainst(const Layers& layers) {
  std::vector<std::string> wrong;
  for (const auto& [folder, below] : layers) {
    for (const auto& entry : fs::directory_iterator(fs::path(MRV_ROOT) / folder)) {
      if (!isSource(entry.path())) continue;
      for (const std::string& include : includesOf(entry.path())) {
        const std::string target = folderOf(include, layers);
        if (target.empty() || target == folder || below.contains(target)) continue;
        wrong.push_back(folder + " -> " + target + " (" + entry.path().filename().string() + ")");
      }
    }
  }
  return wrong;
}

/// Whether `from` may include `folder`, directly or through other folders.
bool leadsBack(const std::string& folder, const std::string& from, const Layers& layers) {
  for (const std::string& below : layers.at(from)) {
    if (below == folder || leadsBack(folder, below, layers)) return true;
  }
  return false;
}

TEST(Includes, FollowTheTable) {
  EXPECT_EQ(arrowsAgainst(readLayers()), std::vector<std::string>{});
}

TEST(Includes, AreCheckedInEveryFolderWithSources) {
  const Layers layers = readLayers();
  for (const auto& entry : fs::recursive_directory_iterator(MRV_ROOT)) {
    const std::string path = fs::relative(entry.path(), MRV_ROOT).string();
    const std::string top = path.substr(0, path.find('/'));
    const std::set<std::string> others = {"tests", "bench", "fuzz", "build", "dist", ".git"};
    if (!isSource(entry.path()) || others.contains(top)) continue;
    EXPECT_NE(folderOf(path, layers), "") << path;
  }
}

TEST(IncludesCheck, FindsAnIncludeThatTheTableDoesNotAllow) {
  Layers layers = readLayers();
  layers.at("device").erase("navigate");
  const std::vector<std::string> wrong = arrowsAgainst(layers);
  EXPECT_NE(std::find(wrong.begin(), wrong.end(), "device -> navigate (MrvDeviceEvents.cpp)"),
            wrong.end());
}

TEST(IncludesTable, HasNoCycleAndNoUnknownFolder) {
  const Layers layers = readLayers();
  for (const auto& [folder, below] : layers) {
    for (const std::string& name : below) ASSERT_TRUE(layers.contains(name)) << name;
    EXPECT_FALSE(leadsBack(folder, folder, layers)) << folder;
  }
}

}  // namespace
