// Whether the host's callback records can be used, and the warnings that say which host can.
//
// One rule holds for every record: null is unavailable; a version below the required one is
// unavailable; the required version is available where enough procedures are counted and those
// needed are present; a newer version is unavailable and sets `*newerVersion` to true, where that
// is not null, so that the caller may decide to trust the newer host. In all other cases
// `*newerVersion` is left as it is.
//
// The records stay the host's. [main-thread]
#pragma once

#include <PIGeneral.h>

/// Version 2, at least 8 procedures, the first eight present.
bool HostBufferProcsAvailable(const BufferProcs* procs, bool* newerVersion = nullptr);

/// Version 3, at least 4 procedures, the first four present.
bool HostResourceProcsAvailable(const ResourceProcs* procs, bool* newerVersion = nullptr);

/// Version 1, at least 8 procedures, the first four present.
bool HostHandleProcsAvailable(const HandleProcs* procs, bool* newerVersion = nullptr);

/// Version 1, at least 2 procedures, the first two present.
bool HostPropertyAvailable(const PropertyProcs* procs, bool* newerVersion = nullptr);

/// Version 1, at least 3 procedures, the first three present.
bool HostChannelPortAvailable(const ChannelPortProcs* procs, bool* newerVersion = nullptr);

/// The procedure that displays pixels has no record: it is not null. There is no newer version.
bool HostDisplayPixelsAvailable(DisplayPixelsProc displayProc, bool* newerVersion = nullptr);

/// The record at version 0 with both sub-records at version 0, the reading one with at least 18
/// procedures. Only the outer record's newer version sets `*newerVersion`.
bool HostDescriptorAvailable(const PIDescriptorParameters* procs, bool* newerVersion = nullptr);

/// Each warning answers true where its check passes. Otherwise it calls `ShowVersionAlert` with the
/// version of the host that is needed, as text, and answers false.
bool WarnHostDisplayPixelsAvailable(DisplayPixelsProc displayProc);     ///< "2.501."
bool WarnHostAdvanceStateAvailable(AdvanceStateProc advanceProc);       ///< "3.0."
bool WarnHostColorServicesAvailable(ColorServicesProc colorProc);       ///< "2.5."
bool WarnHostBufferProcsAvailable(const BufferProcs* procs);            ///< "2.5."
bool WarnHostResourceProcsAvailable(const ResourceProcs* procs);        ///< "3.0."
bool WarnHostHandleProcsAvailable(const HandleProcs* procs);            ///< "3.0."
bool WarnHostPropertyAvailable(const PropertyProcs* procs);             ///< "2.5."
bool WarnHostChannelPortAvailable(const ChannelPortProcs* procs);       ///< "4.0."
bool WarnHostDescriptorAvailable(const PIDescriptorParameters* procs);  ///< "4.0."
