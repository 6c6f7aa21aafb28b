// Wrappers for the host's colour services.
#include <algorithm>

#include "hostutil/CallbackWrappers.h"
#include "hostutil/Strings.h"

namespace {

ColorServicesInfo request(int16 selector, int16 sourceSpace, int16 resultSpace,
                          const CSColor& color) {
  ColorServicesInfo info;
  CSInitInfo(&info);
  info.selector = selector;
  info.sourceSpace = sourceSpace;
  info.resultSpace = resultSpace;
  CSCopyColor(info.colorComponents, color);
  return info;
}

}  // namespace

void CSSetColor(CSColor& color, int16 c0, int16 c1, int16 c2, int16 c3) {
  color[0] = c0;
  color[1] = c1;
  color[2] = c2;
  color[3] = c3;
}

void CSCopyColor(CSColor& destination, const CSColor& source) {
  std::copy(source, source + 4, destination);
}

void CSToPicker(CSColor& color, const CSPixel& pixel) { std::copy(pixel, pixel + 4, color); }

void CSFromPicker(CSPixel& pixel, const CSColor& color) {
  std::transform(color, color + 4, pixel, [](int16 component) {
    return static_cast<uint8>(std::clamp<int16>(component, 0, 255));
  });
}

void CSInitInfo(ColorServicesInfo* info) {
  *info = {};
  info->infoSize = sizeof *info;
  info->selector = plugIncolorServicesConvertColor;
  info->sourceSpace = plugIncolorServicesRGBSpace;
  info->resultSpace = plugIncolorServicesRGBSpace;
}

OSErr HostCSConvertColor(ColorServicesProc colorProc, int16 sourceSpace, int16 resultSpace,
                         CSColor* color) {
  if (colorProc == nullptr) return errPlugInHostInsufficient;
  if (color == nullptr) return errMissingParameter;
  ColorServicesInfo info =
      request(plugIncolorServicesConvertColor, sourceSpace, resultSpace, *color);
  const OSErr result = colorProc(&info);
  if (result == noErr) CSCopyColor(*color, info.colorComponents);
  return result;
}

OSErr HostCSPickColor(ColorServicesProc colorProc, const unsigned char* prompt, int16 sourceSpace,
                      int16* resultSpace, CSColor* color, CSColor* picked) {
  if (colorProc == nullptr) return errPlugInHostInsufficient;
  if (color == nullptr || resultSpace == nullptr || prompt == nullptr) return errMissingParameter;
  Str255 text = {};
  AppendString(text, prompt, 1, prompt[0]);
  ColorServicesInfo info =
      request(plugIncolorServicesChooseColor, sourceSpace, *resultSpace, *color);
  info.selectorParameter.pickerPrompt = &text;
  const OSErr result = colorProc(&info);
  if (result != noErr) return result;
  *resultSpace = info.resultSpace;
  CSCopyColor(*color, info.colorComponents);
  if (picked != nullptr) CSCopyColor(*picked, info.colorComponents);
  return result;
}
