// Generic access to the host's objects: plays an action by name, reads a property of any type, and
// converts lengths.
//
//   double width = 0.0;
//   std::uint32_t unit = 0;
//   error = PIUGetInfo(kClassDocument, fourCharCode("Wdth"), &width, &unit);
//
// Functions that return an int return a host error code, 0 for success, and throw the host's code
// as a `std::uint32_t` if a suite cannot be acquired. A null `value`, `name`, `length` or
// `buffer` gives the parameter error 0x5061726D before the host is called. [main-thread]
#pragma once

#include <PIActions.h>

#include <cstdint>

/// Plays the action `actionName` of the set `setName` without a dialog. Also returns the errors of
/// `PIUCheckPlayResult`.
int PIUActionsPlayByName(const char* setName, const char* actionName);

/// Reads the name of the action with an index (from 1) in the set with an index or a name.
/// `*length` is output only: the name's length in bytes. Returns 0 and writes nothing if the host's
/// answer has no name; a name of 0xFFFFFFFF bytes gives the parameter error and writes nothing.
/// REQUIRES: `name` has room for the name and a terminator.
int PIUActionsGetName(std::uint32_t setIndex, std::uint32_t actionIndex, char* name,
                      std::uint32_t* length);
int PIUActionsGetName(const char* setName, std::uint32_t actionIndex, char* name,
                      std::uint32_t* length);

/// Reads the property `key` of the current object of a class; `value` and `extra` are those of
/// `PIUGetSingleItemFromDescriptor`.
int PIUGetInfo(std::uint32_t classID, std::uint32_t key, void* value, void* extra);

/// The same for the object with an index (from 1) or an identifier.
int PIUGetInfoByIndex(std::uint32_t index, std::uint32_t classID, std::uint32_t key, void* value,
                      void* extra);
int PIUGetInfoByID(std::uint32_t identifier, std::uint32_t classID, std::uint32_t key, void* value,
                   void* extra);

/// The same for an object within another, such as a layer of a document; the inner object is the
/// first of each pair of arguments.
int PIUGetInfoByIndexIndex(std::uint32_t index1, std::uint32_t index2, std::uint32_t class1,
                           std::uint32_t class2, std::uint32_t key, void* value, void* extra);
int PIUGetInfoByIDID(std::uint32_t id1, std::uint32_t id2, std::uint32_t class1,
                     std::uint32_t class2, std::uint32_t key, void* value, void* extra);

/// Reads the item `key` from the host's answer for the background layer of the current document.
/// The answer normally contains only kKeyBackground.
int PIUGetBackgroundInfo(std::uint32_t key, void* value, void* extra);

/// Reads the item under `key`. Returns 0 and writes nothing if there is none. The item's type
/// determines what the pointers must point to:
///
///   type          value                     extra
///   GlbC, type    std::uint32_t, the class
///   GlbO, Objc    PIActionDescriptor        std::uint32_t, the class
///   Pth , alis    Handle
///   TEXT          char buffer               std::uint32_t: capacity in, length out; the buffer
///                                           has one byte more than the capacity
///   UntF          double                    std::uint32_t, the unit
///   VlLs          PIActionList
///   bool          Boolean
///   comp          std::int64_t
///   doub          double
///   enum          std::uint32_t, the value  std::uint32_t, the enumeration's type
///   long          std::int32_t
///   obj           PIActionReference
///
/// A text longer than the capacity, or of 0xFFFFFFFF bytes, gives the parameter error but still
/// writes the length. A null `extra` gives the parameter error if the type needs one. Any other
/// type gives 0x21494D50
/// ('!IMP'). The caller frees the objects and handles that it receives.
int PIUGetSingleItemFromDescriptor(PIActionDescriptor descriptor, std::uint32_t key, void* value,
                                   void* extra);

/// Copies the error message from an action's result to `buffer`, whose size is `size` bytes. The
/// terminator replaces the message's last character. Returns 0 and writes nothing if there is no
/// message or it is empty. A message longer than `size` bytes gives the parameter error.
int PIUGetErrorStringFromDescriptor(PIActionDescriptor descriptor, char* buffer,
                                    std::uint32_t size);

/// Checks an action's result for an error message: returns 0 if there is none, -1 if there is one
/// or `result` is null. A host error of the check is merged in by OR.
int PIUCheckPlayResult(PIActionDescriptor result);

/// Converts a length in 1/72 inch (unit '#Rlt') to pixels at `resolution` pixels per inch. A value
/// in any other unit is returned unchanged. [any-thread]
double UnitsToPixels(double value, std::uint32_t unit, double resolution);

/// Converts pixels to 1/72 inch (unit '#Rlt'), giving 0 at resolution 0. For the unit '#Pxl' the
/// value is returned unchanged; any other unit gives 0, which differs from `UnitsToPixels` and is
/// kept as callers in the field have it. [any-thread]
double PixelsToUnits(double value, std::uint32_t unit, double resolution);
