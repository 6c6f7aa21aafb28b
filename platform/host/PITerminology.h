// The host's terminology, as far as it is in use: classes, keys, types, events, forms and units.
#pragma once

#include "PIActions.h"

// Forms of a reference.
inline constexpr DescriptorFormID formClass = fourCharCode("Clss");
inline constexpr DescriptorFormID formEnumerated = fourCharCode("Enmr");
inline constexpr DescriptorFormID formIdentifier = fourCharCode("Idnt");
inline constexpr DescriptorFormID formIndex = fourCharCode("indx");
inline constexpr DescriptorFormID formOffset = fourCharCode("rele");
inline constexpr DescriptorFormID formProperty = fourCharCode("prop");
inline constexpr DescriptorFormID formName = fourCharCode("name");

// Types of an item.
inline constexpr DescriptorTypeID typeInteger = fourCharCode("long");
inline constexpr DescriptorTypeID typeInteger64 = fourCharCode("comp");
inline constexpr DescriptorTypeID typeFloat = fourCharCode("doub");
inline constexpr DescriptorTypeID typeUnitFloat = fourCharCode("UntF");
inline constexpr DescriptorTypeID typeBoolean = fourCharCode("bool");
inline constexpr DescriptorTypeID typeEnumerated = fourCharCode("enum");
inline constexpr DescriptorTypeID typeClass = fourCharCode("type");
inline constexpr DescriptorTypeID typeGlobalClass = fourCharCode("GlbC");
inline constexpr DescriptorTypeID typeObject = fourCharCode("Objc");
inline constexpr DescriptorTypeID typeGlobalObject = fourCharCode("GlbO");
inline constexpr DescriptorTypeID typeValueList = fourCharCode("VlLs");
inline constexpr DescriptorTypeID typeObjectReference = fourCharCode("obj ");
inline constexpr DescriptorTypeID typeAlias = fourCharCode("alis");
inline constexpr DescriptorTypeID typePath = fourCharCode("Pth ");
inline constexpr DescriptorTypeID typeBookmark = fourCharCode("bkmk");
inline constexpr DescriptorTypeID typeText = fourCharCode("TEXT");
inline constexpr DescriptorTypeID typeChar = fourCharCode("TEXT");
inline constexpr DescriptorTypeID typeRawData = fourCharCode("tdta");
inline constexpr DescriptorEnumTypeID typeOrdinal = fourCharCode("Ordn");

inline constexpr DescriptorEnumID enumTarget = fourCharCode("Trgt");

inline constexpr DescriptorClassID classAction = fourCharCode("Actn");
inline constexpr DescriptorClassID classActionSet = fourCharCode("ASet");
inline constexpr DescriptorClassID classApplication = fourCharCode("capp");
inline constexpr DescriptorClassID classBackgroundLayer = fourCharCode("BckL");
inline constexpr DescriptorClassID classBrush = fourCharCode("Brsh");
inline constexpr DescriptorClassID classDocument = fourCharCode("Dcmn");
inline constexpr DescriptorClassID classHistoryState = fourCharCode("HstS");
inline constexpr DescriptorClassID classLayer = fourCharCode("Lyr ");
inline constexpr DescriptorClassID classProperty = fourCharCode("Prpr");
inline constexpr DescriptorClassID classTool = fourCharCode("Tool");

inline constexpr DescriptorKeyID keyBackground = fourCharCode("Bckg");
inline constexpr DescriptorKeyID keyBrush = fourCharCode("Brsh");
inline constexpr DescriptorKeyID keyCurrentToolOptions = fourCharCode("CrnT");
inline constexpr DescriptorKeyID keyDiameter = fourCharCode("Dmtr");
inline constexpr DescriptorKeyID keyHostVersion = fourCharCode("HstV");
inline constexpr DescriptorKeyID keyMessage = fourCharCode("Msge");
inline constexpr DescriptorKeyID keyName = fourCharCode("Nm  ");
inline constexpr DescriptorKeyID keyTarget = fourCharCode("null");
inline constexpr DescriptorKeyID keyTo = fourCharCode("T   ");
inline constexpr DescriptorKeyID keyTool = fourCharCode("Tool");
inline constexpr DescriptorKeyID keyVersionMajor = fourCharCode("VrsM");
inline constexpr DescriptorKeyID keyVersionMinor = fourCharCode("VrsN");

inline constexpr DescriptorEventID eventPlay = fourCharCode("Ply ");
inline constexpr DescriptorEventID eventSelect = fourCharCode("slct");
inline constexpr DescriptorEventID eventSet = fourCharCode("setd");

inline constexpr DescriptorUnitID unitDistance = fourCharCode("#Rlt");
inline constexpr DescriptorUnitID unitPercent = fourCharCode("#Prc");
inline constexpr DescriptorUnitID unitPixels = fourCharCode("#Pxl");
