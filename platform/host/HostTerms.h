// The host's terminology that the plug-in uses: classes, keys, types, events, forms and units.
//
// Each name is the published one with a k in front (kKeyName for keyName), because the platform's
// Apple event headers also define typeBoolean, typeAlias and formName, and a plug-in includes both.
// kKeyTool alone is a name of this project.
#pragma once

#include "PIActions.h"

// Forms of a reference.
inline constexpr DescriptorFormID kFormClass = fourCharCode("Clss");
inline constexpr DescriptorFormID kFormEnumerated = fourCharCode("Enmr");
inline constexpr DescriptorFormID kFormIdentifier = fourCharCode("Idnt");
inline constexpr DescriptorFormID kFormIndex = fourCharCode("indx");
inline constexpr DescriptorFormID kFormOffset = fourCharCode("rele");
inline constexpr DescriptorFormID kFormProperty = fourCharCode("prop");
inline constexpr DescriptorFormID kFormName = fourCharCode("name");

// Types of an item.
inline constexpr DescriptorTypeID kTypeInteger = fourCharCode("long");
inline constexpr DescriptorTypeID kTypeInteger64 = fourCharCode("comp");
inline constexpr DescriptorTypeID kTypeFloat = fourCharCode("doub");
inline constexpr DescriptorTypeID kTypeUnitFloat = fourCharCode("UntF");
inline constexpr DescriptorTypeID kTypeBoolean = fourCharCode("bool");
inline constexpr DescriptorTypeID kTypeEnumerated = fourCharCode("enum");
inline constexpr DescriptorTypeID kTypeClass = fourCharCode("type");
inline constexpr DescriptorTypeID kTypeGlobalClass = fourCharCode("GlbC");
inline constexpr DescriptorTypeID kTypeObject = fourCharCode("Objc");
inline constexpr DescriptorTypeID kTypeGlobalObject = fourCharCode("GlbO");
inline constexpr DescriptorTypeID kTypeValueList = fourCharCode("VlLs");
inline constexpr DescriptorTypeID kTypeObjectReference = fourCharCode("obj ");
inline constexpr DescriptorTypeID kTypeAlias = fourCharCode("alis");
inline constexpr DescriptorTypeID kTypePath = fourCharCode("Pth ");
inline constexpr DescriptorTypeID kTypeBookmark = fourCharCode("bkmk");
inline constexpr DescriptorTypeID kTypeText = fourCharCode("TEXT");
inline constexpr DescriptorTypeID kTypeChar = fourCharCode("TEXT");
inline constexpr DescriptorTypeID kTypeRawData = fourCharCode("tdta");
inline constexpr DescriptorEnumTypeID kTypeOrdinal = fourCharCode("Ordn");

inline constexpr DescriptorEnumID kEnumTarget = fourCharCode("Trgt");

inline constexpr DescriptorClassID kClassAction = fourCharCode("Actn");
inline constexpr DescriptorClassID kClassActionSet = fourCharCode("ASet");
inline constexpr DescriptorClassID kClassApplication = fourCharCode("capp");
inline constexpr DescriptorClassID kClassBackgroundLayer = fourCharCode("BckL");
inline constexpr DescriptorClassID kClassBrush = fourCharCode("Brsh");
inline constexpr DescriptorClassID kClassDocument = fourCharCode("Dcmn");
inline constexpr DescriptorClassID kClassHistoryState = fourCharCode("HstS");
inline constexpr DescriptorClassID kClassLayer = fourCharCode("Lyr ");
inline constexpr DescriptorClassID kClassProperty = fourCharCode("Prpr");
inline constexpr DescriptorClassID kClassTool = fourCharCode("Tool");

inline constexpr DescriptorKeyID kKeyBackground = fourCharCode("Bckg");
inline constexpr DescriptorKeyID kKeyBrushes = fourCharCode("Brsh");
inline constexpr DescriptorKeyID kKeyCurrentToolOptions = fourCharCode("CrnT");
inline constexpr DescriptorKeyID kKeyDiameter = fourCharCode("Dmtr");
inline constexpr DescriptorKeyID kKeyHostVersion = fourCharCode("HstV");
inline constexpr DescriptorKeyID kKeyMessage = fourCharCode("Msge");
inline constexpr DescriptorKeyID kKeyName = fourCharCode("Nm  ");
inline constexpr DescriptorKeyID kKeyTarget = fourCharCode("null");
inline constexpr DescriptorKeyID kKeyTo = fourCharCode("T   ");
/// The current tool of the application. The code is published as a class only, as classTool.
inline constexpr DescriptorKeyID kKeyTool = fourCharCode("Tool");
inline constexpr DescriptorKeyID kKeyVersionMajor = fourCharCode("VrsM");
inline constexpr DescriptorKeyID kKeyVersionMinor = fourCharCode("VrsN");

inline constexpr DescriptorEventID kEventPlay = fourCharCode("Ply ");
inline constexpr DescriptorEventID kEventSelect = fourCharCode("slct");
inline constexpr DescriptorEventID kEventSet = fourCharCode("setd");

inline constexpr DescriptorUnitID kUnitDistance = fourCharCode("#Rlt");
inline constexpr DescriptorUnitID kUnitPercent = fourCharCode("#Prc");
inline constexpr DescriptorUnitID kUnitPixels = fourCharCode("#Pxl");
