// The resource that the host reads before it loads a plug-in: a list of properties in the format
// that the host publishes. It is generated from a readable description.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "packaging/resource/ResourceFork.h"
#include "platform/FourCharCode.h"

inline constexpr std::uint32_t kHostResourceType = fourCharCode("PiPL");
inline constexpr std::uint32_t kHostVendor = fourCharCode("8BIM");
inline constexpr std::uint32_t kKindProperty = fourCharCode("kind");
inline constexpr std::uint32_t kVersionProperty = fourCharCode("vers");
inline constexpr std::uint32_t kNameProperty = fourCharCode("name");
inline constexpr std::uint32_t kCategoryProperty = fourCharCode("catg");
inline constexpr std::uint32_t kCodeMacIntel64Property = fourCharCode("mi64");
inline constexpr std::uint32_t kCodeMacArm64Property = fourCharCode("ma64");
inline constexpr std::uint32_t kPersistentProperty = fourCharCode("prst");
inline constexpr std::uint32_t kMessagesProperty = fourCharCode("AcpM");
inline constexpr std::uint32_t kEnableProperty = fourCharCode("enbl");

inline constexpr std::uint32_t kAutomationKind = fourCharCode("actn");

/// Bits of the messages property: the calls that the plug-in requests, from the most significant
/// bit on, as the host's resource compiler fills a word with flags.
enum HostMessages : std::uint32_t {
  kWantsStartup = 1U << 31,
  kWantsPurgeCache = 1U << 30,
  kWantsShutdown = 1U << 29,
  kWantsProperties = 1U << 28
};

struct HostProperty {
  std::uint32_t vendor = 0;
  std::uint32_t key = 0;
  std::string data;  ///< bytes in the resource, including padding to a multiple of four
};

/// Makes the resource from a description; packaging/HostDescription.txt explains the syntax. Throws
/// ResourceError, whose text names the wrong line, if the description is invalid.
Resource parseHostDescription(const std::string& text);

/// Reads the properties in a resource of type kHostResourceType. Throws ResourceError if its type,
/// version or data are wrong.
std::vector<HostProperty> readHostProperties(const Resource& resource);

/// The first property with the vendor kHostVendor and this key, an element of `properties`; null if
/// there is none.
const HostProperty* findHostProperty(const std::vector<HostProperty>& properties,
                                     std::uint32_t key);

/// Read a property's data as a number, as length-prefixed or zero-terminated text, or as the name
/// of an entry point. Throw ResourceError if the data are too short.
std::uint32_t numberOf(const HostProperty& property);
std::string textOf(const HostProperty& property);
std::string zeroTerminatedTextOf(const HostProperty& property);
std::string entryPointOf(const HostProperty& property);
