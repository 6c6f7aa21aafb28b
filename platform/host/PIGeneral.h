// The host's callback records: tables that begin with a 16-bit version and a 16-bit count of
// procedures. The procedures follow at their natural alignment, which on a 64-bit host is offset 8.
#pragma once

#include "PIActions.h"

// Errors that the host's callbacks return.
inline constexpr OSErr errPlugInHostInsufficient = -30900;
inline constexpr OSErr errPlugInPropertyUndefined = -30901;
inline constexpr OSErr errHostDoesNotSupportColStep = -30902;
inline constexpr OSErr errInvalidSamplePoint = -30903;
inline constexpr OSErr errReportString = -30904;
inline constexpr OSErr errMissingParameter = -1715;

// Image modes.
inline constexpr int16 plugInModeBitmap = 0;
inline constexpr int16 plugInModeGrayScale = 1;
inline constexpr int16 plugInModeIndexedColor = 2;
inline constexpr int16 plugInModeRGBColor = 3;
inline constexpr int16 plugInModeCMYKColor = 4;
inline constexpr int16 plugInModeHSLColor = 5;
inline constexpr int16 plugInModeHSBColor = 6;
inline constexpr int16 plugInModeMultichannel = 7;
inline constexpr int16 plugInModeDuotone = 8;
inline constexpr int16 plugInModeLabColor = 9;
inline constexpr int16 plugInModeGray16 = 10;
inline constexpr int16 plugInModeRGB48 = 11;
inline constexpr int16 plugInModeLab48 = 12;
inline constexpr int16 plugInModeCMYK64 = 13;
inline constexpr int16 plugInModeDeepMultichannel = 14;
inline constexpr int16 plugInModeDuotone16 = 15;
inline constexpr int16 plugInModeRGB96 = 16;
inline constexpr int16 plugInModeGray32 = 17;

// Progress and interruption.
using TestAbortProc = Boolean (*)();
using ProgressProc = void (*)(int32 done, int32 total);
using HostProc = void (*)(int16 selector, std::intptr_t* data);
using ProcessEventProc = void (*)(const void* event);
using AdvanceStateProc = OSErr (*)();

// Buffers.
using BufferID = struct PIBuffer*;
using AllocateBufferProc = OSErr (*)(int32 size, BufferID* buffer);
using AllocateBufferProc64 = OSErr (*)(int64 size, BufferID* buffer);
using LockBufferProc = Ptr (*)(BufferID buffer, Boolean moveHigh);
using UnlockBufferProc = void (*)(BufferID buffer);
using FreeBufferProc = void (*)(BufferID buffer);
using BufferSpaceProc = int32 (*)();
using BufferSpaceProc64 = int64 (*)();
using AllocateStripBufferProc = OSErr (*)(int32 size, BufferID* buffer);

inline constexpr int16 kCurrentBufferProcsVersion = 2;
inline constexpr int16 kCurrentBufferProcsCount = 8;

struct BufferProcs {
  int16 bufferProcsVersion;
  int16 numBufferProcs;
  AllocateBufferProc allocateProc;
  LockBufferProc lockProc;
  UnlockBufferProc unlockProc;
  FreeBufferProc freeProc;
  BufferSpaceProc spaceProc;
  AllocateBufferProc64 allocateProc64;
  BufferSpaceProc64 spaceProc64;
  AllocateStripBufferProc allocateStripProc;
};

// Resources of the document that the plug-in works on.
using CountPIResourcesProc = int16 (*)(ResType type);
using GetPIResourceProc = Handle (*)(ResType type, int16 index);
using DeletePIResourceProc = void (*)(ResType type, int16 index);
using AddPIResourceProc = OSErr (*)(ResType type, Handle data);

inline constexpr char kPSResourceSuite[] = "Photoshop Resource Suite for Plug-ins";
inline constexpr int16 kCurrentResourceProcsVersion = 3;
inline constexpr int16 kCurrentResourceProcsCount = 4;

struct ResourceProcs {
  int16 resourceProcsVersion;
  int16 numResourceProcs;
  CountPIResourcesProc countProc;
  GetPIResourceProc getProc;
  DeletePIResourceProc deleteProc;
  AddPIResourceProc addProc;
};

// Relocatable blocks.
using NewPIHandleProc = Handle (*)(int32 size);
using DisposePIHandleProc = void (*)(Handle handle);
using GetPIHandleSizeProc = int32 (*)(Handle handle);
using SetPIHandleSizeProc = OSErr (*)(Handle handle, int32 newSize);
using LockPIHandleProc = Ptr (*)(Handle handle, Boolean moveHigh);
using UnlockPIHandleProc = void (*)(Handle handle);
using RecoverSpaceProc = void (*)(int32 size);
using DisposeRegularHandlePIHandleProc = void (*)(Handle handle);

inline constexpr int16 kCurrentHandleProcsVersion = 1;
inline constexpr int16 kCurrentHandleProcsCount = 8;

struct HandleProcs {
  int16 handleProcsVersion;
  int16 numHandleProcs;
  NewPIHandleProc newProc;
  DisposePIHandleProc disposeProc;
  GetPIHandleSizeProc getSizeProc;
  SetPIHandleSizeProc setSizeProc;
  LockPIHandleProc lockProc;
  UnlockPIHandleProc unlockProc;
  RecoverSpaceProc recoverSpaceProc;
  DisposeRegularHandlePIHandleProc disposeRegularHandleProc;
};

// Properties of the host and its documents.
using GetPropertyProc = OSErr (*)(PIType signature, PIType key, int32 index,
                                  std::intptr_t* simpleProperty, Handle* complexProperty);
using SetPropertyProc = OSErr (*)(PIType signature, PIType key, int32 index,
                                  std::intptr_t simpleProperty, Handle complexProperty);

inline constexpr int16 kCurrentPropertyProcsVersion = 1;
inline constexpr int16 kCurrentPropertyProcsCount = 2;

/// Also the table of the property suite. Destinations may be null and are then not written.
struct PropertyProcs {
  int16 propertyProcsVersion;
  int16 numPropertyProcs;
  GetPropertyProc getPropertyProc;
  SetPropertyProc setPropertyProc;
};

// Pixels of a document's channels.
using PIChannelPort = struct _PIChannelPortDesc*;

/// Pixels in memory; offsets and strides are in bits.
struct PixelMemoryDesc {
  void* data;
  int32 rowBits;
  int32 colBits;
  int32 bitOffset;
  int32 depth;
};

struct PSScaling {
  VRect sourceRect;
  VRect destinationRect;
};

using ReadPixelsProc = OSErr (*)(PIChannelPort port, const PSScaling* scaling,
                                 const VRect* writeRect, const PixelMemoryDesc* destination,
                                 VRect* wroteRect);
using WriteBasePixelsProc = OSErr (*)(PIChannelPort port, const VRect* writeRect,
                                      const PixelMemoryDesc* source);
using ReadPortForWritePortProc = OSErr (*)(PIChannelPort* readPort, PIChannelPort writePort);

inline constexpr int16 kCurrentChannelPortProcsVersion = 1;
inline constexpr int16 kCurrentChannelPortProcsCount = 3;

struct ChannelPortProcs {
  int16 channelPortProcsVersion;
  int16 numChannelPortProcs;
  ReadPixelsProc readPixelsProc;
  WriteBasePixelsProc writeBasePixelsProc;
  ReadPortForWritePortProc readPortForWritePortProc;
};

// Scripting parameters.
using PIReadDescriptor = struct PIOpaqueReadDescriptor*;
using PIWriteDescriptor = struct PIOpaqueWriteDescriptor*;
using PIDescriptorHandle = Handle;
/// The keys that a reader expects, terminated by 0.
using DescriptorKeyIDArray = DescriptorKeyID*;

struct PIDescriptorSimpleReference__keyData {
  Str255 name;
  int32 index;
  DescriptorTypeID type;
  DescriptorEnumID value;
};

struct PIDescriptorSimpleReference {
  DescriptorTypeID desiredClass;
  DescriptorKeyID keyForm;
  PIDescriptorSimpleReference__keyData keyData;
};

using OpenReadDescriptorProc = PIReadDescriptor (*)(PIDescriptorHandle descriptor,
                                                    DescriptorKeyIDArray expectedKeys);
/// Disposes of the reader and returns the first error of its reads.
using CloseReadDescriptorProc = OSErr (*)(PIReadDescriptor reader);
using GetKeyProc = Boolean (*)(PIReadDescriptor reader, DescriptorKeyID* key,
                               DescriptorTypeID* type, int32* flags);
using GetIntegerProc = OSErr (*)(PIReadDescriptor reader, int32* value);
using GetFloatProc = OSErr (*)(PIReadDescriptor reader, real64* value);
using GetUnitFloatProc = OSErr (*)(PIReadDescriptor reader, DescriptorUnitID* unit, real64* value);
using GetBooleanProc = OSErr (*)(PIReadDescriptor reader, Boolean* value);
using GetTextProc = OSErr (*)(PIReadDescriptor reader, Handle* value);
using GetAliasProc = OSErr (*)(PIReadDescriptor reader, Handle* value);
using GetEnumeratedProc = OSErr (*)(PIReadDescriptor reader, DescriptorEnumID* value);
using GetClassProc = OSErr (*)(PIReadDescriptor reader, DescriptorTypeID* value);
using GetSimpleReferenceProc = OSErr (*)(PIReadDescriptor reader,
                                         PIDescriptorSimpleReference* value);
using GetObjectProc = OSErr (*)(PIReadDescriptor reader, DescriptorTypeID* type,
                                PIDescriptorHandle* value);
using GetCountProc = OSErr (*)(PIReadDescriptor reader, uint32* value);
using GetStringProc = OSErr (*)(PIReadDescriptor reader, Str255* value);
using GetPinnedIntegerProc = OSErr (*)(PIReadDescriptor reader, int32 minimum, int32 maximum,
                                       int32* value);
using GetPinnedFloatProc = OSErr (*)(PIReadDescriptor reader, const real64* minimum,
                                     const real64* maximum, real64* value);
using GetPinnedUnitFloatProc = OSErr (*)(PIReadDescriptor reader, const real64* minimum,
                                         const real64* maximum, DescriptorUnitID* unit,
                                         real64* value);

inline constexpr int16 kCurrentReadDescriptorProcsVersion = 0;
inline constexpr int16 kCurrentReadDescriptorProcsCount = 18;

struct ReadDescriptorProcs {
  int16 readDescriptorProcsVersion;
  int16 numReadDescriptorProcs;
  OpenReadDescriptorProc openReadDescriptorProc;
  CloseReadDescriptorProc closeReadDescriptorProc;
  GetKeyProc getKeyProc;
  GetIntegerProc getIntegerProc;
  GetFloatProc getFloatProc;
  GetUnitFloatProc getUnitFloatProc;
  GetBooleanProc getBooleanProc;
  GetTextProc getTextProc;
  GetAliasProc getAliasProc;
  GetEnumeratedProc getEnumeratedProc;
  GetClassProc getClassProc;
  GetSimpleReferenceProc getSimpleReferenceProc;
  GetObjectProc getObjectProc;
  GetCountProc getCountProc;
  GetStringProc getStringProc;
  GetPinnedIntegerProc getPinnedIntegerProc;
  GetPinnedFloatProc getPinnedFloatProc;
  GetPinnedUnitFloatProc getPinnedUnitFloatProc;
};

using OpenWriteDescriptorProc = PIWriteDescriptor (*)();
/// Disposes of the writer; the caller owns the handle written to `descriptor`.
using CloseWriteDescriptorProc = OSErr (*)(PIWriteDescriptor writer,
                                           PIDescriptorHandle* descriptor);
using PutIntegerProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key, int32 value);
using PutFloatProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key, const real64* value);
using PutUnitFloatProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                                   DescriptorUnitID unit, const real64* value);
using PutBooleanProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key, Boolean value);
using PutTextProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
using PutAliasProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key, Handle value);
using PutEnumeratedProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                                    DescriptorTypeID type, DescriptorEnumID value);
using PutClassProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                               DescriptorTypeID value);
using PutSimpleReferenceProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                                         const PIDescriptorSimpleReference* value);
using PutObjectProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                                DescriptorTypeID type, PIDescriptorHandle value);
using PutCountProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key, uint32 value);
using PutStringProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                                const unsigned char* value);
using PutScopedClassProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                                     DescriptorTypeID value);
using PutScopedObjectProc = OSErr (*)(PIWriteDescriptor writer, DescriptorKeyID key,
                                      DescriptorTypeID type, PIDescriptorHandle value);

inline constexpr int16 kCurrentWriteDescriptorProcsVersion = 0;
inline constexpr int16 kCurrentWriteDescriptorProcsCount = 16;

struct WriteDescriptorProcs {
  int16 writeDescriptorProcsVersion;
  int16 numWriteDescriptorProcs;
  OpenWriteDescriptorProc openWriteDescriptorProc;
  CloseWriteDescriptorProc closeWriteDescriptorProc;
  PutIntegerProc putIntegerProc;
  PutFloatProc putFloatProc;
  PutUnitFloatProc putUnitFloatProc;
  PutBooleanProc putBooleanProc;
  PutTextProc putTextProc;
  PutAliasProc putAliasProc;
  PutEnumeratedProc putEnumeratedProc;
  PutClassProc putClassProc;
  PutSimpleReferenceProc putSimpleReferenceProc;
  PutObjectProc putObjectProc;
  PutCountProc putCountProc;
  PutStringProc putStringProc;
  PutScopedClassProc putScopedClassProc;
  PutScopedObjectProc putScopedObjectProc;
};

inline constexpr int16 kCurrentDescriptorParametersVersion = 0;

/// The parameters of a call. Unlike the other records it has no count of procedures.
struct PIDescriptorParameters {
  int16 descriptorParametersVersion;
  PIDialogPlayOptions playInfo;
  PIDialogRecordOptions recordInfo;
  PIDescriptorHandle descriptor;
  WriteDescriptorProcs* writeDescriptorProcs;
  ReadDescriptorProcs* readDescriptorProcs;
};

// Colour services.
inline constexpr int16 plugIncolorServicesChooseColor = 0;
inline constexpr int16 plugIncolorServicesConvertColor = 1;
inline constexpr int16 plugIncolorServicesSamplePoint = 2;
inline constexpr int16 plugIncolorServicesGetSpecialColor = 3;

inline constexpr int16 plugIncolorServicesRGBSpace = 0;
inline constexpr int16 plugIncolorServicesHSBSpace = 1;
inline constexpr int16 plugIncolorServicesCMYKSpace = 2;
inline constexpr int16 plugIncolorServicesLabSpace = 3;
inline constexpr int16 plugIncolorServicesGraySpace = 4;
inline constexpr int16 plugIncolorServicesHSLSpace = 5;
inline constexpr int16 plugIncolorServicesXYZSpace = 6;
inline constexpr int16 plugIncolorServicesChosenSpace = -1;

struct ColorServicesInfo {
  int32 infoSize;
  int16 selector;
  int16 sourceSpace;
  int16 resultSpace;
  Boolean resultGamutInfoValid;
  Boolean resultInGamut;
  void* reservedSourceSpaceInfo;
  void* reservedResultSpaceInfo;
  int16 colorComponents[4];
  void* reserved;
  union {
    Str255* pickerPrompt;
    Point* globalSamplePoint;
    int32 specialColorID;
  } selectorParameter;
};

using ColorServicesProc = OSErr (*)(ColorServicesInfo* info);

// Display of pixels.
struct PSPixelMask {
  PSPixelMask* next;
  void* maskData;
  int32 rowBytes;
  int32 colBytes;
  int32 maskDescription;
};

struct PSPixelOverlay;

struct PSPixelMap {
  int32 version;
  VRect bounds;
  int32 imageMode;
  int32 rowBytes;
  int32 colBytes;
  int32 planeBytes;
  void* baseAddr;
  PSPixelMask* mat;
  PSPixelMask* masks;
  int32 maskPhaseRow;
  int32 maskPhaseCol;
  PSPixelOverlay* pixelOverlays;
  uint32 colorManagementOptions;
};

using DisplayPixelsProc = OSErr (*)(const PSPixelMap* source, const VRect* srcRect, int32 dstRow,
                                    int32 dstCol, void* platformContext);
