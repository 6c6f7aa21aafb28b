#include <algorithm>
#include <string>

#include "simulator/host/callbacks/CallbackRecords.h"
#include "simulator/macos/Aliases.h"
#include "tests/hostutil/CallbackHost.h"

namespace {

using hostutil_test::CallbackTest;

class CallbackDescriptors : public CallbackTest {
 protected:
  /// Closes the writer and opens a reader on the descriptor that it wrote.
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

TEST_F(CallbackDescriptors, KeepNumbers) {
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

TEST_F(CallbackDescriptors, PinNumbersToTheirBounds) {
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

TEST_F(CallbackDescriptors, KeepTextsAndFiles) {
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

TEST_F(CallbackDescriptors, KeepEnumerationsClassesAndReferences) {
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

TEST_F(CallbackDescriptors, KeepObjects) {
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

TEST_F(CallbackDescriptors, OpenNoReaderOnWhatIsNotADescriptor) {
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

}  // namespace
