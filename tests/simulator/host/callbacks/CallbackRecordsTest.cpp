// The simulated host's callback records themselves.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/host/callbacks/CallbackRecords.h"
#include "simulator/macos/Aliases.h"
#include "simulator/macos/Bookmarks.h"
#include "tests/hostutil/CallbackHost.h"

namespace {

using hostutil_test::CallbackTest;
using CallbackRecords = CallbackTest;

TEST_F(CallbackRecords, records_come_in_any_version_and_without_the_procedures_not_counted) {
  const HandleProcs procs = simulator::handleProcs(7, 3);
  EXPECT_EQ(procs.handleProcsVersion, 7);
  EXPECT_EQ(procs.numHandleProcs, 3);
  EXPECT_NE(procs.getSizeProc, nullptr);
  EXPECT_EQ(procs.setSizeProc, nullptr);
  EXPECT_EQ(procs.disposeRegularHandleProc, nullptr);
}

TEST_F(CallbackRecords, a_count_beyond_the_procedures_or_below_zero_is_passed_on) {
  EXPECT_EQ(simulator::propertyProcs(1, 99).numPropertyProcs, 99);
  EXPECT_NE(simulator::propertyProcs(1, 99).setPropertyProc, nullptr);
  EXPECT_EQ(simulator::propertyProcs(1, -1).getPropertyProc, nullptr);
}

TEST_F(CallbackRecords, a_buffer_that_is_leaked_is_a_misuse) {
  BufferID buffer = nullptr;
  buffers.allocateProc(10, &buffer);
  callbacks.reportLeaks();
  expectedMisuses = 1;
}

TEST_F(CallbackRecords, a_buffer_freed_twice_is_a_misuse) {
  BufferID buffer = nullptr;
  buffers.allocateProc(10, &buffer);
  buffers.freeProc(buffer);
  buffers.freeProc(buffer);
  EXPECT_EQ(buffers.lockProc(buffer, false), nullptr);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, locks_of_a_buffer_that_do_not_match_are_misuses) {
  BufferID buffer = nullptr;
  buffers.allocateProc(10, &buffer);
  buffers.unlockProc(buffer);
  buffers.lockProc(buffer, false);
  buffers.freeProc(buffer);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, a_handle_disposed_of_twice_or_leaked_is_a_misuse) {
  const Handle handle = handles.newProc(4);
  handles.disposeProc(handle);
  handles.disposeProc(handle);
  handles.newProc(4);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, readers_and_writers_left_open_are_misuses) {
  simulator::DescriptorRecord record;
  record.write.openWriteDescriptorProc();
  record.read.openReadDescriptorProc(callbacks.makeDescriptorHandle({}), nullptr);
  EXPECT_EQ(callbacks.objectsOwned(), 2u);
  expectedMisuses = 2;
}

TEST_F(CallbackRecords, a_reader_given_for_a_writer_is_a_misuse) {
  simulator::DescriptorRecord record;
  const PIReadDescriptor reader =
      record.read.openReadDescriptorProc(callbacks.makeDescriptorHandle({}), nullptr);
  EXPECT_EQ(record.write.putIntegerProc(reinterpret_cast<PIWriteDescriptor>(reader), 1, 1), -50);
  EXPECT_EQ(record.read.closeReadDescriptorProc(reader), 0);
  expectedMisuses = 1;
}

TEST_F(CallbackRecords, any_procedure_with_a_result_can_be_ordered_to_fail) {
  fail("AdvanceState", -128);
  EXPECT_EQ(simulator::advanceStateProc()(), -128);
  EXPECT_EQ(callbacks.advances(), 0);
  fail("Buffer.spaceProc64", -1);
  EXPECT_EQ(buffers.spaceProc64(), 0);
}

TEST_F(CallbackRecords, advancing_and_displaying_are_counted) {
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

TEST_F(CallbackRecords, simple_and_complex_properties_are_read_and_written) {
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

// --- channel ports

class ChannelPorts : public CallbackTest {
 protected:
  PixelMemoryDesc memory(int32 width) { return {bytes.data(), width * 8, 8, 0, 8}; }

  const ChannelPortProcs ports = simulator::channelPortProcs();
  const PIChannelPort port = callbacks.makePort(3, 2, {1, 2, 3, 4, 5, 6});
  std::array<std::uint8_t, 6> bytes = {};
};

TEST_F(ChannelPorts, pixels_are_read_as_far_as_there_are_any) {
  const VRect wanted = {1, 1, 3, 4};
  const PixelMemoryDesc into = memory(3);
  VRect wrote = {};
  EXPECT_EQ(ports.readPixelsProc(port, nullptr, &wanted, &into, &wrote), 0);
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 6>{5, 6, 0, 0, 0, 0}));
  EXPECT_EQ(wrote.top, 1);
  EXPECT_EQ(wrote.left, 1);
  EXPECT_EQ(wrote.bottom, 2);
  EXPECT_EQ(wrote.right, 3);
}

TEST_F(ChannelPorts, pixels_are_scaled_to_the_nearest_one) {
  const PSScaling scaling = {{0, 0, 2, 3}, {0, 0, 1, 6}};
  const VRect wanted = {0, 0, 1, 6};
  const PixelMemoryDesc into = memory(6);
  EXPECT_EQ(ports.readPixelsProc(port, &scaling, &wanted, &into, nullptr), 0);
  EXPECT_EQ(bytes, (std::array<std::uint8_t, 6>{1, 1, 2, 2, 3, 3}));
}

TEST_F(ChannelPorts, pixels_are_written_and_read_through_a_read_port) {
  const VRect area = {0, 0, 1, 3};
  bytes = {7, 8, 9};
  const PixelMemoryDesc from = memory(3);
  EXPECT_EQ(ports.writeBasePixelsProc(port, &area, &from), 0);
  EXPECT_EQ(callbacks.pixels(port), (std::vector<std::uint8_t>{7, 8, 9, 4, 5, 6}));
  PIChannelPort readPort = nullptr;
  EXPECT_EQ(ports.readPortForWritePortProc(&readPort, port), 0);
  EXPECT_EQ(ports.writeBasePixelsProc(readPort, &area, &from), -50);
  bytes = {};
  EXPECT_EQ(ports.readPixelsProc(readPort, nullptr, &area, &from, nullptr), 0);
  EXPECT_EQ(bytes[2], 9);
}

TEST_F(ChannelPorts, other_depths_and_a_source_outside_the_port_are_refused) {
  const VRect area = {0, 0, 1, 3};
  PixelMemoryDesc deep = memory(3);
  deep.depth = 16;
  EXPECT_EQ(ports.readPixelsProc(port, nullptr, &area, &deep, nullptr), -50);
  const PSScaling outside = {{0, 0, 3, 3}, {0, 0, 1, 1}};
  const PixelMemoryDesc into = memory(3);
  EXPECT_EQ(ports.readPixelsProc(port, &outside, &area, &into, nullptr), -50);
}

// --- scripting parameters

class Descriptors : public CallbackTest {
 protected:
  /// Closes the writer and opens a reader on what it left.
  void turn() {
    ASSERT_EQ(record.write.closeWriteDescriptorProc(writer, &record.parameters.descriptor), 0);
    reader = record.read.openReadDescriptorProc(record.parameters.descriptor, nullptr);
    ASSERT_NE(reader, nullptr);
  }

  DescriptorTypeID nextType() {
    DescriptorKeyID key = 0;
    DescriptorTypeID type = 0;
    int32 flags = -1;
    EXPECT_TRUE(record.read.getKeyProc(reader, &key, &type, &flags));
    EXPECT_EQ(key, ++lastKey);
    EXPECT_EQ(flags, 0);
    return type;
  }

  void close() {
    EXPECT_EQ(record.read.closeReadDescriptorProc(reader), 0);
    handles.disposeProc(record.parameters.descriptor);
  }

  simulator::DescriptorRecord record;
  PIWriteDescriptor writer = record.write.openWriteDescriptorProc();
  PIReadDescriptor reader = nullptr;
  DescriptorKeyID lastKey = 0;
};

TEST_F(Descriptors, numbers_come_back) {
  const double fraction = 1.5;
  record.write.putIntegerProc(writer, 1, -7);
  record.write.putFloatProc(writer, 2, &fraction);
  record.write.putUnitFloatProc(writer, 3, kUnitPixels, &fraction);
  record.write.putBooleanProc(writer, 4, true);
  record.write.putCountProc(writer, 5, 9);
  turn();
  int32 integer = 0;
  double value = 0;
  DescriptorUnitID unit = 0;
  Boolean flag = false;
  uint32 count = 0;
  EXPECT_EQ(nextType(), kTypeInteger);
  EXPECT_EQ(record.read.getIntegerProc(reader, &integer), 0);
  EXPECT_EQ(integer, -7);
  EXPECT_EQ(nextType(), kTypeFloat);
  EXPECT_EQ(record.read.getFloatProc(reader, &value), 0);
  EXPECT_EQ(value, 1.5);
  EXPECT_EQ(nextType(), kTypeUnitFloat);
  EXPECT_EQ(record.read.getUnitFloatProc(reader, &unit, &value), 0);
  EXPECT_EQ(unit, kUnitPixels);
  EXPECT_EQ(nextType(), kTypeBoolean);
  EXPECT_EQ(record.read.getBooleanProc(reader, &flag), 0);
  EXPECT_TRUE(flag);
  EXPECT_EQ(nextType(), kTypeInteger);
  EXPECT_EQ(record.read.getCountProc(reader, &count), 0);
  EXPECT_EQ(count, 9u);
  EXPECT_FALSE(record.read.getKeyProc(reader, &unit, &unit, nullptr));
  close();
}

TEST_F(Descriptors, pinned_numbers_come_back_within_their_bounds) {
  const double ten = 10, one = 1, two = 2;
  record.write.putIntegerProc(writer, 1, 10);
  record.write.putFloatProc(writer, 2, &ten);
  record.write.putUnitFloatProc(writer, 3, kUnitPercent, &ten);
  turn();
  int32 integer = 0;
  double value = 0;
  DescriptorUnitID unit = 0;
  nextType();
  EXPECT_EQ(record.read.getPinnedIntegerProc(reader, 20, 30, &integer), 0);
  EXPECT_EQ(integer, 20);
  nextType();
  EXPECT_EQ(record.read.getPinnedFloatProc(reader, &one, &two, &value), 0);
  EXPECT_EQ(value, 2);
  nextType();
  EXPECT_EQ(record.read.getPinnedUnitFloatProc(reader, &one, &two, &unit, &value), 0);
  EXPECT_EQ(unit, kUnitPercent);
  EXPECT_EQ(value, 2);
  close();
}

TEST_F(Descriptors, texts_and_files_come_back) {
  const Handle text = handles.newProc(3);
  std::copy_n("abc", 3, *text);
  record.write.putTextProc(writer, 1, text);
  handles.disposeProc(text);
  record.write.putStringProc(writer, 2, reinterpret_cast<const unsigned char*>("\3def"));
  const auto alias = reinterpret_cast<Handle>(simulator::makeAlias("/a/b", "test"));
  record.write.putAliasProc(writer, 3, alias);
  handles.disposeRegularHandleProc(alias);
  turn();
  Handle value = nullptr;
  Str255 string = {};
  EXPECT_EQ(nextType(), kTypeText);
  EXPECT_EQ(record.read.getTextProc(reader, &value), 0);
  EXPECT_EQ(std::string(*value, 3), "abc");
  handles.disposeProc(value);
  EXPECT_EQ(nextType(), kTypeText);
  EXPECT_EQ(record.read.getStringProc(reader, &string), 0);
  EXPECT_STREQ(reinterpret_cast<char*>(string), "\3def");
  EXPECT_EQ(nextType(), kTypeAlias);
  EXPECT_EQ(record.read.getAliasProc(reader, &value), 0);
  EXPECT_EQ(simulator::pathOfAlias(reinterpret_cast<AliasHandle>(value), "test"), "/a/b");
  handles.disposeProc(value);
  close();
}

TEST_F(Descriptors, names_of_things_come_back) {
  PIDescriptorSimpleReference layer = {kClassLayer, kFormName, {}};
  std::copy_n("\2ab", 3, layer.keyData.name);
  record.write.putEnumeratedProc(writer, 1, kTypeOrdinal, kEnumTarget);
  record.write.putClassProc(writer, 2, kClassBrush);
  record.write.putScopedClassProc(writer, 3, kClassTool);
  record.write.putSimpleReferenceProc(writer, 4, &layer);
  turn();
  DescriptorEnumID value = 0;
  PIDescriptorSimpleReference reference = {};
  EXPECT_EQ(nextType(), kTypeEnumerated);
  EXPECT_EQ(record.read.getEnumeratedProc(reader, &value), 0);
  EXPECT_EQ(value, kEnumTarget);
  EXPECT_EQ(nextType(), kTypeClass);
  EXPECT_EQ(record.read.getClassProc(reader, &value), 0);
  EXPECT_EQ(value, kClassBrush);
  EXPECT_EQ(nextType(), kTypeGlobalClass);
  EXPECT_EQ(nextType(), kTypeObjectReference);
  EXPECT_EQ(record.read.getSimpleReferenceProc(reader, &reference), 0);
  EXPECT_EQ(reference.desiredClass, kClassLayer);
  EXPECT_EQ(reference.keyForm, kFormName);
  EXPECT_STREQ(reinterpret_cast<char*>(reference.keyData.name), "\2ab");
  close();
}

TEST_F(Descriptors, objects_come_back) {
  simulator::Container inner;
  inner.put(kKeyName, {kTypeInteger, std::int32_t{7}});
  const Handle object = callbacks.makeDescriptorHandle(inner);
  record.write.putObjectProc(writer, 1, kClassBrush, object);
  record.write.putScopedObjectProc(writer, 2, kClassBrush, object);
  turn();
  DescriptorTypeID type = 0;
  Handle value = nullptr;
  EXPECT_EQ(nextType(), kTypeObject);
  EXPECT_EQ(record.read.getObjectProc(reader, &type, &value), 0);
  EXPECT_EQ(type, kClassBrush);
  EXPECT_TRUE(simulator::equal(*callbacks.contentOf(value), inner));
  handles.disposeProc(value);
  EXPECT_EQ(nextType(), kTypeGlobalObject);
  close();
}

TEST_F(Descriptors, what_is_no_descriptor_opens_no_reader) {
  const Handle text = handles.newProc(3);
  EXPECT_EQ(record.read.openReadDescriptorProc(text, nullptr), nullptr);
  EXPECT_EQ(callbacks.contentOf(text), nullptr);
  handles.disposeProc(text);
  turn();
  int32 value;
  EXPECT_EQ(record.read.getIntegerProc(reader, &value), errMissingParameter);
  EXPECT_EQ(record.read.closeReadDescriptorProc(reader), errMissingParameter);
  handles.disposeProc(record.parameters.descriptor);
}

// --- colour services

struct Conversion {
  int16 space;
  std::array<int16, 4> components;
};

class Colors : public CallbackTest {
 protected:
  OSErr convert(int16 from, std::array<int16, 4>& components, int16 to) {
    ColorServicesInfo info = {};
    info.infoSize = sizeof info;
    info.selector = plugIncolorServicesConvertColor;
    info.sourceSpace = from;
    info.resultSpace = to;
    std::copy(components.begin(), components.end(), info.colorComponents);
    const OSErr result = simulator::colorServicesProc()(&info);
    std::copy_n(info.colorComponents, 4, components.begin());
    return result;
  }
};

TEST_F(Colors, orange_in_every_space_and_back) {
  const Conversion orange[] = {{plugIncolorServicesHSBSpace, {30, 255, 255, 0}},
                               {plugIncolorServicesHSLSpace, {30, 255, 128, 0}},
                               {plugIncolorServicesCMYKSpace, {0, 128, 255, 0}}};
  for (const Conversion& expected : orange) {
    std::array<int16, 4> color = {255, 127, 0, 0};
    EXPECT_EQ(convert(plugIncolorServicesRGBSpace, color, expected.space), 0);
    EXPECT_EQ(color, expected.components) << expected.space;
    EXPECT_EQ(convert(expected.space, color, plugIncolorServicesRGBSpace), 0);
    EXPECT_EQ(color[0], 255) << expected.space;
    EXPECT_NEAR(color[1], 127, 1) << expected.space;
    EXPECT_NEAR(color[2], 0, 1) << expected.space;
  }
}

TEST_F(Colors, greys_have_no_hue) {
  std::array<int16, 4> color = {100, 0, 0, 0};
  EXPECT_EQ(convert(plugIncolorServicesGraySpace, color, plugIncolorServicesHSBSpace), 0);
  EXPECT_EQ(color, (std::array<int16, 4>{0, 0, 100, 0}));
  EXPECT_EQ(convert(plugIncolorServicesHSBSpace, color, plugIncolorServicesGraySpace), 0);
  EXPECT_EQ(color[0], 100);
}

TEST_F(Colors, spaces_that_are_not_known_and_samples_are_refused) {
  std::array<int16, 4> color = {};
  EXPECT_EQ(convert(plugIncolorServicesRGBSpace, color, plugIncolorServicesLabSpace), -50);
  EXPECT_EQ(convert(plugIncolorServicesXYZSpace, color, plugIncolorServicesRGBSpace), -50);
  ColorServicesInfo info = {};
  EXPECT_EQ(simulator::colorServicesProc()(&info), -50);
  info.infoSize = sizeof info;
  info.selector = plugIncolorServicesSamplePoint;
  EXPECT_EQ(simulator::colorServicesProc()(&info), errInvalidSamplePoint);
}

}  // namespace
