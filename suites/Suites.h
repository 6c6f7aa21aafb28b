// The process-wide holders of the host's suites. [main-thread]
#pragma once

#include <ASZStringSuite.h>
#include <JSScriptingSuite.h>
#include <PIActions.h>
#include <PIAliasSuite.h>
#include <PIBufferSuite.h>
#include <PIChannelPortsSuite.h>
#include <PIGeneral.h>
#include <PIGetFileListSuite.h>
#include <PIHandleSuite.h>
#include <PIUIHooksSuite.h>
#include <SPAccess.h>
#include <SPRuntme.h>

#include "suites/AutoSuite.h"

extern AutoSuite<PSActionDescriptorProcs> sPSActionDescriptor;
extern AutoSuite<PSActionDescriptorProcs3> sPSActionDescriptor3;
extern AutoSuite<PSActionDescriptorProcs2> sPSActionDescriptor2;
extern AutoSuite<PSActionControlProcs> sPSActionControl;
extern AutoSuite<PSActionControlProcs4> sPSActionControl4;
extern AutoSuite<PSActionControlProcsOld> sPSActionControlOld;
extern AutoSuite<PSBasicActionControlProcs> sPSBasicActionControl;
extern AutoSuite<PSBasicActionControlProcsOld> sPSBasicActionControlOld;
extern AutoSuite<PSActionReferenceProcs> sPSActionReference;
extern AutoSuite<PSActionListProcs> sPSActionList;
extern AutoSuite<PSDescriptorRegistryProcs> sPSRegistry;
extern AutoSuite<PSUIHooksSuite1> sPSUIHooks;
extern AutoSuite<PSHandleSuite2> sPSHandle;
extern AutoSuite<ASZStringSuite> sASZString;
extern AutoSuite<ASZStringSuite2> sASZString2;
extern AutoSuite<SPAccessSuite> sSPAccess;
extern AutoSuite<PSGetFileListSuite4> sPSFileList;
extern AutoSuite<PSBufferSuite1> sPSBuffer;
extern AutoSuite<PSBufferSuite2> sPSBuffer64;
extern AutoSuite<BufferProcs> sPSBufferProcs;
extern AutoSuite<PSChannelPortsSuite1> sPSChannelProcs;
extern AutoSuite<SPRuntimeSuite> sSPRuntime;
extern AutoSuite<PropertyProcs> sPSProperty;
extern AutoSuite<PSAliasSuite> sPSAlias;
extern AutoSuite<ResourceProcs> sPSResource;
extern AutoSuite<JSScriptingSuite2> sScripting;

/// Releases every held suite, in the order of the holders above except that sPSHandle precedes
/// sPSUIHooks. The next use of a holder acquires its suite again.
void PIUSuitesRelease();
