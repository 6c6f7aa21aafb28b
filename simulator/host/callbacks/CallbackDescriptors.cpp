// Scripting parameters: readers and writers of a descriptor in a handle. The handle holds the same
// bytes as one from the descriptor suite's AsHandle.
#include <algorithm>

#include "simulator/host/callbacks/CallbackState.h"
#include "simulator/host/json/DescriptorJson.h"
#include "simulator/macos/Aliases.h"
#include "simulator/macos/Bookmarks.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace {

// --- handles

ContainerPtr parsed(Handle handle, const char* procedure) {
  try {
    const Json json = jsonOf(theMemoryHandles().bytes(handle, procedure));
    if (auto content = descriptorFromJson(json, hostState().ids)) return content;
  } catch (const std::exception&) {
    // Every kind of malformed content gets the same error.
  }
  throw CallError{paramErr};
}

Handle written(const Container& content, const char* maker) {
  return theMemoryHandles().make(descriptorToJson(content, hostState().ids).dump(), maker);
}

// --- reading

PIReadDescriptor openReader(PIDescriptorHandle descriptor, DescriptorKeyIDArray) {
  constexpr const char* procedure = "ReadDescriptor.openReadDescriptorProc";
  return callbackAnswer<PIReadDescriptor>(procedure, nullptr, [&] {
    return callbackState().readers.add({parsed(descriptor, procedure)}, procedure);
  });
}

OSErr closeReader(PIReadDescriptor reader) {
  constexpr const char* procedure = "ReadDescriptor.closeReadDescriptorProc";
  return callbackRelease(procedure, [&] {
    const OSErr error = callbackState().readers.at(reader, procedure).firstError;
    callbackState().readers.free(reader, procedure);
    if (error != noErr) throw CallError{error};
  });
}

Boolean getKey(PIReadDescriptor reader, DescriptorKeyID* key, DescriptorTypeID* type,
               int32* flags) {
  constexpr const char* procedure = "ReadDescriptor.getKeyProc";
  return callbackAnswer<Boolean>(procedure, false, [&] {
    ReaderBody& body = callbackState().readers.at(reader, procedure);
    if (body.next == body.content->entries.size()) return false;
    const Entry& entry = body.content->entries[body.next++];
    destination(key) = entry.key;
    destination(type) = entry.item.type;
    if (flags != nullptr) *flags = 0;
    return true;
  });
}

// The value of the item that getKey returned last; it must be a T.
template <class T>
const T& current(const ReaderBody& body) {
  if (body.next == 0) throw CallError{errMissingParameter};
  const T* value = std::get_if<T>(&body.content->entries[body.next - 1].item.value);
  if (value == nullptr) throw CallError{kWrongDataType};
  return *value;
}

// Passes the value to `read`. Remembers the first error, which closing the reader returns.
template <class T, class Read>
OSErr get(const char* procedure, PIReadDescriptor reader, Read&& read) {
  return callbackCall(procedure, [&] {
    ReaderBody& body = callbackState().readers.at(reader, procedure);
    try {
      read(current<T>(body));
    } catch (const CallError& failure) {
      if (body.firstError == noErr) body.firstError = static_cast<OSErr>(failure.error);
      throw;
    }
  });
}

OSErr getInteger(PIReadDescriptor reader, int32* value) {
  return get<int32>("ReadDescriptor.getIntegerProc", reader,
                    [&](int32 item) { destination(value) = item; });
}

OSErr getFloat(PIReadDescriptor reader, real64* value) {
  return get<double>("ReadDescriptor.getFloatProc", reader,
                     [&](double item) { destination(value) = item; });
}

OSErr getUnitFloat(PIReadDescriptor reader, DescriptorUnitID* unit, real64* value) {
  return get<UnitFloat>("ReadDescriptor.getUnitFloatProc", reader, [&](const UnitFloat& item) {
    destination(unit) = item.unit;
    destination(value) = item.value;
  });
}

OSErr getBoolean(PIReadDescriptor reader, Boolean* value) {
  return get<bool>("ReadDescriptor.getBooleanProc", reader,
                   [&](bool item) { destination(value) = item; });
}

OSErr getText(PIReadDescriptor reader, Handle* value) {
  constexpr const char* procedure = "ReadDescriptor.getTextProc";
  return get<Text>(procedure, reader, [&](const Text& item) {
    destination(value) = theMemoryHandles().make(item.utf8, procedure);
  });
}

OSErr getAlias(PIReadDescriptor reader, Handle* value) {
  constexpr const char* procedure = "ReadDescriptor.getAliasProc";
  return get<FilePath>(procedure, reader, [&](const FilePath& item) {
    destination(value) = reinterpret_cast<Handle>(makeAlias(item.path, procedure));
  });
}

OSErr getEnumerated(PIReadDescriptor reader, DescriptorEnumID* value) {
  return get<Enumerated>("ReadDescriptor.getEnumeratedProc", reader,
                         [&](const Enumerated& item) { destination(value) = item.value; });
}

OSErr getClass(PIReadDescriptor reader, DescriptorTypeID* value) {
  return get<ClassID>("ReadDescriptor.getClassProc", reader,
                      [&](const ClassID& item) { destination(value) = item.id; });
}

void setText(std::string_view text, Str255& to) {
  const std::size_t length = std::min<std::size_t>(text.size(), 255);
  to[0] = static_cast<unsigned char>(length);
  std::copy_n(text.begin(), length, to + 1);
}

// A simple reference has room for one form: the first of the chain.
OSErr getSimpleReference(PIReadDescriptor reader, PIDescriptorSimpleReference* value) {
  return get<Reference>("ReadDescriptor.getSimpleReferenceProc", reader,
                        [&](const Reference& item) {
                          if (item.empty()) throw CallError{kWrongDataType};
                          const Form& form = item.front();
                          PIDescriptorSimpleReference& to = destination(value);
                          to.desiredClass = form.desiredClass;
                          to.keyForm = form.form;
                          setText(form.name, to.keyData.name);
                          to.keyData.index = static_cast<int32>(form.value);
                          to.keyData.type = form.enumType;
                          to.keyData.value = form.value;
                        });
}

OSErr getObject(PIReadDescriptor reader, DescriptorTypeID* type, PIDescriptorHandle* value) {
  constexpr const char* procedure = "ReadDescriptor.getObjectProc";
  return get<Object>(procedure, reader, [&](const Object& item) {
    destination(type) = item.type;
    destination(value) = written(*item.content, procedure);
  });
}

OSErr getCount(PIReadDescriptor reader, uint32* value) {
  return get<int32>("ReadDescriptor.getCountProc", reader, [&](int32 item) {
    if (item < 0) throw CallError{kWrongDataType};
    destination(value) = static_cast<uint32>(item);
  });
}

OSErr getString(PIReadDescriptor reader, Str255* value) {
  return get<Text>("ReadDescriptor.getStringProc", reader,
                   [&](const Text& item) { setText(item.utf8, destination(value)); });
}

OSErr getPinnedInteger(PIReadDescriptor reader, int32 minimum, int32 maximum, int32* value) {
  return get<int32>("ReadDescriptor.getPinnedIntegerProc", reader, [&](int32 item) {
    destination(value) = std::max(minimum, std::min(maximum, item));
  });
}

double pinned(double value, const real64* minimum, const real64* maximum) {
  return std::max(destination(minimum), std::min(destination(maximum), value));
}

OSErr getPinnedFloat(PIReadDescriptor reader, const real64* minimum, const real64* maximum,
                     real64* value) {
  return get<double>("ReadDescriptor.getPinnedFloatProc", reader,
                     [&](double item) { destination(value) = pinned(item, minimum, maximum); });
}

OSErr getPinnedUnitFloat(PIReadDescriptor reader, const real64* minimum, const real64* maximum,
                         DescriptorUnitID* unit, real64* value) {
  return get<UnitFloat>("ReadDescriptor.getPinnedUnitFloatProc", reader,
                        [&](const UnitFloat& item) {
                          destination(unit) = item.unit;
                          destination(value) = pinned(item.value, minimum, maximum);
                        });
}

constexpr ReadDescriptorProcs kReadRecord = {
    .readDescriptorProcsVersion = 0,
    .numReadDescriptorProcs = 0,
    .openReadDescriptorProc = openReader,
    .closeReadDescriptorProc = closeReader,
    .getKeyProc = getKey,
    .getIntegerProc = getInteger,
    .getFloatProc = getFloat,
    .getUnitFloatProc = getUnitFloat,
    .getBooleanProc = getBoolean,
    .getTextProc = getText,
    .getAliasProc = getAlias,
    .getEnumeratedProc = getEnumerated,
    .getClassProc = getClass,
    .getSimpleReferenceProc = getSimpleReference,
    .getObjectProc = getObject,
    .getCountProc = getCount,
    .getStringProc = getString,
    .getPinnedIntegerProc = getPinnedInteger,
    .getPinnedFloatProc = getPinnedFloat,
    .getPinnedUnitFloatProc = getPinnedUnitFloat,
};

// --- writing

PIWriteDescriptor openWriter() {
  constexpr const char* procedure = "WriteDescriptor.openWriteDescriptorProc";
  return callbackAnswer<PIWriteDescriptor>(
      procedure, nullptr, [] { return callbackState().writers.add({}, procedure); });
}

OSErr closeWriter(PIWriteDescriptor writer, PIDescriptorHandle* descriptor) {
  constexpr const char* procedure = "WriteDescriptor.closeWriteDescriptorProc";
  return callbackCall(procedure, [&] {
    const ContainerPtr content = callbackState().writers.at(writer, procedure).content;
    callbackState().writers.free(writer, procedure);
    destination(descriptor) = written(*content, procedure);
  });
}

// Puts the value that `make` returns.
template <class Make>
OSErr put(const char* procedure, PIWriteDescriptor writer, DescriptorKeyID key,
          DescriptorTypeID type, Make&& make) {
  return callbackCall(procedure, [&] {
    callbackState().writers.at(writer, procedure).content->put(key, {type, make()});
  });
}

OSErr putInteger(PIWriteDescriptor writer, DescriptorKeyID key, int32 value) {
  return put("WriteDescriptor.putIntegerProc", writer, key, kTypeInteger, [&] { return value; });
}

OSErr putFloat(PIWriteDescriptor writer, DescriptorKeyID key, const real64* value) {
  return put("WriteDescriptor.putFloatProc", writer, key, kTypeFloat,
             [&] { return destination(value); });
}

OSErr putUnitFloat(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorUnitID unit,
                   const real64* value) {
  return put("WriteDescriptor.putUnitFloatProc", writer, key, kTypeUnitFloat,
             [&] { return UnitFloat{unit, destination(value)}; });
}

OSErr putBoolean(PIWriteDescriptor writer, DescriptorKeyID key, Boolean value) {
  return put("WriteDescriptor.putBooleanProc", writer, key, kTypeBoolean,
             [&] { return value != 0; });
}

OSErr putText(PIWriteDescriptor writer, DescriptorKeyID key, Handle value) {
  constexpr const char* procedure = "WriteDescriptor.putTextProc";
  return put(procedure, writer, key, kTypeText,
             [&] { return Text{std::string(theMemoryHandles().bytes(value, procedure))}; });
}

OSErr putAlias(PIWriteDescriptor writer, DescriptorKeyID key, Handle value) {
  constexpr const char* procedure = "WriteDescriptor.putAliasProc";
  return put(procedure, writer, key, kTypeAlias, [&] {
    const auto path = pathOfAlias(reinterpret_cast<AliasHandle>(value), procedure);
    if (!path) throw CallError{paramErr};
    return FilePath{*path};
  });
}

OSErr putEnumerated(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorTypeID type,
                    DescriptorEnumID value) {
  return put("WriteDescriptor.putEnumeratedProc", writer, key, kTypeEnumerated,
             [&] { return Enumerated{type, value}; });
}

OSErr putClassAs(const char* procedure, PIWriteDescriptor writer, DescriptorKeyID key,
                 DescriptorTypeID kind, DescriptorTypeID value) {
  return put(procedure, writer, key, kind, [&] { return ClassID{value}; });
}

OSErr putClass(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorTypeID value) {
  return putClassAs("WriteDescriptor.putClassProc", writer, key, kTypeClass, value);
}

OSErr putScopedClass(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorTypeID value) {
  return putClassAs("WriteDescriptor.putScopedClassProc", writer, key, kTypeGlobalClass, value);
}

Form formOf(const PIDescriptorSimpleReference& from) {
  Form form = {from.keyForm, from.desiredClass};
  form.enumType = from.keyData.type;
  const bool counted =
      from.keyForm == kFormIndex || from.keyForm == kFormIdentifier || from.keyForm == kFormOffset;
  form.value = counted ? static_cast<uint32>(from.keyData.index) : from.keyData.value;
  form.name.assign(reinterpret_cast<const char*>(from.keyData.name) + 1, from.keyData.name[0]);
  return form;
}

OSErr putSimpleReference(PIWriteDescriptor writer, DescriptorKeyID key,
                         const PIDescriptorSimpleReference* value) {
  return put("WriteDescriptor.putSimpleReferenceProc", writer, key, kTypeObjectReference,
             [&] { return Reference{formOf(destination(value))}; });
}

OSErr putObjectAs(const char* procedure, PIWriteDescriptor writer, DescriptorKeyID key,
                  DescriptorTypeID kind, DescriptorTypeID type, PIDescriptorHandle value) {
  return put(procedure, writer, key, kind, [&] { return Object{type, parsed(value, procedure)}; });
}

OSErr putObject(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorTypeID type,
                PIDescriptorHandle value) {
  return putObjectAs("WriteDescriptor.putObjectProc", writer, key, kTypeObject, type, value);
}

OSErr putScopedObject(PIWriteDescriptor writer, DescriptorKeyID key, DescriptorTypeID type,
                      PIDescriptorHandle value) {
  return putObjectAs("WriteDescriptor.putScopedObjectProc", writer, key, kTypeGlobalObject, type,
                     value);
}

OSErr putCount(PIWriteDescriptor writer, DescriptorKeyID key, uint32 value) {
  return put("WriteDescriptor.putCountProc", writer, key, kTypeInteger,
             [&] { return static_cast<int32>(value); });
}

OSErr putString(PIWriteDescriptor writer, DescriptorKeyID key, const unsigned char* value) {
  return put("WriteDescriptor.putStringProc", writer, key, kTypeText, [&] {
    const char* characters = reinterpret_cast<const char*>(&destination(value)) + 1;
    return Text{std::string(characters, *value)};
  });
}

constexpr WriteDescriptorProcs kWriteRecord = {
    .writeDescriptorProcsVersion = 0,
    .numWriteDescriptorProcs = 0,
    .openWriteDescriptorProc = openWriter,
    .closeWriteDescriptorProc = closeWriter,
    .putIntegerProc = putInteger,
    .putFloatProc = putFloat,
    .putUnitFloatProc = putUnitFloat,
    .putBooleanProc = putBoolean,
    .putTextProc = putText,
    .putAliasProc = putAlias,
    .putEnumeratedProc = putEnumerated,
    .putClassProc = putClass,
    .putSimpleReferenceProc = putSimpleReference,
    .putObjectProc = putObject,
    .putCountProc = putCount,
    .putStringProc = putString,
    .putScopedClassProc = putScopedClass,
    .putScopedObjectProc = putScopedObject,
};

}  // namespace

ReadDescriptorProcs readDescriptorProcs(int16 version, int16 count) {
  return cutRecord(kReadRecord, version, count);
}

WriteDescriptorProcs writeDescriptorProcs(int16 version, int16 count) {
  return cutRecord(kWriteRecord, version, count);
}

PIDescriptorHandle Callbacks::makeDescriptorHandle(const Container& content) {
  return written(content, nullptr);
}

ContainerPtr Callbacks::contentOf(PIDescriptorHandle handle) const {
  try {
    return parsed(handle, "Callbacks.contentOf");
  } catch (const CallError&) {
    return nullptr;
  }
}

}  // namespace simulator
