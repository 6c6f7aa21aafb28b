// Checks the offsets of the members of each host record that the plug-in uses. This file is
// compiled against the headers in this folder and, if a copy of the host's SDK is available,
// against the SDK's headers. It includes them by name without a path: the include path selects
// which it gets.
#include <ASZStringSuite.h>
#include <PIActions.h>
#include <PIActionsPlugIn.h>
#include <PIGeneral.h>
#include <PIHandleSuite.h>
#include <PIProperties.h>
#include <SPBasic.h>
#include <SPMData.h>
#if __has_include(<PIAliasSuite.h>)
#include <PIAliasSuite.h>
#endif

#include <cstddef>

namespace {

/// The offset in bytes of the procedure with index `n` in a suite's table.
constexpr std::size_t entry(std::size_t n) { return n * sizeof(void (*)()); }

/// The offset in bytes of the procedure with index `n` in a callback record, which starts with a
/// version and a count.
constexpr std::size_t callback(std::size_t n) { return 8 + entry(n); }

}  // namespace

#define MRV_OFFSET(record, member, offset) \
  static_assert(offsetof(record, member) == (offset), #record "::" #member " lies elsewhere")

MRV_OFFSET(SPBasicSuite, AcquireSuite, entry(0));
MRV_OFFSET(SPBasicSuite, ReleaseSuite, entry(1));
MRV_OFFSET(SPBasicSuite, IsEqual, entry(2));
MRV_OFFSET(SPBasicSuite, AllocateBlock, entry(3));
MRV_OFFSET(SPBasicSuite, FreeBlock, entry(4));
MRV_OFFSET(SPBasicSuite, ReallocateBlock, entry(5));
MRV_OFFSET(SPBasicSuite, Undefined, entry(6));

MRV_OFFSET(PSActionDescriptorProcs, Make, entry(0));
MRV_OFFSET(PSActionDescriptorProcs, Free, entry(1));
MRV_OFFSET(PSActionDescriptorProcs, GetType, entry(2));
MRV_OFFSET(PSActionDescriptorProcs, GetKey, entry(3));
MRV_OFFSET(PSActionDescriptorProcs, HasKey, entry(4));
MRV_OFFSET(PSActionDescriptorProcs, GetCount, entry(5));
MRV_OFFSET(PSActionDescriptorProcs, IsEqual, entry(6));
MRV_OFFSET(PSActionDescriptorProcs, Erase, entry(7));
MRV_OFFSET(PSActionDescriptorProcs, Clear, entry(8));
MRV_OFFSET(PSActionDescriptorProcs, PutInteger, entry(9));
MRV_OFFSET(PSActionDescriptorProcs, PutFloat, entry(10));
MRV_OFFSET(PSActionDescriptorProcs, PutUnitFloat, entry(11));
MRV_OFFSET(PSActionDescriptorProcs, PutString, entry(12));
MRV_OFFSET(PSActionDescriptorProcs, PutBoolean, entry(13));
MRV_OFFSET(PSActionDescriptorProcs, PutList, entry(14));
MRV_OFFSET(PSActionDescriptorProcs, PutObject, entry(15));
MRV_OFFSET(PSActionDescriptorProcs, PutGlobalObject, entry(16));
MRV_OFFSET(PSActionDescriptorProcs, PutEnumerated, entry(17));
MRV_OFFSET(PSActionDescriptorProcs, PutReference, entry(18));
MRV_OFFSET(PSActionDescriptorProcs, PutClass, entry(19));
MRV_OFFSET(PSActionDescriptorProcs, PutGlobalClass, entry(20));
MRV_OFFSET(PSActionDescriptorProcs, PutAlias, entry(21));
MRV_OFFSET(PSActionDescriptorProcs, GetInteger, entry(22));
MRV_OFFSET(PSActionDescriptorProcs, GetFloat, entry(23));
MRV_OFFSET(PSActionDescriptorProcs, GetUnitFloat, entry(24));
MRV_OFFSET(PSActionDescriptorProcs, GetStringLength, entry(25));
MRV_OFFSET(PSActionDescriptorProcs, GetString, entry(26));
MRV_OFFSET(PSActionDescriptorProcs, GetBoolean, entry(27));
MRV_OFFSET(PSActionDescriptorProcs, GetList, entry(28));
MRV_OFFSET(PSActionDescriptorProcs, GetObject, entry(29));
MRV_OFFSET(PSActionDescriptorProcs, GetGlobalObject, entry(30));
MRV_OFFSET(PSActionDescriptorProcs, GetEnumerated, entry(31));
MRV_OFFSET(PSActionDescriptorProcs, GetReference, entry(32));
MRV_OFFSET(PSActionDescriptorProcs, GetClass, entry(33));
MRV_OFFSET(PSActionDescriptorProcs, GetGlobalClass, entry(34));
MRV_OFFSET(PSActionDescriptorProcs, GetAlias, entry(35));
MRV_OFFSET(PSActionDescriptorProcs, HasKeys, entry(36));
MRV_OFFSET(PSActionDescriptorProcs, PutIntegers, entry(37));
MRV_OFFSET(PSActionDescriptorProcs, GetIntegers, entry(38));
MRV_OFFSET(PSActionDescriptorProcs, AsHandle, entry(39));
MRV_OFFSET(PSActionDescriptorProcs, HandleToDescriptor, entry(40));
MRV_OFFSET(PSActionDescriptorProcs, PutZString, entry(41));
MRV_OFFSET(PSActionDescriptorProcs, GetZString, entry(42));
MRV_OFFSET(PSActionDescriptorProcs, PutData, entry(43));
MRV_OFFSET(PSActionDescriptorProcs, GetDataLength, entry(44));
MRV_OFFSET(PSActionDescriptorProcs, GetData, entry(45));
MRV_OFFSET(PSActionDescriptorProcs, PutInteger64, entry(46));
MRV_OFFSET(PSActionDescriptorProcs, GetInteger64, entry(47));
MRV_OFFSET(PSActionDescriptorProcs, PutBookmark, entry(48));
MRV_OFFSET(PSActionDescriptorProcs, GetBookmark, entry(49));

MRV_OFFSET(PSActionListProcs, Make, entry(0));
MRV_OFFSET(PSActionListProcs, Free, entry(1));
MRV_OFFSET(PSActionListProcs, GetType, entry(2));
MRV_OFFSET(PSActionListProcs, GetCount, entry(3));
MRV_OFFSET(PSActionListProcs, PutInteger, entry(4));
MRV_OFFSET(PSActionListProcs, PutFloat, entry(5));
MRV_OFFSET(PSActionListProcs, PutUnitFloat, entry(6));
MRV_OFFSET(PSActionListProcs, PutString, entry(7));
MRV_OFFSET(PSActionListProcs, PutBoolean, entry(8));
MRV_OFFSET(PSActionListProcs, PutList, entry(9));
MRV_OFFSET(PSActionListProcs, PutObject, entry(10));
MRV_OFFSET(PSActionListProcs, PutGlobalObject, entry(11));
MRV_OFFSET(PSActionListProcs, PutEnumerated, entry(12));
MRV_OFFSET(PSActionListProcs, PutReference, entry(13));
MRV_OFFSET(PSActionListProcs, PutClass, entry(14));
MRV_OFFSET(PSActionListProcs, PutGlobalClass, entry(15));
MRV_OFFSET(PSActionListProcs, PutAlias, entry(16));
MRV_OFFSET(PSActionListProcs, GetInteger, entry(17));
MRV_OFFSET(PSActionListProcs, GetFloat, entry(18));
MRV_OFFSET(PSActionListProcs, GetUnitFloat, entry(19));
MRV_OFFSET(PSActionListProcs, GetStringLength, entry(20));
MRV_OFFSET(PSActionListProcs, GetString, entry(21));
MRV_OFFSET(PSActionListProcs, GetBoolean, entry(22));
MRV_OFFSET(PSActionListProcs, GetList, entry(23));
MRV_OFFSET(PSActionListProcs, GetObject, entry(24));
MRV_OFFSET(PSActionListProcs, GetGlobalObject, entry(25));
MRV_OFFSET(PSActionListProcs, GetEnumerated, entry(26));
MRV_OFFSET(PSActionListProcs, GetReference, entry(27));
MRV_OFFSET(PSActionListProcs, GetClass, entry(28));
MRV_OFFSET(PSActionListProcs, GetGlobalClass, entry(29));
MRV_OFFSET(PSActionListProcs, GetAlias, entry(30));
MRV_OFFSET(PSActionListProcs, PutIntegers, entry(31));
MRV_OFFSET(PSActionListProcs, GetIntegers, entry(32));
MRV_OFFSET(PSActionListProcs, PutData, entry(33));
MRV_OFFSET(PSActionListProcs, GetDataLength, entry(34));
MRV_OFFSET(PSActionListProcs, GetData, entry(35));
MRV_OFFSET(PSActionListProcs, PutZString, entry(36));
MRV_OFFSET(PSActionListProcs, GetZString, entry(37));
MRV_OFFSET(PSActionListProcs, PutInteger64, entry(38));
MRV_OFFSET(PSActionListProcs, GetInteger64, entry(39));
MRV_OFFSET(PSActionListProcs, PutBookmark, entry(40));
MRV_OFFSET(PSActionListProcs, GetBookmark, entry(41));

MRV_OFFSET(PSActionReferenceProcs, Make, entry(0));
MRV_OFFSET(PSActionReferenceProcs, Free, entry(1));
MRV_OFFSET(PSActionReferenceProcs, GetForm, entry(2));
MRV_OFFSET(PSActionReferenceProcs, GetDesiredClass, entry(3));
MRV_OFFSET(PSActionReferenceProcs, PutName, entry(4));
MRV_OFFSET(PSActionReferenceProcs, PutIndex, entry(5));
MRV_OFFSET(PSActionReferenceProcs, PutIdentifier, entry(6));
MRV_OFFSET(PSActionReferenceProcs, PutOffset, entry(7));
MRV_OFFSET(PSActionReferenceProcs, PutEnumerated, entry(8));
MRV_OFFSET(PSActionReferenceProcs, PutProperty, entry(9));
MRV_OFFSET(PSActionReferenceProcs, PutClass, entry(10));
MRV_OFFSET(PSActionReferenceProcs, GetNameLength, entry(11));
MRV_OFFSET(PSActionReferenceProcs, GetName, entry(12));
MRV_OFFSET(PSActionReferenceProcs, GetIndex, entry(13));
MRV_OFFSET(PSActionReferenceProcs, GetIdentifier, entry(14));
MRV_OFFSET(PSActionReferenceProcs, GetOffset, entry(15));
MRV_OFFSET(PSActionReferenceProcs, GetEnumerated, entry(16));
MRV_OFFSET(PSActionReferenceProcs, GetProperty, entry(17));
MRV_OFFSET(PSActionReferenceProcs, GetContainer, entry(18));
MRV_OFFSET(PSActionReferenceProcs, PutNameZString, entry(19));
MRV_OFFSET(PSActionReferenceProcs, GetNameZString, entry(20));

MRV_OFFSET(PSActionControlProcs, Play, entry(0));
MRV_OFFSET(PSActionControlProcs, BeginProfile, entry(1));
MRV_OFFSET(PSActionControlProcs, EndProfile, entry(2));
MRV_OFFSET(PSActionControlProcs, Get, entry(3));
MRV_OFFSET(PSActionControlProcs, StringIDToTypeID, entry(4));
MRV_OFFSET(PSActionControlProcs, TypeIDToStringID, entry(5));

MRV_OFFSET(ASZStringSuite, MakeFromUnicode, entry(0));
MRV_OFFSET(ASZStringSuite, MakeFromCString, entry(1));
MRV_OFFSET(ASZStringSuite, MakeFromPascalString, entry(2));
MRV_OFFSET(ASZStringSuite, MakeRomanizationOfInteger, entry(3));
MRV_OFFSET(ASZStringSuite, MakeRomanizationOfFixed, entry(4));
MRV_OFFSET(ASZStringSuite, MakeRomanizationOfDouble, entry(5));
MRV_OFFSET(ASZStringSuite, GetEmpty, entry(6));
MRV_OFFSET(ASZStringSuite, Copy, entry(7));
MRV_OFFSET(ASZStringSuite, Replace, entry(8));
MRV_OFFSET(ASZStringSuite, TrimEllipsis, entry(9));
MRV_OFFSET(ASZStringSuite, TrimSpaces, entry(10));
MRV_OFFSET(ASZStringSuite, RemoveAccelerators, entry(11));
MRV_OFFSET(ASZStringSuite, AddRef, entry(12));
MRV_OFFSET(ASZStringSuite, Release, entry(13));
MRV_OFFSET(ASZStringSuite, IsAllWhiteSpace, entry(14));
MRV_OFFSET(ASZStringSuite, IsEmpty, entry(15));
MRV_OFFSET(ASZStringSuite, WillReplace, entry(16));
MRV_OFFSET(ASZStringSuite, LengthAsUnicodeCString, entry(17));
MRV_OFFSET(ASZStringSuite, AsUnicodeCString, entry(18));
MRV_OFFSET(ASZStringSuite, LengthAsCString, entry(19));
MRV_OFFSET(ASZStringSuite, AsCString, entry(20));
MRV_OFFSET(ASZStringSuite, LengthAsPascalString, entry(21));
MRV_OFFSET(ASZStringSuite, AsPascalString, entry(22));

MRV_OFFSET(PSHandleSuite2, New, entry(0));
MRV_OFFSET(PSHandleSuite2, Dispose, entry(1));
MRV_OFFSET(PSHandleSuite2, DisposeRegularHandle, entry(2));
MRV_OFFSET(PSHandleSuite2, SetLock, entry(3));
MRV_OFFSET(PSHandleSuite2, GetSize, entry(4));
MRV_OFFSET(PSHandleSuite2, SetSize, entry(5));

MRV_OFFSET(PSAliasSuite, MacNewAliasFromCString, entry(0));

MRV_OFFSET(BufferProcs, bufferProcsVersion, 0);
MRV_OFFSET(BufferProcs, numBufferProcs, 2);
MRV_OFFSET(BufferProcs, allocateProc, callback(0));
MRV_OFFSET(BufferProcs, lockProc, callback(1));
MRV_OFFSET(BufferProcs, unlockProc, callback(2));
MRV_OFFSET(BufferProcs, freeProc, callback(3));
MRV_OFFSET(BufferProcs, spaceProc, callback(4));
MRV_OFFSET(BufferProcs, allocateProc64, callback(5));
MRV_OFFSET(BufferProcs, spaceProc64, callback(6));
MRV_OFFSET(BufferProcs, allocateStripProc, callback(7));

MRV_OFFSET(ResourceProcs, resourceProcsVersion, 0);
MRV_OFFSET(ResourceProcs, numResourceProcs, 2);
MRV_OFFSET(ResourceProcs, countProc, callback(0));
MRV_OFFSET(ResourceProcs, getProc, callback(1));
MRV_OFFSET(ResourceProcs, deleteProc, callback(2));
MRV_OFFSET(ResourceProcs, addProc, callback(3));

MRV_OFFSET(HandleProcs, handleProcsVersion, 0);
MRV_OFFSET(HandleProcs, numHandleProcs, 2);
MRV_OFFSET(HandleProcs, newProc, callback(0));
MRV_OFFSET(HandleProcs, disposeProc, callback(1));
MRV_OFFSET(HandleProcs, getSizeProc, callback(2));
MRV_OFFSET(HandleProcs, setSizeProc, callback(3));
MRV_OFFSET(HandleProcs, lockProc, callback(4));
MRV_OFFSET(HandleProcs, unlockProc, callback(5));
MRV_OFFSET(HandleProcs, recoverSpaceProc, callback(6));
MRV_OFFSET(HandleProcs, disposeRegularHandleProc, callback(7));

MRV_OFFSET(PropertyProcs, propertyProcsVersion, 0);
MRV_OFFSET(PropertyProcs, numPropertyProcs, 2);
MRV_OFFSET(PropertyProcs, getPropertyProc, callback(0));
MRV_OFFSET(PropertyProcs, setPropertyProc, callback(1));

MRV_OFFSET(ChannelPortProcs, channelPortProcsVersion, 0);
MRV_OFFSET(ChannelPortProcs, numChannelPortProcs, 2);
MRV_OFFSET(ChannelPortProcs, readPixelsProc, callback(0));
MRV_OFFSET(ChannelPortProcs, writeBasePixelsProc, callback(1));
MRV_OFFSET(ChannelPortProcs, readPortForWritePortProc, callback(2));

MRV_OFFSET(ReadDescriptorProcs, readDescriptorProcsVersion, 0);
MRV_OFFSET(ReadDescriptorProcs, numReadDescriptorProcs, 2);
MRV_OFFSET(ReadDescriptorProcs, openReadDescriptorProc, callback(0));
MRV_OFFSET(ReadDescriptorProcs, closeReadDescriptorProc, callback(1));
MRV_OFFSET(ReadDescriptorProcs, getKeyProc, callback(2));
MRV_OFFSET(ReadDescriptorProcs, getIntegerProc, callback(3));
MRV_OFFSET(ReadDescriptorProcs, getFloatProc, callback(4));
MRV_OFFSET(ReadDescriptorProcs, getUnitFloatProc, callback(5));
MRV_OFFSET(ReadDescriptorProcs, getBooleanProc, callback(6));
MRV_OFFSET(ReadDescriptorProcs, getTextProc, callback(7));
MRV_OFFSET(ReadDescriptorProcs, getAliasProc, callback(8));
MRV_OFFSET(ReadDescriptorProcs, getEnumeratedProc, callback(9));
MRV_OFFSET(ReadDescriptorProcs, getClassProc, callback(10));
MRV_OFFSET(ReadDescriptorProcs, getSimpleReferenceProc, callback(11));
MRV_OFFSET(ReadDescriptorProcs, getObjectProc, callback(12));
MRV_OFFSET(ReadDescriptorProcs, getCountProc, callback(13));
MRV_OFFSET(ReadDescriptorProcs, getStringProc, callback(14));
MRV_OFFSET(ReadDescriptorProcs, getPinnedIntegerProc, callback(15));
MRV_OFFSET(ReadDescriptorProcs, getPinnedFloatProc, callback(16));
MRV_OFFSET(ReadDescriptorProcs, getPinnedUnitFloatProc, callback(17));

MRV_OFFSET(WriteDescriptorProcs, writeDescriptorProcsVersion, 0);
MRV_OFFSET(WriteDescriptorProcs, numWriteDescriptorProcs, 2);
MRV_OFFSET(WriteDescriptorProcs, openWriteDescriptorProc, callback(0));
MRV_OFFSET(WriteDescriptorProcs, closeWriteDescriptorProc, callback(1));
MRV_OFFSET(WriteDescriptorProcs, putIntegerProc, callback(2));
MRV_OFFSET(WriteDescriptorProcs, putFloatProc, callback(3));
MRV_OFFSET(WriteDescriptorProcs, putUnitFloatProc, callback(4));
MRV_OFFSET(WriteDescriptorProcs, putBooleanProc, callback(5));
MRV_OFFSET(WriteDescriptorProcs, putTextProc, callback(6));
MRV_OFFSET(WriteDescriptorProcs, putAliasProc, callback(7));
MRV_OFFSET(WriteDescriptorProcs, putEnumeratedProc, callback(8));
MRV_OFFSET(WriteDescriptorProcs, putClassProc, callback(9));
MRV_OFFSET(WriteDescriptorProcs, putSimpleReferenceProc, callback(10));
MRV_OFFSET(WriteDescriptorProcs, putObjectProc, callback(11));
MRV_OFFSET(WriteDescriptorProcs, putCountProc, callback(12));
MRV_OFFSET(WriteDescriptorProcs, putStringProc, callback(13));
MRV_OFFSET(WriteDescriptorProcs, putScopedClassProc, callback(14));
MRV_OFFSET(WriteDescriptorProcs, putScopedObjectProc, callback(15));

MRV_OFFSET(SPMessageData, self, 8);
MRV_OFFSET(SPMessageData, basic, 24);

MRV_OFFSET(PSActionsPlugInMessage, d, 0);

MRV_OFFSET(PIDescriptorParameters, descriptorParametersVersion, 0);
MRV_OFFSET(PIDescriptorParameters, playInfo, 2);
MRV_OFFSET(PIDescriptorParameters, recordInfo, 4);
MRV_OFFSET(PIDescriptorParameters, descriptor, 8);
MRV_OFFSET(PIDescriptorParameters, writeDescriptorProcs, 16);
MRV_OFFSET(PIDescriptorParameters, readDescriptorProcs, 24);

MRV_OFFSET(ColorServicesInfo, infoSize, 0);
MRV_OFFSET(ColorServicesInfo, selector, 4);
MRV_OFFSET(ColorServicesInfo, sourceSpace, 6);
MRV_OFFSET(ColorServicesInfo, resultSpace, 8);
MRV_OFFSET(ColorServicesInfo, resultGamutInfoValid, 10);
MRV_OFFSET(ColorServicesInfo, resultInGamut, 11);
MRV_OFFSET(ColorServicesInfo, reservedSourceSpaceInfo, 16);
MRV_OFFSET(ColorServicesInfo, reservedResultSpaceInfo, 24);
MRV_OFFSET(ColorServicesInfo, colorComponents, 32);
MRV_OFFSET(ColorServicesInfo, reserved, 40);
MRV_OFFSET(ColorServicesInfo, selectorParameter, 48);

MRV_OFFSET(PSPixelMap, version, 0);
MRV_OFFSET(PSPixelMap, bounds, 4);
MRV_OFFSET(PSPixelMap, imageMode, 20);
MRV_OFFSET(PSPixelMap, rowBytes, 24);
MRV_OFFSET(PSPixelMap, colBytes, 28);
MRV_OFFSET(PSPixelMap, planeBytes, 32);
MRV_OFFSET(PSPixelMap, baseAddr, 40);
MRV_OFFSET(PSPixelMap, mat, 48);
MRV_OFFSET(PSPixelMap, masks, 56);
MRV_OFFSET(PSPixelMap, maskPhaseRow, 64);
MRV_OFFSET(PSPixelMap, maskPhaseCol, 68);
