#include "simulator/host/model/ModelProperties.h"

#include <cmath>
#include <utility>

#include "platform/FourCharCode.h"

namespace simulator {

namespace {

constexpr DescriptorKeyID kKeyAngle = fourCharCode("Angl");
constexpr DescriptorKeyID kKeyBounds = fourCharCode("Bnds");
constexpr DescriptorKeyID kKeyBottom = fourCharCode("Btom");
constexpr DescriptorKeyID kKeyClass = fourCharCode("Clss");
constexpr DescriptorKeyID kKeyCount = fourCharCode("Cnt ");
constexpr DescriptorKeyID kKeyDepth = fourCharCode("Dpth");
constexpr DescriptorKeyID kKeyDocument = fourCharCode("Dcmn");
constexpr DescriptorKeyID kKeyDocumentID = fourCharCode("DocI");
constexpr DescriptorKeyID kKeyFile = fourCharCode("File");
constexpr DescriptorKeyID kKeyFileInfo = fourCharCode("FlIn");
constexpr DescriptorKeyID kKeyFileReference = fourCharCode("FilR");
constexpr DescriptorKeyID kKeyHardness = fourCharCode("Hrdn");
constexpr DescriptorKeyID kKeyHeight = fourCharCode("Hght");
constexpr DescriptorKeyID kKeyHostName = fourCharCode("HstN");
constexpr DescriptorKeyID kKeyID = fourCharCode("Idnt");
constexpr DescriptorKeyID kKeyIsDirty = fourCharCode("IsDr");
constexpr DescriptorKeyID kKeyItemIndex = fourCharCode("ItmI");
constexpr DescriptorKeyID kKeyLayerID = fourCharCode("LyrI");
constexpr DescriptorKeyID kKeyLayers = fourCharCode("Lyrs");
constexpr DescriptorKeyID kKeyLeft = fourCharCode("Left");
constexpr DescriptorKeyID kKeyMode = fourCharCode("Md  ");
constexpr DescriptorKeyID kKeyNumberOfDocuments = fourCharCode("NmbD");
constexpr DescriptorKeyID kKeyNumberOfLayers = fourCharCode("NmbL");
constexpr DescriptorKeyID kKeyOpacity = fourCharCode("Opct");
constexpr DescriptorKeyID kKeyParentName = fourCharCode("PrNm");
constexpr DescriptorKeyID kKeyPath = fourCharCode("Path");
constexpr DescriptorKeyID kKeyPreferences = fourCharCode("Prfr");
constexpr DescriptorKeyID kKeyProfile = fourCharCode("Prfl");
constexpr DescriptorKeyID kKeyResolution = fourCharCode("Rslt");
constexpr DescriptorKeyID kKeyRight = fourCharCode("Rght");
constexpr DescriptorKeyID kKeyScale = fourCharCode("Scl ");
constexpr DescriptorKeyID kKeySize = fourCharCode("Sz  ");
constexpr DescriptorKeyID kKeySpacing = fourCharCode("Spcn");
constexpr DescriptorKeyID kKeyTitle = fourCharCode("Ttl ");
constexpr DescriptorKeyID kKeyTop = fourCharCode("Top ");
constexpr DescriptorKeyID kKeyVisible = fourCharCode("Vsbl");
constexpr DescriptorKeyID kKeyWidth = fourCharCode("Wdth");

constexpr DescriptorClassID kClassVersion = fourCharCode("Vrsn");
constexpr DescriptorClassID kClassRectangle = fourCharCode("Rctn");
constexpr DescriptorClassID kClassRGBColorMode = fourCharCode("RGBM");
constexpr DescriptorClassID kClassFileInfo = fourCharCode("FlIn");
constexpr DescriptorClassID kClassGeneralPrefs = fourCharCode("GnrP");
constexpr DescriptorEnumTypeID kTypeBlendMode = fourCharCode("BlnM");
constexpr DescriptorEnumTypeID kTypeColorSpace = fourCharCode("ClrS");
constexpr DescriptorEnumID kEnumNormal = fourCharCode("Nrml");
constexpr DescriptorEnumID kEnumRGBColor = fourCharCode("RGBC");
constexpr DescriptorUnitID kUnitAngle = fourCharCode("#Ang");
constexpr DescriptorUnitID kUnitDensity = fourCharCode("#Rsl");

Item integer(std::size_t value) { return {kTypeInteger, static_cast<std::int32_t>(value)}; }

Item integer(int value) { return {kTypeInteger, std::int32_t{value}}; }

Item text(std::string value) { return {kTypeText, Text{std::move(value)}}; }

Item boolean(bool value) { return {kTypeBoolean, value}; }

Item unitFloat(DescriptorUnitID unit, double value) {
  return {kTypeUnitFloat, UnitFloat{unit, value}};
}

Item enumerated(DescriptorEnumTypeID type, DescriptorEnumID value) {
  return {kTypeEnumerated, Enumerated{type, value}};
}

Item object(DescriptorClassID type, std::vector<Entry> entries) {
  return {kTypeObject, Object{type, std::make_shared<Container>(std::move(entries))}};
}

Item globalObject(DescriptorClassID type, std::vector<Entry> entries) {
  return {kTypeGlobalObject, Object{type, std::make_shared<Container>(std::move(entries))}};
}

/// A length in units of 1/72 inch.
Item distance(double pixels, const Document& document) {
  return unitFloat(kUnitDistance, pixels * 72.0 / document.resolution);
}

void putPlace(Container& properties, std::size_t index, std::size_t count) {
  properties.put(kKeyItemIndex, integer(index + 1));
  properties.put(kKeyCount, integer(count));
}

Item version(const std::pair<int, int>& numbers) {
  return object(kClassVersion, {{kKeyVersionMajor, integer(numbers.first)},
                                {kKeyVersionMinor, integer(numbers.second)}});
}

Item toolOptions(const Model& model, std::uint32_t tool) {
  std::vector<Entry> options = {{kKeyOpacity, integer(100)}};
  if (model.brush) {
    options.push_back({kKeyBrushes,
                       {kTypeObject, Object{kClassBrush, std::make_shared<Container>(
                                                             brushProperties(*model.brush))}}});
  }
  return object(tool, std::move(options));
}

// The answer names the tool by the type of an enumeration, whose value has no meaning, and adds the
// tool's options.
void putTool(Container& properties, const Model& model, TypeIds& ids) {
  if (model.tool.empty()) return;
  const std::uint32_t tool = ids.idOf(model.tool);
  properties.put(kKeyTool, enumerated(tool, kEnumTarget));
  properties.put(kKeyCurrentToolOptions, toolOptions(model, tool));
}

Item layerList(const Document& document) {
  std::vector<Entry> layers;
  for (const Layer& layer : document.layers) {
    layers.push_back(
        {0,
         {kTypeObjectReference,
          Reference{{.form = kFormIdentifier, .desiredClass = kClassLayer, .value = layer.id}}}});
  }
  return {kTypeValueList, List{std::make_shared<Container>(std::move(layers))}};
}

Item reference(Form form) { return {kTypeObjectReference, Reference{std::move(form)}}; }

std::int64_t sizeInBytes(const Document& document) {
  constexpr double bytesPerPixel = 3.0;
  return static_cast<std::int64_t>(document.width * document.height * bytesPerPixel);
}

void putFile(Container& properties, const Document& document) {
  properties.put(kKeyFileReference, {kTypeAlias, FilePath{document.path}});
  properties.put(kKeyFile, {kTypeBookmark, FilePath{document.path}});
  properties.put(kKeySize, {kTypeInteger64, sizeInBytes(document)});
  properties.put(kKeyIsDirty, boolean(document.dirty));
  properties.put(kKeyFileInfo, globalObject(kClassFileInfo, {{kKeyTitle, text(document.name)}}));
  properties.put(kKeyProfile, {kTypeRawData, Data{"sRGB"}});
}

void putImage(Container& properties, const Document& document) {
  properties.put(kKeyMode, enumerated(kTypeColorSpace, kEnumRGBColor));
  properties.put(kKeyClass, {kTypeClass, ClassID{kClassRGBColorMode}});
  properties.put(kKeyDepth, integer(8));
  properties.put(kKeyWidth, distance(document.width, document));
  properties.put(kKeyHeight, distance(document.height, document));
  properties.put(kKeyResolution, unitFloat(kUnitDensity, document.resolution));
  properties.put(kKeyScale, {kTypeFloat, document.zoom});
}

Item bounds(const Document& document) {
  return object(kClassRectangle, {{kKeyTop, distance(0.0, document)},
                                  {kKeyLeft, distance(0.0, document)},
                                  {kKeyBottom, distance(document.height, document)},
                                  {kKeyRight, distance(document.width, document)}});
}

}  // namespace

Container applicationProperties(const Model& model, TypeIds& ids) {
  Container properties;
  properties.put(kKeyHostName, text("Simulated Host"));
  if (model.version) properties.put(kKeyHostVersion, version(*model.version));
  putTool(properties, model, ids);
  properties.put(kKeyNumberOfDocuments, integer(model.documents.size()));
  properties.put(kKeyPath, {kTypePath, FilePath{"/Applications/Simulated Host"}});
  properties.put(kKeyPreferences, {kTypeGlobalClass, ClassID{kClassGeneralPrefs}});
  return properties;
}

Container documentProperties(const Document& document, std::size_t index, std::size_t count,
                             TypeIds& ids) {
  Container properties;
  properties.put(kKeyTitle, text(document.name));
  properties.put(kKeyDocumentID, {kTypeInteger, static_cast<std::int32_t>(document.id)});
  putPlace(properties, index, count);
  putImage(properties, document);
  putFile(properties, document);
  properties.put(kKeyNumberOfLayers, integer(document.layers.size()));
  properties.put(kKeyLayers, layerList(document));
  properties.put(ids.idOf("hasBackgroundLayer"),
                 boolean(!document.layers.empty() && document.layers.front().background));
  return properties;
}

Container layerProperties(const Layer& layer, std::size_t index, std::size_t count,
                          const Document& document) {
  Container properties;
  properties.put(kKeyName, text(layer.name));
  properties.put(kKeyLayerID, {kTypeInteger, static_cast<std::int32_t>(layer.id)});
  putPlace(properties, index, count);
  properties.put(kKeyOpacity, unitFloat(kUnitPercent, layer.opacity));
  properties.put(kKeyMode, enumerated(kTypeBlendMode, kEnumNormal));
  properties.put(kKeyVisible, boolean(layer.visible));
  properties.put(kKeyBackground, boolean(layer.background));
  properties.put(kKeyBounds, bounds(document));
  properties.put(
      kKeyDocument,
      reference({.form = kFormIdentifier, .desiredClass = kClassDocument, .value = document.id}));
  return properties;
}

Container historyProperties(const std::string& state, std::size_t index, std::size_t count) {
  Container properties;
  properties.put(kKeyName, text(state));
  putPlace(properties, index, count);
  return properties;
}

Container actionSetProperties(const ActionSet& set, std::size_t index, std::size_t count) {
  Container properties;
  properties.put(kKeyName, text(set.name));
  properties.put(kKeyID, {kTypeInteger, static_cast<std::int32_t>(set.id)});
  putPlace(properties, index, count);
  return properties;
}

Container actionProperties(const Action& action, std::size_t index, std::size_t count,
                           const ActionSet& set) {
  Container properties;
  properties.put(kKeyName, text(action.name));
  properties.put(kKeyID, {kTypeInteger, static_cast<std::int32_t>(action.id)});
  putPlace(properties, index, count);
  properties.put(kKeyParentName, text(set.name));
  return properties;
}

Container brushProperties(const Brush& brush) {
  Container properties;
  properties.put(kKeyDiameter, unitFloat(kUnitPixels, brush.diameter));
  properties.put(kKeyHardness, unitFloat(kUnitPercent, brush.hardness));
  properties.put(kKeyAngle, unitFloat(kUnitAngle, 0.0));
  properties.put(kKeySpacing, unitFloat(kUnitPercent, brush.spacing));
  return properties;
}

}  // namespace simulator
