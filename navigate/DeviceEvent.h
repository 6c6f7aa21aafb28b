// The event in which the device thread passes a device message to the main thread.
//
//   kind               parameters, in the order in which they are set
//   kDeviceButton      'kmod' magn (on press only), 'tbtn' shor, 'tbts' shor, 'ttim' comp
//   kDeviceAxes        'tpnx' 'tpny' 'tpnz' 'trtx' 'trty' 'trtz' shor each, 'ttim' comp
//   kDeviceCommand     'tpac' shor, 'ttim' comp
//
// 'kmod' is the platform's parameter kEventParamKeyModifiers.
#pragma once

#include <Carbon/Carbon.h>

#include "platform/FourCharCode.h"

enum : OSType { kDeviceEventClass = fourCharCode("mrvE") };

enum : UInt32 {
  kDeviceButton = 1,
  kDeviceAxes = 2,
  kDeviceCommand = 5,
};

/// Names of the event's parameters.
enum : EventParamName {
  kTranslationX = fourCharCode("tpnx"),  ///< typeSInt16, device counts
  kTranslationY = fourCharCode("tpny"),
  kTranslationZ = fourCharCode("tpnz"),
  kRotationX = fourCharCode("trtx"),
  kRotationY = fourCharCode("trty"),
  kRotationZ = fourCharCode("trtz"),
  kButtonNumber = fourCharCode("tbtn"),   ///< typeSInt16: the button last pressed
  kButtonState = fourCharCode("tbts"),    ///< typeSInt16: 1 pressed, 0 released
  kCommandNumber = fourCharCode("tpac"),  ///< typeSInt16
  kDeviceTime = fourCharCode("ttim"),     ///< typeSInt64: the device's time stamp
};
