// What the host reads of a plug-in before it loads it: a resource that holds a list of properties,
// as the host's interface publishes it. Written here from a readable description.
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
inline constexpr std::uint32_t kPersistentProperty = fourCharCode("prst");
inline constexpr std::uint32_t kMessagesProperty = fourCharCode("AcpM");
inline constexpr std::uint32_t kEnableProperty = fourCharCode("enbl");

inline constexpr std::uint32_t kAutomationKind = fourCharCode("actn");

/// Bits of the messages property: the calls that the plug-in wants.
enum HostMessages : std::uint32_t {
  kWantsStartup = 1,
  kWantsPurgeCache = 2,
  kWantsShutdown = 4,
  kWantsProperties = 8
};

struct HostProperty {
  std::uint32_t vendor = 0;
  std::uint32_t key = 0;
  std::string data;  ///< bytes as they stand in the resource, padding to four bytes included
};

/// The resource that the description (lines as packaging/HostDescription.txt explains them) makes.
/// A ResourceError names the line that is wrong.
Resource parseHostDescription(const std::string& text);

/// The properties of such a resource; a ResourceError where its data are damaged.
std::vector<HostProperty> readHostProperties(const Resource& resource);

/// The one property of the host's with this key, null where there is none.
const HostProperty* findHostProperty(const std::vector<HostProperty>& properties,
                                     std::uint32_t key);

/// A property's data as a number, as text, as the name of an entry point; a ResourceError where
/// they are not.
std::uint32_t numberOf(const HostProperty& property);
std::string textOf(const HostProperty& property);
std::string entryPointOf(const HostProperty& property);
