#include <cstdint>
#include <string>

#include "simulator/host/callbacks/CallbackRecords.h"
#include "tests/hostutil/CallbackHost.h"

namespace {

using hostutil_test::CallbackTest;
using CallbackRecords = CallbackTest;

TEST_F(CallbackRecords, ComeInAnyVersionAndLackTheProceduresNotCounted) {
  const HandleProcs procs = simulator::handleProcs(7, 3);
  EXPECT_EQ(procs.handleProcsVersion, 7);
  EXPECT_EQ(procs.numHandleProcs, 3);
  EXPECT_NE(procs.getSizeProc, nullptr);
  EXPECT_EQ(procs.setSizeProc, nullptr);
  EXPECT_EQ(procs.disposeRegularHandleProc, nullptr);
}

TEST_F(CallbackRecords, PassOnACountBeyondTheProceduresOrBelowZero) {
  EXPECT_EQ(simulator::propertyProcs(1, 99).numPropertyProcs, 99);
  EXPECT_NE(simulator::propertyProcs(1, 99).setPropertyProc, nullptr);
  EXPECT_EQ(simulator::propertyProcs(1, -1).getPropertyProc, nullptr);
}

TEST_F(CallbackRecords, ReportALeakedBuffer) {
  BufferID buffer = nullptr;
  buffers.allocateProc(10, &buffer);
  callbacks.reportLeaks();
  expectedMisuses = 1;
}

TEST_F(CallbackRecords, ReportABufferFreedTwice) {
  BufferID buffer = nullptr;
  buffers.allocateProc(10, &buffer);
  buffers.freeProc(buffer);
  buffers.freeProc(buffer);
  EXPECT_EQ(buffers.lockProc(buffer, false), nullptr);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, ReportUnmatchedLocksOfABuffer) {
  BufferID buffer = nullptr;
  buffers.allocateProc(10, &buffer);
  buffers.unlockProc(buffer);
  buffers.lockProc(buffer, false);
  buffers.freeProc(buffer);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, ReportAHandleDisposedOfTwiceOrLeaked) {
  const Handle handle = handles.newProc(4);
  handles.disposeProc(handle);
  handles.disposeProc(handle);
  handles.newProc(4);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, ReportReadersAndWritersLeftOpen) {
  simulator::DescriptorRecord record;
  record.write.openWriteDescriptorProc();
  record.read.openReadDescriptorProc(callbacks.makeDescriptorHandle({}), nullptr);
  EXPECT_EQ(callbacks.objectsOwned(), 2u);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, ReportAReaderGivenForAWriter) {
  simulator::DescriptorRecord record;
  const PIReadDescriptor reader =
      record.read.openReadDescriptorProc(callbacks.makeDescriptorHandle({}), nullptr);
  EXPECT_EQ(record.write.putIntegerProc(reinterpret_cast<PIWriteDescriptor>(reader), 1, 1), -50);
  EXPECT_EQ(record.read.closeReadDescriptorProc(reader), 0);
  expectedMisuses = 1;
}

TEST_F(CallbackRecords, FailOnDemandInAnyProcedureWithAResult) {
  fail("AdvanceState", -128);
  EXPECT_EQ(simulator::advanceStateProc()(), -128);
  EXPECT_EQ(callbacks.advances(), 0);
  fail("Buffer.spaceProc64", -1);
  EXPECT_EQ(buffers.spaceProc64(), 0);
}

TEST_F(CallbackRecords, CountAdvancesAndDisplays) {
  EXPECT_EQ(simulator::advanceStateProc()(), 0);
  EXPECT_EQ(callbacks.advances(), 1);
  const PSPixelMap map = {};
  const VRect rect = {1, 2, 3, 4};
  EXPECT_EQ(simulator::displayPixelsProc()(&map, &rect, 5, 6, nullptr), 0);
  EXPECT_EQ(simulator::displayPixelsProc()(nullptr, &rect, 5, 6, nullptr), -50);
  ASSERT_EQ(callbacks.displayed().size(), 1u);
  EXPECT_EQ(callbacks.displayed()[0].source.right, 4);
  EXPECT_EQ(callbacks.displayed()[0].row, 5);
  EXPECT_EQ(callbacks.displayed()[0].column, 6);
}

TEST_F(CallbackRecords, ReadAndWriteSimpleAndComplexProperties) {
  const PropertyProcs procs = simulator::propertyProcs();
  const PIType key = fourCharCode("test");
  std::intptr_t simple = 0;
  Handle complex = nullptr;
  EXPECT_EQ(procs.getPropertyProc(kPhotoshopSignature, key, 0, &simple, &complex),
            errPlugInPropertyUndefined);
  callbacks.setProperty(kPhotoshopSignature, key, 0, 42);
  EXPECT_EQ(procs.getPropertyProc(kPhotoshopSignature, key, 0, &simple, &complex), 0);
  EXPECT_EQ(simple, 42);
  EXPECT_EQ(complex, nullptr);
  callbacks.setProperty(kPhotoshopSignature, key, 1, std::string("text"));
  EXPECT_EQ(procs.getPropertyProc(kPhotoshopSignature, key, 1, nullptr, &complex), 0);
  EXPECT_EQ(procs.setPropertyProc(kPhotoshopSignature, key, 2, 7, complex), 0);
  handles.disposeProc(complex);
  EXPECT_EQ(procs.getPropertyProc(kPhotoshopSignature, key, 2, &simple, &complex), 0);
  EXPECT_EQ(simple, 7);
  EXPECT_EQ(std::string(*complex, 4), "text");
  handles.disposeProc(complex);
}

}  // namespace
