#include "suites/Suites.h"

#include <PIProperties.h>

#include "suites/AutoSuite.h"

// At process exit the suites are released in the reverse order of these definitions.
AutoSuite<PSActionDescriptorProcs> sPSActionDescriptor(kPSActionDescriptorSuite,
                                                       kPSActionDescriptorSuiteVersion);
AutoSuite<PSActionDescriptorProcs3> sPSActionDescriptor3(kPSActionDescriptorSuite,
                                                         kPSActionDescriptorSuiteVersion3);
AutoSuite<PSActionDescriptorProcs2> sPSActionDescriptor2(kPSActionDescriptorSuite,
                                                         kPSActionDescriptorSuiteVersion2);
AutoSuite<PSActionControlProcs> sPSActionControl(kPSActionControlSuite,
                                                 kPSActionControlSuiteVersion);
AutoSuite<PSActionControlProcs4> sPSActionControl4(kPSActionControlSuite,
                                                   kPSActionControlSuiteVersion4);
AutoSuite<PSActionControlProcsOld> sPSActionControlOld(kPSActionControlSuite,
                                                       kPSActionControlSuitePrevVersion);
AutoSuite<PSBasicActionControlProcs> sPSBasicActionControl(kPSBasicActionControlSuite,
                                                           kPSBasicActionControlSuiteVersion);
AutoSuite<PSBasicActionControlProcsOld> sPSBasicActionControlOld(
    kPSBasicActionControlSuite, kPSBasicActionControlSuitePrevVersion);
AutoSuite<PSActionReferenceProcs> sPSActionReference(kPSActionReferenceSuite,
                                                     kPSActionReferenceSuiteVersion);
AutoSuite<PSActionListProcs> sPSActionList(kPSActionListSuite, kPSActionListSuiteVersion);
AutoSuite<PSDescriptorRegistryProcs> sPSRegistry(kPSDescriptorRegistrySuite,
                                                 kPSDescriptorRegistrySuiteVersion);
AutoSuite<PSUIHooksSuite1> sPSUIHooks(kPSUIHooksSuite, kPSUIHooksSuiteVersion1);
AutoSuite<PSHandleSuite2> sPSHandle(kPSHandleSuite, kPSHandleSuiteVersion2);
AutoSuite<ASZStringSuite> sASZString(kASZStringSuite, kASZStringSuiteVersion1);
AutoSuite<ASZStringSuite2> sASZString2(kASZStringSuite, kASZStringSuiteVersion2);
AutoSuite<SPAccessSuite> sSPAccess(kSPAccessSuite, kSPAccessSuiteVersion);
AutoSuite<PSGetFileListSuite4> sPSFileList(kPSGetFileListSuite, kPSGetFileListSuiteVersion4);
AutoSuite<PSBufferSuite1> sPSBuffer(kPSBufferSuite, kPSBufferSuiteVersion1);
AutoSuite<PSBufferSuite2> sPSBuffer64(kPSBufferSuite, kPSBufferSuiteVersion2);
AutoSuite<BufferProcs> sPSBufferProcs(kPSBufferProcsSuite, kPSBufferProcsSuiteVersion);
AutoSuite<PSChannelPortsSuite1> sPSChannelProcs(kPSChannelPortsSuite, kPSChannelPortsSuiteVersion3);
AutoSuite<SPRuntimeSuite> sSPRuntime(kSPRuntimeSuite, kSPRuntimeSuiteVersion);
AutoSuite<PropertyProcs> sPSProperty(kPSPropertySuite, kPSPropertySuiteVersion);
AutoSuite<PSAliasSuite> sPSAlias(kPSAliasSuite, kPSAliasSuiteVersion);
AutoSuite<ResourceProcs> sPSResource(kPSResourceSuite, kCurrentResourceProcsVersion);
AutoSuite<JSScriptingSuite2> sScripting(kJSScriptingSuite, kJSScriptingSuiteVersion2);

void PIUSuitesRelease() {
  sPSActionDescriptor.ReleaseSuite();
  sPSActionDescriptor3.ReleaseSuite();
  sPSActionDescriptor2.ReleaseSuite();
  sPSActionControl.ReleaseSuite();
  sPSActionControl4.ReleaseSuite();
  sPSActionControlOld.ReleaseSuite();
  sPSBasicActionControl.ReleaseSuite();
  sPSBasicActionControlOld.ReleaseSuite();
  sPSActionReference.ReleaseSuite();
  sPSActionList.ReleaseSuite();
  sPSRegistry.ReleaseSuite();
  // Out of the order above: hosts in the field see the handle suite released before the hooks.
  sPSHandle.ReleaseSuite();
  sPSUIHooks.ReleaseSuite();
  sASZString.ReleaseSuite();
  sASZString2.ReleaseSuite();
  sSPAccess.ReleaseSuite();
  sPSFileList.ReleaseSuite();
  sPSBuffer.ReleaseSuite();
  sPSBuffer64.ReleaseSuite();
  sPSBufferProcs.ReleaseSuite();
  sPSChannelProcs.ReleaseSuite();
  sSPRuntime.ReleaseSuite();
  sPSProperty.ReleaseSuite();
  sPSAlias.ReleaseSuite();
  sPSResource.ReleaseSuite();
  sScripting.ReleaseSuite();
}
