// How the host calls an automation plug-in as a step of an action.
#pragma once

#include "PIActions.h"
#include "SPMData.h"

inline constexpr char kPSPhotoshopCaller[] = "PS Photoshop";
inline constexpr char kPSDoIt[] = "Do It";

/// The parameters of the action step.
struct PIActionParameters {
  PIDialogPlayOptions playInfo;
  PIDialogRecordOptions recordInfo;
  PIActionDescriptor descriptor;
};

struct PSActionsPlugInMessage {
  SPMessageData d;
  PIActionParameters* actionParameters;
};
