#include "packaging/resource/ResourceFork.h"

#include <map>
#include <set>
#include <utility>

#include "packaging/resource/BigEndian.h"

namespace {

// Between header and data there is space for the system and the application.
constexpr std::uint32_t kDataOffset = 256;
constexpr std::size_t kHeaderSize = 16;
// The map starts with a copy of the header, a handle, a reference number and attributes.
constexpr std::size_t kMapTypesField = kHeaderSize + 8;
constexpr std::uint16_t kTypeListOffset = kMapTypesField + 4;
constexpr std::size_t kTypeEntrySize = 8;
constexpr std::size_t kReferenceSize = 12;
constexpr std::uint32_t kNoName = 0xFFFF;

using ResourcesByType = std::map<std::uint32_t, std::vector<const Resource*>>;

ResourcesByType groupByType(const std::vector<Resource>& resources) {
  ResourcesByType groups;
  std::set<std::pair<std::uint32_t, std::int16_t>> seen;
  for (const Resource& resource : resources) {
    if (resource.name.size() > 255) throw ResourceError("a resource's name is too long");
    if (!seen.insert({resource.type, resource.id}).second) {
      throw ResourceError("two resources of one type have the same number");
    }
    groups[resource.type].push_back(&resource);
  }
  return groups;
}

// The parts of the file to which each resource adds.
struct Parts {
  std::string data, references, names;
};

void appendResource(Parts& parts, const Resource& resource) {
  appendBigEndian(parts.references, static_cast<std::uint16_t>(resource.id), 2);
  appendBigEndian(parts.references, resource.name.empty() ? kNoName : parts.names.size(), 2);
  // Eight bits of attributes and 24 bits of offset into the data, then space for a handle.
  appendBigEndian(parts.references, parts.data.size() & 0xFFFFFF, 4);
  appendBigEndian(parts.references, 0, 4);
  appendBigEndian(parts.data, resource.data.size(), 4);
  parts.data += resource.data;
  if (resource.name.empty()) return;
  parts.names += static_cast<char>(resource.name.size());
  parts.names += resource.name;
}

// Counts in lists are stored minus one.
std::string typeList(const ResourcesByType& groups, Parts& parts) {
  std::string types;
  appendBigEndian(types, groups.size() - 1, 2);
  const std::size_t references = 2 + groups.size() * kTypeEntrySize;
  for (const auto& [type, resources] : groups) {
    appendBigEndian(types, type, 4);
    appendBigEndian(types, resources.size() - 1, 2);
    appendBigEndian(types, references + parts.references.size(), 2);
    for (const Resource* resource : resources) appendResource(parts, *resource);
  }
  return types + parts.references;
}

std::string header(std::size_t dataSize, std::size_t mapSize) {
  std::string out;
  appendBigEndian(out, kDataOffset, 4);
  appendBigEndian(out, kDataOffset + dataSize, 4);
  appendBigEndian(out, dataSize, 4);
  appendBigEndian(out, mapSize, 4);
  return out;
}

class ForkReader {
 public:
  explicit ForkReader(const std::string& bytes) : bytes_(bytes) {
    data_ = part(0);
    map_ = part(4);
  }

  std::vector<Resource> run() const {
    const std::size_t types = readBigEndian(map_, kMapTypesField, 2);
    const std::size_t count = (readBigEndian(map_, types, 2) + 1) & 0xFFFF;
    std::vector<Resource> resources;
    for (std::size_t i = 0; i < count; ++i) {
      readType(types, types + 2 + i * kTypeEntrySize, resources);
    }
    return resources;
  }

 private:
  // The header contains two offsets followed by the two sizes.
  std::string part(std::size_t field) const {
    return readBytes(bytes_, readBigEndian(bytes_, field, 4), readBigEndian(bytes_, field + 8, 4));
  }

  void readType(std::size_t list, std::size_t entry, std::vector<Resource>& resources) const {
    const std::uint32_t type = readBigEndian(map_, entry, 4);
    const std::size_t count = readBigEndian(map_, entry + 4, 2) + std::size_t{1};
    const std::size_t references = list + readBigEndian(map_, entry + 6, 2);
    for (std::size_t i = 0; i < count; ++i) {
      resources.push_back(readReference(type, references + i * kReferenceSize));
    }
  }

  Resource readReference(std::uint32_t type, std::size_t at) const {
    Resource resource;
    resource.type = type;
    resource.id = static_cast<std::int16_t>(readBigEndian(map_, at, 2));
    const std::uint32_t name = readBigEndian(map_, at + 2, 2);
    if (name != kNoName) {
      resource.name = readCountedText(map_, readBigEndian(map_, kMapTypesField + 2, 2) + name);
    }
    const std::size_t place = readBigEndian(map_, at + 4, 4) & 0xFFFFFF;
    resource.data = readBytes(data_, place + 4, readBigEndian(data_, place, 4));
    return resource;
  }

  const std::string& bytes_;
  std::string data_;
  std::string map_;
};

}  // namespace

std::string writeResourceFork(const std::vector<Resource>& resources) {
  Parts parts;
  const std::string types = typeList(groupByType(resources), parts);
  const std::size_t mapSize = kTypeListOffset + types.size() + parts.names.size();
  std::string out = header(parts.data.size(), mapSize);
  const std::string copy = out;
  out.resize(kDataOffset, '\0');
  out += parts.data + copy + std::string(8, '\0');
  appendBigEndian(out, kTypeListOffset, 2);
  appendBigEndian(out, kTypeListOffset + types.size(), 2);
  return out + types + parts.names;
}

std::vector<Resource> readResourceFork(const std::string& bytes) { return ForkReader(bytes).run(); }
