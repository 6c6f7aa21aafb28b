#include "plugin/Suites.h"

namespace {

constexpr char kActionDescriptor[] = "df135115-c769-11d0-8079-00c04fd7ec47";
constexpr char kActionControl[] = "bc1e4d70-f953-11d0-8d9f-00c04fd5f7ee";
constexpr char kBasicActionControl[] = "3eb7c480-8797-11d1-8da7-00c04fd5f7ee";
constexpr char kActionReference[] = "df135117-c769-11d0-8079-00c04fd7ec47";
constexpr char kActionList[] = "df135116-c769-11d0-8079-00c04fd7ec47";
constexpr char kDescriptorRegistry[] = "61e608b0-40fd-11d1-8da3-00c04fd5f7ee";
constexpr char kUIHooks[] = "Photoshop UIHooks Suite for Plug-ins";
constexpr char kHandle[] = "Photoshop Handle Suite for Plug-ins";
constexpr char kASZString[] = "AS ZString Suite";
constexpr char kSPAccess[] = "SP Access Suite";
constexpr char kGetFileList[] = "Photoshop GetFileList Suite for Plug-ins";
constexpr char kBuffer[] = "Photoshop Buffer Suite for Plug-ins";
constexpr char kBufferProcs[] = "Photoshop Buffer Procs for Plug-ins";
constexpr char kChannelPorts[] = "Photoshop ChannelPorts Suite for Plug-ins";
constexpr char kSPRuntime[] = "SP Runtime Suite";
constexpr char kProperty[] = "Photoshop Property Suite for Plug-ins";
constexpr char kAliasUtility[] = "Photoshop Alias Utility Suite";
constexpr char kResource[] = "Photoshop Resource Suite for Plug-ins";
constexpr char kJavaScriptScripting[] = "JavaScript Scripting Suite";

}  // namespace

// The order of the definitions is the order of construction, and so, backwards, of release at
// process exit.
AutoSuite<PSActionDescriptorProcs> sPSActionDescriptor(kActionDescriptor, 5);
AutoSuite<PSActionDescriptorProcs3> sPSActionDescriptor3(kActionDescriptor, 3);
AutoSuite<PSActionDescriptorProcs2> sPSActionDescriptor2(kActionDescriptor, 2);
AutoSuite<PSActionControlProcs> sPSActionControl(kActionControl, 6);
AutoSuite<PSActionControlProcs4> sPSActionControl4(kActionControl, 4);
AutoSuite<PSActionControlProcsOld> sPSActionControlOld(kActionControl, 3);
AutoSuite<PSBasicActionControlProcs> sPSBasicActionControl(kBasicActionControl, 3);
AutoSuite<PSBasicActionControlProcsOld> sPSBasicActionControlOld(kBasicActionControl, 2);
AutoSuite<PSActionReferenceProcs> sPSActionReference(kActionReference, 3);
AutoSuite<PSActionListProcs> sPSActionList(kActionList, 3);
AutoSuite<PSDescriptorRegistryProcs> sPSRegistry(kDescriptorRegistry, 1);
AutoSuite<PSUIHooksSuite1> sPSUIHooks(kUIHooks, 1);
AutoSuite<PSHandleSuite2> sPSHandle(kHandle, 2);
AutoSuite<ASZStringSuite> sASZString(kASZString, 1);
AutoSuite<ASZStringSuite2> sASZString2(kASZString, 2);
AutoSuite<SPAccessSuite> sSPAccess(kSPAccess, 3);
AutoSuite<PSGetFileListSuite4> sPSFileList(kGetFileList, 4);
AutoSuite<PSBufferSuite1> sPSBuffer(kBuffer, 1);
AutoSuite<PSBufferSuite2> sPSBuffer64(kBuffer, 2);
AutoSuite<BufferProcs> sPSBufferProcs(kBufferProcs, 2);
AutoSuite<PSChannelPortsSuite1> sPSChannelProcs(kChannelPorts, 3);
AutoSuite<SPRuntimeSuite> sSPRuntime(kSPRuntime, 5);
AutoSuite<PropertyProcs> sPSProperty(kProperty, 1);
AutoSuite<PSAliasSuite> sPSAlias(kAliasUtility, 1);
AutoSuite<ResourceProcs> sPSResource(kResource, 3);
AutoSuite<JSScriptingSuite2> sScripting(kJavaScriptScripting, 2);

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
  // The handle suite goes before the hooks, out of the order above, and hosts see it so.
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
