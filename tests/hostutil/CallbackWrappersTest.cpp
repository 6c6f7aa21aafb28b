#include <cstring>

#include "hostutil/CallbackWrappers.h"
#include "tests/hostutil/Buffers.h"
#include "tests/hostutil/CallbackHost.h"

namespace {

using hostutil_test::CallbackTest;
using hostutil_test::PString;

constexpr ResType kType = fourCharCode("test");

BufferID someBuffer() { return reinterpret_cast<BufferID>(0x10); }

// --- buffers

using CallbackWrappersForBuffers = CallbackTest;

TEST_F(CallbackWrappersForBuffers, AllocateLockUnlockAndFree) {
  callbacks.setBufferSpace(1000);
  BufferID buffer = someBuffer();
  ASSERT_EQ(HostAllocateBuffer(&buffers, 100, &buffer), 0);
  EXPECT_EQ(HostBufferSpace(&buffers), 900);
  EXPECT_EQ(HostBufferSpace64(&buffers), 900);
  const Ptr bytes = HostLockBuffer(&buffers, buffer, false);
  ASSERT_NE(bytes, nullptr);
  std::memset(bytes, 'x', 100);
  HostUnlockBuffer(&buffers, buffer);
  HostFreeBuffer(&buffers, buffer);
  EXPECT_EQ(HostBufferSpace(&buffers), 1000);
}

TEST_F(CallbackWrappersForBuffers, AllocateEveryKind) {
  BufferID wide = nullptr;
  BufferID strip = nullptr;
  EXPECT_EQ(HostAllocateBuffer64(&buffers, 100, &wide), 0);
  EXPECT_EQ(HostAllocateStripBuffer(&buffers, 100, &strip), 0);
  EXPECT_EQ(callbacks.objectsOwned(), 2u);
  HostFreeBuffer(&buffers, wide);
  HostFreeBuffer(&buffers, strip);
}

TEST_F(CallbackWrappersForBuffers, ReturnNullAndMemFullErrWithoutTheRecord) {
  for (const BufferProcs& procs :
       {simulator::bufferProcs(1), simulator::bufferProcs(3), simulator::bufferProcs(2, 7)}) {
    BufferID a = someBuffer(), b = someBuffer(), c = someBuffer();
    EXPECT_EQ(HostAllocateBuffer(&procs, 100, &a), -108);
    EXPECT_EQ(HostAllocateBuffer64(&procs, 100, &b), -108);
    EXPECT_EQ(HostAllocateStripBuffer(&procs, 100, &c), -108);
    EXPECT_EQ(a, nullptr);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(c, nullptr);
  }
  BufferID buffer = someBuffer();
  EXPECT_EQ(HostAllocateBuffer(nullptr, 100, &buffer), -108);
  EXPECT_EQ(buffer, nullptr);
}

TEST_F(CallbackWrappersForBuffers, ReturnNullAndMemFullErrIfTheHostHasNoMemory) {
  callbacks.setBufferSpace(99);
  BufferID buffer = someBuffer();
  EXPECT_EQ(HostAllocateBuffer(&buffers, 100, &buffer), -108);
  EXPECT_EQ(buffer, nullptr);
}

TEST_F(CallbackWrappersForBuffers, ReturnTheHostsError) {
  fail("Buffer.allocateProc", -50);
  BufferID buffer = someBuffer();
  EXPECT_EQ(HostAllocateBuffer(&buffers, 100, &buffer), -50);
  EXPECT_EQ(buffer, nullptr);
}

TEST_F(CallbackWrappersForBuffers, TouchNothingWithoutTheRecord) {
  BufferID buffer = nullptr;
  ASSERT_EQ(HostAllocateBuffer(&buffers, 100, &buffer), 0);
  const BufferProcs newer = simulator::bufferProcs(3);
  EXPECT_EQ(HostBufferSpace(&newer), 0);
  EXPECT_EQ(HostBufferSpace64(&newer), 0);
  EXPECT_EQ(HostLockBuffer(&newer, buffer, false), nullptr);
  HostUnlockBuffer(&newer, buffer);
  HostFreeBuffer(&newer, buffer);
  EXPECT_EQ(callbacks.objectsOwned(), 1u);
  HostFreeBuffer(&buffers, buffer);
}

// --- resources

using CallbackWrappersForResources = CallbackTest;

TEST_F(CallbackWrappersForResources, CountReadAddAndDelete) {
  callbacks.addResource(kType, "first");
  callbacks.addResource(fourCharCode("othr"), "other");
  const Handle data = HostCString2Handle(&handles, "second");
  EXPECT_EQ(HostAddPIResource(&resources, kType, data), 0);
  HostDisposeHandle(&handles, data);
  EXPECT_EQ(HostCountPIResources(&resources, kType), 2);
  char text[10];
  EXPECT_EQ(HostHandle2CString(&handles, HostGetPIResource(&resources, kType, 2), text, 10), 0);
  EXPECT_STREQ(text, "second");
  HostDeletePIResource(&resources, kType, 1);
  EXPECT_EQ(HostCountPIResources(&resources, kType), 1);
  EXPECT_EQ(callbacks.resource(kType, 1), "second");
}

TEST_F(CallbackWrappersForResources, ReturnNullForAMissingResource) {
  EXPECT_EQ(HostGetPIResource(&resources, kType, 1), nullptr);
}

TEST_F(CallbackWrappersForResources, TouchNothingWithoutTheRecord) {
  callbacks.addResource(kType, "first");
  const ResourceProcs older = simulator::resourceProcs(2);
  const Handle data = HostCString2Handle(&handles, "second");
  EXPECT_EQ(HostAddPIResource(&older, kType, data), errPlugInHostInsufficient);
  HostDisposeHandle(&handles, data);
  EXPECT_EQ(HostCountPIResources(&older, kType), 0);
  EXPECT_EQ(HostGetPIResource(&older, kType, 1), nullptr);
  HostDeletePIResource(&older, kType, 1);
  EXPECT_EQ(callbacks.resource(kType, 1), "first");
}

// --- scripting parameters

class CallbackWrappersForDescriptors : public CallbackTest {
 protected:
  PIWriteDescriptor openWriter() { return record.write.openWriteDescriptorProc(); }

  simulator::DescriptorRecord record;
};

TEST_F(CallbackWrappersForDescriptors, StoreTheHandleAndClearTheWriterOnClosingIt) {
  PIWriteDescriptor writer = openWriter();
  record.write.putIntegerProc(writer, kKeyName, 7);
  EXPECT_EQ(HostCloseWriter(&record.parameters, &handles, &writer), 0);
  EXPECT_EQ(writer, nullptr);
  const auto content = callbacks.contentOf(record.parameters.descriptor);
  ASSERT_NE(content, nullptr);
  EXPECT_EQ(std::get<std::int32_t>(content->find(kKeyName)->value), 7);
  HostDisposeHandle(&handles, record.parameters.descriptor);
}

TEST_F(CallbackWrappersForDescriptors, DisposeOfThePreviousDescriptorOnClosingAWriter) {
  record.parameters.descriptor = HostNewHandle(&handles, 4);
  PIWriteDescriptor writer = openWriter();
  EXPECT_EQ(HostCloseWriter(&record.parameters, &handles, &writer), 0);
  EXPECT_EQ(host.objectsOwned(), 1u);
  HostDisposeHandle(&handles, record.parameters.descriptor);
}

TEST_F(CallbackWrappersForDescriptors, LeaveNoDescriptorIfAWriterFailsToClose) {
  record.parameters.descriptor = HostNewHandle(&handles, 4);
  PIWriteDescriptor writer = openWriter();
  record.write.closeWriteDescriptorProc = [](PIWriteDescriptor, PIDescriptorHandle*) {
    return OSErr{-50};
  };
  PIWriteDescriptor kept = writer;
  EXPECT_EQ(HostCloseWriter(&record.parameters, &handles, &writer), -50);
  EXPECT_EQ(record.parameters.descriptor, nullptr);
  EXPECT_EQ(writer, nullptr);
  record.write = simulator::writeDescriptorProcs();
  EXPECT_EQ(HostCloseWriter(&record.parameters, &handles, &kept), 0);
  HostDisposeHandle(&handles, record.parameters.descriptor);
}

TEST_F(CallbackWrappersForDescriptors, DisposeOfTheHandleAndClearBothOnClosingAReader) {
  simulator::Container content;
  content.put(kKeyName, {kTypeInteger, std::int32_t{7}});
  record.parameters.descriptor = callbacks.makeDescriptorHandle(content);
  PIReadDescriptor reader =
      record.read.openReadDescriptorProc(record.parameters.descriptor, nullptr);
  ASSERT_NE(reader, nullptr);
  const Handle descriptor = record.parameters.descriptor;
  EXPECT_EQ(HostCloseReader(&record.parameters, &handles, &reader), 0);
  EXPECT_EQ(reader, nullptr);
  EXPECT_EQ(record.parameters.descriptor, nullptr);
  EXPECT_EQ(*descriptor, nullptr);
}

TEST_F(CallbackWrappersForDescriptors, ReturnTheResultOfClosingAReader) {
  simulator::Container content;
  content.put(kKeyName, {kTypeInteger, std::int32_t{7}});
  record.parameters.descriptor = callbacks.makeDescriptorHandle(content);
  PIReadDescriptor reader =
      record.read.openReadDescriptorProc(record.parameters.descriptor, nullptr);
  DescriptorKeyID key;
  DescriptorTypeID type;
  EXPECT_TRUE(record.read.getKeyProc(reader, &key, &type, nullptr));
  double value;
  EXPECT_EQ(record.read.getFloatProc(reader, &value), -1703);
  EXPECT_EQ(HostCloseReader(&record.parameters, &handles, &reader), -1703);
  EXPECT_EQ(reader, nullptr);
  EXPECT_EQ(record.parameters.descriptor, nullptr);
}

TEST_F(CallbackWrappersForDescriptors, ClearReaderAndHandleEvenWithoutHandleProcedures) {
  record.parameters.descriptor = callbacks.makeDescriptorHandle({});
  const Handle descriptor = record.parameters.descriptor;
  PIReadDescriptor reader = record.read.openReadDescriptorProc(descriptor, nullptr);
  const HandleProcs newer = simulator::handleProcs(2);
  EXPECT_EQ(HostCloseReader(&record.parameters, &newer, &reader), 0);
  EXPECT_EQ(reader, nullptr);
  EXPECT_EQ(record.parameters.descriptor, nullptr);
  EXPECT_NE(*descriptor, nullptr);
}

TEST_F(CallbackWrappersForDescriptors, PutAnObjectUnderItsKey) {
  PIWriteDescriptor inner = openWriter();
  record.write.putIntegerProc(inner, kKeyName, 7);
  HostCloseWriter(&record.parameters, &handles, &inner);
  const Handle object = std::exchange(record.parameters.descriptor, nullptr);
  PIWriteDescriptor outer = openWriter();
  EXPECT_EQ(HostPutObj(&record.parameters, outer, kKeyTo, kClassBrush, object), 0);
  HostDisposeHandle(&handles, object);
  HostCloseWriter(&record.parameters, &handles, &outer);
  const auto content = callbacks.contentOf(record.parameters.descriptor);
  const auto& put = std::get<simulator::Object>(content->find(kKeyTo)->value);
  EXPECT_EQ(put.type, kClassBrush);
  EXPECT_EQ(std::get<std::int32_t>(put.content->find(kKeyName)->value), 7);
  HostDisposeHandle(&handles, record.parameters.descriptor);
}

TEST_F(CallbackWrappersForDescriptors, ChangeNothingWithoutTheRecord) {
  PIWriteDescriptor writer = openWriter();
  PIReadDescriptor reader = reinterpret_cast<PIReadDescriptor>(0x10);
  const Handle descriptor = HostNewHandle(&handles, 4);
  record.parameters.descriptor = descriptor;
  record.parameters.descriptorParametersVersion = 1;
  EXPECT_EQ(HostPutObj(&record.parameters, writer, kKeyTo, kClassBrush, descriptor),
            errPlugInHostInsufficient);
  EXPECT_EQ(HostCloseReader(&record.parameters, &handles, &reader), errPlugInHostInsufficient);
  EXPECT_EQ(HostCloseWriter(&record.parameters, &handles, &writer), errPlugInHostInsufficient);
  EXPECT_NE(reader, nullptr);
  EXPECT_NE(writer, nullptr);
  EXPECT_EQ(record.parameters.descriptor, descriptor);
  record.parameters.descriptorParametersVersion = 0;
  HostCloseWriter(&record.parameters, &handles, &writer);
  HostDisposeHandle(&handles, record.parameters.descriptor);
}

TEST_F(CallbackWrappersForDescriptors, DoNotCallANullProcedureThatIsCounted) {
  record.write = simulator::writeDescriptorProcs(0, 0);
  record.read.closeReadDescriptorProc = nullptr;
  PIReadDescriptor reader = nullptr;
  PIWriteDescriptor writer = nullptr;
  EXPECT_EQ(HostPutObj(&record.parameters, writer, kKeyTo, kClassBrush, nullptr),
            errPlugInHostInsufficient);
  EXPECT_EQ(HostCloseReader(&record.parameters, &handles, &reader), errPlugInHostInsufficient);
  EXPECT_EQ(HostCloseWriter(&record.parameters, &handles, &writer), errPlugInHostInsufficient);
}

// --- colour services

class CallbackWrappersForColors : public CallbackTest {
 protected:
  OSErr pick() {
    return HostCSPickColor(proc, prompt, plugIncolorServicesRGBSpace, &space, &color, &picked);
  }

  ColorServicesProc proc = simulator::colorServicesProc();
  PString prompt{"Pick one"};
  int16 space = plugIncolorServicesRGBSpace;
  CSColor color = {1, 2, 3, 4};
  CSColor picked = {5, 6, 7, 8};
};

void expectColor(const CSColor& color, int c0, int c1, int c2, int c3) {
  EXPECT_EQ(color[0], c0);
  EXPECT_EQ(color[1], c1);
  EXPECT_EQ(color[2], c2);
  EXPECT_EQ(color[3], c3);
}

TEST_F(CallbackWrappersForColors, SetAndCopyColours) {
  CSColor copy;
  CSSetColor(color, 10, 20, 30, 40);
  CSCopyColor(copy, color);
  expectColor(copy, 10, 20, 30, 40);
}

TEST_F(CallbackWrappersForColors, ConvertPixelsToThePickerAndBackLimitedTo8Bits) {
  const CSPixel pixel = {0, 1, 254, 255};
  CSToPicker(color, pixel);
  expectColor(color, 0, 1, 254, 255);
  CSPixel back;
  CSSetColor(color, -1, 256, 300, 128);
  CSFromPicker(back, color);
  EXPECT_EQ(back[0], 0);
  EXPECT_EQ(back[1], 255);
  EXPECT_EQ(back[2], 255);
  EXPECT_EQ(back[3], 128);
}

TEST_F(CallbackWrappersForColors, SetEveryFieldOfANewRequest) {
  ColorServicesInfo info;
  std::memset(&info, 0xFF, sizeof info);
  CSInitInfo(&info);
  EXPECT_EQ(info.infoSize, static_cast<int32>(sizeof info));
  EXPECT_EQ(info.selector, plugIncolorServicesConvertColor);
  EXPECT_EQ(info.reservedSourceSpaceInfo, nullptr);
  EXPECT_EQ(info.reservedResultSpaceInfo, nullptr);
  EXPECT_EQ(info.reserved, nullptr);
  EXPECT_EQ(info.selectorParameter.pickerPrompt, nullptr);
  expectColor(info.colorComponents, 0, 0, 0, 0);
}

TEST_F(CallbackWrappersForColors, ConvertAColourInPlace) {
  CSSetColor(color, 255, 0, 0, 0);
  EXPECT_EQ(
      HostCSConvertColor(proc, plugIncolorServicesRGBSpace, plugIncolorServicesCMYKSpace, &color),
      0);
  expectColor(color, 0, 255, 255, 0);
}

TEST_F(CallbackWrappersForColors, LeaveTheColourIfItsConversionFails) {
  EXPECT_EQ(HostCSConvertColor(proc, plugIncolorServicesRGBSpace, 99, &color), -50);
  expectColor(color, 1, 2, 3, 4);
}

TEST_F(CallbackWrappersForColors, RefuseAConversionWithoutProcedureOrColour) {
  EXPECT_EQ(HostCSConvertColor(nullptr, 0, 0, &color), -30900);
  EXPECT_EQ(HostCSConvertColor(proc, 0, 0, nullptr), -1715);
}

TEST_F(CallbackWrappersForColors, StoreThePickedColourInBothOutputArguments) {
  callbacks.setPickedColor({{10, 20, 30}});
  EXPECT_EQ(pick(), 0);
  expectColor(color, 10, 20, 30, 0);
  expectColor(picked, 10, 20, 30, 0);
  EXPECT_EQ(callbacks.pickerPrompt(), "Pick one");
}

TEST_F(CallbackWrappersForColors, ReturnTheSpaceThatTheUserChose) {
  callbacks.setPickedColor({{10, 20, 30}});
  space = plugIncolorServicesChosenSpace;
  EXPECT_EQ(pick(), 0);
  EXPECT_EQ(space, plugIncolorServicesRGBSpace);
}

TEST_F(CallbackWrappersForColors, LeaveBothOutputArgumentsIfTheUserCancels) {
  callbacks.setPickedColor(std::nullopt);
  EXPECT_EQ(pick(), -128);
  expectColor(color, 1, 2, 3, 4);
  expectColor(picked, 5, 6, 7, 8);
}

TEST_F(CallbackWrappersForColors,
       ReturnMinus30900ForAPickWithoutTheProcedureWhateverElseIsMissing) {
  EXPECT_EQ(HostCSPickColor(nullptr, prompt, 0, &space, &color, &picked), -30900);
  EXPECT_EQ(HostCSPickColor(nullptr, nullptr, 0, nullptr, nullptr, nullptr), -30900);
}

TEST_F(CallbackWrappersForColors, ReturnMinus1715ForAPickWithoutColourSpaceOrPrompt) {
  EXPECT_EQ(HostCSPickColor(proc, nullptr, 0, &space, &color, &picked), -1715);
  EXPECT_EQ(HostCSPickColor(proc, prompt, 0, &space, nullptr, &picked), -1715);
  EXPECT_EQ(HostCSPickColor(proc, prompt, 0, nullptr, &color, &picked), -1715);
}

TEST_F(CallbackWrappersForColors, AcceptAPickWithoutTheSecondOutputArgument) {
  callbacks.setPickedColor({{10, 20, 30}});
  EXPECT_EQ(HostCSPickColor(proc, prompt, 0, &space, &color, nullptr), 0);
  expectColor(color, 10, 20, 30, 0);
}

// --- texts and blocks

TEST(PIParamText, FillsAndTerminatesEachText) {
  PIParameterText text;
  std::memset(&text, 'X', sizeof text);
  PIParamText(&text, PString("a"), nullptr, PString(std::string(255, 'c')), PString(""));
  EXPECT_STREQ(reinterpret_cast<char*>(text.parameter[0]), "\1a");
  EXPECT_STREQ(reinterpret_cast<char*>(text.parameter[1]), "");
  EXPECT_EQ(text.parameter[1][1], 0);
  EXPECT_EQ(text.parameter[2][0], 254);
  EXPECT_EQ(text.parameter[2][255], 0);
  EXPECT_EQ(text.parameter[3][0], 0);
}

TEST(HostBlockMove, CopiesOverlappingBlocks) {
  char bytes[] = "abcdef";
  HostBlockMove(bytes, bytes + 2, 4);
  EXPECT_STREQ(bytes, "ababcd");
  HostBlockMove(bytes + 2, bytes, 4);
  EXPECT_STREQ(bytes, "abcdcd");
}

}  // namespace
