#include "hostactions/DescriptorUtilities.h"

#include <cstdint>
#include <limits>

#include "hostactions/ApplicationProperty.h"
#include "hostactions/ReferenceParts.h"
#include "suites/HostObjects.h"
#include "suites/Suites.h"

namespace {

constexpr double kPointsPerInch = 72.0;

/// With a terminator, a text of this length takes more bytes than 32 bits can count.
constexpr std::uint32_t kLengthWithoutRoom = std::numeric_limits<std::uint32_t>::max();

/// Reads the property `key` from the host's answer to a reference made of the parts.
template <class... Parts>
int getItem(std::uint32_t key, void* value, void* extra, const Parts&... putPart) {
  if (value == nullptr) return kSPBadParameterError;
  ActionDescriptor result;
  ActionReference reference;
  const int error = getAnswer(reference, result, putPart...);
  return error != 0 ? error : PIUGetSingleItemFromDescriptor(result.get(), key, value, extra);
}

int readName(PIActionDescriptor action, char* name, std::uint32_t* length) {
  bool present = false;
  int error = askForKey(action, kKeyName, present);
  if (error != 0 || !present) return error;
  std::uint32_t reported = 0;
  error = sPSActionDescriptor->GetStringLength(action, kKeyName, &reported);
  if (error != 0) return error;
  if (reported == kLengthWithoutRoom) return kSPBadParameterError;
  *length = reported;
  return sPSActionDescriptor->GetString(action, kKeyName, name, reported + 1);
}

template <class... Parts>
int getActionName(char* name, std::uint32_t* length, const Parts&... putPart) {
  if (name == nullptr || length == nullptr) return kSPBadParameterError;
  ActionDescriptor result;
  ActionReference reference;
  const int error = getAnswer(reference, result, putPart...);
  return error != 0 ? error : readName(result.get(), name, length);
}

/// An item and the places to read it to; `extra` may be null for types that do not need it.
struct Item {
  PIActionDescriptor descriptor;
  std::uint32_t key;
  void* value;
  void* extra;
};

template <class T>
T* as(void* pointer) {
  return static_cast<T*>(pointer);
}

int readText(const Item& item) {
  auto* length = as<std::uint32_t>(item.extra);
  const std::uint32_t capacity = *length;
  const int error = sPSActionDescriptor->GetStringLength(item.descriptor, item.key, length);
  if (error != 0) return error;
  if (capacity < *length || *length == kLengthWithoutRoom) return kSPBadParameterError;
  return sPSActionDescriptor->GetString(item.descriptor, item.key, as<char>(item.value),
                                        *length + 1);
}

/// Reads the types that do not need `extra`.
int readPlain(const Item& item, DescriptorTypeID type) {
  const auto& [descriptor, key, value, extra] = item;
  switch (type) {
    case kTypeClass:
    case kTypeGlobalClass:
      return sPSActionDescriptor->GetClass(descriptor, key, as<DescriptorClassID>(value));
    case kTypePath:
    case kTypeAlias:
      return sPSActionDescriptor->GetAlias(descriptor, key, as<Handle>(value));
    case kTypeValueList:
      return sPSActionDescriptor->GetList(descriptor, key, as<PIActionList>(value));
    case kTypeBoolean:
      return sPSActionDescriptor->GetBoolean(descriptor, key, as<Boolean>(value));
    case kTypeInteger64:
      return sPSActionDescriptor->GetInteger64(descriptor, key, as<std::int64_t>(value));
    case kTypeFloat:
      return sPSActionDescriptor->GetFloat(descriptor, key, as<double>(value));
    case kTypeInteger:
      return sPSActionDescriptor->GetInteger(descriptor, key, as<std::int32_t>(value));
    case kTypeObjectReference:
      return sPSActionDescriptor->GetReference(descriptor, key, as<PIActionReference>(value));
    default:
      return kSPUnimplementedError;
  }
}

/// Reads any type; the parameter error if the type needs `extra` and it is null.
int readItem(const Item& item, DescriptorTypeID type) {
  const auto& [descriptor, key, value, extra] = item;
  auto* detail = as<std::uint32_t>(extra);
  const bool wantsExtra = type == kTypeGlobalObject || type == kTypeObject || type == kTypeText ||
                          type == kTypeUnitFloat || type == kTypeEnumerated;
  if (!wantsExtra) return readPlain(item, type);
  if (extra == nullptr) return kSPBadParameterError;
  switch (type) {
    case kTypeGlobalObject:
      return sPSActionDescriptor->GetGlobalObject(descriptor, key, detail,
                                                  as<PIActionDescriptor>(value));
    case kTypeObject:
      return sPSActionDescriptor->GetObject(descriptor, key, detail, as<PIActionDescriptor>(value));
    case kTypeUnitFloat:
      return sPSActionDescriptor->GetUnitFloat(descriptor, key, detail, as<double>(value));
    case kTypeEnumerated:
      return sPSActionDescriptor->GetEnumerated(descriptor, key, detail,
                                                as<DescriptorEnumID>(value));
    default:
      return readText(item);
  }
}

}  // namespace

int PIUActionsPlayByName(const char* setName, const char* actionName) {
  ActionDescriptor result;
  ActionDescriptor event;
  ActionReference reference;
  int error = makeReference(reference, namePart(kClassAction, actionName),
                            namePart(kClassActionSet, setName));
  if (error == 0) error = sPSActionDescriptor->Make(event.out());
  if (error == 0) {
    error = sPSActionDescriptor->PutReference(event.get(), kKeyTarget, reference.get());
  }
  if (error == 0) error = playSilently(result, kEventPlay, event);
  return error != 0 ? error : PIUCheckPlayResult(result.get());
}

int PIUActionsGetName(std::uint32_t setIndex, std::uint32_t actionIndex, char* name,
                      std::uint32_t* length) {
  return getActionName(name, length, indexPart(kClassAction, actionIndex),
                       indexPart(kClassActionSet, setIndex));
}

int PIUActionsGetName(const char* setName, std::uint32_t actionIndex, char* name,
                      std::uint32_t* length) {
  return getActionName(name, length, indexPart(kClassAction, actionIndex),
                       namePart(kClassActionSet, setName));
}

int PIUGetInfo(std::uint32_t classID, std::uint32_t key, void* value, void* extra) {
  return getItem(key, value, extra, propertyPart(kClassProperty, key), currentPart(classID));
}

int PIUGetInfoByIndex(std::uint32_t index, std::uint32_t classID, std::uint32_t key, void* value,
                      void* extra) {
  return getItem(key, value, extra, propertyPart(kClassProperty, key), indexPart(classID, index));
}

int PIUGetInfoByID(std::uint32_t identifier, std::uint32_t classID, std::uint32_t key, void* value,
                   void* extra) {
  return getItem(key, value, extra, propertyPart(kClassProperty, key),
                 identifierPart(classID, identifier));
}

int PIUGetInfoByIndexIndex(std::uint32_t index1, std::uint32_t index2, std::uint32_t class1,
                           std::uint32_t class2, std::uint32_t key, void* value, void* extra) {
  return getItem(key, value, extra, propertyPart(kClassProperty, key), indexPart(class1, index1),
                 indexPart(class2, index2));
}

int PIUGetInfoByIDID(std::uint32_t id1, std::uint32_t id2, std::uint32_t class1,
                     std::uint32_t class2, std::uint32_t key, void* value, void* extra) {
  return getItem(key, value, extra, propertyPart(kClassProperty, key), identifierPart(class1, id1),
                 identifierPart(class2, id2));
}

int PIUGetBackgroundInfo(std::uint32_t key, void* value, void* extra) {
  return getItem(key, value, extra, propertyPart(kClassBackgroundLayer, kKeyBackground),
                 currentPart(kClassDocument));
}

int PIUGetSingleItemFromDescriptor(PIActionDescriptor descriptor, std::uint32_t key, void* value,
                                   void* extra) {
  if (value == nullptr) return kSPBadParameterError;
  bool present = false;
  DescriptorTypeID type = 0;
  int error = askForKey(descriptor, key, present);
  if (error != 0 || !present) return error;
  error = sPSActionDescriptor->GetType(descriptor, key, &type);
  return error != 0 ? error : readItem({descriptor, key, value, extra}, type);
}

int PIUGetErrorStringFromDescriptor(PIActionDescriptor descriptor, char* buffer,
                                    std::uint32_t size) {
  if (buffer == nullptr) return kSPBadParameterError;
  bool present = false;
  std::uint32_t length = 0;
  int error = askForKey(descriptor, kKeyMessage, present);
  if (error != 0 || !present) return error;
  error = sPSActionDescriptor->GetStringLength(descriptor, kKeyMessage, &length);
  if (error != 0 || length == 0) return error;
  if (length > size) return kSPBadParameterError;
  // Unlike for other texts, the limit is the length itself, so the terminator replaces the last
  // character. Kept as callers in the field have it.
  return sPSActionDescriptor->GetString(descriptor, kKeyMessage, buffer, length);
}

int PIUCheckPlayResult(PIActionDescriptor result) {
  if (result == nullptr) return -1;
  bool present = false;
  const int error = askForKey(result, kKeyMessage, present);
  return (present ? -1 : 0) | error;
}

double UnitsToPixels(double value, std::uint32_t unit, double resolution) {
  return unit == kUnitDistance ? value * resolution / kPointsPerInch : value;
}

double PixelsToUnits(double value, std::uint32_t unit, double resolution) {
  if (unit == kUnitPixels) return value;
  if (unit != kUnitDistance || resolution == 0.0) return 0.0;
  return value * kPointsPerInch / resolution;
}
