// The action suites: descriptors, lists, references, and the control suite, which gets properties
// and plays events.
//
// Every procedure returns a 16-bit host error code, 0 for success. A descriptor, list or reference
// returned through a pointer belongs to the caller, who frees it; one put into another object is
// copied. [main-thread]
#pragma once

#include "ASZStringSuite.h"
#include "SPTypes.h"

using PIActionDescriptor = struct _ADsc*;
using PIActionList = struct _ALst*;
using PIActionReference = struct _ARef*;

using DescriptorClassID = std::uint32_t;
using DescriptorEnumID = std::uint32_t;
using DescriptorEnumTypeID = std::uint32_t;
using DescriptorEventID = std::uint32_t;
using DescriptorFormID = std::uint32_t;
using DescriptorKeyID = std::uint32_t;
using DescriptorTypeID = std::uint32_t;
using DescriptorUnitID = std::uint32_t;

using PIDialogPlayOptions = int16;
inline constexpr PIDialogPlayOptions plugInDialogDontDisplay = 0;
inline constexpr PIDialogPlayOptions plugInDialogDisplay = 1;
inline constexpr PIDialogPlayOptions plugInDialogSilent = 2;

using PIDialogRecordOptions = int16;

inline constexpr char kPSActionDescriptorSuite[] = "df135115-c769-11d0-8079-00c04fd7ec47";
inline constexpr char kPSActionListSuite[] = "df135116-c769-11d0-8079-00c04fd7ec47";
inline constexpr char kPSActionReferenceSuite[] = "df135117-c769-11d0-8079-00c04fd7ec47";
inline constexpr char kPSActionControlSuite[] = "bc1e4d70-f953-11d0-8d9f-00c04fd5f7ee";
inline constexpr char kPSBasicActionControlSuite[] = "3eb7c480-8797-11d1-8da7-00c04fd5f7ee";
inline constexpr char kPSDescriptorRegistrySuite[] = "61e608b0-40fd-11d1-8da3-00c04fd5f7ee";

inline constexpr int32 kPSActionDescriptorSuiteVersion = 5;
inline constexpr int32 kPSActionDescriptorSuiteVersion3 = 3;
inline constexpr int32 kPSActionDescriptorSuiteVersion2 = 2;
inline constexpr int32 kPSActionListSuiteVersion = 3;
inline constexpr int32 kPSActionReferenceSuiteVersion = 3;
inline constexpr int32 kPSActionControlSuiteVersion = 6;
inline constexpr int32 kPSActionControlSuiteVersion4 = 4;
inline constexpr int32 kPSActionControlSuitePrevVersion = 3;
inline constexpr int32 kPSBasicActionControlSuiteVersion = 3;
inline constexpr int32 kPSBasicActionControlSuitePrevVersion = 2;
inline constexpr int32 kPSDescriptorRegistrySuiteVersion = 1;

/// The tables of the older versions start like the newest one. No code calls through them, so their
/// members are not declared.
struct PSActionDescriptorProcs2;
struct PSActionDescriptorProcs3;

struct PSActionDescriptorProcs {
  OSErr (*Make)(PIActionDescriptor* descriptor);
  OSErr (*Free)(PIActionDescriptor descriptor);
  OSErr (*GetType)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorTypeID* type);
  OSErr (*GetKey)(PIActionDescriptor descriptor, uint32 index, DescriptorKeyID* key);
  OSErr (*HasKey)(PIActionDescriptor descriptor, DescriptorKeyID key, Boolean* hasKey);
  OSErr (*GetCount)(PIActionDescriptor descriptor, uint32* count);
  OSErr (*IsEqual)(PIActionDescriptor descriptor, PIActionDescriptor other, Boolean* isEqual);
  OSErr (*Erase)(PIActionDescriptor descriptor, DescriptorKeyID key);
  OSErr (*Clear)(PIActionDescriptor descriptor);
  OSErr (*PutInteger)(PIActionDescriptor descriptor, DescriptorKeyID key, int32 value);
  OSErr (*PutFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, real64 value);
  OSErr (*PutUnitFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorUnitID unit,
                        real64 value);
  OSErr (*PutString)(PIActionDescriptor descriptor, DescriptorKeyID key, const char* value);
  OSErr (*PutBoolean)(PIActionDescriptor descriptor, DescriptorKeyID key, Boolean value);
  OSErr (*PutList)(PIActionDescriptor descriptor, DescriptorKeyID key, PIActionList value);
  OSErr (*PutObject)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID type,
                     PIActionDescriptor value);
  OSErr (*PutGlobalObject)(PIActionDescriptor descriptor, DescriptorKeyID key,
                           DescriptorClassID type, PIActionDescriptor value);
  OSErr (*PutEnumerated)(PIActionDescriptor descriptor, DescriptorKeyID key,
                         DescriptorEnumTypeID type, DescriptorEnumID value);
  OSErr (*PutReference)(PIActionDescriptor descriptor, DescriptorKeyID key,
                        PIActionReference value);
  OSErr (*PutClass)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID value);
  OSErr (*PutGlobalClass)(PIActionDescriptor descriptor, DescriptorKeyID key,
                          DescriptorClassID value);
  OSErr (*PutAlias)(PIActionDescriptor descriptor, DescriptorKeyID key, Handle value);
  OSErr (*GetInteger)(PIActionDescriptor descriptor, DescriptorKeyID key, int32* value);
  OSErr (*GetFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, real64* value);
  OSErr (*GetUnitFloat)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorUnitID* unit,
                        real64* value);
  /// Writes the length in bytes of the text without its terminator.
  OSErr (*GetStringLength)(PIActionDescriptor descriptor, DescriptorKeyID key,
                           uint32* stringLength);
  /// Writes at most `maxLength` bytes, the terminating zero among them.
  OSErr (*GetString)(PIActionDescriptor descriptor, DescriptorKeyID key, char* value,
                     uint32 maxLength);
  OSErr (*GetBoolean)(PIActionDescriptor descriptor, DescriptorKeyID key, Boolean* value);
  OSErr (*GetList)(PIActionDescriptor descriptor, DescriptorKeyID key, PIActionList* value);
  OSErr (*GetObject)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* type,
                     PIActionDescriptor* value);
  OSErr (*GetGlobalObject)(PIActionDescriptor descriptor, DescriptorKeyID key,
                           DescriptorClassID* type, PIActionDescriptor* value);
  OSErr (*GetEnumerated)(PIActionDescriptor descriptor, DescriptorKeyID key,
                         DescriptorEnumTypeID* type, DescriptorEnumID* value);
  OSErr (*GetReference)(PIActionDescriptor descriptor, DescriptorKeyID key,
                        PIActionReference* value);
  OSErr (*GetClass)(PIActionDescriptor descriptor, DescriptorKeyID key, DescriptorClassID* value);
  OSErr (*GetGlobalClass)(PIActionDescriptor descriptor, DescriptorKeyID key,
                          DescriptorClassID* value);
  OSErr (*GetAlias)(PIActionDescriptor descriptor, DescriptorKeyID key, Handle* value);
  OSErr (*HasKeys)(PIActionDescriptor descriptor, const DescriptorKeyID* requiredKeys,
                   Boolean* hasKeys);
  OSErr (*PutIntegers)(PIActionDescriptor descriptor, DescriptorKeyID key, uint32 count,
                       const int32* values);
  OSErr (*GetIntegers)(PIActionDescriptor descriptor, DescriptorKeyID key, uint32 count,
                       int32* values);
  OSErr (*AsHandle)(PIActionDescriptor descriptor, Handle* value);
  OSErr (*HandleToDescriptor)(Handle value, PIActionDescriptor* descriptor);
  OSErr (*PutZString)(PIActionDescriptor descriptor, DescriptorKeyID key, ASZString value);
  OSErr (*GetZString)(PIActionDescriptor descriptor, DescriptorKeyID key, ASZString* value);
  OSErr (*PutData)(PIActionDescriptor descriptor, DescriptorKeyID key, int32 length,
                   const void* value);
  OSErr (*GetDataLength)(PIActionDescriptor descriptor, DescriptorKeyID key, int32* length);
  OSErr (*GetData)(PIActionDescriptor descriptor, DescriptorKeyID key, void* value);
  OSErr (*PutInteger64)(PIActionDescriptor descriptor, DescriptorKeyID key, int64 value);
  OSErr (*GetInteger64)(PIActionDescriptor descriptor, DescriptorKeyID key, int64* value);
  OSErr (*PutBookmark)(PIActionDescriptor descriptor, DescriptorKeyID key, CFDataRef value);
  /// The caller releases the data.
  OSErr (*GetBookmark)(PIActionDescriptor descriptor, DescriptorKeyID key, CFDataRef* value);
};

/// Like the descriptor's procedures but without keys: the Put procedures append an item, the Get
/// procedures read the item at a zero-based index.
struct PSActionListProcs {
  OSErr (*Make)(PIActionList* list);
  OSErr (*Free)(PIActionList list);
  OSErr (*GetType)(PIActionList list, uint32 index, DescriptorTypeID* type);
  OSErr (*GetCount)(PIActionList list, uint32* count);
  OSErr (*PutInteger)(PIActionList list, int32 value);
  OSErr (*PutFloat)(PIActionList list, real64 value);
  OSErr (*PutUnitFloat)(PIActionList list, DescriptorUnitID unit, real64 value);
  OSErr (*PutString)(PIActionList list, const char* value);
  OSErr (*PutBoolean)(PIActionList list, Boolean value);
  OSErr (*PutList)(PIActionList list, PIActionList value);
  OSErr (*PutObject)(PIActionList list, DescriptorClassID type, PIActionDescriptor value);
  OSErr (*PutGlobalObject)(PIActionList list, DescriptorClassID type, PIActionDescriptor value);
  OSErr (*PutEnumerated)(PIActionList list, DescriptorEnumTypeID type, DescriptorEnumID value);
  OSErr (*PutReference)(PIActionList list, PIActionReference value);
  OSErr (*PutClass)(PIActionList list, DescriptorClassID value);
  OSErr (*PutGlobalClass)(PIActionList list, DescriptorClassID value);
  OSErr (*PutAlias)(PIActionList list, Handle value);
  OSErr (*GetInteger)(PIActionList list, uint32 index, int32* value);
  OSErr (*GetFloat)(PIActionList list, uint32 index, real64* value);
  OSErr (*GetUnitFloat)(PIActionList list, uint32 index, DescriptorUnitID* unit, real64* value);
  OSErr (*GetStringLength)(PIActionList list, uint32 index, uint32* stringLength);
  OSErr (*GetString)(PIActionList list, uint32 index, char* value, uint32 maxLength);
  OSErr (*GetBoolean)(PIActionList list, uint32 index, Boolean* value);
  OSErr (*GetList)(PIActionList list, uint32 index, PIActionList* value);
  OSErr (*GetObject)(PIActionList list, uint32 index, DescriptorClassID* type,
                     PIActionDescriptor* value);
  OSErr (*GetGlobalObject)(PIActionList list, uint32 index, DescriptorClassID* type,
                           PIActionDescriptor* value);
  OSErr (*GetEnumerated)(PIActionList list, uint32 index, DescriptorEnumTypeID* type,
                         DescriptorEnumID* value);
  OSErr (*GetReference)(PIActionList list, uint32 index, PIActionReference* value);
  OSErr (*GetClass)(PIActionList list, uint32 index, DescriptorClassID* value);
  OSErr (*GetGlobalClass)(PIActionList list, uint32 index, DescriptorClassID* value);
  OSErr (*GetAlias)(PIActionList list, uint32 index, Handle* value);
  OSErr (*PutIntegers)(PIActionList list, uint32 count, const int32* values);
  OSErr (*GetIntegers)(PIActionList list, uint32 count, int32* values);
  OSErr (*PutData)(PIActionList list, int32 length, const void* value);
  OSErr (*GetDataLength)(PIActionList list, uint32 index, int32* length);
  OSErr (*GetData)(PIActionList list, uint32 index, void* value);
  OSErr (*PutZString)(PIActionList list, ASZString value);
  OSErr (*GetZString)(PIActionList list, uint32 index, ASZString* value);
  OSErr (*PutInteger64)(PIActionList list, int64 value);
  OSErr (*GetInteger64)(PIActionList list, uint32 index, int64* value);
  OSErr (*PutBookmark)(PIActionList list, CFDataRef value);
  OSErr (*GetBookmark)(PIActionList list, uint32 index, CFDataRef* value);
};

/// A reference is a chain of forms. The Get procedures read the form that was put first;
/// GetContainer returns the rest of the chain, null at its end.
struct PSActionReferenceProcs {
  OSErr (*Make)(PIActionReference* reference);
  OSErr (*Free)(PIActionReference reference);
  OSErr (*GetForm)(PIActionReference reference, DescriptorFormID* form);
  OSErr (*GetDesiredClass)(PIActionReference reference, DescriptorClassID* desiredClass);
  OSErr (*PutName)(PIActionReference reference, DescriptorClassID desiredClass, const char* name);
  OSErr (*PutIndex)(PIActionReference reference, DescriptorClassID desiredClass, uint32 index);
  OSErr (*PutIdentifier)(PIActionReference reference, DescriptorClassID desiredClass,
                         uint32 identifier);
  OSErr (*PutOffset)(PIActionReference reference, DescriptorClassID desiredClass, int32 offset);
  OSErr (*PutEnumerated)(PIActionReference reference, DescriptorClassID desiredClass,
                         DescriptorEnumTypeID type, DescriptorEnumID value);
  OSErr (*PutProperty)(PIActionReference reference, DescriptorClassID desiredClass,
                       DescriptorKeyID key);
  OSErr (*PutClass)(PIActionReference reference, DescriptorClassID desiredClass);
  /// Writes the length in bytes of the name without its terminator.
  OSErr (*GetNameLength)(PIActionReference reference, uint32* stringLength);
  /// Writes at most `maxLength` bytes, the terminating zero among them.
  OSErr (*GetName)(PIActionReference reference, char* name, uint32 maxLength);
  OSErr (*GetIndex)(PIActionReference reference, uint32* index);
  OSErr (*GetIdentifier)(PIActionReference reference, uint32* identifier);
  OSErr (*GetOffset)(PIActionReference reference, int32* offset);
  OSErr (*GetEnumerated)(PIActionReference reference, DescriptorEnumTypeID* type,
                         DescriptorEnumID* value);
  OSErr (*GetProperty)(PIActionReference reference, DescriptorKeyID* key);
  OSErr (*GetContainer)(PIActionReference reference, PIActionReference* container);
  OSErr (*PutNameZString)(PIActionReference reference, DescriptorClassID desiredClass,
                          ASZString name);
  OSErr (*GetNameZString)(PIActionReference reference, ASZString* name);
};

struct PSActionControlProcs4;
struct PSActionControlProcsOld;

struct PSActionControlProcs {
  /// Plays `eventID` with the parameters in `descriptor`, which may be null. Writes the event's
  /// result descriptor to `result`, null if it has none.
  OSErr (*Play)(PIActionDescriptor* result, DescriptorEventID eventID,
                PIActionDescriptor descriptor, PIDialogPlayOptions dialogOptions);
  OSErr (*BeginProfile)(DescriptorEventID eventID);
  OSErr (*EndProfile)(DescriptorEventID eventID);
  /// Gets all properties of the object to which `reference` refers; only one if the reference has a
  /// property form.
  OSErr (*Get)(PIActionDescriptor* descriptor, PIActionReference reference);
  OSErr (*StringIDToTypeID)(const char* stringID, DescriptorTypeID* typeID);
  /// Writes at most `stringIDLength` bytes, the terminating zero among them.
  OSErr (*TypeIDToStringID)(DescriptorTypeID typeID, char* stringID, uint32 stringIDLength);
};

/// No code calls through these tables, so their members are not declared.
struct PSBasicActionControlProcs;
struct PSBasicActionControlProcsOld;

/// Descriptors that the host keeps for a plug-in between calls.
struct PSDescriptorRegistryProcs {
  SPErr (*Register)(const char* key, PIActionDescriptor descriptor, Boolean isPersistent);
  SPErr (*Erase)(const char* key);
  SPErr (*Get)(const char* key, PIActionDescriptor* descriptor);
};
