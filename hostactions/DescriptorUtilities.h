// Generic access to the host's objects: play an action by name, read a property of any type, and
// convert lengths.
//
//   double width = 0.0;
//   std::uint32_t unit = 0;
//   error = PIUGetInfo(classDocument, keyWidth, &width, &unit);
//
// All functions return a host error code, 0 for success, and throw the host's code as a
// `std::uint32_t` where a suite cannot be acquired. A missing pointer gives the parameter error
// 0x5061726D before anything is made. [main-thread]
#pragma once

#include <PIActions.h>

#include <cstdint>

/// Plays the action of that name in the set of that name, without a dialog. Also fails as
/// `PIUCheckPlayResult` does.
int PIUActionsPlayByName(const char* setName, const char* actionName);

/// The name of an action, given by its index in the set. `*length` becomes the name's length;
/// `name` must have room for one byte more. A host that does not tell the name gives 0 with nothing
/// written.
int PIUActionsGetName(std::uint32_t setIndex, std::uint32_t actionIndex, char* name,
                      std::uint32_t* length);
int PIUActionsGetName(const char* setName, std::uint32_t actionIndex, char* name,
                      std::uint32_t* length);

/// The property `key` of the current object of a class; `value` and `extra` are as
/// `PIUGetSingleItemFromDescriptor` wants them.
int PIUGetInfo(std::uint32_t classID, std::uint32_t key, void* value, void* extra);

/// The same of the object with that index, or that identifier.
int PIUGetInfoByIndex(std::uint32_t index, std::uint32_t classID, std::uint32_t key, void* value,
                      void* extra);
int PIUGetInfoByID(std::uint32_t identifier, std::uint32_t classID, std::uint32_t key, void* value,
                   void* extra);

/// The same of an object within another, such as a layer of a document: the inner one first.
int PIUGetInfoByIndexIndex(std::uint32_t index1, std::uint32_t index2, std::uint32_t class1,
                           std::uint32_t class2, std::uint32_t key, void* value, void* extra);
int PIUGetInfoByIDID(std::uint32_t id1, std::uint32_t id2, std::uint32_t class1,
                     std::uint32_t class2, std::uint32_t key, void* value, void* extra);

/// The property `key` of the current document's background layer.
int PIUGetBackgroundInfo(std::uint32_t key, void* value, void* extra);

/// Reads the item under `key`, whatever its type; an absent one gives 0 with nothing written. What
/// the pointers must point to, by the item's type:
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
/// A text longer than the capacity, or a null `extra` where one is wanted, gives the parameter
/// error; any other type gives 0x21494D50 ('!IMP'). The caller frees objects that it is given.
int PIUGetSingleItemFromDescriptor(PIActionDescriptor descriptor, std::uint32_t key, void* value,
                                   void* extra);

/// Copies the message that a played action left, cut to its own length including the terminator;
/// no message, or an empty one, leaves the buffer alone. One longer than `size` bytes gives the
/// parameter error.
int PIUGetErrorStringFromDescriptor(PIActionDescriptor descriptor, char* buffer,
                                    std::uint32_t size);

/// Whether a played action left a message: 0 for none, -1 for one or for a null result, merged by
/// OR with the host error of asking.
int PIUCheckPlayResult(PIActionDescriptor result);

/// Pixels from a length of 1/72 inch ('#Rlt') at `resolution` pixels an inch; a value of any other
/// unit is returned as it is.
double UnitsToPixels(double value, std::uint32_t unit, double resolution);

/// The reverse for '#Rlt' (0 at resolution 0); pixels ('#Pxl') stay as they are, and every other
/// unit gives 0. That the two functions differ there is meant.
double PixelsToUnits(double value, std::uint32_t unit, double resolution);
